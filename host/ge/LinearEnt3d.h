#pragma once

// The common part of lines, rays and segments: the points pointOnLine() + t·v for the defining
// vector v, with t unbounded (line), t >= 0 (ray) or 0 <= t <= 1 (segment).
//
// A zero defining vector leaves a single point; it has no direction, is parallel to nothing and
// intersects whatever passes through that point.

#include "host/ge/Plane.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

class AcGeLinearEnt3d {
public:
    virtual ~AcGeLinearEnt3d() = default;

    AcGePoint3d pointOnLine() const { return m_point; }
    // Unit length.
    AcGeVector3d direction() const { return m_vector.normal(); }

    // Whether the parameter range stops at 0 and at 1.
    virtual bool hasStartPoint() const = 0;
    virtual bool hasEndPoint() const = 0;

    // 0 at pointOnLine(), 1 one defining vector further on. The parameter of a point off the
    // line is that of its projection, and is not limited to the entity's bounds.
    double paramOf(const AcGePoint3d& pnt) const;
    AcGePoint3d evalPoint(double param) const { return m_point + m_vector * param; }

    // Within the entity's bounds.
    AcGePoint3d closestPointTo(const AcGePoint3d& pnt) const;
    double distanceTo(const AcGePoint3d& pnt) const { return pnt.distanceTo(closestPointTo(pnt)); }
    bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(pnt) <= tol.equalPoint();
    }

    bool isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
    // Both lie on one infinite line, whatever their bounds.
    bool isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol = AcGeContext::gTol) const;

    // The single point both entities share within their bounds. Parallel entities, collinear
    // ones included, have no single point and give false; so do skew lines that pass further
    // apart than tol.equalPoint().
    bool intersectWith(const AcGeLinearEnt3d& other, AcGePoint3d& pnt,
                       const AcGeTol& tol = AcGeContext::gTol) const;
    // Where this entity, within its bounds, crosses the planar entity within its bounds. An
    // entity parallel to the plane never crosses it, even when it lies in it.
    bool intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& pnt,
                       const AcGeTol& tol = AcGeContext::gTol) const;

    // The plane through the point perpendicular to this entity.
    AcGePlane perpPlane(const AcGePoint3d& pnt) const { return {pnt, direction()}; }

protected:
    AcGeLinearEnt3d(const AcGePoint3d& pnt, const AcGeVector3d& vec)
        : m_point(pnt), m_vector(vec) {}
    AcGeLinearEnt3d(const AcGeLinearEnt3d&) = default;
    AcGeLinearEnt3d& operator=(const AcGeLinearEnt3d&) = default;

    void assign(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        m_point = pnt;
        m_vector = vec;
    }
    AcGeVector3d definingVector() const { return m_vector; }

private:
    bool isPoint(const AcGeTol& tol) const { return m_vector.isZeroLength(tol); }
    // Whether the parameter lies within the bounds, with tol.equalPoint() of slack at each end.
    bool isParamWithin(double param, const AcGeTol& tol) const;

    AcGePoint3d m_point;
    AcGeVector3d m_vector;
};
