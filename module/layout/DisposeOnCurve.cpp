#include "module/layout/DisposeOnCurve.h"

#include <cmath>

#include "host/db/Arc.h"
#include "host/db/OpenObject.h"
#include "host/db/Polyline.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/Vector3d.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/entities/KelAzLead.h"
#include "suite/tools/KELToolKit.h"
#include "suite/tools/KelMessageBox.h"

namespace {

// A bulge or margin this small counts as none.
constexpr double kZero = 1e-6;
// An existing point this close to a computed one stands on it.
constexpr double kSamePoint = 1e-6;
// How far beyond the arc's box existing equipment is looked for.
constexpr double kSearchGrowth = 20.0;
// The kinds of lead that are drawn as arcs and may carry a layout.
constexpr const wchar_t* kArcLeadTypes = L"3\\1\\1,3\\1\\2,3\\1\\3,3\\1\\4,3\\1\\5,3\\1\\6,3\\1\\8";

// The point on the circle in the direction of v.
AcGePoint3d OnCircle(const AcGePoint3d& centre, double radius, const AcGeVector3d& v) {
    return centre + v.normal() * radius;
}

}  // namespace

void CDisposeOnCurve::SetLevel(double level) { m_dLevel = level; }

void CDisposeOnCurve::SetComponentType(const CString& type) { m_strComponentType = type; }

int CDisposeOnCurve::GetAmountOfSame() const { return m_nAmountOfSame; }

bool CDisposeOnCurve::DisposalOnArc(AcGePoint3dArray& out, const AcDbObjectId& curve, double margin,
                                    int count) {
    m_curveId = curve;
    out.removeAll();
    AcGePoint3d start, end, centre;
    double radius = 0.0;
    if (!GetArcInfo(start, end, centre, radius, curve)) return false;
    if (margin > kZero && !HasMarginOnArc(start, end, centre, radius, margin)) return false;
    out = GetAvgPointOnArc(start, end, centre, radius, count);
    return true;
}

bool CDisposeOnCurve::DisposalOnArc(AcGePoint3dArray& out, const AcGePoint3d& start,
                                    const AcGePoint3d& end, const AcGePoint3d& centre,
                                    double radius, int count) {
    out.removeAll();
    out = GetAvgPointOnArc(start, end, centre, radius, count);
    return true;
}

bool CDisposeOnCurve::GetArcInfo(AcGePoint3d& start, AcGePoint3d& end, AcGePoint3d& centre,
                                 double& radius, const AcDbObjectId& curve) {
    // The suite's lead is no host curve, so the object is opened as an entity and each kind
    // that can carry an arc is asked for it in turn.
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, curve, AcDb::kForRead) != Acad::eOk) return false;
    double bulge = 0.0;
    bool found = false;
    if (auto* arc = AcDbArc::cast(entity)) {
        arc->getStartPoint(start);
        arc->getEndPoint(end);
        centre = arc->center();
        radius = arc->radius();
        found = true;
    } else if (auto* pline = AcDbPolyline::cast(entity)) {
        AcGeCircArc3d seg;
        if (pline->numVerts() != 2) {
            kelaz::ShowWarning(CString(L"此功能只能布置多义线的第一段"));
        } else if (pline->getBulgeAt(0, bulge) == Acad::eOk && std::abs(bulge) > kZero &&
                   pline->getArcSegAt(0, seg) == Acad::eOk) {
            centre = seg.center();
            radius = seg.radius();
            pline->getPointAt(0, start);
            pline->getPointAt(1, end);
            found = true;
        }
    } else if (auto* lead = KelAzLead::cast(entity)) {
        // No lead kind passes this test today; what follows it is ready for the day one does.
        if (CDispGlobaFun::IsSuitedType(lead->GetTypeText(), CString(kArcLeadTypes))) {
            bulge = lead->GetBulge();
            AcDbPolyline shape;
            AcGeCircArc3d seg;
            if (std::abs(bulge) > kZero && lead->GetPolyline(shape) == Acad::eOk &&
                shape.getArcSegAt(0, seg) == Acad::eOk) {
                lead->getStartPoint(start);
                lead->getEndPoint(end);
                centre = seg.center();
                radius = seg.radius();
                found = true;
            }
        }
    }
    entity->close();
    if (!found) return false;
    // A clockwise arc is walked from its other end: the points always run counter-clockwise.
    if (bulge < 0.0) std::swap(start, end);
    m_ptArcStart = start;
    m_ptArcEnd = end;
    m_ptArcCenter = centre;
    return true;
}

bool CDisposeOnCurve::HasMarginOnArc(AcGePoint3d& start, AcGePoint3d& end,
                                     const AcGePoint3d& centre, double& radius, double margin) {
    // A margin of the radius or more leaves no arc: turning each end by asin(margin / radius)
    // would take it a quarter turn or more, past the other end.
    if (margin >= radius) {
        kelaz::ShowWarning(CString(L"您输入的偏移距离过大，无法布置"));
        return false;
    }
    const double turn = std::asin(margin / radius);
    AcGeVector3d toStart = start - centre;
    AcGeVector3d toEnd = end - centre;
    start = OnCircle(centre, radius, toStart.rotateBy(turn, AcGeVector3d::kZAxis));
    end = OnCircle(centre, radius, toEnd.rotateBy(-turn, AcGeVector3d::kZAxis));
    m_ptArcStart = start;
    m_ptArcEnd = end;
    return true;
}

AcGePoint3dArray CDisposeOnCurve::GetAvgPointOnArc(const AcGePoint3d& start, const AcGePoint3d& end,
                                                   const AcGePoint3d& centre, double radius,
                                                   int count) {
    // The equipment already standing on the arc at this level. The whole circle's box holds
    // every point of any arc of it.
    AcDbObjectIdArray standing;
    const AcGeVector3d half(radius, radius, 0.0);
    KELToolKit::SelectEntity(standing, L"KELAZEQUIPMENT", centre - half, centre + half,
                             kSearchGrowth);
    AcGePoint3dArray existing;
    CDispGlobaFun::FiltrateId(existing, standing, m_dLevel);

    const double sweep = (start - centre).angleTo(end - centre, AcGeVector3d::kZAxis);
    // One point is the start alone; there is no step to take.
    const double step = count > 1 ? sweep / (count - 1) : 0.0;
    m_nAmountOfSame = 0;
    AcGePoint3dArray points;
    AcGeVector3d v = start - centre;
    AcGeTol same;
    same.setEqualPoint(kSamePoint);
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d candidate = OnCircle(centre, radius, v);
        int at = -1;
        for (int k = 0; k < existing.length() && at < 0; ++k) {
            if (existing[k].isEqualTo(candidate, same)) at = k;
        }
        if (at >= 0) {
            existing.removeAt(at);
            ++m_nAmountOfSame;
        } else {
            points.append(candidate);
        }
        v.rotateBy(step, AcGeVector3d::kZAxis);
    }
    return points;
}
