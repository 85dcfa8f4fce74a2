#pragma once

// The common part of planes and bounded planes: a frame origin + s·u + t·v in space. The axes
// need not be orthogonal or of unit length; the plane parameters (s, t) are measured along them.
//
// An entity built from parallel axes (collinear points, a zero normal) spans no plane: its
// normal() is the zero vector and it meets nothing. Such data can come from drawings, so it is
// kept rather than asserted.

#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

class AcGeLinearEnt3d;

class AcGePlanarEnt {
public:
    virtual ~AcGePlanarEnt() = default;

    // Unit length, along u × v.
    AcGeVector3d normal() const { return m_normal; }
    AcGePoint3d pointOnPlane() const { return m_origin; }
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const {
        origin = m_origin;
        axis1 = m_uAxis;
        axis2 = m_vAxis;
    }

    // origin + u·param.x + v·param.y
    AcGePoint3d evalPoint(const AcGePoint2d& param) const {
        return m_origin + m_uAxis * param.x + m_vAxis * param.y;
    }
    // The parameters of the point's orthogonal projection onto the plane.
    AcGePoint2d paramOf(const AcGePoint3d& pnt) const;

    virtual bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const = 0;

    bool isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isParallelTo(const AcGePlanarEnt& other, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCoplanarTo(const AcGePlanarEnt& other, const AcGeTol& tol = AcGeContext::gTol) const;

    // Where the linear entity, within its bounds, crosses this entity within its bounds. An
    // entity parallel to the plane never crosses it, even when it lies in it.
    bool intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& pnt,
                       const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGePlanarEnt() = default;
    // For constant frames whose normal is known exactly.
    constexpr AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                            const AcGeVector3d& vAxis, const AcGeVector3d& unitNormal)
        : m_origin(origin), m_uAxis(uAxis), m_vAxis(vAxis), m_normal(unitNormal) {}
    AcGePlanarEnt(const AcGePlanarEnt&) = default;
    AcGePlanarEnt& operator=(const AcGePlanarEnt&) = default;

    void setFrame(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
    // Height of the point above the plane, positive on the normal's side.
    double heightOf(const AcGePoint3d& pnt) const { return m_normal.dotProduct(pnt - m_origin); }
    // Whether a point lying in the plane is within the entity's bounds.
    virtual bool containsInPlane(const AcGePoint3d& pnt, const AcGeTol& tol) const = 0;

    friend class AcGeLinearEnt3d;

private:
    AcGePoint3d m_origin;
    AcGeVector3d m_uAxis = AcGeVector3d::kXAxis;
    AcGeVector3d m_vAxis = AcGeVector3d::kYAxis;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};
