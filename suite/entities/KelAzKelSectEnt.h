#pragma once

// A section-type component (a fitting or accessory shown by its cross-section). Its plan
// symbol is a square with a circle inside.

#include "suite/entities/KelAzNode.h"

class KelAzKelSectEnt : public KelAzNode {
public:
    ACRX_DECLARE_MEMBERS(KelAzKelSectEnt);

    KelAzKelSectEnt() = default;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    void DrawSymbol(const kelaz::SymbolPainter& painter) const override;
    double SymbolHalfHeight() const override;
};
