#pragma once

// A bounded line segment; parameter 0 at the start point, 1 at the end point.

#include "host/ge/LinearEnt3d.h"

class AcGeLineSeg3d : public AcGeLinearEnt3d {
public:
    // From the origin to (1, 0, 0).
    AcGeLineSeg3d() : AcGeLineSeg3d(AcGePoint3d::kOrigin, AcGePoint3d(1.0, 0.0, 0.0)) {}
    AcGeLineSeg3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2)
        : AcGeLinearEnt3d(pnt1, pnt2 - pnt1), m_end(pnt2) {}
    // From pnt to pnt + vec.
    AcGeLineSeg3d(const AcGePoint3d& pnt, const AcGeVector3d& vec)
        : AcGeLinearEnt3d(pnt, vec), m_end(pnt + vec) {}

    AcGeLineSeg3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) {
        assign(pnt1, pnt2 - pnt1);
        m_end = pnt2;
        return *this;
    }
    AcGeLineSeg3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        assign(pnt, vec);
        m_end = pnt + vec;
        return *this;
    }

    AcGePoint3d startPoint() const { return pointOnLine(); }
    // Kept as given rather than recomputed from start + vector, which may round differently.
    AcGePoint3d endPoint() const { return m_end; }
    AcGePoint3d midPoint() const { return startPoint() + definingVector() * 0.5; }
    double length() const { return definingVector().length(); }

    bool hasStartPoint() const override { return true; }
    bool hasEndPoint() const override { return true; }

private:
    AcGePoint3d m_end;
};
