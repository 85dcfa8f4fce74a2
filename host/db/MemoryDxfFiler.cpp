#include "host/db/MemoryDxfFiler.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace kelaz {

namespace {

// The range of integers a group code of the given kind holds.
bool FitsKind(DxfValueKind kind, Adesk::Int64 value) {
    switch (kind) {
        case DxfValueKind::kInt16:
            return value >= std::numeric_limits<Adesk::Int16>::min() &&
                   value <= std::numeric_limits<Adesk::Int16>::max();
        case DxfValueKind::kInt32:
            return value >= std::numeric_limits<Adesk::Int32>::min() &&
                   value <= std::numeric_limits<Adesk::Int32>::max();
        case DxfValueKind::kBool:
            return value == 0 || value == 1;
        default:
            return true;
    }
}

}  // namespace

int MemoryDxfFiler::rewindFiler() {
    m_pos = 0;
    m_canPushBack = false;
    return 0;
}

void MemoryDxfFiler::resetFilerStatus() {
    m_status = Acad::eOk;
    m_errorMessage.Empty();
}

MemoryDxfFiler::Item* MemoryDxfFiler::begin(int code, std::initializer_list<DxfValueKind> allowed,
                                            const wchar_t* what) {
    if (m_status != Acad::eOk) return nullptr;
    const DxfValueKind kind = DxfValueKindOf(code);
    if (std::find(allowed.begin(), allowed.end(), kind) == allowed.end()) {
        setError(Acad::eInvalidDxfCode, L"Error: group code %d does not take %s", code, what);
        return nullptr;
    }
    Item& item = m_items.emplace_back();
    item.code = code;
    item.kind = kind;
    return &item;
}

Acad::ErrorStatus MemoryDxfFiler::writeInteger(AcDb::DxfCode code, Adesk::Int64 value) {
    const DxfValueKind kind = DxfValueKindOf(code);
    if (m_status == Acad::eOk && !FitsKind(kind, value)) {
        return setError(Acad::eInvalidDxfCode,
                        L"Error: value %lld is out of range for group code %d",
                        static_cast<long long>(value), static_cast<int>(code));
    }
    Item* item = begin(
        code,
        {DxfValueKind::kInt16, DxfValueKind::kInt32, DxfValueKind::kInt64, DxfValueKind::kBool},
        L"an integer");
    if (item != nullptr) item->integer = value;
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
    if (Item* item = begin(code, {DxfValueKind::kObjectId}, L"an object id")) item->id = id;
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writeString(AcDb::DxfCode code, const wchar_t* value) {
    if (Item* item = begin(code, {DxfValueKind::kString}, L"text")) {
        item->text = value != nullptr ? value : L"";
    }
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& value) {
    if (Item* item = begin(code, {DxfValueKind::kHandle}, L"a handle")) {
        item->text = value.text().str();
    }
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writeInt8(AcDb::DxfCode code, Adesk::Int8 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeInt16(AcDb::DxfCode code, Adesk::Int16 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeInt32(AcDb::DxfCode code, Adesk::Int32 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeInt64(AcDb::DxfCode code, Adesk::Int64 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) {
    return writeInteger(code, value);
}
Acad::ErrorStatus MemoryDxfFiler::writeBool(AcDb::DxfCode code, bool value) {
    return writeInteger(code, value ? 1 : 0);
}
Acad::ErrorStatus MemoryDxfFiler::writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) {
    return writeInteger(code, value != 0 ? 1 : 0);
}

Acad::ErrorStatus MemoryDxfFiler::writeDouble(AcDb::DxfCode code, double value, int) {
    if (Item* item = begin(code, {DxfValueKind::kReal}, L"a real")) item->real[0] = value;
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value, int) {
    if (Item* item = begin(code, {DxfValueKind::kPoint}, L"a point")) {
        item->real[0] = value.x;
        item->real[1] = value.y;
    }
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value, int) {
    if (Item* item = begin(code, {DxfValueKind::kPoint}, L"a point")) {
        item->real[0] = value.x;
        item->real[1] = value.y;
        item->real[2] = value.z;
    }
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value,
                                                int precision) {
    return writePoint2d(code, AcGePoint2d(value.x, value.y), precision);
}

Acad::ErrorStatus MemoryDxfFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value,
                                                int precision) {
    return writePoint3d(code, AcGePoint3d(value.x, value.y, value.z), precision);
}

Acad::ErrorStatus MemoryDxfFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value,
                                               int precision) {
    // Three reals under consecutive codes (41, 42, 43 for a block reference's scale).
    writeDouble(code, value.sx, precision);
    writeDouble(static_cast<AcDb::DxfCode>(code + 1), value.sy, precision);
    writeDouble(static_cast<AcDb::DxfCode>(code + 2), value.sz, precision);
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::writeItem(const resbuf& rb) {
    const auto code = static_cast<AcDb::DxfCode>(rb.restype);
    switch (DxfValueKindOf(rb.restype)) {
        case DxfValueKind::kString:
            return writeString(code, rb.resval.rstring);
        case DxfValueKind::kHandle:
            return writeAcDbHandle(code, AcDbHandle(rb.resval.rstring));
        case DxfValueKind::kPoint:
            return writePoint3d(
                code, AcGePoint3d(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]));
        case DxfValueKind::kReal:
            return writeDouble(code, rb.resval.rreal);
        case DxfValueKind::kInt16:
        case DxfValueKind::kBool:
            return writeInteger(code, rb.resval.rint);
        case DxfValueKind::kInt32:
            return writeInteger(code, rb.resval.rlong);
        case DxfValueKind::kInt64:
            return writeInteger(code, rb.resval.mnInt64);
        case DxfValueKind::kObjectId:
            return writeObjectId(code, AcDbObjectId().setFromOldId(rb.resval.rlname[0]));
        case DxfValueKind::kBinary:
            if (Item* item = begin(code, {DxfValueKind::kBinary}, L"binary data")) {
                const char* p = rb.resval.rbinary.buf;
                if (p != nullptr && rb.resval.rbinary.clen > 0)
                    item->binary.assign(p, p + rb.resval.rbinary.clen);
            }
            return m_status;
        case DxfValueKind::kInvalid:
            break;
    }
    return setError(Acad::eInvalidDxfCode, L"Error: %d is not a group code", rb.restype);
}

Acad::ErrorStatus MemoryDxfFiler::readItem(resbuf* pItem) {
    if (m_status != Acad::eOk) return m_status;
    if (atEOF()) {
        m_canPushBack = false;
        return Acad::eEndOfFile;
    }
    Item& item = m_items[m_pos++];
    m_canPushBack = true;
    if (pItem == nullptr) return m_status;
    std::memset(&pItem->resval, 0, sizeof(pItem->resval));
    pItem->rbnext = nullptr;
    pItem->restype = static_cast<short>(item.code);
    switch (item.kind) {
        case DxfValueKind::kString:
        case DxfValueKind::kHandle:
            // Points into the item: valid until the next write to this filer.
            pItem->resval.rstring = item.text.data();
            break;
        case DxfValueKind::kPoint:
            std::copy(std::begin(item.real), std::end(item.real), pItem->resval.rpoint);
            break;
        case DxfValueKind::kReal:
            pItem->resval.rreal = item.real[0];
            break;
        case DxfValueKind::kInt16:
        case DxfValueKind::kBool:
            pItem->resval.rint = static_cast<short>(item.integer);
            break;
        case DxfValueKind::kInt32:
            pItem->resval.rlong = static_cast<Adesk::Int32>(item.integer);
            break;
        case DxfValueKind::kInt64:
            pItem->resval.mnInt64 = item.integer;
            break;
        case DxfValueKind::kObjectId:
            pItem->resval.rlname[0] = item.id.asOldId();
            break;
        case DxfValueKind::kBinary:
            pItem->resval.rbinary.clen = static_cast<short>(item.binary.size());
            pItem->resval.rbinary.buf = item.binary.data();
            break;
        case DxfValueKind::kInvalid:
            break;
    }
    return m_status;
}

Acad::ErrorStatus MemoryDxfFiler::pushBackItem() {
    // Only the item just read can be given back, and only once.
    if (!m_canPushBack || m_pos == 0) {
        return setError(Acad::eBadDxfSequence, L"Error: no item to push back");
    }
    --m_pos;
    m_canPushBack = false;
    return m_status;
}

bool MemoryDxfFiler::atSubclassData(const wchar_t* subClassName) {
    if (m_status != Acad::eOk || atEOF()) return false;
    const Item& item = m_items[m_pos];
    if (item.code != AcDb::kDxfSubclass || subClassName == nullptr || item.text != subClassName) {
        return false;
    }
    ++m_pos;
    m_canPushBack = false;
    return true;
}

bool MemoryDxfFiler::atEndOfObject() { return atEOF() || m_items[m_pos].code == AcDb::kDxfStart; }

}  // namespace kelaz
