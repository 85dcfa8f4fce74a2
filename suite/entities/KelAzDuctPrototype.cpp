#include "suite/entities/KelAzDuctPrototype.h"

#include <cmath>

#include "host/app/RxClass.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_NO_CONS_DEFINE_MEMBERS(KelAzDuctPrototype, KelAzCurveEntity)

namespace {
constexpr Adesk::UInt16 kDuctPrototypeVersion = 1;
constexpr auto kDxfWidth = static_cast<AcDb::DxfCode>(40);
constexpr auto kDxfHeight = static_cast<AcDb::DxfCode>(41);

bool IsSize(double size) { return std::isfinite(size) && size >= 0.0; }
}  // namespace

Acad::ErrorStatus KelAzDuctPrototype::SetWidth(double width) {
    if (!IsSize(width)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_width = width;
    return Acad::eOk;
}

double KelAzDuctPrototype::GetWidth() const {
    assertReadEnabled();
    return m_width;
}

Acad::ErrorStatus KelAzDuctPrototype::SetHeight(double height) {
    if (!IsSize(height)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_height = height;
    return Acad::eOk;
}

double KelAzDuctPrototype::GetHeight() const {
    assertReadEnabled();
    return m_height;
}

bool KelAzDuctPrototype::IsRound() const {
    assertReadEnabled();
    return m_height == 0.0;
}

Adesk::Boolean KelAzDuctPrototype::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    const AcGiWorldGeometry& geometry = mode->geometry();
    const AcGePoint3d& start = StartPoint();
    const AcGePoint3d& end = EndPoint();
    const AcGePoint3d centre[2] = {start, end};
    if (m_width == 0.0) {
        geometry.polyline(2, centre);
        return Adesk::kTrue;
    }
    AcGeVector3d run = end - start;
    run.z = 0.0;
    if (run.isZeroLength()) {
        if (m_height == 0.0) {
            geometry.circle(start, m_width / 2.0, AcGeVector3d::kZAxis);
        } else {
            const AcGeVector3d dx(m_width / 2.0, 0.0, 0.0);
            const AcGeVector3d dy(0.0, m_height / 2.0, 0.0);
            const AcGePoint3d section[4] = {start - dx - dy, start + dx - dy, start + dx + dy,
                                            start - dx + dy};
            geometry.polygon(4, section);
        }
        return Adesk::kTrue;
    }
    const AcGeVector3d half = AcGeVector3d::kZAxis.crossProduct(run).normal() * (m_width / 2.0);
    const AcGePoint3d left[2] = {start + half, end + half};
    const AcGePoint3d right[2] = {start - half, end - half};
    geometry.polyline(2, left);
    geometry.polyline(2, right);
    geometry.polyline(2, centre);
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzDuctPrototype::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    if (!xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = KelAzCurveEntity::transformBy(xform);
    if (es != Acad::eOk) return es;
    m_width *= xform.scale();
    m_height *= xform.scale();
    return Acad::eOk;
}

void KelAzDuctPrototype::ListProperties(kelaz::PropertyList& list) const {
    KelAzCurveEntity::ListProperties(list);
    list.AddReal(L"width", m_width);
    list.AddReal(L"height", m_height);
}

Acad::ErrorStatus KelAzDuctPrototype::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzCurveEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kDuctPrototypeVersion);
    if (es != Acad::eOk) return es;
    double width = 0.0;
    double height = 0.0;
    pFiler->readDouble(&width);
    pFiler->readDouble(&height);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!IsSize(width) || !IsSize(height)) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_width = width;
    m_height = height;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzDuctPrototype::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzCurveEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kDuctPrototypeVersion);
    pFiler->writeDouble(m_width);
    pFiler->writeDouble(m_height);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzDuctPrototype::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzCurveEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    double width = m_width;
    double height = m_height;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzDuctPrototype", [&](const resbuf& rb) {
            switch (rb.restype) {
                case kDxfWidth:
                    width = rb.resval.rreal;
                    return true;
                case kDxfHeight:
                    height = rb.resval.rreal;
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    if (!IsSize(width) || !IsSize(height)) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: a duct size below 0");
    }
    m_width = width;
    m_height = height;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzDuctPrototype::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzCurveEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzDuctPrototype");
    pFiler->writeDouble(kDxfWidth, m_width);
    pFiler->writeDouble(kDxfHeight, m_height);
    return pFiler->filerStatus();
}
