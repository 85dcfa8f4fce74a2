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

}  // namespace

void RegisterMultiPipeCommand(const wchar_t* group) {
    RegisterCommand(group, L"MULTIPIPE",
                    L"多管绘制：一次绘制一组平行的导线、导管、线槽、电缆（A 圆弧，U 退回）",
                    ACRX_CMD_MODAL, MultiPipeCommand);
}

}  // namespace kelaz
