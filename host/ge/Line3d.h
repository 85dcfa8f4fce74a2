#pragma once

// An infinite line.

#include "host/ge/LinearEnt3d.h"

class AcGeLine3d : public AcGeLinearEnt3d {
public:
    // The world X axis.
    AcGeLine3d() : AcGeLinearEnt3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeLine3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : AcGeLinearEnt3d(pnt, vec) {}
    AcGeLine3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2)
        : AcGeLinearEnt3d(pnt1, pnt2 - pnt1) {}

    AcGeLine3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        assign(pnt, vec);
        return *this;
    }
    AcGeLine3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) {
        return set(pnt1, pnt2 - pnt1);
    }

    bool hasStartPoint() const override { return false; }
    bool hasEndPoint() const override { return false; }
};
