#include "host/ed/CommandProcessor.h"

#include <cstdarg>

#include "host/db/OpenObject.h"
#include "host/ed/Answer.h"
#include "host/ed/Ask.h"
#include "host/ed/Editor.h"
#include "host/ed/HostCommands.h"

namespace kelaz {

namespace {

CString HandleText(AcDbObjectId id) {
    wchar_t buf[32] = {};
    id.handle().getIntoAsciiBuffer(buf, 32);
    return CString(buf).MakeUpper();
}

CommandInput TokenInput(const CommandToken& token) {
    CommandInput input;
    switch (token.type) {
        case RTSTR:
            input.kind =
                token.text.IsEmpty() ? CommandInput::Kind::kEnter : CommandInput::Kind::kWord;
            input.text = token.text;
            break;
        case RT3DPOINT:
        case RTPOINT:
            input.kind = CommandInput::Kind::kPoint;
            input.point = token.point;
            break;
        case RTENAME:
            input.kind = CommandInput::Kind::kEntity;
            input.id = token.id;
            break;
        default:  // numbers answer as the words a person would type
            input.kind = CommandInput::Kind::kWord;
            input.text = FormatToken(token);
            break;
    }
    return input;
}

}  // namespace

CommandToken CommandToken::Str(const CString& text) {
    CommandToken token;
    token.type = RTSTR;
    token.text = text;
    return token;
}

CommandToken CommandToken::Point(const AcGePoint3d& point) {
    CommandToken token;
    token.type = RT3DPOINT;
    token.point = point;
    return token;
}

CString FormatToken(const CommandToken& token) {
    switch (token.type) {
        case RTSTR:
            return token.text;
        case RT3DPOINT:
        case RTPOINT:
            return FormatPoint(token.point);
        case RTSHORT:
        case RTLONG:
            return FormatText(L"%d", token.integer);
        case RTREAL:
            return FormatText(L"%g", token.real);
        case RTENAME:
            return L"<" + HandleText(token.id) + L">";
        default:
            return FormatText(L"<%d>", token.type);
    }
}

CString FormatRecord(const std::vector<CommandToken>& tokens) {
    CString line;
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (i > 0) line += L" ";
        line += tokens[i].type == RTSTR && tokens[i].text.IsEmpty() ? CString(L"\"\"")
                                                                    : FormatToken(tokens[i]);
    }
    return line;
}

bool ReadCommandInput(Editor& editor, const CString& prompt, CommandInput& input) {
    while (true) {
        CString line;
        if (!editor.ReadLine(prompt, Editor::LineKind::kAnswer, line)) {
            editor.ShowCancel();
            return false;
        }
        const Answer answer = ParseAnswer(line);
        switch (answer.kind) {
            case Answer::Kind::kCancel:
                editor.ShowCancel();
                return false;
            case Answer::Kind::kEnter:
                input = CommandInput();
                return true;
            case Answer::Kind::kPoint:
                input = CommandInput();
                input.kind = CommandInput::Kind::kPoint;
                input.point = ResolvePoint(editor, answer.point, answer.relative);
                if (!WithinDrawingExtent(input.point)) {
                    editor.NoteRefusal();
                    editor.Print(L"\n" + OutsideExtentMessage());
                    continue;
                }
                editor.SetLastPoint(input.point);
                return true;
            case Answer::Kind::kWord:
                input = CommandInput();
                input.kind = CommandInput::Kind::kWord;
                input.text = answer.text;
                return true;
            case Answer::Kind::kDrag:
                editor.NoteRefusal();
                editor.Print(L"\n光标采样 (drag) 只在拖动时有效。");
                continue;
            case Answer::Kind::kMalformed:
                editor.NoteRefusal();
                editor.Print(L"\n" + answer.text);
                continue;
            case Answer::Kind::kTransparent:
            case Answer::Kind::kComment:
                continue;
        }
    }
}

CommandProcessor::CommandProcessor(Editor& editor) : m_editor(editor) {}

CommandProcessor::~CommandProcessor() = default;

void CommandProcessor::CancelPending() { m_pending.reset(); }

CommandProcessor::Fed CommandProcessor::Feed(const CommandInput& input) {
    const HostCommand::Step step = m_pending->Feed(input);
    if (step == HostCommand::Step::kDone) {
        m_pending.reset();
        return Fed::kDone;
    }
    if (step != HostCommand::Step::kRefused) return Fed::kMore;
    m_editor.NoteRefusal();
    return Fed::kRefused;
}

bool CommandProcessor::Begin(const CString& name, bool echo) {
    std::unique_ptr<HostCommand> command = MakeHostCommand(m_editor, name);
    if (command == nullptr) {
        m_editor.Print(FormatText(L"\n未知命令\"%s\"。", name.GetString()));
        return false;
    }
    if (echo) {
        m_editor.Print(L"\n命令: ");
        m_editor.EchoLine(name);
    }
    m_pending = std::move(command);
    if (m_pending->Start() == HostCommand::Step::kDone) m_pending.reset();
    return true;
}

int CommandProcessor::Pause() {
    while (true) {
        CommandInput input;
        if (!ReadCommandInput(m_editor, m_pending->Prompt(), input)) {
            CancelPending();
            return RTCAN;
        }
        if (Feed(input) != Fed::kRefused) return RTNORM;
    }
}

int CommandProcessor::Execute(const std::vector<CommandToken>& tokens) {
    for (const CommandToken& token : tokens) {
        if (m_pending == nullptr) {
            if (token.type != RTSTR) {
                m_editor.Print(
                    FormatText(L"\n需要命令名，而不是 %s。", FormatToken(token).GetString()));
                return RTERROR;
            }
            if (token.text.IsEmpty()) continue;  // Enter with no command running
            if (!Begin(token.text, m_editor.CmdEcho() != 0)) return RTERROR;
            continue;
        }
        if (token.type == RTSTR && token.text == L"\\") {
            const int status = Pause();
            if (status != RTNORM) return status;
            continue;
        }
        if (m_editor.CmdEcho() != 0) {
            m_editor.Print(m_pending->Prompt());
            m_editor.EchoLine(FormatToken(token));
        }
        if (Feed(TokenInput(token)) == Fed::kRefused) {
            CancelPending();
            return RTERROR;
        }
    }
    return RTNORM;
}

int CommandProcessor::RunTyped(const CString& name) {
    CancelPending();
    if (!Begin(name, false)) return RTERROR;
    while (m_pending != nullptr) {
        CommandInput input;
        if (!ReadCommandInput(m_editor, m_pending->Prompt(), input)) {
            CancelPending();
            return RTCAN;
        }
        Feed(input);
    }
    return RTNORM;
}

}  // namespace kelaz

int acedCommand(int rtype, ...) {
    kelaz::Editor* ed = kelaz::CurrentEditor();
    if (ed == nullptr) return RTERROR;
    std::vector<kelaz::CommandToken> tokens;
    bool understood = true;
    va_list args;
    va_start(args, rtype);
    for (int type = rtype; type != RTNONE && type != 0; type = va_arg(args, int)) {
        kelaz::CommandToken token;
        token.type = type;
        switch (type) {
            case RTSTR: {
                const ACHAR* text = va_arg(args, const ACHAR*);
                token.text = text != nullptr ? text : L"";
                break;
            }
            case RT3DPOINT:
            case RTPOINT: {
                const ads_real* p = va_arg(args, const ads_real*);
                token.point.set(p[0], p[1], type == RT3DPOINT ? p[2] : 0.0);
                break;
            }
            case RTSHORT:
            case RTLONG:
                token.integer = va_arg(args, int);
                break;
            case RTREAL:
            case RTANG:
                token.real = va_arg(args, double);
                break;
            case RTENAME: {
                const Adesk::LongPtr* name = va_arg(args, const Adesk::LongPtr*);
                acdbGetObjectId(token.id, name);
                break;
            }
            default:
                understood = false;
                break;
        }
        if (!understood) break;
        tokens.push_back(token);
    }
    va_end(args);
    ed->RecordCommand(tokens);
    if (!understood) {
        ed->Print(L"\nacedCommand: 不支持的参数类型。");
        return RTERROR;
    }
    return ed->Commands().Execute(tokens);
}
