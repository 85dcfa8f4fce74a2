#include "host/ed/CommandStack.h"

Acad::ErrorStatus AcEdCommandStack::addCommand(const ACHAR* cmdGroupName,
                                               const ACHAR* cmdGlobalName,
                                               const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                                               AcRxFunctionPtr functionAddr) {
    if (cmdGlobalName == nullptr || *cmdGlobalName == 0 || functionAddr == nullptr) {
        return Acad::eInvalidInput;
    }
    const CString group(cmdGroupName);
    for (const auto& cmd : m_commands) {
        if (cmd->m_group.CompareNoCase(group) == 0 &&
            cmd->m_global.CompareNoCase(cmdGlobalName) == 0) {
            return Acad::eDuplicateKey;
        }
    }
    auto cmd = std::make_unique<AcEdCommand>();
    cmd->m_group = group;
    cmd->m_global = cmdGlobalName;
    cmd->m_local = (cmdLocalName != nullptr && *cmdLocalName != 0) ? cmdLocalName : cmdGlobalName;
    cmd->m_flags = commandFlags;
    cmd->m_function = functionAddr;
    m_commands.push_back(std::move(cmd));
    return Acad::eOk;
}

AcEdCommand* AcEdCommandStack::lookupCmd(const ACHAR* cmdName, bool globalFlag) const {
    if (cmdName == nullptr) return nullptr;
    for (auto it = m_commands.rbegin(); it != m_commands.rend(); ++it) {
        const CString& name = globalFlag ? (*it)->m_global : (*it)->m_local;
        if (name.CompareNoCase(cmdName) == 0) return it->get();
    }
    return nullptr;
}

AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const ACHAR* cmdName) const {
    return lookupCmd(cmdName, true);
}

AcEdCommand* AcEdCommandStack::lookupLocalCmd(const ACHAR* cmdName) const {
    return lookupCmd(cmdName, false);
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const ACHAR* cmdGroupName,
                                              const ACHAR* cmdGlobalName) {
    for (auto it = m_commands.begin(); it != m_commands.end(); ++it) {
        if ((*it)->m_group.CompareNoCase(cmdGroupName) == 0 &&
            (*it)->m_global.CompareNoCase(cmdGlobalName) == 0) {
            m_commands.erase(it);
            return Acad::eOk;
        }
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const ACHAR* groupName) {
    const auto before = m_commands.size();
    std::erase_if(m_commands, [groupName](const std::unique_ptr<AcEdCommand>& cmd) {
        return cmd->m_group.CompareNoCase(groupName) == 0;
    });
    return m_commands.size() == before ? Acad::eKeyNotFound : Acad::eOk;
}

AcEdCommandIterator* AcEdCommandStack::iterator() const {
    std::vector<const AcEdCommand*> commands;
    for (const auto& cmd : m_commands) commands.push_back(cmd.get());
    return new AcEdCommandIterator(std::move(commands));
}

namespace kelaz {

AcEdCommandStack* RegisteredCommands() {
    static AcEdCommandStack stack;
    return &stack;
}

CString BareCommandName(const CString& typed) {
    CString name = typed;
    name.Trim();
    while (!name.IsEmpty() && (name[0] == L'_' || name[0] == L'.')) name = name.Mid(1);
    return name;
}

AcEdCommand* FindRegisteredCommand(const CString& typed) {
    const CString name = BareCommandName(typed);
    if (name.IsEmpty()) return nullptr;
    AcEdCommand* cmd = RegisteredCommands()->lookupLocalCmd(name);
    return cmd != nullptr ? cmd : RegisteredCommands()->lookupGlobalCmd(name);
}

}  // namespace kelaz
