#pragma once

// The object coordinate system of a planar entity: its normal is the Z axis and its X axis
// comes from the normal by the arbitrary axis rule, so the same normal always gives the same
// frame. Angles of arcs and the 2d points of polylines are measured in it.

#include <cmath>

#include "host/ge/GeConstants.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

namespace kelaz {

inline AcGeVector3d OcsXAxis(const AcGeVector3d& normal) { return normal.perpVector().normal(); }

inline AcGeVector3d OcsYAxis(const AcGeVector3d& normal) {
    return normal.normal().crossProduct(OcsXAxis(normal));
}

// The direction at angle from the X axis of normal's frame.
inline AcGeVector3d OcsDirection(const AcGeVector3d& normal, double angle) {
    return OcsXAxis(normal) * std::cos(angle) + OcsYAxis(normal) * std::sin(angle);
}

// The angle of a direction in normal's frame, in [0, 2π).
inline double OcsAngle(const AcGeVector3d& normal, const AcGeVector3d& dir) {
    return NormalizeAngle(
        std::atan2(dir.dotProduct(OcsYAxis(normal)), dir.dotProduct(OcsXAxis(normal))));
}

}  // namespace kelaz
