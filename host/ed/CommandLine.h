#pragma once

// The command prompt: reads a command name, runs it, and comes back. A name is a host command
// (ARC, PLINE, ERASE, U, UNDO), a registered command or an alias of one, matched without regard
// to case; a registered command runs inside one undo group of the drawing, named after it,
// unless it is flagged ACRX_CMD_NOUNDOMARKER. Words after the name on the same line ("SAVE
// x.kdw", "ARC 0,0 50,50 100,0"; double quotes keep blanks in one word) answer the command's
// first questions; what it does not read is dropped with a word. A command ended by Enter says
// so when it printed nothing after it. Enter at the command prompt does nothing; a cancel
// prints "*取消*".

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
    // Runs the command of that name (or alias) as if typed. False when there is no such command
    // (a message says so).
    bool Execute(const CString& typed);

private:
    // A command ended by an Enter that it answered with nothing: the drafter is told it ended.
    void SayEndedByEnter(const CString& name);

    Editor& m_editor;
};

}  // namespace kelaz
