#pragma once

// The binary filer an object writes its fields to and reads them back from, in the same order:
// for drawing files, undo records and copies alike (filerType() tells which). Every call answers
// the filer's status; after the first error the filer stays in error and reads give zeros, so an
// object can read all its fields and check the status once at the end.

#include "host/Adesk.h"
#include "host/db/AcDb.h"
#include "host/db/AcadErrorStatus.h"
#include "host/db/Handle.h"
#include "host/db/ObjectId.h"
#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Scale3d.h"
#include "host/ge/Vector2d.h"
#include "host/ge/Vector3d.h"
#include "host/text/CString.h"

class AcDbDatabase;

class AcDbDwgFiler {
public:
    virtual ~AcDbDwgFiler() = default;

    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual AcDb::FilerType filerType() const = 0;
    virtual void setFilerStatus(Acad::ErrorStatus status) = 0;
    virtual void resetFilerStatus() = 0;
    // The database ids are resolved in, when the filer has one.
    virtual AcDbDatabase* database() const { return nullptr; }

    virtual Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) = 0;
    virtual Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) = 0;
    virtual Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) = 0;
    virtual Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) = 0;
    virtual Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) = 0;
    virtual Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) = 0;
    virtual Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) = 0;
    virtual Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) = 0;

    virtual Acad::ErrorStatus readString(CString& value) = 0;
    virtual Acad::ErrorStatus writeString(const wchar_t* value) = 0;
    virtual Acad::ErrorStatus readAcDbHandle(AcDbHandle* value) = 0;
    virtual Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& value) = 0;

    virtual Acad::ErrorStatus readInt8(Adesk::Int8* value) = 0;
    virtual Acad::ErrorStatus writeInt8(Adesk::Int8 value) = 0;
    virtual Acad::ErrorStatus readInt16(Adesk::Int16* value) = 0;
    virtual Acad::ErrorStatus writeInt16(Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus readInt32(Adesk::Int32* value) = 0;
    virtual Acad::ErrorStatus writeInt32(Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus readInt64(Adesk::Int64* value) = 0;
    virtual Acad::ErrorStatus writeInt64(Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus readUInt8(Adesk::UInt8* value) = 0;
    virtual Acad::ErrorStatus writeUInt8(Adesk::UInt8 value) = 0;
    virtual Acad::ErrorStatus readUInt16(Adesk::UInt16* value) = 0;
    virtual Acad::ErrorStatus writeUInt16(Adesk::UInt16 value) = 0;
    virtual Acad::ErrorStatus readUInt32(Adesk::UInt32* value) = 0;
    virtual Acad::ErrorStatus writeUInt32(Adesk::UInt32 value) = 0;
    virtual Acad::ErrorStatus readUInt64(Adesk::UInt64* value) = 0;
    virtual Acad::ErrorStatus writeUInt64(Adesk::UInt64 value) = 0;
    // Adesk::Boolean is a 32-bit integer; bool is filed as one byte. They are different items.
    virtual Acad::ErrorStatus readBoolean(Adesk::Boolean* value) = 0;
    virtual Acad::ErrorStatus writeBoolean(Adesk::Boolean value) = 0;
    virtual Acad::ErrorStatus readBool(bool* value) = 0;
    virtual Acad::ErrorStatus writeBool(bool value) = 0;
    virtual Acad::ErrorStatus readDouble(double* value) = 0;
    virtual Acad::ErrorStatus writeDouble(double value) = 0;

    virtual Acad::ErrorStatus readPoint2d(AcGePoint2d* value) = 0;
    virtual Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) = 0;
    virtual Acad::ErrorStatus readPoint3d(AcGePoint3d* value) = 0;
    virtual Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) = 0;
    virtual Acad::ErrorStatus readVector2d(AcGeVector2d* value) = 0;
    virtual Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) = 0;
    virtual Acad::ErrorStatus readVector3d(AcGeVector3d* value) = 0;
    virtual Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) = 0;
    virtual Acad::ErrorStatus readScale3d(AcGeScale3d* value) = 0;
    virtual Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) = 0;

    // Raw bytes: the reader must ask for exactly as many as were written.
    virtual Acad::ErrorStatus readBytes(void* buffer, Adesk::UInt64 count) = 0;
    virtual Acad::ErrorStatus writeBytes(const void* buffer, Adesk::UInt64 count) = 0;
    // A pointer, meaningful only within the process that wrote it (undo and copy filers).
    virtual Acad::ErrorStatus readAddress(void** value) = 0;
    virtual Acad::ErrorStatus writeAddress(const void* value) = 0;

    // The generic forms pick the call by the value's type.
    Acad::ErrorStatus writeItem(const AcDbHardOwnershipId& id) { return writeHardOwnershipId(id); }
    Acad::ErrorStatus writeItem(const AcDbSoftOwnershipId& id) { return writeSoftOwnershipId(id); }
    Acad::ErrorStatus writeItem(const AcDbHardPointerId& id) { return writeHardPointerId(id); }
    Acad::ErrorStatus writeItem(const AcDbSoftPointerId& id) { return writeSoftPointerId(id); }
    Acad::ErrorStatus writeItem(const wchar_t* value) { return writeString(value); }
    Acad::ErrorStatus writeItem(const CString& value) { return writeString(value.GetString()); }
    Acad::ErrorStatus writeItem(const AcDbHandle& value) { return writeAcDbHandle(value); }
    Acad::ErrorStatus writeItem(Adesk::Int8 value) { return writeInt8(value); }
    Acad::ErrorStatus writeItem(Adesk::Int16 value) { return writeInt16(value); }
    Acad::ErrorStatus writeItem(Adesk::Int32 value) { return writeInt32(value); }
    Acad::ErrorStatus writeItem(Adesk::Int64 value) { return writeInt64(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt8 value) { return writeUInt8(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt16 value) { return writeUInt16(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt32 value) { return writeUInt32(value); }
    Acad::ErrorStatus writeItem(Adesk::UInt64 value) { return writeUInt64(value); }
    Acad::ErrorStatus writeItem(bool value) { return writeBool(value); }
    Acad::ErrorStatus writeItem(double value) { return writeDouble(value); }
    Acad::ErrorStatus writeItem(const AcGePoint2d& value) { return writePoint2d(value); }
    Acad::ErrorStatus writeItem(const AcGePoint3d& value) { return writePoint3d(value); }
    Acad::ErrorStatus writeItem(const AcGeVector2d& value) { return writeVector2d(value); }
    Acad::ErrorStatus writeItem(const AcGeVector3d& value) { return writeVector3d(value); }
    Acad::ErrorStatus writeItem(const AcGeScale3d& value) { return writeScale3d(value); }
    Acad::ErrorStatus writeItem(const void* value) { return writeAddress(value); }

    Acad::ErrorStatus readItem(AcDbHardOwnershipId* id) { return readHardOwnershipId(id); }
    Acad::ErrorStatus readItem(AcDbSoftOwnershipId* id) { return readSoftOwnershipId(id); }
    Acad::ErrorStatus readItem(AcDbHardPointerId* id) { return readHardPointerId(id); }
    Acad::ErrorStatus readItem(AcDbSoftPointerId* id) { return readSoftPointerId(id); }
    Acad::ErrorStatus readItem(CString* value) { return readString(*value); }
    Acad::ErrorStatus readItem(AcDbHandle* value) { return readAcDbHandle(value); }
    Acad::ErrorStatus readItem(Adesk::Int8* value) { return readInt8(value); }
    Acad::ErrorStatus readItem(Adesk::Int16* value) { return readInt16(value); }
    Acad::ErrorStatus readItem(Adesk::Int32* value) { return readInt32(value); }
    Acad::ErrorStatus readItem(Adesk::Int64* value) { return readInt64(value); }
    Acad::ErrorStatus readItem(Adesk::UInt8* value) { return readUInt8(value); }
    Acad::ErrorStatus readItem(Adesk::UInt16* value) { return readUInt16(value); }
    Acad::ErrorStatus readItem(Adesk::UInt32* value) { return readUInt32(value); }
    Acad::ErrorStatus readItem(Adesk::UInt64* value) { return readUInt64(value); }
    Acad::ErrorStatus readItem(bool* value) { return readBool(value); }
    Acad::ErrorStatus readItem(double* value) { return readDouble(value); }
    Acad::ErrorStatus readItem(AcGePoint2d* value) { return readPoint2d(value); }
    Acad::ErrorStatus readItem(AcGePoint3d* value) { return readPoint3d(value); }
    Acad::ErrorStatus readItem(AcGeVector2d* value) { return readVector2d(value); }
    Acad::ErrorStatus readItem(AcGeVector3d* value) { return readVector3d(value); }
    Acad::ErrorStatus readItem(AcGeScale3d* value) { return readScale3d(value); }
    Acad::ErrorStatus readItem(void** value) { return readAddress(value); }

protected:
    AcDbDwgFiler() = default;
    AcDbDwgFiler(const AcDbDwgFiler&) = default;
    AcDbDwgFiler& operator=(const AcDbDwgFiler&) = default;
};
