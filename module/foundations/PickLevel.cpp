#include "module/foundations/PickLevel.h"

#include <cmath>

#include "host/app/DocManager.h"
#include "host/db/OpenObject.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "module/foundations/LevelDlg.h"
#include "suite/entities/KelAzCurveEntity.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzKdEnt.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzNode.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/entities/KelAzSupport.h"

CWnd* CPickLevel::m_pLevelEdit = nullptr;
CDialog* CPickLevel::m_pLevelParent = nullptr;

namespace {

// A run whose ends differ more than this in height slopes: it has no single elevation.
constexpr double kLevelRunTolerance = 0.0001;
// The only soft lines that lie at one elevation.
constexpr const wchar_t* kFloorHeatingCoil = L"暖通\\水暖设备\\地暖盘管";
constexpr const wchar_t* kNoLevelMessage = L"所选构件不能正确提取标高!";

void Clear() {
    CPickLevel::m_pLevelEdit = nullptr;
    CPickLevel::m_pLevelParent = nullptr;
}

void ShowBox(bool show) {
    CDialog* box = CPickLevel::m_pLevelParent;
    if (!box) return;
    box->ShowWindow(show ? SW_SHOW : SW_HIDE);
    CWnd* parent = box->GetParent();
    if (parent && parent != acedGetAcadFrame()) parent->ShowWindow(show ? SW_SHOW : SW_HIDE);
}

// The elevation of the object, or false.
bool LevelOf(const AcDbObjectId& id, double& level) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return false;
    bool found = false;
    bool twoEnds = false;
    AcGePoint3d start, end;
    if (KelAzLead::cast(entity) || KelAzPipe::cast(entity) || KelAzDuct::cast(entity) ||
        KelAzSupport::cast(entity)) {
        const auto* curve = KelAzCurveEntity::cast(entity);
        curve->getStartPoint(start);
        curve->getEndPoint(end);
        twoEnds = true;
    } else if (const auto* node = KelAzNode::cast(entity)) {
        level = node->GetInsertPoint().z;
        found = true;
    } else if (const auto* soft = KelAzSoftLine::cast(entity)) {
        if (soft->GetSmallTypeNamePath() == kFloorHeatingCoil && soft->numVerts() > 0) {
            soft->getPointAt(0, start);
            level = start.z;
            found = true;
        }
    } else if (const auto* kd = KelAzKdEnt::cast(entity)) {
        level = kd->GetPlacement().GetLocation().z;
        found = true;
    }
    entity->close();
    if (twoEnds && std::fabs(start.z - end.z) <= kLevelRunTolerance) {
        level = start.z;
        found = true;
    }
    return found;
}

}  // namespace

void CPickLevel::GetLevel(CWnd* edit, CDialog* owner) {
    m_pLevelEdit = edit;
    m_pLevelParent = owner;
    acDocManager->sendStringToExecute(acDocManager->curDocument(), L"'PickHeight ", false, true,
                                      false);
}

bool CPickLevel::GetLevelOnDlg(double& level) {
    ShowBox(false);
    ads_name name = {0, 0};
    ads_point picked = {0.0, 0.0, 0.0};
    const int rc = acedEntSel(L"\n选择对象:", name, picked);
    ShowBox(true);
    if (rc != RTNORM) {
        Clear();
        return false;
    }
    AcDbObjectId id;
    double found = 0.0;
    if (acdbGetObjectId(id, name) != Acad::eOk || !LevelOf(id, found)) {
        AfxMessageBox(kNoLevelMessage);
        Clear();
        return false;
    }
    level = found;
    if (m_pLevelEdit && m_pLevelEdit->GetSafeHwnd()) {
        m_pLevelEdit->SetWindowText(kelaz::FormatText(L"%g", found));
        if (m_pLevelParent) m_pLevelParent->SendMessage(CLevelDlg::kRereadMessage);
    }
    Clear();
    return true;
}
