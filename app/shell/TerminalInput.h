#pragma once

// A person at a terminal: lines read with line editing and history (libedit). The prompt's
// last line is drawn by the line editor so that it can redraw the line being edited.
//
// Ctrl-C gives up the line being typed and answers a cancel, as "^C" typed would. Its handler
// (see Interrupt.h) only makes the terminal read return; libedit's own signal handling is off,
// because it would send the signal on to the whole process group once the line is given up.
// Ctrl-D on an empty line is the end of the input, which the session takes as the end of the
// command that waits, or at the command prompt as a wish to end.

#include <string>

#include "app/shell/Interrupt.h"
#include "host/ed/InputSource.h"

namespace kelaz {

class TerminalInput : public InputSource {
public:
    // History is kept in historyFile between sessions when it is not empty.
    explicit TerminalInput(std::string historyFile);
    ~TerminalInput() override;
    TerminalInput(const TerminalInput&) = delete;
    TerminalInput& operator=(const TerminalInput&) = delete;

    bool NextLine(const CString& promptLine, CString& line) override;
    int LineNumber() const override { return m_line; }
    bool IsTerminal() const override { return true; }
    CString Name() const override { return L"terminal"; }
    bool Interrupted() const override { return m_interrupted; }

private:
    std::string m_historyFile;
    InterruptHandling m_interrupts{InterruptHandling::Mode::kCancel};
    int m_line = 0;
    bool m_interrupted = false;
};

}  // namespace kelaz
