#pragma once

// A duct between two points, drawn by its section's width (see KelAzDuctPrototype).

#include "suite/entities/KelAzDuctPrototype.h"

class KelAzDuct : public KelAzDuctPrototype {
public:
    ACRX_DECLARE_MEMBERS(KelAzDuct);

    KelAzDuct() = default;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
};
