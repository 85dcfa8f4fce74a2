#pragma once

// An unbounded plane.

#include "host/ge/PlanarEnt.h"

class AcGeLine3d;

class AcGePlane : public AcGePlanarEnt {
public:
    static const AcGePlane kXYPlane;
    static const AcGePlane kYZPlane;
    static const AcGePlane kZXPlane;

    // The XY plane through the world origin.
    AcGePlane() = default;
    // The u axis comes from the normal by the arbitrary axis rule, v = normal × u.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal) { set(origin, normal); }
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) {
        set(origin, uAxis, vAxis);
    }
    // Through three points: u = pntU - origin, v = pntV - origin.
    AcGePlane(const AcGePoint3d& pntU, const AcGePoint3d& origin, const AcGePoint3d& pntV) {
        set(pntU, origin, pntV);
    }
    // The plane a·x + b·y + c·z + d = 0, its origin the point nearest the world origin.
    AcGePlane(double a, double b, double c, double d) { set(a, b, c, d); }

    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& normal);
    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                   const AcGeVector3d& vAxis) {
        setFrame(origin, uAxis, vAxis);
        return *this;
    }
    AcGePlane& set(const AcGePoint3d& pntU, const AcGePoint3d& origin, const AcGePoint3d& pntV) {
        return set(origin, pntU - origin, pntV - origin);
    }
    AcGePlane& set(double a, double b, double c, double d);

    // Positive on the side the normal points to.
    double signedDistanceTo(const AcGePoint3d& pnt) const { return heightOf(pnt); }
    double distanceTo(const AcGePoint3d& pnt) const { return std::abs(heightOf(pnt)); }
    // The foot of the perpendicular from the point.
    AcGePoint3d closestPointTo(const AcGePoint3d& pnt) const {
        return pnt - normal() * heightOf(pnt);
    }
    bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override {
        return std::abs(heightOf(pnt)) <= tol.equalPoint();
    }

    using AcGePlanarEnt::intersectWith;
    // The line common to both planes; parallel planes have none.
    bool intersectWith(const AcGePlane& other, AcGeLine3d& line,
                       const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    bool containsInPlane(const AcGePoint3d&, const AcGeTol&) const override { return true; }

private:
    // The world planes, through the origin.
    constexpr AcGePlane(const AcGeVector3d& uAxis, const AcGeVector3d& vAxis,
                        const AcGeVector3d& unitNormal)
        : AcGePlanarEnt(AcGePoint3d::kOrigin, uAxis, vAxis, unitNormal) {}
};
