#include "app/commands/LayoutCommands.h"

#include <cmath>
#include <vector>

#include "app/commands/CommandInput.h"
#include "app/commands/ConnectedCommand.h"
#include "app/commands/CurveLayoutCommands.h"
#include "app/commands/LayoutPlacement.h"
#include "app/commands/MultiPipeCommand.h"
#include "app/commands/PipeCommands.h"
#include "app/commands/SoftPipeCommand.h"
#include "app/commands/SplitRiserCommand.h"
#include "app/shell/Session.h"
#include "host/ed/EditorInput.h"
#include "module/commands/InitCmd.h"
#include "module/commands/KeyWordDlg.h"
#include "module/entry/DispGlobaFun.h"
#include "module/foundations/LevelDlg.h"
#include "module/foundations/PickLevel.h"
#include "module/layout/CalcPositionInRect.h"
#include "module/queries/KelAzSelect.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/FloorMng.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjCookie.h"
#include "suite/data/SysCode.h"

namespace kelaz {

namespace {

constexpr const wchar_t* kGroup = L"KELAZ_LAYOUT";
// The shortest side a layout rectangle may have, in millimetres: a shorter one is two picks on
// one spot, and would stand every component on a single line.
constexpr double kMinRectSide = 1.0;

// Every attribute path of the catalogue below path (a speciality, a category ...).
void CollectAttributes(const CString& path, int depth, std::vector<CString>& out) {
    CStringArray children;
    if (!KelAzDataMng::CAtt::GetChildNames(path, children)) return;
    for (const CString& child : children) {
        const CString full = path.IsEmpty() ? child : path + L"\\" + child;
        if (depth == 3) {
            out.push_back(full);
        } else {
            CollectAttributes(full, depth + 1, out);
        }
    }
}

// Paths of the attributes a drafter's text names: the path itself, or the attributes of that
// name in the current speciality, or failing those in any speciality.
std::vector<CString> FindAttributes(const CString& text) {
    KelAzDataMng::SAttDataIndex index;
    if (KelAzDataMng::AttNameToAttId(text, index)) return {text};
    std::vector<CString> all, here, elsewhere;
    CollectAttributes(CString(), 0, all);
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec() + L"\\";
    for (const CString& path : all) {
        if (path.Mid(path.ReverseFind(L'\\') + 1) != text) continue;
        (path.Left(spec.GetLength()) == spec ? here : elsewhere).push_back(path);
    }
    return here.empty() ? elsewhere : here;
}

void ListChildren(const CString& path, int depth) {
    CStringArray children;
    if (!KelAzDataMng::CAtt::GetChildNames(path, children)) return;
    for (const CString& child : children) {
        acutPrintf(L"\n%s%s", CString(L' ', 2 * (depth + 1)).GetString(), child.GetString());
        if (depth < 2) ListChildren(path + L"\\" + child, depth + 1);
    }
}

// The first system code of a speciality, empty when it has none.
CString FirstCode(const CString& spec) {
    std::vector<KelAzDataMng::CSysCodeData> codes;
    return KelAzDataMng::CISysCode::GetSpecCodeInfos(spec, codes) && !codes.empty()
               ? codes.front().GetFullName()
               : CString();
}

// Moves the project to another speciality as the bar would: its attribute is dropped and its
// system code becomes the new speciality's first.
bool SwitchSpeciality(const CString& spec) {
    if (spec == KelAzDataMng::CProj::GetCurrentSpec()) return true;
    if (!KelAzDataMng::CProj::SetCurrentSpec(spec)) return false;
    IFaceBarCtrl::SetCurAttName(CString());
    IFaceBarCtrl::SetCurSysCode(FirstCode(spec));
    return true;
}

// Makes the attribute the bar's choice, in its own speciality.
void SetCurrentAttribute(const CString& path) {
    SwitchSpeciality(path.Left(path.Find(L'\\')));
    IFaceBarCtrl::SetCurAttName(path);
    // The bar always shows a system: the speciality's first until one is chosen.
    if (IFaceBarCtrl::GetCurSysCode().IsEmpty()) {
        IFaceBarCtrl::SetCurSysCode(FirstCode(KelAzDataMng::CProj::GetCurrentSpec()));
    }
    acutPrintf(L"\n当前构件: %s", path.GetString());
}

// Components of one name offered as buttons, keyed 1, 2, ...; the chosen path, or empty when
// the drafter cancels or there are too many to offer.
CString ChooseAmong(const std::vector<CString>& paths) {
    if (paths.size() > static_cast<size_t>(CKeyWordDlg::kMaxItems)) return CString();
    CKeyWordDlg dialog(acedGetAcadFrame());
    dialog.SetCaption(L"选择同名构件");
    CStringArray items;
    for (size_t i = 0; i < paths.size(); ++i)
        items.Add(FormatText(L"%d-%s", static_cast<int>(i + 1), paths[i].GetString()));
    dialog.SetItems(items);
    if (dialog.DoModal() != IDOK) return CString();
    const int index = _wtoi(dialog.GetKeyWord()) - 1;
    return index >= 0 && index < static_cast<int>(paths.size()) ? paths[index] : CString();
}

void AttCommand() {
    for (;;) {
        const CString current = IFaceBarCtrl::GetCurAttName();
        CString text;
        if (!AskText(FormatText(L"\n输入构件名称或路径[列表(?)]<%s>:",
                                current.IsEmpty() ? L"无" : current.GetString()),
                     text, true)) {
            return;
        }
        if (text.IsEmpty()) return;
        if (text == L"?") {
            const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
            acutPrintf(L"\n%s", spec.GetString());
            ListChildren(spec, 0);
            continue;
        }
        const std::vector<CString> found = FindAttributes(text);
        if (found.size() == 1) {
            SetCurrentAttribute(found.front());
            return;
        }
        if (found.size() > 1) {
            const CString chosen = ChooseAmong(found);
            if (!chosen.IsEmpty()) {
                SetCurrentAttribute(chosen);
                return;
            }
            for (const CString& path : found) acutPrintf(L"\n  %s", path.GetString());
            TellRefused(L"\n有多个同名构件，请输入完整路径");
            continue;
        }
        CStringArray children;
        if (KelAzDataMng::CAtt::GetChildNames(text, children) && !children.IsEmpty()) {
            for (const CString& child : children)
                acutPrintf(L"\n  %s\\%s", text.GetString(), child.GetString());
            continue;
        }
        TellRefused(FormatText(L"\n没有找到构件: %s", text.GetString()));
    }
}

void SysCommand() {
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"\n输入系统编号[列表(?)]<%s>:",
                                IFaceBarCtrl::GetCurSysCode().GetString()),
                     text)) {
            return;
        }
        if (text.IsEmpty()) return;
        std::vector<KelAzDataMng::CSysCodeData> codes;
        if (text == L"?") {
            KelAzDataMng::CISysCode::GetSpecCodeInfos(spec, codes);
            for (const auto& c : codes)
                acutPrintf(L"\n  %s %s", c.GetFullName().GetString(), c.GetName().GetString());
            continue;
        }
        if (IFaceBarCtrl::SetCurSysCode(text)) {
            acutPrintf(L"\n当前系统编号: %s", text.GetString());
            return;
        }
        TellRefused(FormatText(L"\n%s专业没有系统编号 %s", spec.GetString(), text.GetString()));
    }
}

void FloorCommand() {
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"\n输入当前楼层[列表(?)]<%s>:",
                                KelAzDataMng::CProj::GetCurFloorName().GetString()),
                     text)) {
            return;
        }
        if (text.IsEmpty()) return;
        if (text == L"?") {
            CArray<KelAzDataMng::FloorRecord> floors;
            KelAzDataMng::CProj::GetAllFloorData(floors);
            for (const auto& f : floors) {
                acutPrintf(L"\n  %s  层高 %g  底标高 %g", f.strName.GetString(), f.dHeight,
                           f.dElevation);
            }
            continue;
        }
        if (KelAzDataMng::CProj::SetCurFloorName(text)) {
            acutPrintf(L"\n当前楼层: %s", text.GetString());
            return;
        }
        TellRefused(FormatText(L"\n没有这个楼层: %s", text.GetString()));
    }
}

void SpecCommand() {
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"\n输入专业[列表(?)]<%s>:",
                                KelAzDataMng::CProj::GetCurrentSpec().GetString()),
                     text)) {
            return;
        }
        if (text.IsEmpty()) return;
        if (text == L"?") {
            CStringArray specs;
            KelAzDataMng::CProj::GetAllSpecs(specs);
            for (const CString& s : specs) acutPrintf(L"\n  %s", s.GetString());
            continue;
        }
        if (SwitchSpeciality(text)) {
            acutPrintf(L"\n当前专业: %s", text.GetString());
            return;
        }
        TellRefused(FormatText(L"\n没有这个专业: %s", text.GetString()));
    }
}

void PlaceCommand() {
    CInitCmd guard(L"PLACE");
    if (!guard.IsValid()) {
        if (IFaceBarCtrl::GetCurAttName().IsEmpty()) acutPrintf(L"\n请先用 ATT 选择要布置的构件");
        return;
    }
    double level = 0.0;
    if (!AskLevel(L"PLACE_level", level)) return;
    const CString attName = CDispGlobaFun::GetCurAttName(true, false);
    acutPrintf(L"\n布置 %s，系统 %s，标高 %g", attName.GetString(),
               CDispGlobaFun::GetCurSysCode(false, false).GetString(), level);
    int placed = 0;
    for (;;) {
        AcGePoint3d point;
        if (CKelAzSelect::GetInsertPoint(point, true) != RTNORM) break;
        point.z = level;
        if (CDispGlobaFun::HasSamePunctateEquip(point, L"KELAZEQUIPMENT", true) ||
            CDispGlobaFun::HasSamePunctateEquip(point, L"KELAZKELSECTENT", true)) {
            TellRefused(L"\n同一个点不能重复布置");
            continue;
        }
        if (CDispGlobaFun::CreateSingleNodeEntity(point, CString(), CString(), 0.0,
                                                  AcGeVector3d::kZAxis, AcGeScale3d())
                .first) {
            ++placed;
        }
    }
    acutPrintf(L"\n已布置 %d 个构件", placed);
}

// Components of the current type in rows inside a rectangle: its corner, the end of the side
// the rows run along and the end of the side they are stacked along.
void RectLayoutCommand() {
    CInitCmd guard(L"RECTLAYOUT");
    if (!guard.IsValid()) {
        if (IFaceBarCtrl::GetCurAttName().IsEmpty()) acutPrintf(L"\n请先用 ATT 选择要布置的构件");
        return;
    }
    ads_point p0 = {0, 0, 0}, p1 = {0, 0, 0}, p3 = {0, 0, 0};
    if (acedGetPoint(nullptr, L"\n指定布置区域的角点:", p0) != RTNORM) return;
    // Each side is checked as soon as it is given, in plan (the elevation comes later).
    for (;;) {
        if (acedGetPoint(p0, L"\n指定行方向的另一端:", p1) != RTNORM) return;
        if (std::hypot(p1[0] - p0[0], p1[1] - p0[1]) >= kMinRectSide) break;
        TellRefused(L"\n行方向的边短于 1 毫米，请重新指定。");
    }
    for (;;) {
        if (acedGetPoint(p0, L"\n指定列方向的另一端:", p3) != RTNORM) return;
        // The other side's reach across the rows: a corner on the row line gives no rectangle.
        const double reach =
            std::abs((p1[0] - p0[0]) * (p3[1] - p0[1]) - (p1[1] - p0[1]) * (p3[0] - p0[0])) /
            std::hypot(p1[0] - p0[0], p1[1] - p0[1]);
        if (reach >= kMinRectSide) break;
        TellRefused(L"\n列方向的另一端离行方向的边不到 1 毫米，请重新指定。");
    }
    static int rows = 2;
    static int perRow = 3;
    static double along = 0.0;
    static double across = 0.0;
    if (!AskCount(L"\n输入行数", L"行数", rows) ||
        !AskCount(L"\n输入每行个数", L"每行个数", perRow) ||
        !AskLength(L"\n输入行方向边距", along) || !AskLength(L"\n输入列方向边距", across)) {
        return;
    }
    double level = 0.0;
    if (!AskLevel(L"PLACE_level", level)) return;
    const AcGePoint3d a(p0[0], p0[1], level), b(p1[0], p1[1], level), d(p3[0], p3[1], level);
    const AcGePoint3dArray corners{a, b, b + (d - a), d};
    PlaceLaidOut(CCalcPositionInRect(corners, rows, perRow, along, across).GetPoints());
}

// The elevation box of the placement commands, worked at the command line until OK or Cancel.
void LevelCommand() {
    CLevelDlg box(L"PLACE");
    box.Create();
    if (box.RunModeless() == IDOK) acutPrintf(L"\n当前标高: %g", kelaz::CurrentLevel());
    box.DestroyWindow();
}

// Run by the elevation box's pick button, inside whatever prompt is waiting.
void PickHeightCommand() {
    double level = 0.0;
    if (CPickLevel::GetLevelOnDlg(level)) acutPrintf(L"\n拾取的标高: %g", level);
}

}  // namespace

void RegisterLayoutCommands() {
    const Adesk::Int32 flags = ACRX_CMD_MODAL;
    RegisterCommand(kGroup, L"ATT", L"选择要布置的构件（属性栏）", flags, AttCommand);
    RegisterCommand(kGroup, L"SYS", L"选择系统编号", flags, SysCommand);
    RegisterCommand(kGroup, L"FLOOR", L"设置当前楼层", flags, FloorCommand);
    RegisterCommand(kGroup, L"SPEC", L"切换专业", flags, SpecCommand);
    RegisterCommand(kGroup, L"PLACE", L"逐点布置当前构件（输入标高，回车结束）", flags,
                    PlaceCommand);
    RegisterCommand(kGroup, L"RECTLAYOUT", L"在矩形区域内按行布置当前构件", flags,
                    RectLayoutCommand);
    RegisterCurveLayoutCommands(kGroup);
    RegisterConnectedCommand(kGroup);
    RegisterSoftPipeCommand(kGroup);
    RegisterMultiPipeCommand(kGroup);
    RegisterPipeCommands(kGroup);
    RegisterSplitRiserCommand(kGroup);
    RegisterCommand(kGroup, L"LEVEL", L"标高对话框（输入或拾取标高）", flags, LevelCommand);
    RegisterCommand(kGroup, L"PICKHEIGHT", L"拾取对象的标高（透明命令 'PickHeight）",
                    ACRX_CMD_TRANSPARENT, PickHeightCommand);
}

void UnregisterLayoutCommands() { acedRegCmds->removeGroup(kGroup); }

}  // namespace kelaz
