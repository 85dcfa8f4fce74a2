#pragma once

// An axis-aligned box. The default box is empty, its minimum above its maximum, so that adding
// points builds it up from nothing.

#include "host/ge/Point3d.h"

class AcGeMatrix3d;

namespace kelaz {
// The corners of the empty box: any real coordinate is inside this range.
inline constexpr double kExtentsEmptyLimit = 1e20;
}  // namespace kelaz

class AcDbExtents {
public:
    AcDbExtents() = default;
    // A minimum above the maximum on some axis is refused, leaving the empty box (as set does).
    AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) { set(min, max); }

    AcGePoint3d minPoint() const { return m_min; }
    AcGePoint3d maxPoint() const { return m_max; }
    // False, and the box unchanged, when min is above max on some axis.
    bool set(const AcGePoint3d& min, const AcGePoint3d& max);

    void addPoint(const AcGePoint3d& pnt);
    void addExt(const AcDbExtents& ext);
    // Grows the box on the side each component points to: the box swept along the vector. The
    // empty box stays empty.
    void expandBy(const AcGeVector3d& vec);
    // The box around the eight transformed corners. The empty box stays empty.
    void transformBy(const AcGeMatrix3d& mat);

private:
    AcGePoint3d m_min{kelaz::kExtentsEmptyLimit, kelaz::kExtentsEmptyLimit,
                      kelaz::kExtentsEmptyLimit};
    AcGePoint3d m_max{-kelaz::kExtentsEmptyLimit, -kelaz::kExtentsEmptyLimit,
                      -kelaz::kExtentsEmptyLimit};
};

namespace kelaz {

// No point has been added: the minimum is above the maximum on some axis.
bool ExtentsIsEmpty(const AcDbExtents& ext);
// The boxes share at least a point, with tol.equalPoint() of slack. An empty box meets nothing.
bool ExtentsIntersect(const AcDbExtents& a, const AcDbExtents& b,
                      const AcGeTol& tol = AcGeContext::gTol);
// The point is inside the box or within tol.equalPoint() of it.
bool ExtentsContain(const AcDbExtents& box, const AcGePoint3d& pnt,
                    const AcGeTol& tol = AcGeContext::gTol);

}  // namespace kelaz
