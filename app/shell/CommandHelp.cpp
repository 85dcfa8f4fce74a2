#include "app/shell/CommandHelp.h"

#include <map>

#include "host/ed/CommandStack.h"
#include "host/ed/EditorInput.h"
#include "host/ed/HostCommands.h"

namespace kelaz {

namespace {

std::map<CString, CString>& Descriptions() {
    static std::map<CString, CString> descriptions;
    return descriptions;
}

void HelpCommand() {
    acutPrintf(L"\n可用的命令:");
    for (const HostCommandInfo& info : HostCommandList()) {
        acutPrintf(L"\n  %-8s %s", info.name, info.description);
    }
    AcEdCommandIterator* it = acedRegCmds->iterator();
    for (; !it->done(); it->next()) {
        const AcEdCommand* cmd = it->command();
        const auto found = Descriptions().find(CString(cmd->globalName()).MakeUpper());
        acutPrintf(L"\n  %-8s %s", cmd->localName(),
                   found != Descriptions().end() ? found->second.GetString() : L"");
    }
    delete it;
    acutPrintf(L"\n回答的写法见 kelaz help input。");
}

}  // namespace

Acad::ErrorStatus RegisterCommand(const wchar_t* group, const wchar_t* name,
                                  const wchar_t* description, Adesk::Int32 flags,
                                  AcRxFunctionPtr function) {
    const Acad::ErrorStatus es = acedRegCmds->addCommand(group, name, name, flags, function);
    if (es == Acad::eOk) Descriptions()[CString(name).MakeUpper()] = description;
    return es;
}

void RegisterHelpCommand(const wchar_t* group) {
    RegisterCommand(group, L"HELP", L"列出命令", ACRX_CMD_MODAL | ACRX_CMD_NOUNDOMARKER,
                    HelpCommand);
}

}  // namespace kelaz
