#pragma once

// A drafting session at kelaz's command line: one document (a new drawing, or one opened from a
// file), the session commands (SAVE, EXPORT, DUMP, HELP, QUIT) beside the host's, and the loop
// that reads and runs commands until the input runs out or QUIT.

#include <iosfwd>
#include <string>

#include "app/shell/CommandHelp.h"
#include "host/ed/CommandStack.h"
#include "host/text/CString.h"

class AcApDocument;

namespace kelaz {

class InputSource;

struct SessionOptions {
    std::string drawing;  // opened first when not empty
    std::string project;  // the project database the commands read; the default one when empty
    // Written when the session ends normally, those that are not empty.
    std::string save;
    std::string dxf;
    std::string png;
    std::string svg;
    std::string pdf;
};

class Session {
public:
    Session(InputSource& input, std::ostream& out);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Opens the project and the drawing (or starts a new one). False with the reason when either
    // cannot be read.
    bool Open(const SessionOptions& options, std::string& error);
    // Reads and runs commands until the input runs out or QUIT.
    void Run();
    // The input ran out while a command waited for an answer: where, and for what.
    bool StoppedInCommand() const;
    // Answers the command line refused so far (wrong answers, unknown commands, refusals).
    int Refusals() const;
    int StoppedAtLine() const;
    std::string StoppedAtPrompt() const;
    // Saves and exports as the options ask. False with the reasons.
    bool WriteOutputs(const SessionOptions& options, std::string& error);

    AcApDocument* Document() const;
    const std::string& ProjectPath() const { return m_project; }
    void RequestQuit() { m_quit = true; }

private:
    std::string m_project;
    bool m_quit = false;
};

}  // namespace kelaz
