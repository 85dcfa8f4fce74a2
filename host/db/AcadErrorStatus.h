#pragma once

// The drafting API's result codes. Every database, filer and file operation answers one of these;
// nothing throws across the API.

namespace Acad {

// The host's numbering as far as it is known. eOutOfRange and the codes from eMakeMeProxy on
// are not known here: they have distinct numbers of our own choosing.
#define KELAZ_ERROR_STATUS_LIST(X)   \
    X(eOk, 0)                        \
    X(eNotImplementedYet, 1)         \
    X(eNotApplicable, 2)             \
    X(eInvalidInput, 3)              \
    X(eAmbiguousInput, 4)            \
    X(eAmbiguousOutput, 5)           \
    X(eOutOfMemory, 6)               \
    X(eBufferTooSmall, 7)            \
    X(eInvalidOpenState, 8)          \
    X(eHandleExists, 10)             \
    X(eNullHandle, 11)               \
    X(eBrokenHandle, 12)             \
    X(eUnknownHandle, 13)            \
    X(eHandleInUse, 14)              \
    X(eNullObjectPointer, 15)        \
    X(eNullObjectId, 16)             \
    X(eNullBlockName, 17)            \
    X(eContainerNotEmpty, 18)        \
    X(eNullEntityPointer, 20)        \
    X(eIllegalEntityType, 21)        \
    X(eKeyNotFound, 22)              \
    X(eDuplicateKey, 23)             \
    X(eInvalidIndex, 24)             \
    X(eDuplicateIndex, 25)           \
    X(eAlreadyInDb, 26)              \
    X(eOutOfDisk, 27)                \
    X(eDeletedEntry, 28)             \
    X(eNegativeValueNotAllowed, 29)  \
    X(eInvalidExtents, 30)           \
    X(eInvalidAdsName, 31)           \
    X(eInvalidSymbolTableName, 32)   \
    X(eInvalidKey, 33)               \
    X(eWrongObjectType, 34)          \
    X(eWrongDatabase, 35)            \
    X(eObjectToBeDeleted, 36)        \
    X(eInvalidDwgVersion, 37)        \
    X(eEndOfObject, 40)              \
    X(eEndOfFile, 41)                \
    X(eIsReading, 42)                \
    X(eIsWriting, 43)                \
    X(eNotOpenForRead, 44)           \
    X(eNotOpenForWrite, 45)          \
    X(eNotThatKindOfClass, 46)       \
    X(eInvalidBlockName, 47)         \
    X(eMissingDxfField, 48)          \
    X(eDuplicateDxfField, 49)        \
    X(eInvalidDxfCode, 50)           \
    X(eInvalidResBuf, 51)            \
    X(eBadDxfSequence, 52)           \
    X(eFilerError, 53)               \
    X(eDwgRecoveredOK, 60)           \
    X(eDwgNotRecoverable, 61)        \
    X(eDwgCRCDoesNotMatch, 65)       \
    X(eDwgSentinelDoesNotMatch, 66)  \
    X(eDwgObjectImproperlyRead, 67)  \
    X(eNoInputFiler, 68)             \
    X(eFileAccessErr, 72)            \
    X(eFileSystemErr, 73)            \
    X(eFileInternalErr, 74)          \
    X(eFileNotFound, 76)             \
    X(eWasErased, 78)                \
    X(ePermanentlyErased, 79)        \
    X(eWasOpenedForRead, 80)         \
    X(eWasOpenedForWrite, 81)        \
    X(eWasOpenedForUndo, 82)         \
    X(eWasNotifying, 83)             \
    X(eWasOpenedForNotify, 84)       \
    X(eOnLockedLayer, 85)            \
    X(eAtMaxReaders, 88)             \
    X(eNotAnEntity, 91)              \
    X(eHadMultipleReaders, 92)       \
    X(eDuplicateRecordName, 93)      \
    X(eMissingSymbolTable, 96)       \
    X(eMissingSymbolTableRec, 97)    \
    X(eWasNotOpenForWrite, 98)       \
    X(eCannotBeErasedByCaller, 103)  \
    X(eWasNotErased, 105)            \
    X(eNoDatabase, 110)              \
    X(eIteratorDone, 115)            \
    X(eNotInBlock, 117)              \
    X(eOwnerNotInDatabase, 118)      \
    X(eCannotScaleNonUniformly, 122) \
    X(eNotInDatabase, 123)           \
    X(eNotCurrentDatabase, 124)      \
    X(eIsAnEntity, 125)              \
    X(eUserBreak, 180)               \
    X(eOutOfRange, 401)              \
    X(eMakeMeProxy, 402)             \
    X(eBadDwgHeader, 403)            \
    X(eDwgCRCError, 404)             \
    X(eNothingToUndo, 405)

#define KELAZ_ERROR_STATUS_ENUMERATOR(name, value) name = (value),
enum ErrorStatus { KELAZ_ERROR_STATUS_LIST(KELAZ_ERROR_STATUS_ENUMERATOR) };
#undef KELAZ_ERROR_STATUS_ENUMERATOR

}  // namespace Acad

namespace kelaz {

// The enumerator's name ("eWasOpenedForWrite"); "Unknown ErrorStatus" for a value not listed.
const wchar_t* ErrorText(Acad::ErrorStatus es);

}  // namespace kelaz
