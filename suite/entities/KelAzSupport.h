#pragma once

// A pipe support between two points; it draws as its line with a short mark across each end.

#include "suite/entities/KelAzCurveEntity.h"

class KelAzSupport : public KelAzCurveEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzSupport);

    KelAzSupport() = default;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
};

namespace kelaz {
// The length of the mark across each end of a support on a 1:100 plan.
inline constexpr double kSupportMarkLength = 200.0;
}  // namespace kelaz
