#include "host/db/LayerTable.h"

#include "host/app/RxClass.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/OpenObject.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT,
                        AcDb::kMReleaseCurrent, 0, LAYER, kelaz)
ACRX_DXF_DEFINE_MEMBERS(AcDbLayerTable, AcDbSymbolTable, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, TABLE, kelaz)

namespace {
constexpr Adesk::UInt16 kLayerVersion = 1;

bool IsLayerColor(Adesk::UInt16 index) { return index >= 1 && index <= 255; }
}  // namespace

AcCmColor AcDbLayerTableRecord::color() const {
    assertReadEnabled();
    return m_color;
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    if (!IsLayerColor(color.colorIndex())) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_color = color;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::subErase(bool erasing) {
    // Layer 0 is every drawing's fallback layer.
    CString name;
    getName(name);
    if (erasing && name == L"0") return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
    if (AcDbSymbolTableRecord::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::UInt16 version = 0;
    Adesk::UInt16 color = 0;
    pFiler->readUInt16(&version);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (version > kLayerVersion) return Acad::eMakeMeProxy;
    pFiler->readUInt16(&color);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!IsLayerColor(color)) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_color.setColorIndex(color);
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbSymbolTableRecord::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kLayerVersion);
    pFiler->writeUInt16(m_color.colorIndex());
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbSymbolTableRecord::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    if (!pFiler->atSubclassData(L"AcDbLayerTableRecord")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s",
                                L"AcDbLayerTableRecord");
    }
    resbuf rb;
    if (pFiler->readItem(&rb) != Acad::eOk || rb.restype != AcDb::kDxfColor ||
        !IsLayerColor(static_cast<Adesk::UInt16>(rb.resval.rint))) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: expected a colour under code %d",
                                static_cast<int>(AcDb::kDxfColor));
    }
    m_color.setColorIndex(static_cast<Adesk::UInt16>(rb.resval.rint));
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbSymbolTableRecord::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLayerTableRecord");
    pFiler->writeInt16(AcDb::kDxfColor, static_cast<Adesk::Int16>(m_color.colorIndex()));
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayerTable::getAt(const wchar_t* entryName, AcDbLayerTableRecord*& pRec,
                                        AcDb::OpenMode openMode, bool openErasedRec) const {
    pRec = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = AcDbSymbolTable::getAt(entryName, id, openErasedRec);
    if (es != Acad::eOk) return es;
    return acdbOpenObject(pRec, id, openMode, openErasedRec);
}

bool AcDbLayerTable::acceptsRecord(const AcDbSymbolTableRecord* pRecord) const {
    return pRecord->isKindOf(AcDbLayerTableRecord::desc());
}
