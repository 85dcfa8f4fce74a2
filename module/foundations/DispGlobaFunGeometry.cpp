#include <algorithm>
#include <cmath>

#include "host/ge/Tol.h"
#include "module/entry/DispGlobaFun.h"

namespace {
// Segment ends count as the same point within one drawing unit.
constexpr double kOverlapPointTolerance = 1.0;
}  // namespace

AcGePoint3d CDispGlobaFun::GetCenterPoint(AcGePoint3d p1, AcGePoint3d p2) {
    return p1 + (p1.distanceTo(p2) / 2.0) * (p2 - p1).normal();
}

double CDispGlobaFun::GetBulge(AcGePoint3d p1, AcGePoint3d p2, const double& radius,
                               AcGeVector3d side) {
    const AcGePoint3d mid = GetCenterPoint(p1, p2);
    const double half = p1.distanceTo(p2) / 2.0;
    // A radius shorter than half the chord has no arc; it is taken as the half circle.
    const double h = std::sqrt(std::max(radius * radius - half * half, 0.0));
    const AcGePoint3d centre = mid + h * side.normal();
    const double theta = (p1 - centre).angleTo(p2 - centre);
    return std::tan(theta / 4.0);
}

AcGeLine3d CDispGlobaFun::VerticalBisector(AcGePoint3d p1, AcGePoint3d p2) {
    return AcGeLine3d(GetCenterPoint(p1, p2), (p2 - p1).perpVector());
}

AcGePoint3d CDispGlobaFun::CenterOfArc(AcGePoint3d p1, AcGePoint3d p2, AcGePoint3d p3) {
    const AcGeLine3d first = VerticalBisector(p1, p2);
    const AcGeLine3d second = VerticalBisector(p3, p2);
    AcGePoint3d centre;
    if (!first.intersectWith(second, centre, AcGeContext::gTol)) return AcGePoint3d::kOrigin;
    return centre;
}

double CDispGlobaFun::CenterAngle(AcGePoint3d p1, AcGePoint3d p2, const double& radius) {
    const double sine = (p1.distanceTo(p2) / 2.0) / radius;
    return 2.0 * std::asin(std::clamp(sine, -1.0, 1.0));
}

bool CDispGlobaFun::IsFullOverLap(const AcGeLineSeg2d* a, const AcGeLineSeg2d* b) {
    if (!a || !b) return false;
    AcGeTol tol;
    tol.setEqualPoint(kOverlapPointTolerance);
    const bool same = a->startPoint().isEqualTo(b->startPoint(), tol) &&
                      a->endPoint().isEqualTo(b->endPoint(), tol);
    const bool reversed = a->startPoint().isEqualTo(b->endPoint(), tol) &&
                          a->endPoint().isEqualTo(b->startPoint(), tol);
    return same || reversed;
}

bool CDispGlobaFun::OrderPoints(AcGePoint3dArray& points, AcGePoint3d reference) {
    const int n = points.length();
    if (n < 2) return false;
    for (int i = 0; i + 1 < n; ++i) {
        double nearest = points[i].distanceTo(reference);
        for (int j = i + 1; j < n; ++j) {
            const double d = points[j].distanceTo(reference);
            if (d < nearest) {
                points.swap(i, j);
                nearest = d;
            }
        }
    }
    return true;
}

AcDbExtents CDispGlobaFun::SetExtents(AcGePoint3d p1, AcGePoint3d p2) {
    AcDbExtents box;
    box.addPoint(p1);
    box.addPoint(p2);
    return box;
}

int CDispGlobaFun::GetCenter(const double start[3], const double end[3], double radius,
                             double center[3]) {
    const AcGePoint3d a(start[0], start[1], start[2]);
    const AcGePoint3d b(end[0], end[1], end[2]);
    const AcGeVector3d chord(b.x - a.x, b.y - a.y, 0.0);
    const double half = chord.length() / 2.0;
    if (half <= AcGeContext::gTol.equalPoint() || radius < half) return 0;
    const double h = std::sqrt(std::max(radius * radius - half * half, 0.0));
    // The centre of a counter-clockwise arc lies on the left of its chord.
    const AcGeVector3d left = AcGeVector3d(-chord.y, chord.x, 0.0).normal();
    const AcGePoint3d mid = GetCenterPoint(a, b);
    const AcGePoint3d c = mid + h * left;
    center[0] = c.x;
    center[1] = c.y;
    center[2] = c.z;
    return radius - half > AcGeContext::gTol.equalPoint() ? 2 : 1;
}
