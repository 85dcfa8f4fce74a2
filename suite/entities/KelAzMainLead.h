#pragma once

// A main lead: a vertical lead at one plan position, from the floor's first elevation to its
// second.

#include "suite/entities/KelAzLeadPrototype.h"
#include "suite/entities/KelAzRiser.h"

class KelAzMainLead : public kelaz::KelAzRiser<KelAzLeadPrototype> {
public:
    ACRX_DECLARE_MEMBERS(KelAzMainLead);

    KelAzMainLead() = default;
};
