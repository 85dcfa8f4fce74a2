#pragma once

// What ducts have in common: a cross-section of a width and a height (a height of 0 is a round
// duct of that diameter). A duct draws as its two side lines, the width apart, and its centre
// line; with no width, as its line. A vertical duct shows its cross-section in plan.

#include "suite/entities/KelAzCurveEntity.h"

class KelAzDuctPrototype : public KelAzCurveEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzDuctPrototype);

    // A size below 0 or not finite is refused with eInvalidInput.
    Acad::ErrorStatus SetWidth(double width);
    double GetWidth() const;
    Acad::ErrorStatus SetHeight(double height);
    double GetHeight() const;
    bool IsRound() const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // Rigid motions and uniform scaling, which scales the section too; others answer
    // eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    KelAzDuctPrototype() = default;

private:
    double m_width = 0.0;
    double m_height = 0.0;
};
