#include "suite/entities/KelAzLead.h"

#include <cmath>

#include "host/app/RxClass.h"
#include "host/db/Ocs.h"
#include "host/db/Polyline.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/Bulge.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzLead, KelAzLeadPrototype, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, KELAZLEAD, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kLeadVersion = 1;
constexpr auto kDxfBulge = static_cast<AcDb::DxfCode>(42);
constexpr auto kDxfTypeText = static_cast<AcDb::DxfCode>(300);

// The point in the plane through origin square to normal.
AcGePoint3d IntoPlane(const AcGePoint3d& point, const AcGePoint3d& origin,
                      const AcGeVector3d& normal) {
    return point - normal * (point - origin).dotProduct(normal);
}
}  // namespace

Acad::ErrorStatus KelAzLead::SetBulge(double bulge) {
    if (!std::isfinite(bulge)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_bulge = bulge;
    return Acad::eOk;
}

double KelAzLead::GetBulge() const {
    assertReadEnabled();
    return m_bulge;
}

Acad::ErrorStatus KelAzLead::SetNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = unit;
    return Acad::eOk;
}

AcGeVector3d KelAzLead::GetNormal() const {
    assertReadEnabled();
    return m_normal;
}

Acad::ErrorStatus KelAzLead::SetTypeText(const CString& typeText) {
    assertWriteEnabled();
    m_typeText = typeText;
    return Acad::eOk;
}

CString KelAzLead::GetTypeText() const {
    assertReadEnabled();
    return m_typeText;
}

bool KelAzLead::GetArc(AcGeCircArc3d& arc) const {
    if (m_bulge == 0.0) return false;
    const AcGePoint3d end = IntoPlane(EndPoint(), StartPoint(), m_normal);
    if (end.isEqualTo(StartPoint())) return false;
    arc = kelaz::ArcFromBulge(StartPoint(), end, m_bulge, m_normal);
    return true;
}

Acad::ErrorStatus KelAzLead::GetPolyline(AcDbPolyline& polyline) const {
    assertReadEnabled();
    while (polyline.numVerts() > 0) polyline.removeVertexAt(polyline.numVerts() - 1);
    const AcGeVector3d xAxis = kelaz::OcsXAxis(m_normal);
    const AcGeVector3d yAxis = kelaz::OcsYAxis(m_normal);
    auto inPlane = [&](const AcGePoint3d& p) {
        const AcGeVector3d v = p.asVector();
        return AcGePoint2d(v.dotProduct(xAxis), v.dotProduct(yAxis));
    };
    polyline.setClosed(Adesk::kFalse);
    polyline.setNormal(m_normal);
    polyline.setElevation(StartPoint().asVector().dotProduct(m_normal));
    polyline.addVertexAt(0, inPlane(StartPoint()), m_bulge);
    polyline.addVertexAt(1, inPlane(EndPoint()));
    return Acad::eOk;
}

Acad::ErrorStatus KelAzLead::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    extents = AcDbExtents();
    AcGeCircArc3d arc;
    if (GetArc(arc)) {
        kelaz::AddArcExtents(extents, arc.center(), arc.radius(), arc.normal(), arc.refVec(),
                             arc.endAng() - arc.startAng());
    } else {
        extents.addPoint(StartPoint());
        extents.addPoint(EndPoint());
    }
    return Acad::eOk;
}

Adesk::Boolean KelAzLead::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    const AcGiWorldGeometry& geometry = mode->geometry();
    AcGeCircArc3d arc;
    const bool isArc = GetArc(arc);
    const double sweep = arc.endAng() - arc.startAng();
    if (!IsDashed()) {
        if (isArc) {
            geometry.circularArc(arc.center(), arc.radius(), arc.normal(), arc.refVec(), sweep);
        } else {
            const AcGePoint3d points[2] = {StartPoint(), EndPoint()};
            geometry.polyline(2, points, &m_normal);
        }
        return Adesk::kTrue;
    }
    if (isArc) {
        for (const auto& [from, to] : kelaz::DashRuns(arc.radius() * sweep)) {
            const AcGeVector3d start =
                AcGeVector3d(arc.refVec()).rotateBy(from / arc.radius(), arc.normal());
            geometry.circularArc(arc.center(), arc.radius(), arc.normal(), start,
                                 (to - from) / arc.radius());
        }
    } else {
        const AcGeVector3d chord = EndPoint() - StartPoint();
        const double length = chord.length();
        for (const auto& [from, to] : kelaz::DashRuns(length)) {
            const AcGePoint3d points[2] = {StartPoint() + chord * (from / length),
                                           StartPoint() + chord * (to / length)};
            geometry.polyline(2, points, &m_normal);
        }
    }
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzLead::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    if (m_bulge != 0.0 && !xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = KelAzLeadPrototype::transformBy(xform);
    if (es != Acad::eOk) return es;
    // Normals go through the inverse transpose, so that they stay square to the moved plane.
    const AcGeVector3d normal = (xform.inverse().transpose() * m_normal).normal();
    if (normal.isUnitLength()) m_normal = normal;
    if (xform.det() < 0.0) m_bulge = -m_bulge;
    return Acad::eOk;
}

void KelAzLead::ListProperties(kelaz::PropertyList& list) const {
    KelAzLeadPrototype::ListProperties(list);
    list.AddReal(L"bulge", m_bulge);
    list.AddVector(L"normal", m_normal);
    list.AddText(L"typeText", m_typeText);
}

Acad::ErrorStatus KelAzLead::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzLeadPrototype::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kLeadVersion);
    if (es != Acad::eOk) return es;
    double bulge = 0.0;
    AcGeVector3d normal;
    CString typeText;
    pFiler->readDouble(&bulge);
    pFiler->readVector3d(&normal);
    pFiler->readString(typeText);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    // Values no program writes come from damaged data.
    if (!std::isfinite(bulge) || !normal.isUnitLength()) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_bulge = bulge;
    m_normal = normal;
    m_typeText = typeText;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzLead::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzLeadPrototype::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kLeadVersion);
    pFiler->writeDouble(m_bulge);
    pFiler->writeVector3d(m_normal);
    pFiler->writeString(m_typeText);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzLead::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzLeadPrototype::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    double bulge = m_bulge;
    AcGeVector3d normal = m_normal;
    CString typeText = m_typeText;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzLead", [&](const resbuf& rb) {
            const double* p = rb.resval.rpoint;
            switch (rb.restype) {
                case kDxfBulge:
                    bulge = rb.resval.rreal;
                    return true;
                case AcDb::kDxfNormalX:
                    normal.set(p[0], p[1], p[2]);
                    return true;
                case kDxfTypeText:
                    typeText = rb.resval.rstring;
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    if (!std::isfinite(bulge)) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: the bulge is not a number");
    }
    if (!normal.isUnitLength()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: the normal is not a unit vector");
    }
    m_bulge = bulge;
    m_normal = normal;
    m_typeText = typeText;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzLead::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzLeadPrototype::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzLead");
    pFiler->writeDouble(kDxfBulge, m_bulge);
    pFiler->writeVector3d(AcDb::kDxfNormalX, m_normal);
    pFiler->writeString(kDxfTypeText, m_typeText);
    return pFiler->filerStatus();
}
