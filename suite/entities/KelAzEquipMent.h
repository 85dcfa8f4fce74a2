#pragma once

// A piece of equipment (a fan coil, a pump, a water heater ...). Its plan symbol is a
// rectangle with its diagonals.

#include "suite/entities/KelAzNode.h"

class KelAzEquipMent : public KelAzNode {
public:
    ACRX_DECLARE_MEMBERS(KelAzEquipMent);

    KelAzEquipMent() = default;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    void DrawSymbol(const kelaz::SymbolPainter& painter) const override;
    double SymbolHalfHeight() const override;
};
