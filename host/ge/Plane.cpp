#include "host/ge/Plane.h"

#include "host/ge/Line3d.h"

// Constant-initialised, so other files' static initialisers may use them.
constinit const AcGePlane AcGePlane::kXYPlane{AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                              AcGeVector3d::kZAxis};
constinit const AcGePlane AcGePlane::kYZPlane{AcGeVector3d::kYAxis, AcGeVector3d::kZAxis,
                                              AcGeVector3d::kXAxis};
constinit const AcGePlane AcGePlane::kZXPlane{AcGeVector3d::kZAxis, AcGeVector3d::kXAxis,
                                              AcGeVector3d::kYAxis};

AcGePlane& AcGePlane::set(const AcGePoint3d& origin, const AcGeVector3d& normal) {
    const AcGeVector3d n = normal.normal();
    const AcGeVector3d u = n.perpVector().normal();
    setFrame(origin, u, n.crossProduct(u));
    return *this;
}

AcGePlane& AcGePlane::set(double a, double b, double c, double d) {
    const AcGeVector3d n{a, b, c};
    const double lenSqrd = n.lengthSqrd();
    const AcGePoint3d origin =
        lenSqrd > 0.0 ? AcGePoint3d::kOrigin + n * (-d / lenSqrd) : AcGePoint3d::kOrigin;
    return set(origin, n);
}

bool AcGePlane::intersectWith(const AcGePlane& other, AcGeLine3d& line, const AcGeTol& tol) const {
    const AcGeVector3d n1 = normal();
    const AcGeVector3d n2 = other.normal();
    if (n1.isZeroLength() || n2.isZeroLength() || isParallelTo(other, tol)) return false;
    const AcGeVector3d dir = n1.crossProduct(n2);
    // The point of the line nearest this plane's origin: it satisfies n1·p = 0 and
    // n2·p = h2 relative to that origin, and has no component along the line.
    const double h2 = n2.dotProduct(other.pointOnPlane() - pointOnPlane());
    const AcGeVector3d offset = dir.crossProduct(n1) * (h2 / dir.lengthSqrd());
    line.set(pointOnPlane() + offset, dir.normal());
    return true;
}
