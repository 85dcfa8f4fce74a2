#include "host/ed/CommandLine.h"

#include "host/db/Database.h"
#include "host/db/UndoLog.h"
#include "host/ed/Answer.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/CommandStack.h"
#include "host/ed/Editor.h"
#include "host/ed/HostCommands.h"

namespace kelaz {

bool CommandLine::RunOne() {
    CString line;
    if (!m_editor.ReadLine(kCommandPrompt, Editor::LineKind::kCommand, line)) return false;
    RunLine(line);
    return true;
}

void CommandLine::RunLine(const CString& line) {
    const Answer answer = ParseAnswer(line);
    switch (answer.kind) {
        case Answer::Kind::kWord:
        case Answer::Kind::kTransparent:
            Execute(answer.text);
            break;
        case Answer::Kind::kCancel:
            m_editor.ShowCancel();
            break;
        case Answer::Kind::kEnter:
        case Answer::Kind::kComment:
            break;
        case Answer::Kind::kPoint:
        case Answer::Kind::kDrag:
        case Answer::Kind::kMalformed:
            m_editor.Print(FormatText(L"\n未知命令\"%s\"。输入 HELP 查看命令列表。",
                                      StripComment(line).GetString()));
            break;
    }
}

bool CommandLine::Execute(const CString& name) {
    CommandProcessor& processor = m_editor.Commands();
    if (MakeHostCommand(m_editor, name) != nullptr) {
        processor.RunTyped(name);
        return true;
    }
    AcEdCommand* cmd = FindRegisteredCommand(name);
    if (cmd == nullptr) {
        m_editor.Print(FormatText(L"\n未知命令\"%s\"。输入 HELP 查看命令列表。",
                                  BareCommandName(name).GetString()));
        return false;
    }
    AcDbDatabase* db = CommandDatabase(m_editor);
    const bool grouped = db != nullptr && (cmd->commandFlags() & ACRX_CMD_NOUNDOMARKER) == 0;
    if (grouped) db->undoLog().beginGroup();
    cmd->functionAddr()();
    // A host command the function left waiting for answers ends with it.
    processor.CancelPending();
    if (grouped) db->undoLog().endGroup();
    return true;
}

}  // namespace kelaz
