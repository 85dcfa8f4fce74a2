#include "host/ge/Point3d.h"

#include "host/ge/Matrix3d.h"
#include "host/ge/Plane.h"

AcGePoint3d::AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& pnt2d) {
    set(plane, pnt2d);
}

AcGePoint3d& AcGePoint3d::set(const AcGePlanarEnt& plane, const AcGePoint2d& pnt2d) {
    return *this = plane.evalPoint(pnt2d);
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& mat) { return *this = mat * *this; }

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& plane) const {
    return plane.closestPointTo(*this);
}

AcGePoint3d AcGePoint3d::project(const AcGePlane& plane,
                                 const AcGeVector3d& projectDirection) const {
    const AcGeVector3d n = plane.normal();
    const AcGeVector3d dir = projectDirection.normal();
    const double along = n.dotProduct(dir);
    if (std::abs(along) <= AcGeContext::gTol.equalVector()) return *this;
    return *this + dir * (-plane.signedDistanceTo(*this) / along);
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlanarEnt& plane) const {
    return plane.paramOf(*this);
}

AcGePoint3d operator*(const AcGeMatrix3d& mat, const AcGePoint3d& pnt) {
    const auto& e = mat.entry;
    double out[4];
    for (int r = 0; r < 4; ++r)
        out[r] = e[r][0] * pnt.x + e[r][1] * pnt.y + e[r][2] * pnt.z + e[r][3];
    // Only a perspective matrix has a bottom row other than (0, 0, 0, 1).
    if (out[3] != 1.0 && out[3] != 0.0) return {out[0] / out[3], out[1] / out[3], out[2] / out[3]};
    return {out[0], out[1], out[2]};
}
