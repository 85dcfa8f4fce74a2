#pragma once

// Points typed on the kelaz command line: "x,y" or "x,y,z", several separated by blanks or ';'.

#include <string>
#include <string_view>

#include "host/ge/GeArrays.h"

namespace kelaz {

// Numbers follow the module's strict rule (no exponents, no blanks inside); a point lies within
// the drawing's extent (kMaxCoordinate). On failure the array is untouched and error says which
// item is wrong.
bool ParsePoint(std::string_view text, AcGePoint3d& point, std::string& error);
bool ParsePointList(std::string_view text, AcGePoint3dArray& points, std::string& error);

// "x,y,z" with each number in %g.
std::string FormatPoint(const AcGePoint3d& point);

}  // namespace kelaz
