#pragma once

// A half line from a base point along a vector.

#include "host/ge/LinearEnt3d.h"

class AcGeRay3d : public AcGeLinearEnt3d {
public:
    // From the origin along the world X axis.
    AcGeRay3d() : AcGeLinearEnt3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeRay3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : AcGeLinearEnt3d(pnt, vec) {}
    // From pnt1 through pnt2.
    AcGeRay3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2)
        : AcGeLinearEnt3d(pnt1, pnt2 - pnt1) {}

    AcGeRay3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        assign(pnt, vec);
        return *this;
    }
    AcGeRay3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) {
        return set(pnt1, pnt2 - pnt1);
    }

    bool hasStartPoint() const override { return true; }
    bool hasEndPoint() const override { return false; }
};
