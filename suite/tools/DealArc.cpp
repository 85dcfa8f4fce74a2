#include "suite/tools/DealArc.h"

#include <cmath>

#include "host/ge/GeConstants.h"
#include "host/ge/Line3d.h"
#include "host/ge/Plane.h"

namespace {

// Twice the signed area of the plan triangle, seen along the normal.
double Turn(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
            const AcGeVector3d& normal) {
    return (b - a).crossProduct(c - b).dotProduct(normal.normal());
}

}  // namespace

bool CDealArc::ArcLineCenter(const AcGePoint3d& start, const AcGePoint3d& mid,
                             const AcGePoint3d& end, const AcGeVector3d& normal,
                             AcGePoint3d& center) {
    const AcGePlane plane(start, normal.normal());
    const AcGePoint3d a = start;
    const AcGePoint3d b = mid.orthoProject(plane);
    const AcGePoint3d c = end.orthoProject(plane);
    const AcGeVector3d n = plane.normal();
    // The perpendicular bisectors of a-b and b-c, inside the plane, meet at the centre.
    const AcGeLine3d first(a + (b - a) / 2.0, n.crossProduct(b - a));
    const AcGeLine3d second(b + (c - b) / 2.0, n.crossProduct(c - b));
    AcGePoint3d hit;
    if (!first.intersectWith(second, hit)) return false;
    center = hit;
    return true;
}

int CDealArc::BaselineArcDirection(const AcGePoint3d& start, const AcGePoint3d& mid,
                                   const AcGePoint3d& end, const AcGeVector3d& normal) {
    const double turn = Turn(start, mid, end, normal);
    const double scale = start.distanceTo(mid) * mid.distanceTo(end);
    if (scale <= 0.0 || std::abs(turn) <= scale * AcGeContext::gTol.equalVector()) return 0;
    return turn > 0 ? 1 : -1;
}

int CDealArc::ArcOffsetOrientation(const AcGePoint3d& last, const AcGePoint3d& current,
                                   const AcGePoint3d& mid, const AcGeVector3d& normal) {
    return BaselineArcDirection(last, mid, current, normal) < 0 ? 1 : 0;
}

AcGePoint3d CDealArc::GetArcAnyPoint(const AcGePoint3d& center, const AcGePoint3d& start,
                                     const AcGePoint3d& end, int direction,
                                     const AcGeVector3d& normal, double fraction) {
    const AcGeVector3d axis = direction < 0 ? -normal.normal() : normal.normal();
    const AcGeVector3d from = start - center;
    double sweep = from.angleTo(end - center, axis);
    if (sweep <= 0.0) sweep = kelaz::kTwoPi;  // start and end meet: the whole circle
    AcGeVector3d v = from;
    v.rotateBy(sweep * fraction, axis);
    return center + v;
}
