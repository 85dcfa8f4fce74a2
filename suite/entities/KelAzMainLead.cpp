#include "suite/entities/KelAzMainLead.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzMainLead, KelAzLeadPrototype, AcDb::kDHL_CURRENT,
                        AcDb::kMReleaseCurrent, 0, KELAZMAINLEAD, KelAzSuite)
