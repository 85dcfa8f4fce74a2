#include "host/ed/Editor.h"

#include <ostream>

#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/ed/Answer.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/CommandStack.h"
#include "host/ed/InputSource.h"

namespace kelaz {

namespace {

Editor*& Current() {
    static Editor* current = nullptr;
    return current;
}

CString WithoutLineEnds(const CString& prompt) {
    CString text = prompt;
    text.Trim(L" \t\r\n");
    return text;
}

}  // namespace

Editor::Editor(AcDbDatabase* db, InputSource* input, std::ostream* out)
    : m_db(db), m_input(input), m_out(out), m_commands(std::make_unique<CommandProcessor>(*this)) {}

Editor::~Editor() {
    if (Current() == this) Current() = nullptr;
}

void Editor::Write(const CString& text) {
    if (text.IsEmpty()) return;
    if (m_out != nullptr) {
        *m_out << ToUtf8(text);
        m_out->flush();
    }
    m_atLineStart = text[text.GetLength() - 1] == L'\n';
}

CString Editor::Absorb(const CString& text) {
    if (text.IsEmpty()) return text;
    const bool soft = m_soft;
    m_soft = false;
    return soft && text[0] == L'\n' ? text.Mid(1) : text;
}

void Editor::Print(const CString& text) {
    m_saidSinceAnswer = true;
    Write(Absorb(text));
}

void Editor::ShowCancel() { Print(L"*取消*"); }

void Editor::EchoLine(const CString& answer) {
    Write(answer + L"\n");
    m_atLineStart = true;
    m_soft = true;
}

void Editor::FinishLine() {
    if (!m_atLineStart) Write(L"\n");
    m_soft = true;
}

bool Editor::RunTransparent(const CString& name) {
    AcEdCommand* cmd = FindRegisteredCommand(name);
    if (cmd == nullptr) {
        Print(FormatText(L"\n未知命令\"%s\"。", name.GetString()));
        return false;
    }
    if ((cmd->commandFlags() & ACRX_CMD_TRANSPARENT) == 0) {
        Print(FormatText(L"\n不能透明使用 %s 命令。", cmd->localName()));
        return false;
    }
    cmd->functionAddr()();
    return true;
}

bool Editor::ReadLine(const CString& prompt, LineKind kind, CString& line,
                      const std::function<CString()>& shownAgain) {
    while (true) {
        const CString shown = Absorb(prompt);
        const bool terminal = m_input != nullptr && m_input->IsTerminal();
        // A terminal draws the prompt's last line itself, so that line editing can redraw it.
        CString promptLine;
        if (terminal) {
            const int lastBreak = shown.ReverseFind(L'\n');
            Write(shown.Left(lastBreak + 1));
            promptLine = shown.Mid(lastBreak + 1);
            if (!promptLine.IsEmpty()) m_atLineStart = false;
        } else {
            Write(shown);
        }

        // Typed at a terminal, the line is on the screen and the cursor on the next line
        // already; any other line is echoed here, unless it was queued not to be.
        bool typedAtTerminal = false;
        bool echo = true;
        while (true) {
            if (!m_queue.empty()) {
                line = m_queue.front().text;
                echo = m_queue.front().echo;
                m_queue.pop_front();
                typedAtTerminal = false;
            } else if (m_exhausted || m_input == nullptr || !m_input->NextLine(promptLine, line)) {
                if (kind != LineKind::kCommand && !m_exhausted) {
                    m_exhausted = true;
                    m_exhaustedLine = m_input != nullptr ? m_input->LineNumber() : 0;
                    m_exhaustedPrompt = WithoutLineEnds(prompt);
                }
                return false;
            } else {
                echo = true;
                typedAtTerminal = terminal;
            }
            // A comment is no answer: the same prompt waits for the next line.
            if (ParseAnswer(line).kind != Answer::Kind::kComment) break;
        }

        if (typedAtTerminal) {
            m_atLineStart = true;
            m_soft = true;
        } else if (echo) {
            if (terminal) Write(promptLine);
            EchoLine(kind == LineKind::kText ? line : StripComment(line));
        } else if (terminal) {
            Write(promptLine);
        }

        if (kind == LineKind::kAnswer) {
            const Answer answer = ParseAnswer(line);
            if (answer.kind == Answer::Kind::kTransparent) {
                if (RunTransparent(answer.text) && shownAgain) Print(shownAgain());
                continue;  // the interrupted prompt is shown again
            }
        }
        m_endedByEnter = kind != LineKind::kCommand && StripComment(line).IsEmpty();
        m_saidSinceAnswer = false;
        return true;
    }
}

void Editor::QueueTyped(const CString& text, bool echo) {
    CString current;
    bool pending = false;
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t ch = text[i];
        if (ch == L' ' || ch == L'\n' || ch == L'\r') {
            if (ch == L'\n' && i > 0 && text[i - 1] == L'\r') continue;
            m_queue.push_back({current, echo});
            current.Empty();
            pending = false;
        } else {
            current.AppendChar(ch);
            pending = true;
        }
    }
    if (pending) m_queue.push_back({current, echo});
}

void Editor::QueueArguments(const std::vector<CString>& answers) {
    for (const CString& answer : answers) m_queue.push_back({answer, true, true});
}

int Editor::DropArguments() {
    const auto before = m_queue.size();
    std::erase_if(m_queue, [](const Queued& q) { return q.argument; });
    return static_cast<int>(before - m_queue.size());
}

void Editor::SetInitGet(int flags, const CString& keywords) {
    m_initGet.flags = flags;
    m_initGet.keywords = KeywordList(keywords);
}

InitGet Editor::TakeInitGet() {
    InitGet taken = m_initGet;
    m_initGet = InitGet();
    return taken;
}

void Editor::RecordCommand(CommandRecord tokens) { m_recorded.push_back(std::move(tokens)); }

void Editor::SetDragPreview(GiPrimitiveList preview) {
    m_preview = std::move(preview);
    ++m_previewUpdates;
}

Editor* CurrentEditor() { return Current(); }

void NoteRefusedAnswer() {
    if (Editor* ed = Current()) ed->NoteRefusal();
}

void SetCurrentEditor(Editor* editor) { Current() = editor; }

ScopedEditor::ScopedEditor(Editor& editor)
    : m_previous(Current()), m_previousDb(acdbHostApplicationServices()->workingDatabase()) {
    Current() = &editor;
    acdbHostApplicationServices()->setWorkingDatabase(editor.database());
}

ScopedEditor::~ScopedEditor() {
    Current() = m_previous;
    acdbHostApplicationServices()->setWorkingDatabase(m_previousDb);
}

}  // namespace kelaz
