#include "suite/entities/KelAzEntity.h"

#include "host/app/RxClass.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/LayerTable.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/LayerRule.h"
#include "suite/entities/PropertyList.h"
#include "suite/tools/ModelSpace.h"

ACRX_NO_CONS_DEFINE_MEMBERS(KelAzEntity, AcDbEntity)

namespace {
constexpr Adesk::UInt16 kEntityVersion = 1;
constexpr auto kDxfAttName = static_cast<AcDb::DxfCode>(300);
constexpr auto kDxfSysCode = static_cast<AcDb::DxfCode>(301);
constexpr auto kDxfTypePath = static_cast<AcDb::DxfCode>(302);
constexpr auto kDxfSmallTypePath = static_cast<AcDb::DxfCode>(303);
}  // namespace

Acad::ErrorStatus KelAzEntity::SetAttName(const CString& attName, bool) {
    assertWriteEnabled();
    m_attName = attName;
    return Acad::eOk;
}

CString KelAzEntity::GetAttName() const {
    assertReadEnabled();
    return m_attName;
}

Acad::ErrorStatus KelAzEntity::SetSysCode(const CString& sysCode, bool updateFromDatabase) {
    assertWriteEnabled();
    const CString previous = m_sysCode;
    m_sysCode = sysCode;
    if (!updateFromDatabase) return Acad::eOk;
    const Acad::ErrorStatus es = MoveToLayer(OwnLayer());
    if (es != Acad::eOk) m_sysCode = previous;
    return es;
}

CString KelAzEntity::GetSysCode() const {
    assertReadEnabled();
    return m_sysCode;
}

Acad::ErrorStatus KelAzEntity::SetTypeNamePath(const CString& typeNamePath) {
    assertWriteEnabled();
    m_typeNamePath = typeNamePath;
    return Acad::eOk;
}

CString KelAzEntity::GetTypeNamePath() const {
    assertReadEnabled();
    return m_typeNamePath;
}

Acad::ErrorStatus KelAzEntity::SetSmallTypeNamePath(const CString& smallTypeNamePath) {
    assertWriteEnabled();
    m_smallTypeNamePath = smallTypeNamePath;
    return Acad::eOk;
}

CString KelAzEntity::GetSmallTypeNamePath() const {
    assertReadEnabled();
    return m_smallTypeNamePath;
}

Acad::ErrorStatus KelAzEntity::TakeOwnLayerIfDefault() {
    assertWriteEnabled();
    if (CString(layer()) != L"0" || m_sysCode.IsEmpty()) return Acad::eOk;
    return MoveToLayer(OwnLayer());
}

CString KelAzEntity::OwnLayer() const { return kelaz::LayerForComponent(m_attName, m_sysCode); }

Acad::ErrorStatus KelAzEntity::MoveToLayer(const CString& layer) {
    // A name the layer table would refuse is caught before anything is made.
    AcDbLayerTableRecord probe;
    if (probe.setName(layer) != Acad::eOk) return Acad::eInvalidSymbolTableName;
    AcDbDatabase* db = database();
    if (db == nullptr) db = acdbHostApplicationServices()->workingDatabase();
    if (db != nullptr) {
        const Acad::ErrorStatus es = kelaz::EnsureLayer(db, layer);
        if (es != Acad::eOk) return es;
    }
    return setLayer(layer);
}

void KelAzEntity::ListProperties(kelaz::PropertyList& list) const {
    assertReadEnabled();
    list.AddText(L"attName", m_attName);
    list.AddText(L"sysCode", m_sysCode);
    list.AddText(L"typePath", m_typeNamePath);
    list.AddText(L"smallTypePath", m_smallTypeNamePath);
}

Acad::ErrorStatus KelAzEntity::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kEntityVersion);
    if (es != Acad::eOk) return es;
    CString attName;
    CString sysCode;
    CString typeNamePath;
    CString smallTypeNamePath;
    pFiler->readString(attName);
    pFiler->readString(sysCode);
    pFiler->readString(typeNamePath);
    pFiler->readString(smallTypeNamePath);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    m_attName = attName;
    m_sysCode = sysCode;
    m_typeNamePath = typeNamePath;
    m_smallTypeNamePath = smallTypeNamePath;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzEntity::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kEntityVersion);
    pFiler->writeString(m_attName);
    pFiler->writeString(m_sysCode);
    pFiler->writeString(m_typeNamePath);
    pFiler->writeString(m_smallTypeNamePath);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzEntity::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    CString attName = m_attName;
    CString sysCode = m_sysCode;
    CString typeNamePath = m_typeNamePath;
    CString smallTypeNamePath = m_smallTypeNamePath;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzEntity", [&](const resbuf& rb) {
            switch (rb.restype) {
                case kDxfAttName:
                    attName = rb.resval.rstring;
                    return true;
                case kDxfSysCode:
                    sysCode = rb.resval.rstring;
                    return true;
                case kDxfTypePath:
                    typeNamePath = rb.resval.rstring;
                    return true;
                case kDxfSmallTypePath:
                    smallTypeNamePath = rb.resval.rstring;
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    m_attName = attName;
    m_sysCode = sysCode;
    m_typeNamePath = typeNamePath;
    m_smallTypeNamePath = smallTypeNamePath;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzEntity::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzEntity");
    pFiler->writeString(kDxfAttName, m_attName);
    pFiler->writeString(kDxfSysCode, m_sysCode);
    pFiler->writeString(kDxfTypePath, m_typeNamePath);
    pFiler->writeString(kDxfSmallTypePath, m_smallTypeNamePath);
    return pFiler->filerStatus();
}
