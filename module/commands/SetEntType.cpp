#include "module/commands/SetEntType.h"

#include <algorithm>

#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Proj.h"
#include "suite/tools/CmdDataReader.h"
#include "suite/tools/Globl_Fun.h"
#include "suite/tools/KelMessageBox.h"

// The maps are defined before the instance so that they outlive it at exit, when the instance's
// destructor still releases the bar.
std::map<CString, CString, CSetEntType::Less> CSetEntType::m_mapEntBigType;
std::map<CString, std::vector<CString>, CSetEntType::Less> CSetEntType::m_mapEntSmallType;
boost::shared_ptr<CSetEntType> CSetEntType::m_pInstance;

boost::shared_ptr<CSetEntType> CSetEntType::Instance() {
    if (!m_pInstance) m_pInstance.reset(new CSetEntType);
    return m_pInstance;
}

CSetEntType::~CSetEntType() { Release(); }

bool CSetEntType::SetCurrentCmd(const CString& cmd) {
    m_strCurCmd = cmd;
    if (!IsCmdExist(true)) return false;
    UpdateUiOnCurrentCmd();
    return true;
}

bool CSetEntType::IsCmdExist(const bool& bShowMsg) {
    if (m_mapEntBigType.count(m_strCurCmd) != 0) return true;
    if (ReadCmdData()) return true;
    if (bShowMsg) kelaz::ShowWarning(CString(L"缺少命令与构件类型的对应关系"));
    return false;
}

bool CSetEntType::ReadCmdData() {
    const CmdData data = CCmdDataReader::Instance()->GetCmdData(m_strCurCmd);
    if (data.strCmdName.IsEmpty()) return false;
    InsertBigEntType(m_strCurCmd, data.strBigType);
    InsertSmallEntType(m_strCurCmd, data.strSmallTypes);
    return true;
}

bool CSetEntType::InsertBigEntType(const CString& cmd, const CString& bigType) {
    return m_mapEntBigType.emplace(cmd, bigType).second;
}

bool CSetEntType::InsertSmallEntType(const CString& cmd, const CString& smallTypes) {
    CStringArray items;
    CGlobl_Fun::StrToStrAry(smallTypes, items, L',');
    std::vector<CString> types(items.begin(), items.end());
    // A list reordered by earlier runs is not reset by a later read.
    return m_mapEntSmallType.emplace(cmd, std::move(types)).second;
}

void CSetEntType::UpdateUiOnCurrentCmd() {
    if (m_strCurCmd.IsEmpty()) return;
    CStringArray smalls;
    for (const CString& s : m_mapEntSmallType[m_strCurCmd]) smalls.Add(s);
    CString big = m_mapEntBigType[m_strCurCmd];
    // In HVAC the accessories of a command belong to the water-accessory branch of the tree.
    if (big == L"附件" && KelAzDataMng::CProj::GetCurrentSpec() == L"暖通") big = L"水附件";
    IFaceBarCtrl::BarSetCurObj(big, &smalls);
}

void CSetEntType::Release() {
    SetFinishedEntType(CDispGlobaFun::GetCurAttName(false, false));
    IFaceBarCtrl::SetEnableSmalls(CStringArray());
}

void CSetEntType::SetFinishedEntType(const CString& attPath) {
    if (m_strCurCmd.IsEmpty() || !IsCmdExist(false)) return;
    if (attPath.IsEmpty()) return;
    // Of a path a\b\c this leaves b: the small type the attribute c is filed under. A path of
    // one segment has no small type.
    CString smallType = attPath;
    if (CDispUtils::CutLastSegment(smallType, L"\\")) {
        CDispUtils::GetLastSegment(smallType, L"\\");
    } else {
        smallType.Empty();
    }
    MoveToFirst(smallType);
}

void CSetEntType::MoveToFirst(const CString& smallType) {
    std::vector<CString>& types = m_mapEntSmallType[m_strCurCmd];
    if (types.size() < 2) return;
    const auto it = std::find(types.begin(), types.end(), smallType);
    if (it == types.end() || it == types.begin()) return;
    std::iter_swap(types.begin(), it);
}
