#pragma once

// The multi-pipe command: the settings dialog chooses the lines of a bundle, the elevation box
// beside the drawing gives the traced points their elevation, and one drag per pass traces the
// centre path while every line is laid at its offsets. U takes back the last piece of every
// line; Enter ends a pass and starts the next with the same lines; a cancel at a first point
// ends the command.
//
// What is laid: for each line and accepted piece, one lead of the line's attribute (the line
// name under its component type's small category), system code and laying mode (concealed
// modes, whose code ends in C, are drawn dashed), tagged with the component type's category,
// on the layer of its category and system. A mitred corner moves the end of the line's previous
// lead onto the mitre point (U moves it back); a bevel or a gap at an arc adds a short lead in
// the same group. A piece whose ends lie at different elevations is laid level and a vertical
// main lead joins the two elevations at the end the drafter chooses. Each line's leads of one
// piece form one id array on the segment stack.

#include <deque>
#include <vector>

#include "host/db/AcadErrorStatus.h"
#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"
#include "module/foundations/LevelDlg.h"
#include "module/multipipe/MLineDlg.h"
#include "module/multipipe/MultiPipeGeometry.h"
#include "module/multipipe/MultiPipeRow.h"

class CMultiPipeJig;

class LAYOUT_API CDrawMlead : public CLevelDlg {
public:
    explicit CDrawMlead(const CString& key);
    ~CDrawMlead() override;

    Acad::ErrorStatus Draw();
    void DoDraw();
    // Passes until one ends the command; always -1.
    int DrawCycle();
    // The first point: 2 given (and adjusted), 0 for Enter, -1 for a cancel or a refused point.
    int GetFirstPt(AcGePoint3d& pt);
    // Gives the point the box's elevation when the box's check is on; false when the elevation
    // cannot be used.
    bool AdjustPt(AcGePoint3d& pt);
    // "U" takes back the last piece of every line: 1 done (or not "U"), 0 nothing to take back.
    int RollBack(const wchar_t* keyword);

    // Lays line row of the jig's current piece (the pass's piece number seg); the number of
    // leads laid.
    int AddMPipeToDb(int row, int seg);

    // The creators of the bundle's leads, in the leads' property order.
    static bool AddLineLead(const AcGePoint3d& pt1, const AcGePoint3d& pt2, const MultiPipeRow& row,
                            AcDbObjectId& id);
    static bool AddArcLead(const AcGePoint3d& pt1, const AcGePoint3d& pt2, double bulge,
                           const AcGeVector3d& normal, const MultiPipeRow& row, AcDbObjectId& id);
    // A lead of one piece of an offset line: straight or an arc.
    static bool CreateNewMulLead(const kelaz::multipipe::LinePiece& piece, const MultiPipeRow& row,
                                 AcDbObjectId& id);
    // Where the vertical main lead of a piece that rises goes: 1 its start, 2 its end, 0 when
    // the drafter cancels (the piece is then laid sloping, as traced).
    static int DealInclineLead();
    // The attribute path of a row's line, and the category its component type names.
    static CString RowAttPath(const MultiPipeRow& row);
    static CString RowCategory(const MultiPipeRow& row);

    // The jig running now (null between passes).
    CMultiPipeJig* Jig() const { return m_pJig; }
    int LineCount() const { return m_nLines; }
    size_t SegmentGroups() const { return m_segments.size(); }
    size_t PathPoints() const { return m_pathPts.size(); }
    void PushPathPoint(const AcGePoint3d& pt);

    // The driver of the running command (null when none runs).
    static CDrawMlead*& Current();

private:
    // What undo must put back besides erasing a group: the previous lead's end a mitre moved.
    struct GroupRecord {
        AcDbObjectId trimmedId;
        AcGePoint3d trimmedEnd;
        kelaz::multipipe::LinePiece piece;  // the line's last piece as laid (for the next join)
        AcDbObjectId pieceId;
    };

    CMLineDlg m_dlg;
    MultiPipeRowList m_rows;
    int m_nLines = 0;
    AcGeVector3d m_vec{0, 0, 1};
    std::vector<AcDbObjectIdArray> m_segments;
    std::vector<AcGePoint3d> m_endPts;
    std::vector<AcGePoint3d> m_pathPts;
    std::vector<AcGePoint3d> m_pathPts2;
    std::deque<AcGePoint3d> m_startPts;
    AcGePoint3d m_curPt;
    AcGePoint3d m_prePt;
    int m_bFirst = 1;
    int m_bSecond = 1;

    std::vector<GroupRecord> m_records;  // beside m_segments, one per id array
    int m_inclineChoice = -1;            // asked once per piece, for all its lines
    CMultiPipeJig* m_pJig = nullptr;
};

// The multi-pipe command's body.
LAYOUT_API void pAddMlead();
