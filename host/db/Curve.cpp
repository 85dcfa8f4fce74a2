#include "host/db/Curve.h"

#include "host/app/RxClass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity)

Acad::ErrorStatus AcDbCurve::getStartParam(double&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getEndParam(double&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getPointAtParam(double, AcGePoint3d&) const {
    return Acad::eNotImplementedYet;
}
