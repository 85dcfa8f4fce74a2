#pragma once

// What leads have in common: the laying type, which says how the lead is run and how it is
// drawn (kDashedLayingType draws it dashed, as concealed runs are shown on plans).

#include <utility>
#include <vector>

#include "suite/entities/KelAzCurveEntity.h"

class KelAzLeadPrototype : public KelAzCurveEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzLeadPrototype);

    static constexpr int kDashedLayingType = 1;

    Acad::ErrorStatus SetLayingType(int layingType);
    int GetLayingType() const;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    KelAzLeadPrototype() = default;

    bool IsDashed() const { return m_layingType == kDashedLayingType; }

private:
    int m_layingType = 0;
};

namespace kelaz {

// Dash and gap of a dashed lead on a 1:100 plan, in drawing units (millimetres).
inline constexpr double kLeadDashLength = 300.0;
inline constexpr double kLeadDashGap = 150.0;

// The dashes along a run of the given length, as (from, to) distances from its start. The
// pattern is stretched to fit so that the run begins and ends with a dash; a run too short for
// two dashes is one dash over its whole length, and a run of no length has none.
std::vector<std::pair<double, double>> DashRuns(double length, double dash = kLeadDashLength,
                                                double gap = kLeadDashGap);

}  // namespace kelaz
