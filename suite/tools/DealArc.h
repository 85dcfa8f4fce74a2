#pragma once

// Arc helpers of the common tools: the geometry of an arc given by three picked points, as the
// drawing commands trace it (start, any point of the arc, end), in the plane of a given normal.

#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

class CDealArc {
public:
    // Centre of the arc through start, mid and end, projected into the plane through start with
    // the given normal; false when the three points are collinear in that plane.
    static bool ArcLineCenter(const AcGePoint3d& start, const AcGePoint3d& mid,
                              const AcGePoint3d& end, const AcGeVector3d& normal,
                              AcGePoint3d& center);
    // 1 when the arc from start through mid to end turns counter-clockwise about the normal,
    // -1 when clockwise, 0 when the points are collinear.
    static int BaselineArcDirection(const AcGePoint3d& start, const AcGePoint3d& mid,
                                    const AcGePoint3d& end, const AcGeVector3d& normal);
    // Non-zero when the arc (last point, current point, a point of the arc between them) turns
    // clockwise about the normal: its centre then lies on the right of the traced path, the side
    // to which positive offsets go, and offset arcs there are smaller.
    static int ArcOffsetOrientation(const AcGePoint3d& last, const AcGePoint3d& current,
                                    const AcGePoint3d& mid, const AcGeVector3d& normal);
    // The point at the given fraction of the sweep of the arc about center from start to end,
    // turning in direction (1 counter-clockwise, -1 clockwise) about the normal; the radius is
    // that of start. fraction 0.5 is the arc's middle.
    static AcGePoint3d GetArcAnyPoint(const AcGePoint3d& center, const AcGePoint3d& start,
                                      const AcGePoint3d& end, int direction,
                                      const AcGeVector3d& normal, double fraction = 0.5);
};
