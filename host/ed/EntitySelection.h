#pragma once

// Picking entities at the command line: acedEntSel (one entity under a picked point) and
// selection sets (acedSSGet by window, crossing, all, or asked at the command line).

#include "host/AdAChar.h"
#include "host/db/AdsDef.h"
#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/gi/Primitives.h"

class AcDbDatabase;

namespace kelaz {

// Half the side of the square pick box, in drawing units. There is no screen to size it in
// pixels, so it is sized for drawings in millimetres.
inline constexpr double kPickBoxHalfWidth = 10.0;

// The distance in plan from the point to what the primitives draw (0 inside a text's box).
double PlanDistanceToPrimitives(const GiPrimitiveList& primitives, const AcGePoint3d& point);

// The entity under a picked point: among the entities of model space whose extents meet the
// pick box (found through the spatial index), the one whose drawing passes nearest the point,
// within the box's half width. The later drawn wins a tie. Null when none.
AcDbObjectId PickEntity(AcDbDatabase* db, const AcGePoint3d& point,
                        double halfWidth = kPickBoxHalfWidth);

}  // namespace kelaz

// Asks for an object (prompt "\n选择对象: " when str is null). RTNORM with the entity and the
// picked point; RTERROR when the pick finds nothing or the answer is Enter (ERRNO tells which);
// RTKWORD for a keyword of acedInitGet; RTCAN.
int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres);

// A selection set of the current drawing: str "W" (window) or "C" (crossing) with two corner
// points, "X" (everything), or null to ask at the command line. filter may hold group 0 (the
// class's DXF name) and 8 (layer) items, all of which must match. RTERROR when nothing is
// selected or str is unknown. Free the set with acedSSFree.
int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter,
              ads_name ss);
int acedSSLength(const ads_name ss, Adesk::Int32* len);
int acedSSName(const ads_name ss, Adesk::Int32 i, ads_name entres);
int acedSSFree(const ads_name sname);
