#pragma once

// A position in a plane.

#include "host/ge/Vector2d.h"

class AcGePoint2d {
public:
    static const AcGePoint2d kOrigin;

    constexpr AcGePoint2d() = default;
    constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    AcGePoint2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }
    AcGePoint2d& setToSum(const AcGePoint2d& p, const AcGeVector2d& v) {
        return set(p.x + v.x, p.y + v.y);
    }

    double operator[](unsigned int i) const {
        KELAZ_ASSERT(i < 2, "2d point index out of range");
        return i == 0 ? x : y;
    }
    double& operator[](unsigned int i) {
        KELAZ_ASSERT(i < 2, "2d point index out of range");
        return i == 0 ? x : y;
    }

    AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGePoint2d& operator+=(const AcGeVector2d& v) { return set(x + v.x, y + v.y); }
    AcGePoint2d& operator-=(const AcGeVector2d& v) { return set(x - v.x, y - v.y); }

    // Exact, component-wise. Use isEqualTo for a tolerant comparison.
    bool operator==(const AcGePoint2d& p) const { return x == p.x && y == p.y; }
    bool operator!=(const AcGePoint2d& p) const { return !(*this == p); }

    AcGeVector2d asVector() const { return {x, y}; }
    double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }
    bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }

    // Counter-clockwise about wrtPoint.
    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle);
    }
    AcGePoint2d& scaleBy(double factor, const AcGePoint2d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint) * factor;
    }

    double x = 0.0;
    double y = 0.0;
};

inline constexpr AcGePoint2d AcGePoint2d::kOrigin{0.0, 0.0};
