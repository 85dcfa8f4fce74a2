#pragma once

// The extent a drawing's points keep to, whoever gives them (the command line, a script, the
// calculations of kelaz calc).

#include "host/ge/Point3d.h"
#include "host/text/CString.h"

namespace kelaz {

// How far from the origin a point may lie, in millimetres, on any axis. A point further out is a
// slip of the keyboard, and no extent, zoom or export computed from it would be usable.
inline constexpr double kMaxCoordinate = 1e9;

bool WithinDrawingExtent(const AcGePoint3d& point);
// What is said of a point outside it, naming the limit.
CString OutsideExtentMessage();

}  // namespace kelaz
