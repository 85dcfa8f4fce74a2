#pragma once

// An entity that is a curve: it has a parameter range from start to end and points along it.
// This base answers eNotImplementedYet; each curve class gives the real answers.

#include "host/db/Entity.h"
#include "host/ge/Point3d.h"

class AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve);

    virtual Adesk::Boolean isClosed() const { return Adesk::kFalse; }
    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
    // eInvalidInput for a parameter outside [start, end].
    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;

protected:
    AcDbCurve() = default;
};
