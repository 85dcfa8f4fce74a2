#include "app/commands/SplitRiserCommand.h"

#include "app/shell/CommandHelp.h"
#include "host/db/OpenObject.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "module/commands/InitCmd.h"
#include "module/pipes/PerforateVPipe.h"
#include "module/queries/KelAzSelectFun.h"
#include "suite/model/BimModel.h"
#include "suite/tools/KelMessageBox.h"

namespace kelaz {

namespace {

constexpr size_t kKeywordSize = 32;

// Elevations as the drafter typed them: whole millimetres without a point, fractions kept.
CString Elevation(double z) { return FormatText(L"%.10g", z == 0.0 ? 0.0 : z); }

CString ChangeNote(const CVerPipeInf& riser, EVerPipeChange change) {
    CString note = riser.bDownward ? L"向下绘制，" : L"";
    switch (change) {
        case EVerPipeChange::kSplit:
            note += FormatText(L"拆为 %d 段", static_cast<int>(PlannedPiecesOf(riser.id).size()));
            break;
        case EVerPipeChange::kRename:
            note += L"楼层名改为 " + PlannedPiecesOf(riser.id).front()->strFloor;
            break;
        case EVerPipeChange::kKeep:
            note += L"不变";
            break;
        case EVerPipeChange::kOutside:
            note += L"在楼层表外，不变";
            break;
    }
    return note;
}

// One row per riser, and below a split riser one row per piece, in the riser's direction.
void PrintPlan() {
    acutPrintf(L"\n立管    楼层        底标高    顶标高");
    for (const auto& riser : CVerPipeLists::Risers()) {
        const EVerPipeChange change = PlannedChange(*riser);
        acutPrintf(L"\n%-8s%-8s%10s%10s  %s", riser->strHandle.GetString(),
                   riser->strFloor.GetString(), Elevation(riser->dBottom).GetString(),
                   Elevation(riser->dTop).GetString(), ChangeNote(*riser, change).GetString());
        if (change != EVerPipeChange::kSplit) continue;
        for (const auto& piece : PlannedPiecesOf(riser->id)) {
            acutPrintf(L"\n%-8s  %-6s%10s%10s%s", L"", piece->strFloor.GetString(),
                       Elevation(piece->dBottom).GetString(), Elevation(piece->dTop).GetString(),
                       piece->strFloor.IsEmpty() ? L"  楼层表外，楼层名留空" : L"");
        }
    }
}

bool ConfirmSplit() {
    acedInitGet(0, L"Y N");
    wchar_t word[kKeywordSize] = {};
    const int rc = acedGetKword(L"\n按上表拆分立管吗？[是(Y)/否(N)]<否>:", word, kKeywordSize);
    return rc == RTNORM && CString(word) == L"Y";
}

void SplitRiserCommand() {
    CInitCmd guard(L"SPLITRISER");
    if (!guard.IsValid()) return;
    const KelAzBimModel* model = pGetBimInstance();
    if (model == nullptr) {
        ShowWarning(L"不能读取工程的楼层表，无法拆分立管");
        return;
    }
    if (model->Storeys().empty()) {
        ShowWarning(L"工程的楼层表中没有楼层，无法拆分立管");
        return;
    }
    AcDbObjectIdArray ids;
    // Everything selected: what is not a riser is counted and told, not silently dropped.
    if (!CKelAzSelectFun::SelectEntity(ids, L"AcDbEntity", L"\n选择要按楼层拆分的立管:")) return;
    const bool found = PerforateVPipe(ids, false);
    const int others = ids.length() - static_cast<int>(CVerPipeLists::Risers().size());
    if (others > 0) acutPrintf(L"\n%d 个对象不是立管，已忽略。", others);
    if (!found) {
        acutPrintf(L"\n选中的对象中没有立管。");
        return;
    }
    PrintPlan();

    int split = 0, pieces = 0, renamed = 0;
    for (const auto& riser : CVerPipeLists::Risers()) {
        switch (PlannedChange(*riser)) {
            case EVerPipeChange::kSplit:
                ++split;
                pieces += static_cast<int>(PlannedPiecesOf(riser->id).size());
                break;
            case EVerPipeChange::kRename:
                ++renamed;
                break;
            default:
                break;
        }
    }
    if (split == 0 && renamed == 0) {
        acutPrintf(L"\n没有要拆分或改楼层名的立管。");
        return;
    }
    if (!ConfirmSplit()) {
        acutPrintf(L"\n立管未拆分。");
        return;
    }
    if (!PerforateVPipe(ids, true)) {
        ShowWarning(L"立管未能全部拆分");
        return;
    }
    CString done;
    if (split > 0) done = FormatText(L"拆分 %d 根立管为 %d 段", split, pieces);
    if (split > 0 && renamed > 0) done += L"，";
    if (renamed > 0) done += FormatText(L"%d 根立管改了楼层名", renamed);
    acutPrintf(L"\n完成：%s。", done.GetString());
}

}  // namespace

void RegisterSplitRiserCommand(const wchar_t* group) {
    RegisterCommand(group, L"SPLITRISER", L"立管按楼层拆分（每层一段，楼层名取自楼层表）",
                    ACRX_CMD_MODAL, SplitRiserCommand);
}

}  // namespace kelaz
