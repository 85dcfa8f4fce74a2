#pragma once

// Tests of points and lines against boxes, and selections of the suite's entities by window,
// layer, class and by what meets a point or a line. Every selection goes through the drawing's
// spatial index; results are in drawing order. A class is given by its name ("KelAzPipe") or
// its DXF name ("KELAZPIPE"); an empty class means every suite entity. Lines are the suite's
// entities that run from a start to an end point (pipes, leads, ducts, risers ...); point
// components are those placed at an insertion point.

#include "host/db/ObjectId.h"
#include "host/ge/Extents.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CKelAzSelectFun {
public:
    // Does the box of one unit around p in plan, at p's height, meet box?
    static bool PtIsInExtents(const AcGePoint3d& p, const AcDbExtents& box);
    // Is p on the segment a-b under a point tolerance of tolerance? With flat, p is taken at
    // a's height (the test in plan at the segment's height).
    static bool PtIsInExtents(const AcGePoint3d& p, const AcGePoint3d& a, const AcGePoint3d& b,
                              bool flat, double tolerance);

    // Do both ends of the line lie in the box, in plan?
    static bool LineIsInExtents(const AcDbObjectId& line, const AcDbExtents& box);
    // Does the line, as a straight segment between its ends in plan, meet the box?
    static bool LineIsInterExtents(const AcDbObjectId& line, const AcDbExtents& box);

    // Every entity of the class in the drawing. False (ids empty) when there is none or the
    // class is unknown.
    static bool SelectAllEntity(AcDbObjectIdArray& ids, const CString& className);
    // Entities of the class on one of the layers of a comma list (any letter case) meeting the
    // window p1-p2.
    static bool SelectEntityInLayer(AcDbObjectIdArray& ids, const CString& layers,
                                    const CString& className, const AcGePoint3d& p1,
                                    const AcGePoint3d& p2);
    // Entities of the class inside the window p1-p2, or meeting it when crossing.
    static bool SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                             const AcGePoint3d& p1, const AcGePoint3d& p2, bool crossing);
    // Entities of the class meeting the square of half side tolerance around the point.
    static bool SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                             const AcGePoint3d& point, double tolerance);
    // Entities of the class the drafter selects after the prompt (picks, W, C; Enter ends).
    // Objects of other classes are left out silently.
    static bool SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                             const CString& prompt);

    // Point components whose insertion point lies within tolerance of p (in plan with flat).
    static bool SelectPunEntity(AcDbObjectIdArray& ids, const AcGePoint3d& p, double tolerance,
                                bool flat);
    // Point components whose insertion point lies in the window p1-p2, in plan.
    static bool SelectPunEntity(AcDbObjectIdArray& ids, const AcGePoint3d& p1,
                                const AcGePoint3d& p2);

    // Lines with an end within tolerance of p in plan.
    static bool GetAssoLine(AcDbObjectIdArray& ids, const AcGePoint3d& p, double tolerance);
    // Lines with an end within tolerance of either end of the line, the line itself left out:
    // those at its start first.
    static bool GetAssoLine(AcDbObjectIdArray& ids, const AcDbObjectId& line, double tolerance);
};
