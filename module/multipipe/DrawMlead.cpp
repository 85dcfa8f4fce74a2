#include "module/multipipe/DrawMlead.h"

#include <cmath>

#include "host/app/DocManager.h"
#include "host/db/AdsDef.h"
#include "host/db/OpenObject.h"
#include "host/ed/EditorInput.h"
#include "module/commands/KeyWordDlg.h"
#include "module/entry/DispGlobaFun.h"
#include "module/multipipe/MultiPipeJig.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzLead.h"
#include "suite/tools/KELAzLayer.h"
#include "suite/tools/KelMessageBox.h"
#include "suite/tools/ModelSpace.h"
#include "suite/tools/OsMode.h"

namespace {

constexpr const wchar_t* kFirstPointPrompt = L"\n指定第一点[参考点(R)]";
constexpr const wchar_t* kReferencePrompt = L"\n指定参考点";
constexpr const wchar_t* kFirstAfterReferencePrompt = L"\n指定第一点";
// Elevations whose difference is below this are one elevation.
constexpr double kLevelTolerance = 1e-6;

AcGePoint3d ToPoint(const ads_point p) { return AcGePoint3d(p[0], p[1], p[2]); }

bool IsElectrical(const CString& spec) { return spec == L"电气" || spec == L"1_5u"; }

// Concealed laying modes (in walls, ceilings, floors: codes ending in C) are drawn dashed.
bool IsConcealed(const CString& layMode) {
    return !layMode.IsEmpty() && layMode != L"N/A" && layMode[layMode.GetLength() - 1] == L'C';
}

// The prompt of a first point with its reference-point keyword: RTNORM with the point, RTNONE,
// RTCAN, or what the reference prompts answered.
int AskFirstPoint(AcGePoint3d& pt) {
    ads_point picked = {0.0, 0.0, 0.0};
    acedInitGet(0, L"R");
    int status = acedGetPoint(nullptr, kFirstPointPrompt, picked);
    if (status == RTKWORD) {
        ads_point reference = {0.0, 0.0, 0.0};
        status = acedGetPoint(nullptr, kReferencePrompt, reference);
        if (status == RTNORM) status = acedGetPoint(reference, kFirstAfterReferencePrompt, picked);
    }
    if (status == RTNORM) pt = ToPoint(picked);
    return status;
}

}  // namespace

CDrawMlead*& CDrawMlead::Current() {
    static CDrawMlead* current = nullptr;
    return current;
}

CDrawMlead::CDrawMlead(const CString& key) : CLevelDlg(key) {}

CDrawMlead::~CDrawMlead() = default;

Acad::ErrorStatus CDrawMlead::Draw() {
    DoDraw();
    return Acad::eOk;
}

void CDrawMlead::DoDraw() {
    AcApDocument* doc = acDocManager->curDocument();
    if (doc) acDocManager->lockDocument(doc);
    if (m_dlg.DoModal() != IDOK) {
        if (doc) acDocManager->unlockDocument(doc);
        return;
    }
    m_dlg.StoreRows(m_rows);
    m_nLines = static_cast<int>(m_rows.size());
    CDialog::Create(IDD, acedGetAcadFrame());
    ShowWindow(SW_SHOW);
    if (CWnd* frame = acedGetAcadFrame()) frame->SetFocus();
    while (DrawCycle() >= 0) {
    }
    if (doc) acDocManager->unlockDocument(doc);
}

int CDrawMlead::GetFirstPt(AcGePoint3d& pt) {
    switch (AskFirstPoint(pt)) {
        case RTCAN:
            return -1;
        case RTNONE:
            return 0;
        case RTNORM:
            return AdjustPt(pt) ? 2 : -1;
        default:
            return -1;
    }
}

bool CDrawMlead::AdjustPt(AcGePoint3d& pt) {
    if (!UpdateData(TRUE)) return false;
    if (m_bCheck == 0) return true;
    CString text = kelaz::FormatText(L"%.2f", kelaz::CurrentLevel());
    text.Replace(L".00", L"");
    if (text.GetLength() < 1 || text.GetLength() > 13) {
        kelaz::ShowWarning(L"输入数值过大");
        return false;
    }
    pt.z = kelaz::CurrentLevel();
    return true;
}

void CDrawMlead::PushPathPoint(const AcGePoint3d& pt) {
    if (!m_pathPts.empty()) m_prePt = m_pathPts.back();
    m_pathPts.push_back(pt);
    m_curPt = pt;
}

int CDrawMlead::DrawCycle() {
    AcGePoint3d first;
    const int got = GetFirstPt(first);
    if (got == -1) return -1;
    int firstStatus = got == 2 ? RTNORM : RTNONE;
    for (bool firstPass = true;; firstPass = false) {
        if (!firstPass) {
            m_dlg.FillGridFromRows(m_rows);
            firstStatus = AskFirstPoint(first);
            if (!AdjustPt(first)) return -1;
        }
        m_pJig = new CMultiPipeJig(&m_dlg, m_vec);
        const int result = m_pJig->Run(first, firstStatus, this);
        if (result == -4) break;
        delete m_pJig;
        m_pJig = nullptr;
    }
    delete m_pJig;
    m_pJig = nullptr;
    return -1;
}

int CDrawMlead::RollBack(const wchar_t* keyword) {
    if (CString(keyword) != L"U") return 1;
    if (m_nLines >= 1) {
        for (int i = 0; i < m_nLines; ++i) {
            if (m_segments.empty()) {
                if (m_pathPts.empty()) return 0;
                m_curPt = m_pathPts.back();
                m_pathPts.pop_back();
                if (!m_pathPts.empty()) m_prePt = m_pathPts.back();
                return 0;
            }
            for (const AcDbObjectId& id : m_segments.back()) {
                AcDbEntity* entity = nullptr;
                if (acdbOpenAcDbEntity(entity, id, AcDb::kForWrite) == Acad::eOk) {
                    entity->erase();
                    entity->close();
                }
            }
            m_segments.pop_back();
            // The lead a mitre of this group shortened or lengthened gets its end back.
            if (!m_records.empty()) {
                const GroupRecord record = m_records.back();
                m_records.pop_back();
                KelAzLead* lead = nullptr;
                if (!record.trimmedId.isNull() &&
                    acdbOpenObject(lead, record.trimmedId, AcDb::kForWrite) == Acad::eOk) {
                    lead->setEndPoint(record.trimmedEnd);
                    lead->close();
                }
            }
        }
    }
    if (m_pathPts.empty()) return 0;
    m_curPt = m_pathPts.back();
    m_pathPts.pop_back();
    if (!m_pathPts.empty()) m_prePt = m_pathPts.back();
    if (m_nLines < 1) {
        m_bFirst = 0;
        return 1;
    }
    for (int i = 0; i < m_nLines && !m_endPts.empty(); ++i) {
        m_startPts.push_front(m_endPts.back());
        m_endPts.pop_back();
    }
    m_bFirst = 0;
    return 1;
}

CString CDrawMlead::RowCategory(const MultiPipeRow& row) {
    return CMLineDlg::SmallCategoryPath(row.spec, row.compType);
}

CString CDrawMlead::RowAttPath(const MultiPipeRow& row) {
    return RowCategory(row) + L"\\" + row.lineName;
}

namespace {

// The row's properties after the geometry, as every lead of the bundle has them.
void FinishRowLead(KelAzLead* lead, const MultiPipeRow& row, AcDbObjectId& id) {
    lead->SetSmallTypeNamePath(CDrawMlead::RowCategory(row));
    if (IsElectrical(row.spec) && IsConcealed(row.layMode))
        lead->SetLayingType(KelAzLeadPrototype::kDashedLayingType);
    if (addToModelSpace(id, lead) != Acad::eOk) {
        delete lead;
        id.setNull();
    }
}

KelAzLead* StartRowLead(const AcGePoint3d& pt1, const AcGePoint3d& pt2, const MultiPipeRow& row) {
    const CString attPath = CDrawMlead::RowAttPath(row);
    auto* lead = new KelAzLead;
    lead->SetAttName(attPath);
    lead->SetSysCode(row.sysCode);
    lead->SetLayName(CKELAzLayer::GetLayerByObjName_BySysCode(attPath, row.sysCode, 0));
    lead->setStartPoint(pt1);
    lead->setEndPoint(pt2);
    return lead;
}

}  // namespace

bool CDrawMlead::AddLineLead(const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                             const MultiPipeRow& row, AcDbObjectId& id) {
    if (pt1.distanceTo(pt2) < 0.0001 || row.sysCode.IsEmpty()) return false;
    FinishRowLead(StartRowLead(pt1, pt2, row), row, id);
    return !id.isNull();
}

bool CDrawMlead::AddArcLead(const AcGePoint3d& pt1, const AcGePoint3d& pt2, double bulge,
                            const AcGeVector3d& normal, const MultiPipeRow& row, AcDbObjectId& id) {
    if (pt1.distanceTo(pt2) < 0.0001 || row.sysCode.IsEmpty()) return false;
    KelAzLead* lead = StartRowLead(pt1, pt2, row);
    lead->SetBulge(bulge);
    lead->SetNormal(normal);
    FinishRowLead(lead, row, id);
    return !id.isNull();
}

bool CDrawMlead::CreateNewMulLead(const kelaz::multipipe::LinePiece& piece, const MultiPipeRow& row,
                                  AcDbObjectId& id) {
    if (piece.isArc)
        return AddArcLead(piece.start, piece.end, piece.bulge, AcGeVector3d::kZAxis, row, id);
    return AddLineLead(piece.start, piece.end, row, id);
}

int CDrawMlead::DealInclineLead() {
    CKeyWordDlg dialog(acedGetAcadFrame());
    dialog.SetCaption(L"处理方式");
    CStringArray items;
    items.Add(L"1-起点自动生成竖向构件");
    items.Add(L"2-终点自动生成竖向构件");
    dialog.SetItems(items);
    if (dialog.DoModal() != IDOK) return 0;
    const int choice = _wtoi(dialog.GetKeyWord());
    return choice == 1 || choice == 2 ? choice : 0;
}

int CDrawMlead::AddMPipeToDb(int row, int seg) {
    if (m_pJig == nullptr || row < 0 || row >= static_cast<int>(m_pJig->Rows().size())) return 0;
    const MultiPipeRow& line = *m_pJig->Rows()[row];
    kelaz::multipipe::PathPiece path = m_pJig->CurrentPiece();

    // A rising piece: laid level, the vertical lead at the chosen end.
    if (row == 0) m_inclineChoice = -1;
    const bool rises = std::abs(path.start.z - path.end.z) >= kLevelTolerance;
    if (rises && m_inclineChoice < 0) m_inclineChoice = DealInclineLead();
    const double lowZ = path.start.z;
    const double highZ = path.end.z;
    if (rises && m_inclineChoice == 1) path.start.z = path.mid.z = highZ;
    if (rises && m_inclineChoice == 2) path.end.z = path.mid.z = lowZ;

    AcDbObjectIdArray ids;
    GroupRecord record;
    kelaz::multipipe::LinePiece piece;
    if (kelaz::multipipe::OffsetPiece(path, line.horzOffset, line.vertOffset, piece) !=
        kelaz::multipipe::OffsetStatus::kOk) {
        m_segments.push_back(ids);
        m_records.push_back(record);
        return 0;
    }
    // The line's previous piece of this pass meets this one at the corner.
    const size_t previous = m_records.size() >= static_cast<size_t>(m_nLines)
                                ? m_records.size() - static_cast<size_t>(m_nLines)
                                : m_records.size();
    if (seg > 0 && previous < m_records.size() && !m_records[previous].pieceId.isNull()) {
        GroupRecord& before = m_records[previous];
        kelaz::multipipe::LinePiece prevPiece = before.piece;
        kelaz::multipipe::LinePiece bridge;
        const bool bridged =
            kelaz::multipipe::JoinPieces(prevPiece, piece, path.start, line.horzOffset, bridge);
        if (prevPiece.end.distanceTo(before.piece.end) > 0.0) {
            KelAzLead* lead = nullptr;
            if (acdbOpenObject(lead, before.pieceId, AcDb::kForWrite) == Acad::eOk) {
                record.trimmedId = before.pieceId;
                record.trimmedEnd = before.piece.end;
                lead->setEndPoint(prevPiece.end);
                lead->close();
            }
        }
        AcDbObjectId bridgeId;
        if (bridged && AddLineLead(bridge.start, bridge.end, line, bridgeId)) ids.append(bridgeId);
    }
    AcDbObjectId id;
    if (CreateNewMulLead(piece, line, id)) ids.append(id);
    record.piece = piece;
    record.pieceId = id;

    if (rises && m_inclineChoice != 0) {
        const AcGePoint3d at = m_inclineChoice == 1 ? piece.start : piece.end;
        AcDbObjectId riser;
        if (CDispGlobaFun::AddMainLead(
                AcGePoint3d(at.x, at.y, lowZ + line.vertOffset),
                AcGePoint3d(at.x, at.y, highZ + line.vertOffset), RowAttPath(line), line.sysCode,
                riser, CKELAzLayer::GetLayerByObjName_BySysCode(RowAttPath(line), line.sysCode, 0)))
            ids.append(riser);
    }
    m_segments.push_back(ids);
    m_records.push_back(record);
    m_endPts.push_back(piece.end);
    return static_cast<int>(ids.length());
}

void pAddMlead() {
    const CString key = KelAzDataMng::CProj::GetCurrentSpec() == L"电气" ? L"dxbz" : L"rdxbz";
    COsMode snap(1);
    auto* driver = new CDrawMlead(key);
    CDrawMlead::Current() = driver;
    driver->Draw();
    delete driver;
    CDrawMlead::Current() = nullptr;
}
