#include "suite/entities/KelAzMainPipe.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzMainPipe, KelAzCurveEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, KELAZMAINPIPE, KelAzSuite)
