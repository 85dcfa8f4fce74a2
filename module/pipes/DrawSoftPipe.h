#pragma once

// Soft (flexible) pipes drawn point by point. The drafter picks a first point, then further
// points, each joined to the one before by a straight segment or, with A, by an arc through a
// middle point whose end is picked in the host's own ARC command. Each run is one KelAzSoftLine
// of the current attribute and system code, in the drawing from its first vertex on, so the
// drafter sees it grow. Enter ends a run and starts the next one; a cancel ends the command. A
// run of fewer than two vertices is taken out of the drawing again.
//
// Statuses inside the class: eOk, eInvalidInput (no usable answer, or the line cannot be
// opened) and eUserBreak (the drafter cancelled).

#include "host/db/AcadErrorStatus.h"
#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CDrawSoftPipe {
public:
    CDrawSoftPipe() = default;
    CDrawSoftPipe(const CDrawSoftPipe&) = default;
    CDrawSoftPipe& operator=(const CDrawSoftPipe&) = default;
    virtual ~CDrawSoftPipe();

    // Draws runs until the drafter cancels; always eOk.
    Acad::ErrorStatus Draw();

private:
    void DoDraw();
    // One run: 1 when it ended with a line kept (id names it) or with no first point, 0 when
    // the line was taken out again (or could not be reopened), -1 when the command must stop.
    int GetFreeDraw(AcDbObjectId& id);
    // "\n指定第一点[参考点(R)]:"; R asks a base point to measure from, then the first point.
    Acad::ErrorStatus GetFreeDrawFirstPt(AcGePoint3d& pt);
    // The empty line in the drawing: 1, or 0 when it could not be added, -1 without a current
    // attribute or system code.
    int CreateNewSoftPipe(AcDbObjectId& id);
    // The next points until Enter (eOk) or a cancel (eUserBreak); curPt follows the last vertex.
    Acad::ErrorStatus AddNextPtToFreeObj(const AcDbObjectId& id, AcGePoint3d& curPt);
    // Appends a vertex; a bulge (not zero) goes to the vertex before it, the segment it bends.
    Acad::ErrorStatus AddPt(const AcDbObjectId& id, const AcGePoint3d& pt, AcGeVector3d normal,
                            double bulge);
    // An arc from curPt through a middle point to the end picked in the host's ARC command:
    // nextPt, normal and bulge of the segment; eUserBreak when the drafter cancels.
    Acad::ErrorStatus FreeCir(AcGePoint3d& curPt, AcGePoint3d& nextPt, AcGeVector3d& normal,
                              double& bulge, const AcDbObjectId& id);
    // Reads the arc the ARC command just drew (the drawing's last entity) and erases it; false
    // when the last entity is no arc.
    bool DealLastArc(AcGePoint3d& curPt, AcGePoint3d& nextPt, AcGeVector3d& normal, double& bulge,
                     const AcDbObjectId& id);
};
