#pragma once

// The drawing commands of leads and pipes at kelaz's command line, each through the module's
// creators: LEAD (leads at an elevation, straight or in arcs), MAINLEAD, RISER and
// MAINPIPE (vertical ones between two elevations), PIPE (straight pipes), EXTEND (a duct's end
// moved to a point) and NEWDUCT (a new duct size in the project's catalogue).

#include "host/ge/Point3d.h"

namespace kelaz {

void RegisterPipeCommands(const wchar_t* group);

// The bulge of the arc from start through middle to end in plan (positive counter-clockwise, as
// a polyline's): the cotangent of half the angle the arc's ends make at the middle point. False
// when the three points lie on one line (or two of them on one spot): no arc passes through them.
bool BulgeThroughPoints(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end,
                        double& bulge);

}  // namespace kelaz
