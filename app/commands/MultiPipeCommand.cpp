#include "app/commands/MultiPipeCommand.h"

#include "app/shell/CommandHelp.h"
#include "host/ed/EditorInput.h"
#include "module/commands/InitCmd.h"
#include "module/multipipe/DrawMlead.h"

namespace kelaz {

namespace {

// The command table's row of the multi-pipe drawing.
constexpr const wchar_t* kRow = L"MPIPE";

void MultiPipeCommand() {
    CInitCmd guard(kRow);
    if (!guard.IsValid()) return;
    pAddMlead();
}

// The elevation box beside the drawing while MULTIPIPE traces: at the command line the drafter
// reaches it from any of the command's prompts, works its check box and elevation, and closes it
// with ok; the box stays beside the drawing and the prompt is asked again.
void LevelBoxCommand() {
    CDrawMlead* driver = CDrawMlead::Current();
    if (driver == nullptr || driver->GetSafeHwnd() == nullptr) {
        acutPrintf(L"\n[kelaz] no elevation box is open: 'LEVELBOX works inside MULTIPIPE");
        return;
    }
    driver->RunModeless();
}

}  // namespace

void RegisterMultiPipeCommand(const wchar_t* group) {
    RegisterCommand(group, L"MULTIPIPE",
                    L"多管绘制：一次绘制一组平行的导线、导管、线槽、电缆（A 圆弧，U 退回）",
                    ACRX_CMD_MODAL, MultiPipeCommand);
    RegisterCommand(group, L"LEVELBOX", L"多管绘制的标高框（透明命令 'LevelBox）",
                    ACRX_CMD_TRANSPARENT, LevelBoxCommand);
}

}  // namespace kelaz
