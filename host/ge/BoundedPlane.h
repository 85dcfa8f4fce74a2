#pragma once

// A parallelogram: origin + s·u + t·v for s and t in [0, 1].

#include "host/ge/PlanarEnt.h"

class AcGeBoundedPlane : public AcGePlanarEnt {
public:
    // The unit square on the world XY plane.
    AcGeBoundedPlane() = default;
    AcGeBoundedPlane(const AcGePoint3d& origin, const AcGeVector3d& uVec,
                     const AcGeVector3d& vVec) {
        set(origin, uVec, vVec);
    }
    // The corner origin with its neighbours p1 (along u) and p2 (along v).
    AcGeBoundedPlane(const AcGePoint3d& p1, const AcGePoint3d& origin, const AcGePoint3d& p2) {
        set(p1, origin, p2);
    }

    AcGeBoundedPlane& set(const AcGePoint3d& origin, const AcGeVector3d& uVec,
                          const AcGeVector3d& vVec) {
        setFrame(origin, uVec, vVec);
        return *this;
    }
    AcGeBoundedPlane& set(const AcGePoint3d& p1, const AcGePoint3d& origin, const AcGePoint3d& p2) {
        return set(origin, p1 - origin, p2 - origin);
    }

    // Within tol.equalPoint() of the parallelogram, edges included.
    bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override;

protected:
    bool containsInPlane(const AcGePoint3d& pnt, const AcGeTol& tol) const override {
        return inPlaneDistance(pnt) <= tol.equalPoint();
    }

private:
    // Distance from a point's projection onto the plane to the nearest point of the
    // parallelogram; 0 inside.
    double inPlaneDistance(const AcGePoint3d& pnt) const;
};
