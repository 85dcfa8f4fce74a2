#pragma once

// Insertion points of identical components spread evenly along an arc the drafter picked (an
// arc, the arc segment of a two-vertex polyline, or a curved lead), both ends included, kept a
// margin away from the arc's ends when asked. Points where an equipment of the same level
// already stands are meant to be left out and counted; the level filter it relies on never
// reports one, so every point is returned and the count stays 0.

#include "host/db/ObjectId.h"
#include "host/ge/GeArrays.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CDisposeOnCurve {
public:
    CDisposeOnCurve() = default;
    CDisposeOnCurve(const CDisposeOnCurve&) = default;
    CDisposeOnCurve& operator=(const CDisposeOnCurve&) = default;
    virtual ~CDisposeOnCurve() = default;

    // The elevation at which an existing equipment counts as standing at a computed point.
    void SetLevel(double level);
    // Kept and copied for the caller; the computation does not use it.
    void SetComponentType(const CString& type);
    // Points left out in the last run.
    int GetAmountOfSame() const;

    // count points on the picked curve, margin away from each end (no margin when it is 0).
    // False, out emptied, for a curve that carries no arc or a margin that leaves none (the
    // drafter is told of the margin and of a polyline with other than two vertices).
    bool DisposalOnArc(AcGePoint3dArray& out, const AcDbObjectId& curve, double margin, int count);
    // The same on an arc given by its ends and centre, counter-clockwise from start to end
    // about +Z, without margin. Always true.
    bool DisposalOnArc(AcGePoint3dArray& out, const AcGePoint3d& start, const AcGePoint3d& end,
                       const AcGePoint3d& centre, double radius, int count);

private:
    bool GetArcInfo(AcGePoint3d& start, AcGePoint3d& end, AcGePoint3d& centre, double& radius,
                    const AcDbObjectId& curve);
    bool HasMarginOnArc(AcGePoint3d& start, AcGePoint3d& end, const AcGePoint3d& centre,
                        double& radius, double margin);
    AcGePoint3dArray GetAvgPointOnArc(const AcGePoint3d& start, const AcGePoint3d& end,
                                      const AcGePoint3d& centre, double radius, int count);

    AcDbObjectId m_curveId;
    CString m_strComponentType;
    AcGePoint3d m_ptArcStart;
    AcGePoint3d m_ptArcEnd;
    AcGePoint3d m_ptArcCenter;
    double m_dLevel = 0.0;
    int m_nAmountOfSame = 0;
};
