#pragma once

// A main pipe: a vertical pipe (riser) at one plan position, from its first elevation to its
// second.

#include "suite/entities/KelAzCurveEntity.h"
#include "suite/entities/KelAzRiser.h"

class KelAzMainPipe : public kelaz::KelAzRiser<KelAzCurveEntity> {
public:
    ACRX_DECLARE_MEMBERS(KelAzMainPipe);

    KelAzMainPipe() = default;
};
