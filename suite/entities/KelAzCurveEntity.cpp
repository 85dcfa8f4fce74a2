#include "suite/entities/KelAzCurveEntity.h"

#include "host/app/RxClass.h"
#include "host/ge/Matrix3d.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_NO_CONS_DEFINE_MEMBERS(KelAzCurveEntity, KelAzEntity)

namespace {
constexpr Adesk::UInt16 kCurveVersion = 1;
constexpr auto kDxfLayName = static_cast<AcDb::DxfCode>(300);
constexpr auto kDxfStart = AcDb::kDxfXCoord;
constexpr auto kDxfEnd = static_cast<AcDb::DxfCode>(AcDb::kDxfXCoord + 1);
}  // namespace

Acad::ErrorStatus KelAzCurveEntity::SetLayName(const CString& layName) {
    assertWriteEnabled();
    const CString previous = m_layName;
    m_layName = layName;
    const Acad::ErrorStatus es = MoveToLayer(OwnLayer());
    if (es != Acad::eOk) m_layName = previous;
    return es;
}

CString KelAzCurveEntity::GetLayName() const {
    assertReadEnabled();
    return m_layName;
}

CString KelAzCurveEntity::OwnLayer() const {
    return m_layName.IsEmpty() ? KelAzEntity::OwnLayer() : m_layName;
}

Acad::ErrorStatus KelAzCurveEntity::getStartPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    point = m_start;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzCurveEntity::getEndPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    point = m_end;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzCurveEntity::setStartPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_start = point;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzCurveEntity::setEndPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_end = point;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzCurveEntity::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_start.transformBy(xform);
    m_end.transformBy(xform);
    return Acad::eOk;
}

void KelAzCurveEntity::ListProperties(kelaz::PropertyList& list) const {
    KelAzEntity::ListProperties(list);
    list.AddText(L"layName", m_layName);
    list.AddPoint(L"start", m_start);
    list.AddPoint(L"end", m_end);
}

Acad::ErrorStatus KelAzCurveEntity::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kCurveVersion);
    if (es != Acad::eOk) return es;
    CString layName;
    AcGePoint3d start;
    AcGePoint3d end;
    pFiler->readString(layName);
    pFiler->readPoint3d(&start);
    pFiler->readPoint3d(&end);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    m_layName = layName;
    m_start = start;
    m_end = end;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzCurveEntity::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kCurveVersion);
    pFiler->writeString(m_layName);
    pFiler->writePoint3d(m_start);
    pFiler->writePoint3d(m_end);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzCurveEntity::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    CString layName = m_layName;
    AcGePoint3d start = m_start;
    AcGePoint3d end = m_end;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzCurveEntity", [&](const resbuf& rb) {
            const double* p = rb.resval.rpoint;
            switch (rb.restype) {
                case kDxfLayName:
                    layName = rb.resval.rstring;
                    return true;
                case kDxfStart:
                    start.set(p[0], p[1], p[2]);
                    return true;
                case kDxfEnd:
                    end.set(p[0], p[1], p[2]);
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    m_layName = layName;
    m_start = start;
    m_end = end;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzCurveEntity::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzCurveEntity");
    pFiler->writeString(kDxfLayName, m_layName);
    pFiler->writePoint3d(kDxfStart, m_start);
    pFiler->writePoint3d(kDxfEnd, m_end);
    return pFiler->filerStatus();
}
