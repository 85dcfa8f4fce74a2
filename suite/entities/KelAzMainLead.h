#pragma once

// A main lead: a vertical lead at one plan position, from the floor's first elevation to its
// second. In plan it shows as the riser symbol (a circle with a dot).
// Its end points are (x, y, z1) and (x, y, z2) of its MainPipeInfo.

#include "suite/entities/KelAzLeadPrototype.h"
#include "suite/entities/MainPipeInfo.h"

class KelAzMainLead : public KelAzLeadPrototype {
public:
    ACRX_DECLARE_MEMBERS(KelAzMainLead);

    KelAzMainLead() = default;

    // eInvalidInput for a floor name without terminator or a number that is not finite.
    Acad::ErrorStatus SetMainPipeInfo(const MainPipeInfo& info);
    MainPipeInfo GetMainPipeInfo() const;

    // Each end moves the plan position of both: the riser stays vertical.
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point) override;
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point) override;

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // Motions that keep the vertical vertical; eNotApplicable for others.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    CString m_floorName;
};
