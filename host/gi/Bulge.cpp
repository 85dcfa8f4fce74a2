#include "host/gi/Bulge.h"

#include <cmath>
#include <initializer_list>

#include "host/Assert.h"
#include "host/ge/GeConstants.h"

namespace kelaz {

AcGeCircArc3d ArcFromBulge(const AcGePoint3d& p0, const AcGePoint3d& p1, double bulge,
                           const AcGeVector3d& normal) {
    KELAZ_ASSERT(bulge != 0.0, "an arc segment needs a bulge");
    const AcGeVector3d n = normal.normal();
    const AcGeVector3d chord = p1 - p0;
    const double c = chord.length();
    // The centre lies on the chord's perpendicular bisector, to the left of the chord (about n)
    // for a counter-clockwise arc of less than half a turn: at (c/2)·cot(θ/2) with b = tan(θ/4).
    const AcGeVector3d left = n.crossProduct(chord).normal();
    const AcGePoint3d mid = p0 + chord * 0.5;
    const AcGePoint3d center = mid + left * (c * (1.0 - bulge * bulge) / (4.0 * bulge));
    const double radius = c * (1.0 + bulge * bulge) / (4.0 * std::abs(bulge));
    const double sweep = 4.0 * std::atan(std::abs(bulge));
    const AcGeVector3d arcNormal = bulge > 0.0 ? n : -n;
    return AcGeCircArc3d(center, arcNormal, (p0 - center).normal(), radius, 0.0, sweep);
}

void AddArcExtents(AcDbExtents& extents, const AcGePoint3d& center, double radius,
                   const AcGeVector3d& normal, const AcGeVector3d& startVector, double sweep) {
    const AcGeVector3d n = normal.normal();
    const AcGeVector3d u = startVector.orthoProject(n).normal();
    const AcGeVector3d v = n.crossProduct(u);
    auto at = [&](double angle) {
        return center + (u * std::cos(angle) + v * std::sin(angle)) * radius;
    };
    extents.addPoint(at(0.0));
    extents.addPoint(at(sweep));
    // Along each world axis the circle is extreme where the derivative of its coordinate,
    // -sin(a)·u[i] + cos(a)·v[i], is zero; those angles count when the sweep reaches them.
    for (unsigned int axis = 0; axis < 3; ++axis) {
        if (u[axis] == 0.0 && v[axis] == 0.0) continue;
        const double first = NormalizeAngle(std::atan2(v[axis], u[axis]));
        for (double a : {first, NormalizeAngle(first + kPi)}) {
            if (a <= sweep) extents.addPoint(at(a));
        }
    }
}

}  // namespace kelaz
