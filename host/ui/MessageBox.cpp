#include "host/ui/MessageBox.h"

#include <cstdio>

#include "host/ed/Answer.h"
#include "host/ed/Editor.h"

namespace kelaz {

namespace {

// The icon bits of a box's flags.
constexpr UINT kIconMask = 0xF0;

int DefaultAnswer(UINT flags) {
    switch (flags & MB_TYPEMASK) {
        case MB_YESNO:
        case MB_YESNOCANCEL:
            return IDNO;
        case MB_OKCANCEL:
            return IDCANCEL;
        default:
            return IDOK;
    }
}

ConsoleMessageSink& ConsoleSink() {
    static ConsoleMessageSink sink;
    return sink;
}

MessageSink*& Current() {
    static MessageSink* current = &ConsoleSink();
    return current;
}

}  // namespace

int RecordingMessageSink::Show(const MessageBoxRecord& box) {
    m_records.push_back(box);
    if (m_answers.empty()) return DefaultAnswer(box.flags);
    const int answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

int ConsoleMessageSink::Show(const MessageBoxRecord& box) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) {
        std::printf("[%s] %s\n", ToUtf8(box.caption).c_str(), ToUtf8(box.text).c_str());
        std::fflush(stdout);
        return DefaultAnswer(box.flags);
    }
    ed->Print(FormatText(L"\n[%s] %s", box.caption.GetString(), box.text.GetString()));
    const UINT buttons = box.flags & MB_TYPEMASK;
    // A warning that asks nothing tells the drafter that what was given was refused.
    const UINT icon = box.flags & kIconMask;
    if (buttons == MB_OK && (icon == MB_ICONWARNING || icon == MB_ICONERROR)) ed->NoteRefusal();
    if (buttons != MB_YESNO && buttons != MB_YESNOCANCEL && buttons != MB_OKCANCEL) return IDOK;
    const wchar_t* prompt = buttons == MB_YESNO         ? L"\n(yes/no): "
                            : buttons == MB_YESNOCANCEL ? L"\n(yes/no/cancel): "
                                                        : L"\n(ok/cancel): ";
    while (true) {
        CString line;
        // Input that runs out answers as a box nobody looked at: the quiet default.
        if (!ed->ReadLine(prompt, Editor::LineKind::kText, line)) return DefaultAnswer(box.flags);
        const CString word = StripComment(line);
        const bool cancel =
            ParseAnswer(word).kind == Answer::Kind::kCancel || word.CompareNoCase(L"cancel") == 0;
        if (buttons != MB_OKCANCEL) {
            if (word.CompareNoCase(L"yes") == 0 || word.CompareNoCase(L"y") == 0) return IDYES;
            if (word.CompareNoCase(L"no") == 0 || word.CompareNoCase(L"n") == 0) return IDNO;
            if (cancel && buttons == MB_YESNOCANCEL) return IDCANCEL;
        } else {
            if (word.CompareNoCase(L"ok") == 0) return IDOK;
            if (cancel) return IDCANCEL;
        }
        ed->NoteRefusal();
        ed->Print(buttons == MB_OKCANCEL ? L"\n请回答 ok 或 cancel。" : L"\n请回答 yes 或 no。");
    }
}

MessageSink& CurrentMessageSink() { return *Current(); }

ScopedMessageSink::ScopedMessageSink(MessageSink& sink) : m_previous(Current()) {
    Current() = &sink;
}

ScopedMessageSink::~ScopedMessageSink() { Current() = m_previous; }

}  // namespace kelaz

HWND GetActiveWindow() { return nullptr; }

int MessageBox(HWND /*owner*/, LPCTSTR text, LPCTSTR caption, UINT type) {
    return kelaz::CurrentMessageSink().Show({CString(caption), CString(text), type});
}

int AfxMessageBox(LPCTSTR text, UINT type, UINT /*helpId*/) {
    // The framework titles its boxes with the application's name.
    return MessageBox(GetActiveWindow(), text, L"kelaz", type);
}
