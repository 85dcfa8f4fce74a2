#pragma once

// A displacement or direction in a plane.

#include <cmath>

#include "host/Assert.h"
#include "host/ge/Tol.h"

class AcGeVector2d {
public:
    static const AcGeVector2d kIdentity;  // the zero vector
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    constexpr AcGeVector2d() = default;
    constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    AcGeVector2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }

    double operator[](unsigned int i) const {
        KELAZ_ASSERT(i < 2, "2d vector index out of range");
        return i == 0 ? x : y;
    }
    double& operator[](unsigned int i) {
        KELAZ_ASSERT(i < 2, "2d vector index out of range");
        return i == 0 ? x : y;
    }

    AcGeVector2d operator-() const { return {-x, -y}; }
    AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
    AcGeVector2d& operator+=(const AcGeVector2d& v) { return set(x + v.x, y + v.y); }
    AcGeVector2d& operator-=(const AcGeVector2d& v) { return set(x - v.x, y - v.y); }
    AcGeVector2d& operator*=(double s) { return set(x * s, y * s); }
    AcGeVector2d& operator/=(double s) { return set(x / s, y / s); }
    friend AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }

    // Exact, component-wise. Use isEqualTo for a tolerant comparison.
    bool operator==(const AcGeVector2d& v) const { return x == v.x && y == v.y; }
    bool operator!=(const AcGeVector2d& v) const { return !(*this == v); }

    double length() const { return std::hypot(x, y); }
    double lengthSqrd() const { return x * x + y * y; }
    double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }

    // The unit vector in this direction; a vector of (near) zero length is returned unchanged
    // rather than blown up into NaN or noise.
    AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    AcGeVector2d& setLength(double len) { return *this = normal() * len; }
    AcGeVector2d& negate() { return set(-x, -y); }

    // The counter-clockwise perpendicular, same length.
    AcGeVector2d perpVector() const { return {-y, x}; }

    // Counter-clockwise about the plane's normal.
    AcGeVector2d& rotateBy(double angle);

    // The direction measured from the X axis, in [0, 2π).
    double angle() const;
    // The unsigned angle between the two vectors, in [0, π].
    double angleTo(const AcGeVector2d& v) const;

    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1.0) <= tol.equalVector();
    }
    // A zero-length vector has no direction: it is neither parallel, codirectional nor
    // perpendicular to anything.
    bool isParallelTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }

    double x = 0.0;
    double y = 0.0;
};

inline constexpr AcGeVector2d AcGeVector2d::kIdentity{0.0, 0.0};
inline constexpr AcGeVector2d AcGeVector2d::kXAxis{1.0, 0.0};
inline constexpr AcGeVector2d AcGeVector2d::kYAxis{0.0, 1.0};
