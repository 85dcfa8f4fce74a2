#include "host/ui/MessageBox.h"

#include <cstdio>

namespace kelaz {

namespace {

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
    std::printf("[%s] %s\n", ToUtf8(box.caption).c_str(), ToUtf8(box.text).c_str());
    std::fflush(stdout);
    return DefaultAnswer(box.flags);
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
