#pragma once

// The filer of an object's DXF form: a sequence of (group code, value) items. An object writes
// its subclass marker (100) and its fields; reading it walks the items, stopping at the first
// code it does not know (pushBackItem() gives that item back for the next reader).

#include <cstdarg>

#include "host/Adesk.h"
#include "host/db/AcDb.h"
#include "host/db/AcadErrorStatus.h"
#include "host/db/AdsDef.h"
#include "host/db/Handle.h"
#include "host/db/ObjectId.h"
#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Scale3d.h"
#include "host/ge/Vector2d.h"
#include "host/ge/Vector3d.h"
#include "host/text/CString.h"

class AcDbDatabase;

class AcDbDxfFiler {
public:
    // Default precision of real values: the filer's own.
    static constexpr int kDfltPrec = -1;

    virtual ~AcDbDxfFiler() = default;

    virtual int rewindFiler() = 0;
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual void resetFilerStatus() = 0;
    virtual AcDb::FilerType filerType() const = 0;
    virtual AcDbDatabase* database() const = 0;

    // Sets the status and keeps the message, formatted as CString::Format does (%d, %s wide).
    Acad::ErrorStatus setError(Acad::ErrorStatus status, const wchar_t* format, ...);
    // Keeps the message without changing the status.
    Acad::ErrorStatus setError(const wchar_t* format, ...);
    const wchar_t* errorMessage() const { return m_errorMessage.GetString(); }

    // Reads the next item into pItem: restype is the group code. A string value points into the
    // filer and stays valid until the next read.
    virtual Acad::ErrorStatus readItem(resbuf* pItem) = 0;
    Acad::ErrorStatus readResBuf(resbuf* pRb) { return readItem(pRb); }
    virtual Acad::ErrorStatus writeItem(const resbuf& item) = 0;
    Acad::ErrorStatus writeResBuf(const resbuf& rb) { return writeItem(rb); }
    // Gives back the item just read, so that the next read answers it again.
    virtual Acad::ErrorStatus pushBackItem() = 0;
    virtual bool atEOF() = 0;
    // True, and the marker consumed, when the next item is the subclass marker (100) named.
    virtual bool atSubclassData(const wchar_t* subClassName) = 0;
    virtual bool atEndOfObject() = 0;
    virtual bool includesDefaultValues() const { return false; }

    virtual Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const wchar_t* value) = 0;
    virtual Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& value) = 0;
    virtual Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 value) = 0;
    virtual Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) = 0;
    virtual Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) = 0;
    virtual Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) = 0;
    virtual Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool value) = 0;
    virtual Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) = 0;
    virtual Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double value,
                                          int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value,
                                           int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value,
                                           int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value,
                                            int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value,
                                            int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value,
                                           int precision = kDfltPrec) = 0;

    // The generic forms pick the call by the value's type.
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const wchar_t* value) {
        return writeString(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const CString& value) {
        return writeString(code, value.GetString());
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcDbObjectId& id) {
        return writeObjectId(code, id);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcDbHandle& value) {
        return writeAcDbHandle(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int8 value) {
        return writeInt8(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int16 value) {
        return writeInt16(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int32 value) {
        return writeInt32(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::Int64 value) {
        return writeInt64(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt8 value) {
        return writeUInt8(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt16 value) {
        return writeUInt16(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, Adesk::UInt32 value) {
        return writeUInt32(code, value);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, bool value) { return writeBool(code, value); }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, double value, int precision = kDfltPrec) {
        return writeDouble(code, value, precision);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGePoint2d& value,
                                int precision = kDfltPrec) {
        return writePoint2d(code, value, precision);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGePoint3d& value,
                                int precision = kDfltPrec) {
        return writePoint3d(code, value, precision);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGeVector2d& value,
                                int precision = kDfltPrec) {
        return writeVector2d(code, value, precision);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGeVector3d& value,
                                int precision = kDfltPrec) {
        return writeVector3d(code, value, precision);
    }
    Acad::ErrorStatus writeItem(AcDb::DxfCode code, const AcGeScale3d& value,
                                int precision = kDfltPrec) {
        return writeScale3d(code, value, precision);
    }

protected:
    AcDbDxfFiler() = default;
    AcDbDxfFiler(const AcDbDxfFiler&) = default;
    AcDbDxfFiler& operator=(const AcDbDxfFiler&) = default;
    // Sets the status; setError and the implementations go through it.
    virtual void setFilerStatus(Acad::ErrorStatus status) = 0;

    CString m_errorMessage;
};

namespace kelaz {

// What a DXF group code holds, by the host's code ranges.
enum class DxfValueKind {
    kInvalid,
    kString,
    kPoint,
    kReal,
    kInt16,
    kInt32,
    kInt64,
    kBool,
    kBinary,
    kHandle,
    kObjectId
};
DxfValueKind DxfValueKindOf(int code);

}  // namespace kelaz
