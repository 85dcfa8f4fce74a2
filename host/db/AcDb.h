#pragma once

// The database's enumerations: open modes, filer kinds, versions and DXF group codes.

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"

namespace AcDb {

enum OpenMode { kNotOpen = -1, kForRead = 0, kForWrite = 1, kForNotify = 2 };

// What a filer is used for; objects may file less for some (an undo filer needs no defaults).
enum FilerType {
    kFileFiler = 0,
    kCopyFiler = 1,
    kUndoFiler = 2,
    kBagFiler = 3,
    kIdXlateFiler = 4,
    kPageFiler = 5,
    kDeepCloneFiler = 6,
    kIdFiler = 7,
    kPurgeFiler = 8,
    kWblockCloneFiler = 9
};

// Drawing format versions a class was introduced in; only "current" is meaningful here.
enum AcDbDwgVersion { kDHL_MC0_0 = 0, kDHL_1015 = 23, kDHL_1800 = 25, kDHL_CURRENT = 33 };
enum MaintenanceReleaseVersion { kMRelease0 = 0, kMReleaseCurrent = 0 };

enum DxfCode {
    kDxfInvalid = -9999,
    kDxfXDataStart = -3,
    kDxfEnd = -1,
    kDxfStart = 0,
    kDxfText = 1,
    kDxfShapeName = 2,
    kDxfBlockName = 2,
    kDxfSymbolTableName = 2,
    kDxfSymTableRecName = 2,
    kDxfDescription = 3,
    kDxfHandle = 5,
    kDxfLinetypeName = 6,
    kDxfTextStyleName = 7,
    kDxfLayerName = 8,
    kDxfXCoord = 10,
    kDxfYCoord = 20,
    kDxfZCoord = 30,
    kDxfElevation = 38,
    kDxfThickness = 39,
    kDxfReal = 40,
    kDxfTxtSize = 40,
    kDxfAngle = 50,
    kDxfVisibility = 60,
    kDxfColor = 62,
    kDxfInt16 = 70,
    kDxfInt32 = 90,
    kDxfSubclass = 100,
    kDxfControlString = 102,
    kDxfXReal = 140,
    kDxfInt64 = 160,
    kDxfXInt16 = 170,
    kDxfNormalX = 210,
    kDxfNormalY = 220,
    kDxfNormalZ = 230,
    kDxfXXInt16 = 270,
    kDxfInt8 = 280,
    kDxfBool = 290,
    kDxfXTextString = 300,
    kDxfBinaryChunk = 310,
    kDxfArbHandle = 320,
    kDxfSoftPointerId = 330,
    kDxfHardPointerId = 340,
    kDxfSoftOwnershipId = 350,
    kDxfHardOwnershipId = 360,
    kDxfLineWeight = 370,
    kDxfXXXInt16 = 400,
    kDxfLayoutName = 410,
    kDxfColorRGB = 420,
    kDxfComment = 999,
    kDxfXdAsciiString = 1000,
    kDxfRegAppName = 1001,
    kDxfXdControlString = 1002,
    kDxfXdLayerName = 1003,
    kDxfXdBinaryChunk = 1004,
    kDxfXdHandle = 1005,
    kDxfXdXCoord = 1010,
    kDxfXdWorldXCoord = 1011,
    kDxfXdWorldXDisp = 1012,
    kDxfXdWorldXDir = 1013,
    kDxfXdYCoord = 1020,
    kDxfXdZCoord = 1030,
    kDxfXdReal = 1040,
    kDxfXdDist = 1041,
    kDxfXdScale = 1042,
    kDxfXdInteger16 = 1070,
    kDxfXdInteger32 = 1071
};

}  // namespace AcDb
