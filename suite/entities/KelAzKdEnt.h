#pragma once

// An entity placed by a 3-D placement (a location and its axes). It draws as a small square
// marker at its location, in the plane of the placement's axes.

#include "suite/entities/KelAzEntity.h"
#include "suite/entities/Placement3D.h"

class KelAzKdEnt : public KelAzEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzKdEnt);

    KelAzKdEnt() = default;

    // A placement whose axes do not form a frame is refused with eInvalidInput.
    Acad::ErrorStatus SetPlacement(const KelAzCommon::Placement3D& placement);
    KelAzCommon::Placement3D GetPlacement() const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // The location moves and the axes turn (squared up again after a stretching motion).
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    KelAzCommon::Placement3D m_placement;
};

namespace kelaz {
// Half the side of the marker square (1:100 plan, millimetres).
inline constexpr double kKdMarkerHalfSide = 100.0;
}  // namespace kelaz
