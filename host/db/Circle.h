#pragma once

// A full circle in the plane through its centre perpendicular to its normal. Its parameter is
// the angle from the plane's X axis (the arbitrary axis rule of the normal), 0 to 2π.

#include "host/db/Curve.h"
#include "host/ge/Vector3d.h"

class AcDbCircle : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle);

    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);

    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const;
    // A radius that is not positive is refused with eInvalidInput.
    Acad::ErrorStatus setRadius(double radius);
    AcGeVector3d normal() const;
    // A zero vector is refused with eInvalidInput; others are made unit.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);

    Adesk::Boolean isClosed() const override { return Adesk::kTrue; }
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // Rigid motions and uniform scaling; other matrices answer eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    AcGePoint3d m_center;
    double m_radius = 1.0;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
    double m_thickness = 0.0;
};
