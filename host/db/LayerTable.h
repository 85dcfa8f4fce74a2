#pragma once

// The layer table and its records: a name and a colour.

#include "host/db/CmColor.h"
#include "host/db/SymbolTable.h"

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);

    AcDbLayerTableRecord() = default;

    // A layer has a real colour: by layer and by block are refused with eInvalidInput.
    AcCmColor color() const;
    Acad::ErrorStatus setColor(const AcCmColor& color);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    // Layer 0 cannot be erased.
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    AcCmColor m_color = [] {
        AcCmColor white;
        white.setColorIndex(7);
        return white;
    }();
};

class AcDbLayerTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTable);

    AcDbLayerTable() = default;

    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const wchar_t* entryName, AcDbLayerTableRecord*& pRec,
                            AcDb::OpenMode openMode, bool openErasedRec = false) const;
    using AcDbSymbolTable::add;
    Acad::ErrorStatus add(AcDbLayerTableRecord* pRecord) { return AcDbSymbolTable::add(pRecord); }
    Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbLayerTableRecord* pRecord) {
        return AcDbSymbolTable::add(recordId, pRecord);
    }

protected:
    bool acceptsRecord(const AcDbSymbolTableRecord* pRecord) const override;
};
