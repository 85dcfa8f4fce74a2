#pragma once

// Point prompts shared by the placement commands. The first and insertion point prompts offer
// a reference point (R): the drafter picks a point to measure from, and the wanted point is then
// asked with the rubber band starting there, so that "@dx,dy" is an offset from the reference;
// Enter at that prompt takes the reference point itself. The next-point prompt of drawn runs
// offers an arc (A) and a step back (U), and may let the caller follow the cursor.

#include "host/ge/Point3d.h"
#include "module/entry/LayoutApi.h"

// Follows the cursor while the next point is asked: the previous point, where the cursor is,
// and the caller's value (a width, a length ... whatever the caller shows with it).
typedef void (*KelAzTrackFun)(const AcGePoint3d& previous, const AcGePoint3d& cursor, double value);

class LAYOUT_API CKelAzSelect {
public:
    // "\n指定第一点:", with the reference keyword "[参考点(R)]" when offered. The host's status:
    // RTNORM with the point, RTNONE for Enter, RTCAN for a cancel.
    static int GetPoint(AcGePoint3d& point, bool offerReference);
    // "\n指定插入点:", likewise; after a reference point "\n请指定插入点:".
    static int GetInsertPoint(AcGePoint3d& point, bool offerReference);
    // "\n指定下一点[圆弧(A)/回退(U)]<回车结束>:" with the rubber band from previous. RTNORM with
    // the point, RTKWORD for A or U (read it with acedGetInput), RTNONE for Enter, RTCAN. With a
    // tracking function every cursor move is handed to it with value before a point is given.
    static int GetNextPoint(AcGePoint3d& point, AcGePoint3d previous, KelAzTrackFun track,
                            double value);
};
