#include "module/multipipe/MultiPipeJig.h"

#include "host/ed/EditorInput.h"
#include "module/multipipe/DrawMlead.h"
#include "module/multipipe/MLineDlg.h"

namespace {

constexpr const wchar_t* kNextPointPrompt = L"\n捕捉下一个端点[A-圆弧，U-退回]";
constexpr const wchar_t* kArcPointPrompt = L"输入弧线的除端点外的任意点:\n";
constexpr const wchar_t* kFirstPointAgainPrompt = L"\n指定第一点[选参考点(R)]";

}  // namespace

CMultiPipeJig::CMultiPipeJig(CMLineDlg* dialog, const AcGeVector3d& normal)
    : m_pDlg(dialog), m_normal(normal) {
    m_tol.setEqualPoint(1.0);
}

CMultiPipeJig::~CMultiPipeJig() { delete m_pPreview; }

int CMultiPipeJig::Run(const AcGePoint3d& firstPt, int firstStatus, CDrawMlead* driver) {
    m_pDriver = driver;
    m_rows.clear();
    if (m_pDlg) {
        m_pDlg->ReadRowsFromGrid();
        for (const auto& row : m_pDlg->Rows())
            m_rows.push_back(std::make_unique<MultiPipeRow>(*row));
    }
    AcGePoint3d first = firstPt;
    int status = firstStatus;
    if (status == RTKWORD) {
        ACHAR word[32] = {};
        acedGetInput(word, 32);
        CString keyword(word);
        keyword.MakeUpper();
        status = RTNONE;
        if (keyword == L"R") {
            ads_point picked = {0.0, 0.0, 0.0};
            acedInitGet(0, L"R");
            status = acedGetPoint(nullptr, kFirstPointAgainPrompt, picked);
            first = AcGePoint3d(picked[0], picked[1], picked[2]);
        }
    }
    if (status == RTCAN) return -4;
    if (status != RTNORM) return -1;
    if (m_pDriver && !m_pDriver->AdjustPt(first)) return -1;
    m_firstPt = m_lastPt = first;
    if (m_pDriver) m_pDriver->PushPathPoint(first);

    for (;;) {
        setDispPrompt(kNextPointPrompt);
        m_state = 0;
        delete m_pPreview;
        m_pPreview = new CMultiLine;
        const DragStatus dragged = drag();
        if (dragged == kNull || dragged == kCancel) {
            delete m_pPreview;
            m_pPreview = nullptr;
            return dragged;
        }
        if (dragged == kNormal) {
            if (m_state == 0) continue;
            // The point is taken: every line of the piece is laid.
            const int seg = static_cast<int>(m_path.size());
            if (m_pDriver)
                for (int row = 0; row < static_cast<int>(m_rows.size()); ++row)
                    m_pDriver->AddMPipeToDb(row, seg);
            m_path.push_back(m_piece);
            m_lastPt = m_curPt;
            m_bArc = 0;
            if (m_pDriver) m_pDriver->PushPathPoint(m_curPt);
            continue;
        }
        if (dragged == kKW2) {
            if (m_pDriver) m_pDriver->RollBack(L"U");
            if (!m_path.empty()) {
                m_lastPt = m_path.back().start;
                m_path.pop_back();
            } else if (m_pDriver && m_pDriver->PathPoints() == 0) {
                // Nothing to take back: the first point stays where the pass began.
                m_pDriver->PushPathPoint(m_lastPt);
            }
            m_bArc = 0;
            continue;
        }
    }
}

AcEdJig::DragStatus CMultiPipeJig::sampler() {
    setKeywordList(L"A U");
    setUserInputControls(kNullResponseAccepted);
    setSpecialCursorType(kCrosshair);
    AcGePoint3d pt;
    DragStatus status = acquirePoint(pt, m_lastPt);
    m_lastDragStatus = status;
    if (status == kNormal && m_pDriver && !m_pDriver->AdjustPt(pt)) return kNoChange;
    if (status == kKW1) {
        m_arcMidPt = AcGePoint3d();
        ads_point base = {m_lastPt.x, m_lastPt.y, m_lastPt.z};
        ads_point mid = {0.0, 0.0, 0.0};
        const int got = acedGetPoint(base, kArcPointPrompt, mid);
        if (got == RTCAN) return kCancel;
        if (got != RTNORM) return kNoChange;
        m_arcMidPt = AcGePoint3d(mid[0], mid[1], mid[2]);
        m_bArc = 1;
        status = acquirePoint(pt, m_lastPt);
        m_lastDragStatus = status;
        if (status == kNormal && m_pDriver && !m_pDriver->AdjustPt(pt)) return kNoChange;
    }
    if (status == kKW2) {
        acutPrintf(L"\n回退");
        return kKW2;
    }
    if (status != kNormal) return status;
    if (pt.isEqualTo(m_lastPt, m_tol)) {
        m_state = 0;
        return kNoChange;
    }

    kelaz::multipipe::PathPiece piece;
    piece.start = m_lastPt;
    piece.end = pt;
    piece.isArc = m_bArc != 0;
    piece.mid = m_arcMidPt;
    MultiLineSegmentArray segments;
    for (const auto& row : m_rows) {
        kelaz::multipipe::LinePiece line;
        const kelaz::multipipe::OffsetStatus offset =
            kelaz::multipipe::OffsetPiece(piece, row->horzOffset, row->vertOffset, line);
        if (offset == kelaz::multipipe::OffsetStatus::kNoCenter) {
            acutPrintf(L"\n处理弧线的异常退出");
            return kNoChange;
        }
        if (offset == kelaz::multipipe::OffsetStatus::kRadiusTooSmall) {
            // Only a point the drafter takes is told off; a moving cursor just stops the
            // preview.
            if (sampleAccepts()) {
                acutPrintf(L"\nError:当前圆弧半径小于偏移量，请重新选择");
                return kCancel;
            }
            return kNoChange;
        }
        // The preview starts where the lead will start: at the corner with the line's
        // previous piece.
        if (!m_path.empty()) {
            kelaz::multipipe::LinePiece previous;
            if (kelaz::multipipe::OffsetPiece(m_path.back(), row->horzOffset, row->vertOffset,
                                              previous) == kelaz::multipipe::OffsetStatus::kOk) {
                kelaz::multipipe::LinePiece bridge;
                if (kelaz::multipipe::JoinPieces(previous, line, piece.start, row->horzOffset,
                                                 bridge))
                    segments.append(kelaz::multipipe::ToSegment(bridge));
            }
        }
        segments.append(kelaz::multipipe::ToSegment(line));
    }
    m_segments = segments;
    m_piece = piece;
    m_curPt = pt;
    m_state = 1;
    return kNormal;
}

Adesk::Boolean CMultiPipeJig::update() {
    if (m_pPreview) {
        m_pPreview->SetFlag(m_state);
        m_pPreview->SetSegments(m_segments);
    }
    m_segments.setLogicalLength(0);
    return Adesk::kTrue;
}

AcDbEntity* CMultiPipeJig::entity() const { return m_pPreview; }
