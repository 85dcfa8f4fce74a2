#pragma once

// Point prompts shared by the placement commands, with an optional reference point: the drafter
// may first pick a point to measure from and then give the wanted point relative to it
// (@dx,dy at the command line), the rubber band starting at the reference.

#include "host/ge/Point3d.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CKelAzSelect {
public:
    // "\n指定第一点:", with the reference keyword "[参考点(R)]" when offered. The host's status:
    // RTNORM with the point, RTNONE for Enter, RTCAN for a cancel.
    static int GetPoint(AcGePoint3d& point, bool offerReference);
    // "\n指定插入点:", likewise; after a reference point "\n请指定插入点:".
    static int GetInsertPoint(AcGePoint3d& point, bool offerReference);
};
