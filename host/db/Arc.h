#pragma once

// A circular arc: centre, radius, and start and end angles measured counter-clockwise about the
// normal from the X axis of the arc's plane (the arbitrary axis rule of the normal). The arc
// always runs counter-clockwise from the start angle to the end angle; angles are kept in
// [0, 2π). Its parameter is the angle, from the start angle to the end angle (plus 2π when the
// arc passes through angle 0).

#include "host/db/Curve.h"
#include "host/ge/Vector3d.h"

class AcDbArc : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc);

    AcDbArc() = default;
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);

    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const;
    // A radius that is not positive is refused with eInvalidInput.
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const;
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const;
    Acad::ErrorStatus setEndAngle(double angle);
    // The sweep from start to end angle, in (0, 2π].
    double totalAngle() const;
    AcGeVector3d normal() const;
    // A zero vector is refused with eInvalidInput; others are made unit.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);

    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;

    // The box of the arc's real sweep, not of the whole circle.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // Rigid motions and uniform scaling; a mirroring keeps the arc counter-clockwise by swapping
    // its ends. Other matrices answer eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    AcGePoint3d pointAtAngle(double angle) const;

    AcGePoint3d m_center;
    double m_radius = 1.0;
    double m_startAngle = 0.0;
    double m_endAngle = 0.0;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
    double m_thickness = 0.0;
};
