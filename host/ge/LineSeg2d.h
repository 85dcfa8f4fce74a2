#pragma once

// A bounded line segment in a plane; parameter 0 at the start point, 1 at the end point.
//
// A zero-length segment is a single point: it has no direction, is parallel to nothing and
// intersects whatever passes through that point.

#include "host/ge/Point2d.h"
#include "host/ge/Vector2d.h"

class AcGeLineSeg2d {
public:
    // From the origin to (1, 0).
    AcGeLineSeg2d() : AcGeLineSeg2d(AcGePoint2d::kOrigin, AcGePoint2d(1.0, 0.0)) {}
    AcGeLineSeg2d(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) : m_start(pnt1), m_end(pnt2) {}
    // From pnt to pnt + vec.
    AcGeLineSeg2d(const AcGePoint2d& pnt, const AcGeVector2d& vec)
        : m_start(pnt), m_end(pnt + vec) {}

    AcGeLineSeg2d& set(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) {
        m_start = pnt1;
        m_end = pnt2;
        return *this;
    }
    AcGeLineSeg2d& set(const AcGePoint2d& pnt, const AcGeVector2d& vec) {
        return set(pnt, pnt + vec);
    }

    AcGePoint2d startPoint() const { return m_start; }
    AcGePoint2d endPoint() const { return m_end; }
    AcGePoint2d midPoint() const { return m_start + (m_end - m_start) * 0.5; }
    double length() const { return m_start.distanceTo(m_end); }
    // Unit length.
    AcGeVector2d direction() const { return (m_end - m_start).normal(); }

    AcGePoint2d evalPoint(double param) const { return m_start + (m_end - m_start) * param; }
    // The parameter of the point's projection onto the segment's line, not limited to [0, 1].
    double paramOf(const AcGePoint2d& pnt) const;

    AcGePoint2d closestPointTo(const AcGePoint2d& pnt) const;
    double distanceTo(const AcGePoint2d& pnt) const { return pnt.distanceTo(closestPointTo(pnt)); }
    bool isOn(const AcGePoint2d& pnt, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(pnt) <= tol.equalPoint();
    }
    bool isParallelTo(const AcGeLineSeg2d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return (m_end - m_start).isParallelTo(other.m_end - other.m_start, tol);
    }

    // The single point both segments share. Parallel segments, collinear ones included, have no
    // single point and give false.
    bool intersectWith(const AcGeLineSeg2d& other, AcGePoint2d& pnt,
                       const AcGeTol& tol = AcGeContext::gTol) const;

private:
    AcGePoint2d m_start;
    AcGePoint2d m_end;
};
