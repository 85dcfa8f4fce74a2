#pragma once

// A displacement or direction in space.

#include <cmath>

#include "host/Assert.h"
#include "host/ge/Tol.h"
#include "host/ge/Vector2d.h"

class AcGeMatrix3d;
class AcGePlanarEnt;

class AcGeVector3d {
public:
    static const AcGeVector3d kIdentity;  // the zero vector
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    AcGeVector3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }

    double operator[](unsigned int i) const {
        KELAZ_ASSERT(i < 3, "3d vector index out of range");
        return i == 0 ? x : (i == 1 ? y : z);
    }
    double& operator[](unsigned int i) {
        KELAZ_ASSERT(i < 3, "3d vector index out of range");
        return i == 0 ? x : (i == 1 ? y : z);
    }

    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    AcGeVector3d& operator+=(const AcGeVector3d& v) { return set(x + v.x, y + v.y, z + v.z); }
    AcGeVector3d& operator-=(const AcGeVector3d& v) { return set(x - v.x, y - v.y, z - v.z); }
    AcGeVector3d& operator*=(double s) { return set(x * s, y * s, z * s); }
    AcGeVector3d& operator/=(double s) { return set(x / s, y / s, z / s); }
    friend AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }

    // Exact, component-wise. Use isEqualTo for a tolerant comparison.
    bool operator==(const AcGeVector3d& v) const { return x == v.x && y == v.y && z == v.z; }
    bool operator!=(const AcGeVector3d& v) const { return !(*this == v); }

    double length() const { return std::sqrt(lengthSqrd()); }
    double lengthSqrd() const { return x * x + y * y + z * z; }
    double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }

    // The unit vector in this direction; a vector of (near) zero length is returned unchanged
    // rather than blown up into NaN or noise.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    AcGeVector3d& setLength(double len) { return *this = normal() * len; }
    AcGeVector3d& negate() { return set(-x, -y, -z); }

    // A perpendicular by the arbitrary axis rule: the world Z axis crossed with this, or the
    // world Y axis when this points (nearly) along Z. A vector in the XY plane thus yields its
    // counter-clockwise perpendicular of the same length.
    AcGeVector3d perpVector() const;

    // Applies the matrix's linear part; a direction ignores translation.
    AcGeVector3d& transformBy(const AcGeMatrix3d& mat);
    // Right-hand rule about the axis. A zero axis leaves the vector as it is.
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);

    // The unsigned angle between the two vectors, in [0, π].
    double angleTo(const AcGeVector3d& v) const;
    // The angle from this to v, counter-clockwise as seen looking down the reference vector
    // (right-hand rule about it), in [0, 2π).
    double angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const;

    // The component of this lying in the plane with the given normal.
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;
    // The components of this along the plane's two axes, after dropping the part off the plane.
    AcGeVector2d convert2d(const AcGePlanarEnt& plane) const;

    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1.0) <= tol.equalVector();
    }
    // A zero-length vector has no direction: it is neither parallel, codirectional nor
    // perpendicular to anything.
    bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline constexpr AcGeVector3d AcGeVector3d::kIdentity{0.0, 0.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kXAxis{1.0, 0.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kYAxis{0.0, 1.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kZAxis{0.0, 0.0, 1.0};

// The matrix's linear part applied to the vector.
AcGeVector3d operator*(const AcGeMatrix3d& mat, const AcGeVector3d& vec);
