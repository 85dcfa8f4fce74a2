#pragma once

// What the layout commands share once their points are computed: which points already hold a
// component, the drafter's choice about those, and the placing itself.

#include <vector>

#include "host/ge/GeArrays.h"

class CInitCmd;

namespace kelaz {

// Starts a placing command through its guard; false (the drafter told what is missing) when
// the command must stop.
bool StartPlacing(CInitCmd& guard);
// The positions of the points where a component already stands: the same plan position and
// elevation, found among the drawing's components around the points.
std::vector<int> OccupiedPoints(const AcGePoint3dArray& points);
// One component of the current type at each point. Points that already hold a component are
// listed first and the drafter chooses to skip them (Enter), place there all the same, or give
// up. Reports and answers how many were placed.
int PlaceLaidOut(const AcGePoint3dArray& points);

}  // namespace kelaz
