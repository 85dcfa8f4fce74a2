#pragma once

// The box around drawn primitives: polylines with the real sweep of their bulged segments,
// arcs by their sweep, circles in their plane, and text as a box of its height along its
// direction (no font metrics here: every character counts as wide as the text is high).

#include "host/ge/Extents.h"
#include "host/gi/Primitives.h"

namespace kelaz {

void AddPrimitiveExtents(const GiPrimitive& primitive, AcDbExtents& extents);
AcDbExtents PrimitiveListExtents(const GiPrimitiveList& primitives);

}  // namespace kelaz
