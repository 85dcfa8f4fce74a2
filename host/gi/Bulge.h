#pragma once

// Arcs given by bulge, and the box of an arc's sweep. Shared by the polyline entity and the
// measuring of drawn primitives.

#include "host/ge/CircArc3d.h"
#include "host/ge/Extents.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

namespace kelaz {

// The arc from p0 to p1 with the given bulge (tangent of a quarter of the included angle,
// positive counter-clockwise about normal). It runs counter-clockwise about its own normal,
// which is normal for a positive bulge and the reverse for a negative one; its reference vector
// points at p0, so its start angle is 0. The bulge must not be zero and the points must differ.
AcGeCircArc3d ArcFromBulge(const AcGePoint3d& p0, const AcGePoint3d& p1, double bulge,
                           const AcGeVector3d& normal);

// Adds the box of the arc from center + radius * startVector sweeping sweep (radians, 0 to 2π)
// counter-clockwise about normal: its ends and the extreme points of the circle that the sweep
// passes.
void AddArcExtents(AcDbExtents& extents, const AcGePoint3d& center, double radius,
                   const AcGeVector3d& normal, const AcGeVector3d& startVector, double sweep);

}  // namespace kelaz
