#pragma once

// Selection and geometry helpers of the common tools, over the working database.

#include "host/db/ObjectId.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/Extents.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

class AcRxClass;

class KELToolKit {
public:
    // Entities of the class (its name, e.g. "KelAzEquipMent", or its DXF name, e.g.
    // "KELAZEQUIPMENT") lying inside the window p1-p2 grown by tolerance on every side, in
    // drawing order. False (ids emptied) when the class is unknown or there is no drawing.
    static bool SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                             const AcGePoint3d& p1, const AcGePoint3d& p2, double tolerance = 0.0);
    // Entities of the class crossing the window p1-p2 on one of the layers of a comma list (an
    // empty list: any layer).
    static bool SelectInterEntity(AcDbObjectIdArray& ids, const CString& className,
                                  const AcGePoint3d& p1, const AcGePoint3d& p2,
                                  const CString& layers);
    // Do the two boxes meet (touching counts)?
    static bool ExtentsInter(const AcDbExtents& a, const AcDbExtents& b);
    // The arc from start through mid to end; false (arc untouched) for collinear points.
    static bool FormArcByTreePt(const AcGePoint3d& start, const AcGePoint3d& mid,
                                const AcGePoint3d& end, AcGeCircArc3d& arc);
};

namespace kelaz {
// A registered class by its name or its DXF name; null when there is none.
AcRxClass* FindClass(const CString& name);
}  // namespace kelaz
