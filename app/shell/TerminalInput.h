#pragma once

// A person at a terminal: lines read with line editing and history (libedit). The prompt's
// last line is drawn by the line editor so that it can redraw the line being edited.

#include <string>

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

private:
    std::string m_historyFile;
    int m_line = 0;
};

}  // namespace kelaz
