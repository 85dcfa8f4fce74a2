#include "host/db/MemoryDwgFiler.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "host/db/Database.h"
#include "host/db/Stub.h"

namespace kelaz {

namespace {
constexpr int kAddressSize = 8;
static_assert(sizeof(void*) <= kAddressSize, "addresses are filed in 64 bits");
}  // namespace

void MemoryDwgFiler::putU64(std::uint64_t v, int size) {
    for (int i = 0; i < size; ++i) m_bytes.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
}

void MemoryDwgFiler::putDouble(double v) { putU64(std::bit_cast<std::uint64_t>(v), 8); }

Acad::ErrorStatus MemoryDwgFiler::fail(Acad::ErrorStatus status) {
    if (m_status == Acad::eOk) m_status = status;
    return m_status;
}

bool MemoryDwgFiler::takeTag(Tag tag) {
    if (m_status != Acad::eOk) return false;
    if (atEnd()) {
        fail(Acad::eEndOfFile);
        return false;
    }
    if (static_cast<Tag>(m_bytes[m_pos]) != tag) {
        fail(Acad::eFilerError);
        return false;
    }
    ++m_pos;
    return true;
}

bool MemoryDwgFiler::takeU64(std::uint64_t& v, int size) {
    v = 0;
    if (m_status != Acad::eOk) return false;
    if (m_bytes.size() - m_pos < static_cast<std::size_t>(size)) {
        fail(Acad::eEndOfFile);
        return false;
    }
    for (int i = 0; i < size; ++i) v |= static_cast<std::uint64_t>(m_bytes[m_pos + i]) << (8 * i);
    m_pos += static_cast<std::size_t>(size);
    return true;
}

bool MemoryDwgFiler::takeDouble(double& v) {
    std::uint64_t bits = 0;
    const bool ok = takeU64(bits, 8);
    v = ok ? std::bit_cast<double>(bits) : 0.0;
    return ok;
}

template <class T>
Acad::ErrorStatus MemoryDwgFiler::writeInteger(Tag tag, T value) {
    putTag(tag);
    putU64(static_cast<std::uint64_t>(value), sizeof(T));
    return m_status;
}

template <class T>
Acad::ErrorStatus MemoryDwgFiler::readInteger(Tag tag, T* value) {
    std::uint64_t raw = 0;
    if (takeTag(tag)) takeU64(raw, sizeof(T));
    // Sign extension is not needed: the cast to the narrow type keeps the low bits.
    if (value != nullptr) *value = m_status == Acad::eOk ? static_cast<T>(raw) : T{};
    return m_status;
}

template <int N>
bool MemoryDwgFiler::finiteForFile(const double (&values)[N]) const {
    if (m_type != AcDb::kFileFiler) return true;
    for (double v : values) {
        if (!std::isfinite(v)) return false;
    }
    return true;
}

template <int N>
Acad::ErrorStatus MemoryDwgFiler::writeDoubles(Tag tag, const double (&values)[N]) {
    if (!finiteForFile(values)) return fail(Acad::eInvalidInput);
    putTag(tag);
    for (double v : values) putDouble(v);
    return m_status;
}

template <int N>
Acad::ErrorStatus MemoryDwgFiler::readDoubles(Tag tag, double (&values)[N]) {
    for (double& v : values) v = 0.0;
    if (!takeTag(tag)) return m_status;
    for (double& v : values) takeDouble(v);
    if (m_status == Acad::eOk && !finiteForFile(values)) fail(Acad::eInvalidInput);
    if (m_status != Acad::eOk) {
        for (double& v : values) v = 0.0;
    }
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeId(Tag tag, const AcDbObjectId& id) {
    std::uint64_t value = 0;
    if (m_type == AcDb::kFileFiler) {
        // Erased objects are not saved: a reference to one is filed as no reference.
        if (!id.isNull() && !id.isErased()) value = id.handle().value();
    } else {
        value = static_cast<std::uint64_t>(id.asOldId());
    }
    putTag(tag);
    putU64(value, 8);
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::readId(Tag tag, AcDbObjectId& id) {
    id.setNull();
    std::uint64_t value = 0;
    if (!takeTag(tag) || !takeU64(value, 8) || value == 0) return m_status;
    if (m_type != AcDb::kFileFiler) {
        id.setFromOldId(static_cast<std::intptr_t>(value));
        return m_status;
    }
    if (m_database == nullptr) return fail(Acad::eNoDatabase);
    const Acad::ErrorStatus es = m_database->getAcDbObjectId(id, true, AcDbHandle(value));
    if (es != Acad::eOk) return fail(es);
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::readHardOwnershipId(AcDbHardOwnershipId* id) {
    AcDbObjectId raw;
    readId(Tag::kHardOwnershipId, raw);
    if (id != nullptr) *id = raw;
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeHardOwnershipId(const AcDbHardOwnershipId& id) {
    return writeId(Tag::kHardOwnershipId, id);
}
Acad::ErrorStatus MemoryDwgFiler::readSoftOwnershipId(AcDbSoftOwnershipId* id) {
    AcDbObjectId raw;
    readId(Tag::kSoftOwnershipId, raw);
    if (id != nullptr) *id = raw;
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeSoftOwnershipId(const AcDbSoftOwnershipId& id) {
    return writeId(Tag::kSoftOwnershipId, id);
}
Acad::ErrorStatus MemoryDwgFiler::readHardPointerId(AcDbHardPointerId* id) {
    AcDbObjectId raw;
    readId(Tag::kHardPointerId, raw);
    if (id != nullptr) *id = raw;
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeHardPointerId(const AcDbHardPointerId& id) {
    return writeId(Tag::kHardPointerId, id);
}
Acad::ErrorStatus MemoryDwgFiler::readSoftPointerId(AcDbSoftPointerId* id) {
    AcDbObjectId raw;
    readId(Tag::kSoftPointerId, raw);
    if (id != nullptr) *id = raw;
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeSoftPointerId(const AcDbSoftPointerId& id) {
    return writeId(Tag::kSoftPointerId, id);
}

Acad::ErrorStatus MemoryDwgFiler::readString(CString& value) {
    value.Empty();
    std::uint64_t length = 0;
    if (!takeTag(Tag::kString) || !takeU64(length, 4)) return m_status;
    if ((m_bytes.size() - m_pos) / 4 < length) return fail(Acad::eEndOfFile);
    std::wstring text;
    text.reserve(length);
    for (std::uint64_t i = 0; i < length; ++i) {
        std::uint64_t unit = 0;
        takeU64(unit, 4);
        text.push_back(static_cast<wchar_t>(unit));
    }
    value = CString(std::move(text));
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeString(const wchar_t* value) {
    const std::wstring_view text =
        value != nullptr ? std::wstring_view(value) : std::wstring_view();
    putTag(Tag::kString);
    putU64(text.size(), 4);
    for (wchar_t unit : text) putU64(static_cast<std::uint32_t>(unit), 4);
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::readAcDbHandle(AcDbHandle* value) {
    Adesk::UInt64 raw = 0;
    readInteger(Tag::kHandle, &raw);
    if (value != nullptr) *value = AcDbHandle(raw);
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeAcDbHandle(const AcDbHandle& value) {
    return writeInteger(Tag::kHandle, value.value());
}

Acad::ErrorStatus MemoryDwgFiler::readInt8(Adesk::Int8* v) { return readInteger(Tag::kInt8, v); }
Acad::ErrorStatus MemoryDwgFiler::writeInt8(Adesk::Int8 v) { return writeInteger(Tag::kInt8, v); }
Acad::ErrorStatus MemoryDwgFiler::readInt16(Adesk::Int16* v) { return readInteger(Tag::kInt16, v); }
Acad::ErrorStatus MemoryDwgFiler::writeInt16(Adesk::Int16 v) {
    return writeInteger(Tag::kInt16, v);
}
Acad::ErrorStatus MemoryDwgFiler::readInt32(Adesk::Int32* v) { return readInteger(Tag::kInt32, v); }
Acad::ErrorStatus MemoryDwgFiler::writeInt32(Adesk::Int32 v) {
    return writeInteger(Tag::kInt32, v);
}
Acad::ErrorStatus MemoryDwgFiler::readInt64(Adesk::Int64* v) { return readInteger(Tag::kInt64, v); }
Acad::ErrorStatus MemoryDwgFiler::writeInt64(Adesk::Int64 v) {
    return writeInteger(Tag::kInt64, v);
}
Acad::ErrorStatus MemoryDwgFiler::readUInt8(Adesk::UInt8* v) { return readInteger(Tag::kUInt8, v); }
Acad::ErrorStatus MemoryDwgFiler::writeUInt8(Adesk::UInt8 v) {
    return writeInteger(Tag::kUInt8, v);
}
Acad::ErrorStatus MemoryDwgFiler::readUInt16(Adesk::UInt16* v) {
    return readInteger(Tag::kUInt16, v);
}
Acad::ErrorStatus MemoryDwgFiler::writeUInt16(Adesk::UInt16 v) {
    return writeInteger(Tag::kUInt16, v);
}
Acad::ErrorStatus MemoryDwgFiler::readUInt32(Adesk::UInt32* v) {
    return readInteger(Tag::kUInt32, v);
}
Acad::ErrorStatus MemoryDwgFiler::writeUInt32(Adesk::UInt32 v) {
    return writeInteger(Tag::kUInt32, v);
}
Acad::ErrorStatus MemoryDwgFiler::readUInt64(Adesk::UInt64* v) {
    return readInteger(Tag::kUInt64, v);
}
Acad::ErrorStatus MemoryDwgFiler::writeUInt64(Adesk::UInt64 v) {
    return writeInteger(Tag::kUInt64, v);
}
Acad::ErrorStatus MemoryDwgFiler::readBoolean(Adesk::Boolean* v) {
    return readInteger(Tag::kBoolean, v);
}
Acad::ErrorStatus MemoryDwgFiler::writeBoolean(Adesk::Boolean v) {
    return writeInteger(Tag::kBoolean, v);
}
Acad::ErrorStatus MemoryDwgFiler::readBool(bool* v) {
    std::uint8_t raw = 0;
    readInteger(Tag::kBool, &raw);
    if (m_status == Acad::eOk && raw > 1) fail(Acad::eFilerError);
    if (v != nullptr) *v = m_status == Acad::eOk && raw == 1;
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeBool(bool v) {
    return writeInteger(Tag::kBool, static_cast<std::uint8_t>(v ? 1 : 0));
}
Acad::ErrorStatus MemoryDwgFiler::readDouble(double* v) {
    double values[1];
    readDoubles(Tag::kDouble, values);
    if (v != nullptr) *v = values[0];
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeDouble(double v) {
    const double values[1] = {v};
    return writeDoubles(Tag::kDouble, values);
}

Acad::ErrorStatus MemoryDwgFiler::readPoint2d(AcGePoint2d* v) {
    double values[2];
    readDoubles(Tag::kPoint2d, values);
    if (v != nullptr) v->set(values[0], values[1]);
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writePoint2d(const AcGePoint2d& v) {
    const double values[2] = {v.x, v.y};
    return writeDoubles(Tag::kPoint2d, values);
}
Acad::ErrorStatus MemoryDwgFiler::readPoint3d(AcGePoint3d* v) {
    double values[3];
    readDoubles(Tag::kPoint3d, values);
    if (v != nullptr) v->set(values[0], values[1], values[2]);
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writePoint3d(const AcGePoint3d& v) {
    const double values[3] = {v.x, v.y, v.z};
    return writeDoubles(Tag::kPoint3d, values);
}
Acad::ErrorStatus MemoryDwgFiler::readVector2d(AcGeVector2d* v) {
    double values[2];
    readDoubles(Tag::kVector2d, values);
    if (v != nullptr) v->set(values[0], values[1]);
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeVector2d(const AcGeVector2d& v) {
    const double values[2] = {v.x, v.y};
    return writeDoubles(Tag::kVector2d, values);
}
Acad::ErrorStatus MemoryDwgFiler::readVector3d(AcGeVector3d* v) {
    double values[3];
    readDoubles(Tag::kVector3d, values);
    if (v != nullptr) v->set(values[0], values[1], values[2]);
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeVector3d(const AcGeVector3d& v) {
    const double values[3] = {v.x, v.y, v.z};
    return writeDoubles(Tag::kVector3d, values);
}
Acad::ErrorStatus MemoryDwgFiler::readScale3d(AcGeScale3d* v) {
    double values[3];
    readDoubles(Tag::kScale3d, values);
    if (v != nullptr) v->set(values[0], values[1], values[2]);
    return m_status;
}
Acad::ErrorStatus MemoryDwgFiler::writeScale3d(const AcGeScale3d& v) {
    const double values[3] = {v.sx, v.sy, v.sz};
    return writeDoubles(Tag::kScale3d, values);
}

Acad::ErrorStatus MemoryDwgFiler::readBytes(void* buffer, Adesk::UInt64 count) {
    std::uint64_t length = 0;
    if (!takeTag(Tag::kBytes) || !takeU64(length, 8)) return m_status;
    // The reader states how many bytes it expects; a different count means a different layout.
    if (length != count) return fail(Acad::eFilerError);
    if (m_bytes.size() - m_pos < length) return fail(Acad::eEndOfFile);
    if (length > 0) std::memcpy(buffer, m_bytes.data() + m_pos, length);
    m_pos += length;
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeBytes(const void* buffer, Adesk::UInt64 count) {
    putTag(Tag::kBytes);
    putU64(count, 8);
    const auto* p = static_cast<const std::uint8_t*>(buffer);
    if (count > 0) m_bytes.insert(m_bytes.end(), p, p + count);
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::readAddress(void** value) {
    std::uint64_t raw = 0;
    if (takeTag(Tag::kAddress)) takeU64(raw, kAddressSize);
    if (value != nullptr) {
        *value = m_status == Acad::eOk ? reinterpret_cast<void*>(static_cast<std::uintptr_t>(raw))
                                       : nullptr;
    }
    return m_status;
}

Acad::ErrorStatus MemoryDwgFiler::writeAddress(const void* value) {
    putTag(Tag::kAddress);
    putU64(reinterpret_cast<std::uintptr_t>(value), kAddressSize);
    return m_status;
}

}  // namespace kelaz
