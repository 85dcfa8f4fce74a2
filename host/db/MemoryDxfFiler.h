#pragma once

// A DXF filer over a list of (group code, value) items in memory. Each item keeps the kind of
// value its group code takes; writing a value of another kind under a code (text under 70, say)
// is refused with eInvalidDxfCode and a message, as a file writer would have to.

#include <string>
#include <vector>

#include "host/db/DxfFiler.h"

namespace kelaz {

class MemoryDxfFiler : public AcDbDxfFiler {
public:
    struct Item {
        int code = 0;
        DxfValueKind kind = DxfValueKind::kInvalid;
        std::wstring text;                 // kString; kHandle as hexadecimal text
        double real[3] = {0.0, 0.0, 0.0};  // kReal in real[0]; kPoint
        Adesk::Int64 integer = 0;          // kInt16, kInt32, kInt64, kBool
        AcDbObjectId id;                   // kObjectId
        std::vector<char> binary;          // kBinary

        friend bool operator==(const Item&, const Item&) = default;
    };

    explicit MemoryDxfFiler(AcDb::FilerType type = AcDb::kFileFiler,
                            AcDbDatabase* database = nullptr)
        : m_type(type), m_database(database) {}

    const std::vector<Item>& items() const { return m_items; }
    // The reading position, as an index into items().
    std::size_t position() const { return m_pos; }

    int rewindFiler() override;
    Acad::ErrorStatus filerStatus() const override { return m_status; }
    void resetFilerStatus() override;
    AcDb::FilerType filerType() const override { return m_type; }
    AcDbDatabase* database() const override { return m_database; }

    Acad::ErrorStatus readItem(resbuf* pItem) override;
    Acad::ErrorStatus writeItem(const resbuf& item) override;
    using AcDbDxfFiler::writeItem;
    Acad::ErrorStatus pushBackItem() override;
    bool atEOF() override { return m_pos >= m_items.size(); }
    bool atSubclassData(const wchar_t* subClassName) override;
    bool atEndOfObject() override;

    Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) override;
    Acad::ErrorStatus writeString(AcDb::DxfCode code, const wchar_t* value) override;
    Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& value) override;
    Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 value) override;
    Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 value) override;
    Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 value) override;
    Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 value) override;
    Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) override;
    Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) override;
    Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) override;
    Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool value) override;
    Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) override;
    Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double value,
                                  int precision = kDfltPrec) override;
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value,
                                   int precision = kDfltPrec) override;
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value,
                                   int precision = kDfltPrec) override;
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value,
                                    int precision = kDfltPrec) override;
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value,
                                    int precision = kDfltPrec) override;
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value,
                                   int precision = kDfltPrec) override;

protected:
    void setFilerStatus(Acad::ErrorStatus status) override { m_status = status; }

private:
    // Starts an item under code if the code takes a value of one of the kinds allowed; otherwise
    // sets eInvalidDxfCode and answers null.
    Item* begin(int code, std::initializer_list<DxfValueKind> allowed, const wchar_t* what);
    Acad::ErrorStatus writeInteger(AcDb::DxfCode code, Adesk::Int64 value);

    std::vector<Item> m_items;
    std::size_t m_pos = 0;
    bool m_canPushBack = false;
    AcDb::FilerType m_type;
    AcDbDatabase* m_database;
    Acad::ErrorStatus m_status = Acad::eOk;
};

}  // namespace kelaz
