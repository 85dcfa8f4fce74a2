#include "module/commands/InitCmd.h"

#include "host/db/Entity.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/OpenObject.h"
#include "module/commands/SetEntType.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/entities/KelAzEntity.h"
#include "suite/tools/CmdDataReader.h"
#include "suite/tools/KelMessageBox.h"
#include "suite/tools/ObjSelect.h"

CInitCmd::CInitCmd(const CString& cmd) : m_strCmd(cmd) {
    const CmdData data = CCmdDataReader::Instance()->GetCmdData(cmd);
    if (data.strCmdName.IsEmpty()) {
        m_strCmd.Empty();
        return;
    }
    m_bJigDrawBlock = data.bJigDrawBlock;
    m_bCheckAttribute = data.bCheckAttribute;
    m_bUpdateUi = data.bUpdateUi;
    m_strRefreshPath = data.strRefreshPath;
}

CInitCmd::~CInitCmd() {
    if (m_bValid) Release();
}

bool CInitCmd::IsValid() {
    if (m_strCmd.IsEmpty()) {
        kelaz::ShowWarning(CString(L"没有设置要执行的命令"));
        return false;
    }
    m_bValid = true;
    if (!UpdateUiOnCmd()) return false;
    if (!m_bCheckAttribute) return true;
    if (CDispGlobaFun::GetCurAttName(true, false).IsEmpty()) return false;
    return !CDispGlobaFun::GetCurSysCode(true, true).IsEmpty();
}

bool CInitCmd::UpdateUiOnCmd() {
    if (m_bUpdateUi && !CSetEntType::Instance()->SetCurrentCmd(m_strCmd)) return false;
    if (m_bJigDrawBlock) m_bJigDrawBlockGj = true;
    return true;
}

void CInitCmd::Release() {
    if (m_bUpdateUi) CSetEntType::Instance()->Release();
    if (!m_bJigDrawBlock) return;
    m_bJigDrawBlockGj = false;
    if (m_strRefreshPath.IsEmpty()) {
        kelaz::ShowWarning(CString(L"没有设置需要刷新的构件路径"));
    } else if (m_bGjChgWhenJigDrawBlockGj) {
        // The property bar owns the change flag and clears it itself.
        RefreshJigEnt();
    }
}

void CInitCmd::RefreshJigEnt() {
    CObjSelect select;
    select.SetDataBase(acdbHostApplicationServices()->workingDatabase());
    AcArray<AcDbObjectId> ids;
    if (!select.SelectObjs(ids, CString(), m_strRefreshPath, true, true)) return;
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
        // Setting its own colour again makes the entity draw anew with the changed blocks.
        if (KelAzEntity::cast(entity)) entity->setColorIndex(entity->colorIndex(), true);
        entity->close();
    }
}
