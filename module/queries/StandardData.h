#pragma once

// One classified line of CDealLineEntity: where it runs and, for a line parallel to an axis in
// plan, the coordinate that stays constant along it (its sort key).

#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"

struct StandardData {
    // x of a line along Y, y of a line along X; 0 for every other line.
    double key = 0.0;
    AcGePoint3d start;
    AcGePoint3d end;
    AcDbObjectId id;
};
