#pragma once

// A valve on a pipe. Its plan symbol is two triangles tip to tip (a bow-tie) along its X
// axis.

#include "suite/entities/KelAzNode.h"

class KelAzPipeValve : public KelAzNode {
public:
    ACRX_DECLARE_MEMBERS(KelAzPipeValve);

    KelAzPipeValve() = default;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    void DrawSymbol(const kelaz::SymbolPainter& painter) const override;
    double SymbolHalfHeight() const override;
};
