#include "host/ge/BoundedPlane.h"

#include <algorithm>
#include <cmath>

#include "host/ge/LineSeg3d.h"

bool AcGeBoundedPlane::isOn(const AcGePoint3d& pnt, const AcGeTol& tol) const {
    if (normal().isZeroLength()) return false;
    return std::hypot(heightOf(pnt), inPlaneDistance(pnt)) <= tol.equalPoint();
}

double AcGeBoundedPlane::inPlaneDistance(const AcGePoint3d& pnt) const {
    const AcGePoint2d param = paramOf(pnt);
    if (param.x >= 0.0 && param.x <= 1.0 && param.y >= 0.0 && param.y <= 1.0) return 0.0;
    // Outside: the nearest point is on an edge. Measured from the projection so that the
    // height above the plane does not count twice.
    const AcGePoint3d onPlane = pnt - normal() * heightOf(pnt);
    const AcGePoint3d c00 = evalPoint({0.0, 0.0});
    const AcGePoint3d c10 = evalPoint({1.0, 0.0});
    const AcGePoint3d c11 = evalPoint({1.0, 1.0});
    const AcGePoint3d c01 = evalPoint({0.0, 1.0});
    return std::min(
        {AcGeLineSeg3d(c00, c10).distanceTo(onPlane), AcGeLineSeg3d(c10, c11).distanceTo(onPlane),
         AcGeLineSeg3d(c11, c01).distanceTo(onPlane), AcGeLineSeg3d(c01, c00).distanceTo(onPlane)});
}
