#pragma once

// A DWG filer over a byte buffer in memory. Every value is stored behind a one-byte tag naming
// its type, so that a reader that asks for another type than was written, or reads past the end,
// gets eFilerError or eEndOfFile instead of reinterpreting bytes. Numbers are little-endian;
// text is stored as 32-bit code units so that any CString comes back exactly.
//
// A file filer refuses a number that is not finite (NaN, infinity) with eInvalidInput, writing
// or reading: no drawing holds one, so in a file it can only be damage.
//
// Ids: a file outlives the process, so a file filer writes an id as its handle and resolves it
// through its database when reading (making a stub for an object not read yet). Other filers
// (undo, copy) stay within one process and database and store the stub itself.

#include <cstdint>
#include <vector>

#include "host/db/DwgFiler.h"

namespace kelaz {

class MemoryDwgFiler : public AcDbDwgFiler {
public:
    enum class Tag : std::uint8_t {
        kBool = 1,
        kBoolean,
        kInt8,
        kInt16,
        kInt32,
        kInt64,
        kUInt8,
        kUInt16,
        kUInt32,
        kUInt64,
        kDouble,
        kString,
        kBytes,
        kAddress,
        kHandle,
        kHardOwnershipId,
        kSoftOwnershipId,
        kHardPointerId,
        kSoftPointerId,
        kPoint2d,
        kPoint3d,
        kVector2d,
        kVector3d,
        kScale3d,
    };

    explicit MemoryDwgFiler(AcDb::FilerType type = AcDb::kFileFiler,
                            AcDbDatabase* database = nullptr)
        : m_type(type), m_database(database) {}
    // A filer that reads the given bytes from their start.
    MemoryDwgFiler(std::vector<std::uint8_t> bytes, AcDb::FilerType type,
                   AcDbDatabase* database = nullptr)
        : m_bytes(std::move(bytes)), m_type(type), m_database(database) {}

    Acad::ErrorStatus filerStatus() const override { return m_status; }
    AcDb::FilerType filerType() const override { return m_type; }
    void setFilerStatus(Acad::ErrorStatus status) override { m_status = status; }
    void resetFilerStatus() override { m_status = Acad::eOk; }
    AcDbDatabase* database() const override { return m_database; }
    void setDatabase(AcDbDatabase* database) { m_database = database; }

    // The bytes written so far; writing always appends at the end.
    const std::vector<std::uint8_t>& bytes() const { return m_bytes; }
    std::vector<std::uint8_t> takeBytes() { return std::move(m_bytes); }
    // Reading position, from the start of the buffer.
    std::size_t tell() const { return m_pos; }
    void seek(std::size_t pos) { m_pos = pos < m_bytes.size() ? pos : m_bytes.size(); }
    void rewind() { m_pos = 0; }
    bool atEnd() const { return m_pos >= m_bytes.size(); }
    // The tag of the next value, or 0 at the end.
    Tag peekTag() const { return atEnd() ? Tag{} : static_cast<Tag>(m_bytes[m_pos]); }

    Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override;
    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override;
    Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override;
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override;
    Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override;
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override;
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override;
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override;

    Acad::ErrorStatus readString(CString& value) override;
    Acad::ErrorStatus writeString(const wchar_t* value) override;
    Acad::ErrorStatus readAcDbHandle(AcDbHandle* value) override;
    Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& value) override;

    Acad::ErrorStatus readInt8(Adesk::Int8* value) override;
    Acad::ErrorStatus writeInt8(Adesk::Int8 value) override;
    Acad::ErrorStatus readInt16(Adesk::Int16* value) override;
    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override;
    Acad::ErrorStatus readInt32(Adesk::Int32* value) override;
    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override;
    Acad::ErrorStatus readInt64(Adesk::Int64* value) override;
    Acad::ErrorStatus writeInt64(Adesk::Int64 value) override;
    Acad::ErrorStatus readUInt8(Adesk::UInt8* value) override;
    Acad::ErrorStatus writeUInt8(Adesk::UInt8 value) override;
    Acad::ErrorStatus readUInt16(Adesk::UInt16* value) override;
    Acad::ErrorStatus writeUInt16(Adesk::UInt16 value) override;
    Acad::ErrorStatus readUInt32(Adesk::UInt32* value) override;
    Acad::ErrorStatus writeUInt32(Adesk::UInt32 value) override;
    Acad::ErrorStatus readUInt64(Adesk::UInt64* value) override;
    Acad::ErrorStatus writeUInt64(Adesk::UInt64 value) override;
    Acad::ErrorStatus readBoolean(Adesk::Boolean* value) override;
    Acad::ErrorStatus writeBoolean(Adesk::Boolean value) override;
    Acad::ErrorStatus readBool(bool* value) override;
    Acad::ErrorStatus writeBool(bool value) override;
    Acad::ErrorStatus readDouble(double* value) override;
    Acad::ErrorStatus writeDouble(double value) override;

    Acad::ErrorStatus readPoint2d(AcGePoint2d* value) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d* value) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override;
    Acad::ErrorStatus readVector2d(AcGeVector2d* value) override;
    Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d* value) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override;
    Acad::ErrorStatus readScale3d(AcGeScale3d* value) override;
    Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) override;

    Acad::ErrorStatus readBytes(void* buffer, Adesk::UInt64 count) override;
    Acad::ErrorStatus writeBytes(const void* buffer, Adesk::UInt64 count) override;
    Acad::ErrorStatus readAddress(void** value) override;
    Acad::ErrorStatus writeAddress(const void* value) override;

private:
    void putTag(Tag tag) { m_bytes.push_back(static_cast<std::uint8_t>(tag)); }
    void putU64(std::uint64_t v, int size);
    void putDouble(double v);
    // Checks the status and the tag and consumes the tag; false (status set) when the next value
    // is not of this type or there is none.
    bool takeTag(Tag tag);
    bool takeU64(std::uint64_t& v, int size);
    bool takeDouble(double& v);
    Acad::ErrorStatus fail(Acad::ErrorStatus status);

    Acad::ErrorStatus writeId(Tag tag, const AcDbObjectId& id);
    Acad::ErrorStatus readId(Tag tag, AcDbObjectId& id);

    template <class T>
    Acad::ErrorStatus writeInteger(Tag tag, T value);
    template <class T>
    Acad::ErrorStatus readInteger(Tag tag, T* value);
    template <int N>
    bool finiteForFile(const double (&values)[N]) const;
    template <int N>
    Acad::ErrorStatus writeDoubles(Tag tag, const double (&values)[N]);
    template <int N>
    Acad::ErrorStatus readDoubles(Tag tag, double (&values)[N]);

    std::vector<std::uint8_t> m_bytes;
    std::size_t m_pos = 0;
    AcDb::FilerType m_type;
    AcDbDatabase* m_database;
    Acad::ErrorStatus m_status = Acad::eOk;
};

}  // namespace kelaz
