#pragma once

// Where the command line's typed lines come from: a person at a terminal, a script file, or the
// lines a test supplies. Every editor input call, the jig's cursor and the answers to dialogs
// and message boxes read from the same source, one line per answer.

#include <istream>
#include <string>
#include <vector>

#include "host/text/CString.h"

namespace kelaz {

class InputSource {
public:
    virtual ~InputSource() = default;

    // The next line, without its line end. promptLine is the part of the prompt on the line
    // being answered; a terminal shows it itself (see IsTerminal), other sources ignore it.
    // False when the input is exhausted.
    virtual bool NextLine(const CString& promptLine, CString& line) = 0;
    // The number of the line last given (1 for the first); 0 before any.
    virtual int LineNumber() const = 0;
    // A terminal draws the prompt's last line and echoes what is typed, so the command line
    // must do neither; for every other source the command line echoes each line after its
    // prompt, so the output reads like a typed session.
    virtual bool IsTerminal() const { return false; }
    // What to call the source in messages ("script.kls", "stdin").
    virtual CString Name() const { return CString(); }
    // The last line given was no typed text but an interrupt (Ctrl-C at a terminal); it reads
    // as a cancel.
    virtual bool Interrupted() const { return false; }
};

// Lines given up front: a test's answers.
class ScriptedInput : public InputSource {
public:
    ScriptedInput() = default;
    explicit ScriptedInput(std::vector<CString> lines) : m_lines(std::move(lines)) {}
    ScriptedInput(std::initializer_list<const wchar_t*> lines);

    void Add(const CString& line) { m_lines.push_back(line); }
    bool NextLine(const CString& promptLine, CString& line) override;
    int LineNumber() const override { return m_next; }
    CString Name() const override { return L"script"; }
    // Lines not read yet.
    int Remaining() const { return static_cast<int>(m_lines.size()) - m_next; }

private:
    std::vector<CString> m_lines;
    int m_next = 0;
};

// Lines of a UTF-8 stream: a script file, or standard input when it is not a terminal.
// A UTF-8 byte order mark before the first line is skipped.
class StreamInput : public InputSource {
public:
    StreamInput(std::istream& in, CString name) : m_in(in), m_name(std::move(name)) {}

    bool NextLine(const CString& promptLine, CString& line) override;
    int LineNumber() const override { return m_line; }
    CString Name() const override { return m_name; }

private:
    std::istream& m_in;
    CString m_name;
    int m_line = 0;
};

}  // namespace kelaz
