#include "app/commands/SoftPipeCommand.h"

#include "app/shell/CommandHelp.h"
#include "host/ed/EditorInput.h"
#include "module/commands/InitCmd.h"
#include "module/entry/DispGlobaFun.h"
#include "module/pipes/DrawSoftPipe.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/Proj.h"
#include "suite/tools/CmdDataReader.h"
#include "suite/tools/Globl_Fun.h"

namespace kelaz {

namespace {

constexpr const wchar_t* kCommand = L"SOFTPIPE";

// Is the attribute path (speciality\big type\small type\name) filed under one of the command's
// categories?
bool OfferedByCommand(const CString& attPath, const CmdData& data) {
    CStringArray parts, smalls;
    CGlobl_Fun::StrToStrAry(attPath, parts, L'\\');
    CGlobl_Fun::StrToStrAry(data.strSmallTypes, smalls, L',');
    if (parts.GetSize() != 4 || parts[1] != data.strBigType) return false;
    for (const CString& small : smalls) {
        if (parts[2] == small) return true;
    }
    return false;
}

// The first soft duct of the catalogue, any speciality: what the drafter can name with ATT.
CString FirstOfferedAttribute(const CmdData& data) {
    CStringArray specs, smalls;
    KelAzDataMng::CProj::GetAllSpecs(specs);
    CGlobl_Fun::StrToStrAry(data.strSmallTypes, smalls, L',');
    for (const CString& spec : specs) {
        for (const CString& small : smalls) {
            CStringArray names;
            if (KelAzDataMng::CAtt::GetChildNames(spec + L"\\" + data.strBigType + L"\\" + small,
                                                  names) &&
                !names.IsEmpty()) {
                return names[0];
            }
        }
    }
    return CString();
}

// Why the command cannot start, and what to type: the bar chooses a soft duct by itself only in
// a speciality whose catalogue has one, and never replaces a component of a speciality that has
// none, which would otherwise be drawn as a soft pipe.
void ExplainRefusal(const CmdData& data) {
    const CString attName = CDispGlobaFun::GetCurAttName(true, false);
    if (!attName.IsEmpty() && OfferedByCommand(attName, data)) {
        if (CDispGlobaFun::GetCurSysCode(true, false).IsEmpty())
            acutPrintf(L"\n请先用 SYS 选择系统编号");
        return;
    }
    const CString example = FirstOfferedAttribute(data);
    if (example.IsEmpty()) {
        acutPrintf(L"\n工程的构件库中没有%s，不能绘制", data.strSmallTypes.GetString());
        return;
    }
    if (attName.IsEmpty()) {
        acutPrintf(L"\n没有选择%s，请先用 ATT 选择，例如 ATT %s", data.strSmallTypes.GetString(),
                   example.GetString());
    } else {
        acutPrintf(L"\n当前构件 %s 不是%s，请先用 ATT 选择%s，例如 ATT %s", attName.GetString(),
                   data.strSmallTypes.GetString(), data.strSmallTypes.GetString(),
                   example.GetString());
    }
}

void SoftPipeCommand() {
    CInitCmd guard(kCommand);
    const bool valid = guard.IsValid();
    const CmdData data = CCmdDataReader::Instance()->GetCmdData(kCommand);
    if (!valid || !OfferedByCommand(CDispGlobaFun::GetCurAttName(true, false), data)) {
        if (!data.strCmdName.IsEmpty()) ExplainRefusal(data);
        return;
    }
    acutPrintf(L"\n绘制 %s，系统 %s", IFaceBarCtrl::GetCurAttName().GetString(),
               IFaceBarCtrl::GetCurSysCode().GetString());
    CDrawSoftPipe().Draw();
}

}  // namespace

void RegisterSoftPipeCommand(const wchar_t* group) {
    RegisterCommand(group, kCommand, L"逐点绘制软风管（A 弧线，U 退回，回车画下一根，取消结束）",
                    ACRX_CMD_MODAL, SoftPipeCommand);
}

}  // namespace kelaz
