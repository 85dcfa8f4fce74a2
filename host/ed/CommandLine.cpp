#include "host/ed/CommandLine.h"

#include <vector>
#include "host/db/Database.h"
#include "host/db/UndoLog.h"

#include "host/ed/Answer.h"
#include "host/ed/CommandAliases.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/CommandStack.h"
#include "host/ed/Editor.h"
#include "host/ed/HostCommands.h"

namespace kelaz {

namespace {

// The words of a line: blanks separate them, double quotes keep blanks inside one ("a b").
std::vector<CString> Words(const CString& text) {
    std::vector<CString> words;
    CString word;
    bool quoted = false, any = false;
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t ch = text[i];
        if (ch == L'"') {
            quoted = !quoted;
            any = true;
        } else if (!quoted && (ch == L' ' || ch == L'\t')) {
            if (any) words.push_back(word);
            word.Empty();
            any = false;
        } else {
            word.AppendChar(ch);
            any = true;
        }
    }
    if (any) words.push_back(word);
    return words;
}

}  // namespace

bool CommandLine::RunOne() {
    CString line;
    if (!m_editor.ReadLine(kCommandPrompt, Editor::LineKind::kCommand, line)) return false;
    RunLine(line);
    return true;
}

void CommandLine::RunLine(const CString& line) {
    // What follows the name on its line answers the command's first questions, as if typed there.
    std::vector<CString> words = Words(StripComment(line));
    if (words.size() > 1 && ParseAnswer(words.front()).kind == Answer::Kind::kWord) {
        const CString name = words.front();
        words.erase(words.begin());
        m_editor.QueueArguments(words);
        const bool ran = Execute(name);
        const int unread = m_editor.DropArguments();
        if (ran && unread > 0) {
            m_editor.Print(FormatText(L"\n%s 没有用到后面的 %d 项输入，已忽略。",
                                      BareCommandName(name).MakeUpper().GetString(), unread));
        }
        return;
    }
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
            m_editor.NoteRefusal();
            m_editor.Print(FormatText(L"\n未知命令\"%s\"。输入 HELP 查看命令列表。",
                                      StripComment(line).GetString()));
            break;
    }
}

bool CommandLine::Execute(const CString& typed) {
    CommandProcessor& processor = m_editor.Commands();
    CString name = typed;
    if (MakeHostCommand(m_editor, name) == nullptr && FindRegisteredCommand(name) == nullptr) {
        const CString command = CommandForAlias(BareCommandName(name));
        if (!command.IsEmpty()) name = command;
    }
    m_editor.ForgetLastAnswer();
    if (MakeHostCommand(m_editor, name) != nullptr) {
        processor.RunTyped(name);
        SayEndedByEnter(name);
        return true;
    }
    AcEdCommand* cmd = FindRegisteredCommand(name);
    if (cmd == nullptr) {
        m_editor.NoteRefusal();
        m_editor.Print(FormatText(L"\n未知命令\"%s\"。输入 HELP 查看命令列表。",
                                  BareCommandName(name).GetString()));
        return false;
    }
    AcDbDatabase* db = CommandDatabase(m_editor);
    const bool grouped = db != nullptr && (cmd->commandFlags() & ACRX_CMD_NOUNDOMARKER) == 0;
    if (grouped) db->undoLog().beginGroup(cmd->globalName());
    cmd->functionAddr()();
    // A host command the function left waiting for answers ends with it.
    processor.CancelPending();
    if (grouped) db->undoLog().endGroup();
    SayEndedByEnter(cmd->globalName());
    return true;
}

void CommandLine::SayEndedByEnter(const CString& name) {
    if (m_editor.EndedSilentlyByEnter())
        m_editor.Print(FormatText(L"\n%s 结束。", BareCommandName(name).MakeUpper().GetString()));
}

}  // namespace kelaz
