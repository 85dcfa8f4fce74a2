#pragma once

// acedCommand and the command processor behind it. A command is given as pairs of an RT* type
// and a value ended by RTNONE: the command's name first (RTSTR), then its answers (RTSTR words,
// "" for Enter, RT3DPOINT/RTPOINT points, RTSHORT/RTREAL numbers, RTENAME entities). The token
// "\\" pauses: the command's prompt is shown and one answer is read from the input source. A
// command whose answers run out stays pending, and the next acedCommand goes on with it. Every
// call is recorded token by token. With CMDECHO 1 the command's prompts are printed with the
// answers the tokens gave.

#include <memory>
#include <vector>

#include "host/AdAChar.h"
#include "host/ed/CommandToken.h"
#include "host/text/CString.h"

namespace kelaz {

class Editor;
class HostCommand;
struct CommandInput;

class CommandProcessor {
public:
    explicit CommandProcessor(Editor& editor);
    ~CommandProcessor();
    CommandProcessor(const CommandProcessor&) = delete;
    CommandProcessor& operator=(const CommandProcessor&) = delete;

    // The work of acedCommand: RTNORM, RTCAN when a pause was cancelled (the command is then
    // cancelled too), RTERROR for an unknown command or a token the command refuses (the
    // command is then cancelled).
    int Execute(const std::vector<CommandToken>& tokens);
    // A host command typed at the command prompt, answered from the input source until it
    // ends: RTNORM, or RTCAN when it was cancelled. RTERROR when the name is no host command.
    int RunTyped(const CString& name);

    bool HasPending() const { return m_pending != nullptr; }
    void CancelPending();

private:
    enum class Fed { kDone, kMore, kRefused };
    Fed Feed(const CommandInput& input);
    bool Begin(const CString& name, bool echo);
    int Pause();

    Editor& m_editor;
    std::unique_ptr<HostCommand> m_pending;
};

// Reads one answer to a command's prompt from the input source; asks again after a malformed
// answer. False for a cancel or input that ran out ("*取消*" shown).
bool ReadCommandInput(Editor& editor, const CString& prompt, CommandInput& input);

}  // namespace kelaz

// Sends a command to the command processor of the current document (see above). RTERROR when
// there is no command line.
int acedCommand(int rtype, ...);
