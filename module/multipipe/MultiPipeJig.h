#pragma once

// The drag with which the drafter traces the centre path of a bundle of parallel lines, point
// by point, straight or (A) through an arc; every line of the settings is offset from the path
// and shown live. Each accepted point has the driver lay the lines of that piece; U takes the
// last piece back.
//
// The state value handed to the preview: 0 while the cursor has not moved off the last point
// (nothing to show, an accepted point there is ignored), 1 once the sample holds segments.

#include <vector>

#include "host/db/AdsDef.h"
#include "host/ed/Jig.h"
#include "host/ge/Point3d.h"
#include "host/ge/Tol.h"
#include "host/ge/Vector3d.h"
#include "module/entry/LayoutApi.h"
#include "module/multipipe/MultiLine.h"
#include "module/multipipe/MultiPipeGeometry.h"
#include "module/multipipe/MultiPipeRow.h"

class CMLineDlg;
class CDrawMlead;

class LAYOUT_API CMultiPipeJig : public AcEdJig {
public:
    CMultiPipeJig(CMLineDlg* dialog, const AcGeVector3d& normal);
    ~CMultiPipeJig() override;

    // One pass from the first point: -4 ends the command (a cancel), -1 when there was no first
    // point, else the status with which the pass ended (-1 for Enter).
    int Run(const AcGePoint3d& firstPt, int firstStatus, CDrawMlead* driver);

    DragStatus sampler() override;
    Adesk::Boolean update() override;
    AcDbEntity* entity() const override;

    // The rows of the pass and the path traced so far (for the driver's creation).
    const MultiPipeRowList& Rows() const { return m_rows; }
    const std::vector<kelaz::multipipe::PathPiece>& Path() const { return m_path; }
    // The piece the last sample computed, which an accepted point lays.
    const kelaz::multipipe::PathPiece& CurrentPiece() const { return m_piece; }

private:
    CMLineDlg* m_pDlg;
    CMultiLine* m_pPreview = nullptr;
    MultiPipeRowList m_rows;
    MultiLineSegmentArray m_segments;
    int m_state = 0;
    AcGePoint3d m_firstPt;
    AcGePoint3d m_lastPt;
    AcGePoint3d m_curPt;
    int m_bArc = 0;
    AcGePoint3d m_arcMidPt;
    int m_lastDragStatus = kNoChange;
    AcGeTol m_tol;

    AcGeVector3d m_normal;
    CDrawMlead* m_pDriver = nullptr;
    std::vector<kelaz::multipipe::PathPiece> m_path;
    kelaz::multipipe::PathPiece m_piece;
};
