#include "module/commands/ManageUndo.h"

#include "host/ed/CommandProcessor.h"
#include "host/ed/EditorInput.h"

namespace {

void SetCmdEcho(short value) {
    resbuf rb;
    rb.rbnext = nullptr;
    rb.restype = RTSHORT;
    rb.resval.rint = value;
    acedSetVar(L"CMDECHO", &rb);
}

}  // namespace

// The results are not checked: a failed mark or step leaves nothing to repair here.
void CManageUndo::InsertUndoSign() {
    SetCmdEcho(0);
    acedCommand(RTSTR, L"UNDO", RTSTR, L"M", RTNONE);
    SetCmdEcho(1);
}

void CManageUndo::UndoByStep() {
    SetCmdEcho(0);
    acedCommand(RTSTR, L"_u", RTNONE);
    acedCommand(RTSTR, L"_u", RTNONE);
    SetCmdEcho(1);
}
