#pragma once

// A position in space.

#include "host/ge/Point2d.h"
#include "host/ge/Vector3d.h"

class AcGeMatrix3d;
class AcGePlanarEnt;
class AcGePlane;

class AcGePoint3d {
public:
    static const AcGePoint3d kOrigin;

    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    // The point of the plane at the given plane parameters.
    AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& pnt2d);

    AcGePoint3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    AcGePoint3d& set(const AcGePlanarEnt& plane, const AcGePoint2d& pnt2d);
    AcGePoint3d& setToSum(const AcGePoint3d& p, const AcGeVector3d& v) {
        return set(p.x + v.x, p.y + v.y, p.z + v.z);
    }

    double operator[](unsigned int i) const {
        KELAZ_ASSERT(i < 3, "3d point index out of range");
        return i == 0 ? x : (i == 1 ? y : z);
    }
    double& operator[](unsigned int i) {
        KELAZ_ASSERT(i < 3, "3d point index out of range");
        return i == 0 ? x : (i == 1 ? y : z);
    }

    AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGePoint3d& operator+=(const AcGeVector3d& v) { return set(x + v.x, y + v.y, z + v.z); }
    AcGePoint3d& operator-=(const AcGeVector3d& v) { return set(x - v.x, y - v.y, z - v.z); }

    // Exact, component-wise. Use isEqualTo for a tolerant comparison.
    bool operator==(const AcGePoint3d& p) const { return x == p.x && y == p.y && z == p.z; }
    bool operator!=(const AcGePoint3d& p) const { return !(*this == p); }

    AcGeVector3d asVector() const { return {x, y, z}; }
    double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }

    AcGePoint3d& transformBy(const AcGeMatrix3d& mat);
    // Right-hand rule about the axis through wrtPoint. A zero axis leaves the point as it is.
    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis,
                          const AcGePoint3d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle, axis);
    }
    AcGePoint3d& scaleBy(double factor, const AcGePoint3d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint) * factor;
    }

    // The foot of the perpendicular from this point to the plane.
    AcGePoint3d orthoProject(const AcGePlane& plane) const;
    // Where the line through this point along projectDirection meets the plane. A direction
    // parallel to the plane never meets it; the point is then returned unchanged.
    AcGePoint3d project(const AcGePlane& plane, const AcGeVector3d& projectDirection) const;
    // The plane parameters of this point's projection onto the plane.
    AcGePoint2d convert2d(const AcGePlanarEnt& plane) const;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline constexpr AcGePoint3d AcGePoint3d::kOrigin{0.0, 0.0, 0.0};

AcGePoint3d operator*(const AcGeMatrix3d& mat, const AcGePoint3d& pnt);
