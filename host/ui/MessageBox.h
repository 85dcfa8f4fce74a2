#pragma once

// Message boxes. Every box goes to the current message sink, which records or prints it and gives
// the answer: tests install a recording sink, the console program one that prints.

#include <deque>
#include <memory>
#include <vector>

#include "host/text/CString.h"

struct HWND__;
using HWND = HWND__*;

// Button sets, icons and modality flags, with the host's values.
inline constexpr UINT MB_OK = 0x0;
inline constexpr UINT MB_OKCANCEL = 0x1;
inline constexpr UINT MB_YESNOCANCEL = 0x3;
inline constexpr UINT MB_YESNO = 0x4;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONWARNING = 0x30;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr UINT MB_DEFBUTTON2 = 0x100;
inline constexpr UINT MB_TASKMODAL = 0x2000;
inline constexpr UINT MB_SETFOREGROUND = 0x10000;
inline constexpr UINT MB_TYPEMASK = 0xF;

// Answers.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

// The window that owns new boxes; headless, there is none.
HWND GetActiveWindow();

int MessageBox(HWND owner, LPCTSTR text, LPCTSTR caption, UINT type);
int AfxMessageBox(LPCTSTR text, UINT type = MB_OK, UINT helpId = 0);

namespace kelaz {

struct MessageBoxRecord {
    CString caption;
    CString text;
    UINT flags = 0;
};

class MessageSink {
public:
    virtual ~MessageSink() = default;
    // Shows one box and answers the button chosen.
    virtual int Show(const MessageBoxRecord& box) = 0;
};

// Keeps every box; answers queued replies in turn, and afterwards OK for OK boxes and No for
// questions (a question acts only on yes, so the quiet answer is the safe one).
class RecordingMessageSink : public MessageSink {
public:
    int Show(const MessageBoxRecord& box) override;
    void QueueAnswer(int answer) { m_answers.push_back(answer); }
    const std::vector<MessageBoxRecord>& Records() const { return m_records; }
    void Clear() { m_records.clear(); }

private:
    std::vector<MessageBoxRecord> m_records;
    std::deque<int> m_answers;
};

// Shows "[caption] text" on the current command line and reads the answer to a question box
// from its input: yes / no (y / n), ok / cancel. Input that runs out gives the quiet default of a
// recording sink. With no command line, prints the box on standard output and answers that
// default.
class ConsoleMessageSink : public MessageSink {
public:
    int Show(const MessageBoxRecord& box) override;
};

MessageSink& CurrentMessageSink();
// Installs a sink for the lifetime of the guard and restores the previous one afterwards.
class ScopedMessageSink {
public:
    explicit ScopedMessageSink(MessageSink& sink);
    ~ScopedMessageSink();
    ScopedMessageSink(const ScopedMessageSink&) = delete;
    ScopedMessageSink& operator=(const ScopedMessageSink&) = delete;

private:
    MessageSink* m_previous;
};

}  // namespace kelaz
