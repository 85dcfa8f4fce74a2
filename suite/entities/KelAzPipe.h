#pragma once

// A straight pipe between two points; it draws as its line.

#include "suite/entities/KelAzCurveEntity.h"

class KelAzPipe : public KelAzCurveEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzPipe);

    KelAzPipe() = default;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
};
