#pragma once

// Scale factors along the three axes, as a block reference carries them.

#include <cmath>

#include "host/Assert.h"
#include "host/ge/Tol.h"

class AcGeMatrix3d;

class AcGeScale3d {
public:
    static const AcGeScale3d kIdentity;

    constexpr AcGeScale3d() = default;
    constexpr explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    constexpr AcGeScale3d(double xFactor, double yFactor, double zFactor)
        : sx(xFactor), sy(yFactor), sz(zFactor) {}

    AcGeScale3d& set(double xFactor, double yFactor, double zFactor) {
        sx = xFactor;
        sy = yFactor;
        sz = zFactor;
        return *this;
    }

    double operator[](unsigned int i) const {
        KELAZ_ASSERT(i < 3, "scale index out of range");
        return i == 0 ? sx : (i == 1 ? sy : sz);
    }
    double& operator[](unsigned int i) {
        KELAZ_ASSERT(i < 3, "scale index out of range");
        return i == 0 ? sx : (i == 1 ? sy : sz);
    }

    // Axis by axis: scaling by the product is scaling by one, then the other.
    AcGeScale3d operator*(const AcGeScale3d& s) const { return {sx * s.sx, sy * s.sy, sz * s.sz}; }
    AcGeScale3d& operator*=(const AcGeScale3d& s) { return *this = *this * s; }
    AcGeScale3d operator*(double factor) const { return {sx * factor, sy * factor, sz * factor}; }
    AcGeScale3d& operator*=(double factor) { return *this = *this * factor; }
    friend AcGeScale3d operator*(double factor, const AcGeScale3d& s) { return s * factor; }

    // Exact, component-wise. Use isEqualTo for a tolerant comparison.
    bool operator==(const AcGeScale3d& s) const { return sx == s.sx && sy == s.sy && sz == s.sz; }
    bool operator!=(const AcGeScale3d& s) const { return !(*this == s); }
    // Factors are ratios, so they compare within equalVector.
    bool isEqualTo(const AcGeScale3d& s, const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(sx - s.sx) <= tol.equalVector() &&
               std::abs(sy - s.sy) <= tol.equalVector() && std::abs(sz - s.sz) <= tol.equalVector();
    }

    // The scaling about the world origin.
    AcGeMatrix3d& getMatrix(AcGeMatrix3d& mat) const;

    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
};

inline constexpr AcGeScale3d AcGeScale3d::kIdentity{1.0, 1.0, 1.0};
