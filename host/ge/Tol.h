#pragma once

// Geometric tolerances. Every comparison in the geometry types takes an AcGeTol and defaults to
// the global AcGeContext::gTol, so a caller that works at another scale can pass its own.

namespace kelaz {
// Two points closer than this are the same point (drawing units).
inline constexpr double kDefaultEqualPoint = 1e-10;
// Two unit directions closer than this are the same direction (dimensionless).
inline constexpr double kDefaultEqualVector = 1e-12;
}  // namespace kelaz

class AcGeTol {
public:
    AcGeTol() = default;

    double equalPoint() const { return m_equalPoint; }
    double equalVector() const { return m_equalVector; }
    void setEqualPoint(double val) { m_equalPoint = val; }
    void setEqualVector(double val) { m_equalVector = val; }

private:
    double m_equalPoint = kelaz::kDefaultEqualPoint;
    double m_equalVector = kelaz::kDefaultEqualVector;
};

struct AcGeContext {
    // The process-wide default tolerance. Mutable on purpose: the host lets a command loosen it
    // for the duration of an operation.
    static inline AcGeTol gTol;
};
