#pragma once

// Registered commands: functions an application adds under a group with a global and a local
// name, run when their name is typed at the command prompt or, for transparent commands, with
// a leading apostrophe at any prompt of another command.

#include <memory>
#include <vector>

#include "host/AdAChar.h"
#include "host/Adesk.h"
#include "host/db/AcadErrorStatus.h"
#include "host/text/CString.h"

using AcRxFunctionPtr = void (*)();

// Command flags.
inline constexpr Adesk::Int32 ACRX_CMD_MODAL = 0x0000;
inline constexpr Adesk::Int32 ACRX_CMD_TRANSPARENT = 0x0001;
inline constexpr Adesk::Int32 ACRX_CMD_USEPICKSET = 0x0002;
inline constexpr Adesk::Int32 ACRX_CMD_REDRAW = 0x0004;
// The command does not open an undo group: it changes nothing, or manages undo itself.
inline constexpr Adesk::Int32 ACRX_CMD_NOUNDOMARKER = 0x0400;

class AcEdCommand {
public:
    const ACHAR* globalName() const { return m_global.GetString(); }
    const ACHAR* localName() const { return m_local.GetString(); }
    const ACHAR* groupName() const { return m_group.GetString(); }
    Adesk::Int32 commandFlags() const { return m_flags; }
    AcRxFunctionPtr functionAddr() const { return m_function; }

private:
    friend class AcEdCommandStack;
    CString m_group;
    CString m_global;
    CString m_local;
    Adesk::Int32 m_flags = 0;
    AcRxFunctionPtr m_function = nullptr;
};

class AcEdCommandIterator {
public:
    bool done() const { return m_index >= m_commands.size(); }
    bool next() {
        ++m_index;
        return !done();
    }
    const AcEdCommand* command() const { return done() ? nullptr : m_commands[m_index]; }
    const ACHAR* commandGroup() const { return done() ? L"" : m_commands[m_index]->groupName(); }

private:
    friend class AcEdCommandStack;
    explicit AcEdCommandIterator(std::vector<const AcEdCommand*> commands)
        : m_commands(std::move(commands)) {}
    std::vector<const AcEdCommand*> m_commands;
    size_t m_index = 0;
};

class AcEdCommandStack {
public:
    AcEdCommandStack() = default;
    AcEdCommandStack(const AcEdCommandStack&) = delete;
    AcEdCommandStack& operator=(const AcEdCommandStack&) = delete;

    // eDuplicateKey when a command of that global name exists in the group; eInvalidInput for an
    // empty name or no function.
    Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                 const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                                 AcRxFunctionPtr functionAddr);
    // Names compare without regard to case; the most recently added command wins.
    AcEdCommand* lookupGlobalCmd(const ACHAR* cmdName) const;
    AcEdCommand* lookupLocalCmd(const ACHAR* cmdName) const;
    AcEdCommand* lookupCmd(const ACHAR* cmdName, bool globalFlag) const;
    Acad::ErrorStatus removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName);
    Acad::ErrorStatus removeGroup(const ACHAR* groupName);
    // Every command, in the order added. The caller deletes the iterator.
    AcEdCommandIterator* iterator() const;

private:
    std::vector<std::unique_ptr<AcEdCommand>> m_commands;
};

namespace kelaz {
AcEdCommandStack* RegisteredCommands();
// A typed command name without its prefixes: '_' (the global name) and '.' (the built-in one).
CString BareCommandName(const CString& typed);
// The registered command a typed name runs, local names first; null when none.
AcEdCommand* FindRegisteredCommand(const CString& typed);
}  // namespace kelaz

#define acedRegCmds (kelaz::RegisteredCommands())
