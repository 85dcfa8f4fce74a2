#pragma once

// The command prompt: reads a command name, runs it, and comes back. A name is a host command
// (ARC, ERASE, U, UNDO) or a registered command, matched without regard to case; a registered
// command runs inside one undo group of the drawing unless it is flagged
// ACRX_CMD_NOUNDOMARKER. Enter at the command prompt does nothing; a cancel prints "*取消*".

#include "host/text/CString.h"

namespace kelaz {

class Editor;

inline constexpr const wchar_t* kCommandPrompt = L"\n命令: ";

class CommandLine {
public:
    explicit CommandLine(Editor& editor) : m_editor(editor) {}

    // Reads and runs one command line. False when the input has run out.
    bool RunOne();
    // Runs a line read at the command prompt.
    void RunLine(const CString& line);
    // Runs the command of that name as if typed. False when there is no such command (a
    // message says so).
    bool Execute(const CString& name);

private:
    Editor& m_editor;
};

}  // namespace kelaz
