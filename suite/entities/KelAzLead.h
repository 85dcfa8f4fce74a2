#pragma once

// A lead between two points: straight, or an arc given by its bulge (the tangent of a quarter
// of its included angle, positive counter-clockwise about the lead's normal). An arc lead lies
// in the plane through its start point square to its normal; its end point is taken in that
// plane. The type text names the lead's kind in the component library ("3\\1\\1").

#include "host/ge/Vector3d.h"
#include "suite/entities/KelAzLeadPrototype.h"

class AcDbPolyline;
class AcGeCircArc3d;

class KelAzLead : public KelAzLeadPrototype {
public:
    ACRX_DECLARE_MEMBERS(KelAzLead);

    KelAzLead() = default;

    // A bulge that is not a finite number is refused with eInvalidInput.
    Acad::ErrorStatus SetBulge(double bulge);
    double GetBulge() const;
    // A zero vector is refused with eInvalidInput; others are made unit.
    Acad::ErrorStatus SetNormal(const AcGeVector3d& normal);
    AcGeVector3d GetNormal() const;
    Acad::ErrorStatus SetTypeText(const CString& typeText);
    CString GetTypeText() const;

    // The lead as a polyline of one segment in the plane of its normal through its start point:
    // vertex 0 carries the bulge, so getArcSegAt(0, ...) gives an arc lead's centre and radius.
    // The polyline's vertices are replaced.
    Acad::ErrorStatus GetPolyline(AcDbPolyline& polyline) const;

    // The ends, or the real sweep of an arc.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // A mirroring turns the bulge round. An arc lead takes only rigid motions and uniform
    // scaling (eCannotScaleNonUniformly otherwise).
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    // False for a straight lead (no bulge, or both ends at one point of the plane).
    bool GetArc(AcGeCircArc3d& arc) const;

    double m_bulge = 0.0;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
    CString m_typeText;
};
