#include "app/shell/CommandHelp.h"

#include <map>

#include "app/shell/CommandHelpTable.h"
#include "host/ed/CommandAliases.h"
#include "host/ed/CommandStack.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/HostCommands.h"

namespace kelaz {

namespace {

std::map<CString, CString>& Descriptions() {
    static std::map<CString, CString> descriptions;
    return descriptions;
}

constexpr size_t kNameBuffer = 64;

bool IsHostCommand(const CString& name) {
    for (const HostCommandInfo& info : HostCommandList()) {
        if (name.CompareNoCase(info.name) == 0) return true;
    }
    return false;
}

// The one-line description of a command: registered with it, or the host's own.
CString DescriptionOf(const CString& name) {
    for (const HostCommandInfo& info : HostCommandList()) {
        if (name.CompareNoCase(info.name) == 0) return info.description;
    }
    const auto found = Descriptions().find(CString(name).MakeUpper());
    return found != Descriptions().end() ? found->second : CString();
}

CString AliasesOf(const CString& name) {
    CString aliases;
    for (const auto& [alias, command] : CommandAliases()) {
        if (command.CompareNoCase(name) != 0) continue;
        if (!aliases.IsEmpty()) aliases += L", ";
        aliases += alias;
    }
    return aliases;
}

void ListCommands() {
    acutPrintf(L"\n可用的命令:");
    for (const HostCommandInfo& info : HostCommandList()) {
        acutPrintf(L"\n  %-12s %s", info.name, info.description);
    }
    AcEdCommandIterator* it = acedRegCmds->iterator();
    for (; !it->done(); it->next()) {
        const AcEdCommand* cmd = it->command();
        acutPrintf(L"\n  %-12s %s", cmd->localName(), DescriptionOf(cmd->globalName()).GetString());
    }
    delete it;
    CString aliases;
    for (const auto& [alias, command] : CommandAliases()) {
        aliases += FormatText(L" %s=%s", alias.GetString(), command.GetString());
    }
    acutPrintf(L"\n别名:%s", aliases.GetString());
    acutPrintf(L"\nHELP 命令名 说明一个命令的提问和示例；回答的写法见 kelaz help input。");
}

void ExplainCommand(const CString& typed) {
    CString name = typed;
    if (FindRegisteredCommand(name) == nullptr && !IsHostCommand(name)) {
        const CString command = CommandForAlias(name);
        if (!command.IsEmpty()) name = command;
    }
    const CString description = DescriptionOf(name);
    const CommandHelpRow* row = FindCommandHelp(name);
    if (description.IsEmpty() && row == nullptr) {
        acutPrintf(L"\n没有命令\"%s\"。输入 HELP 查看命令列表。", typed.GetString());
        return;
    }
    acutPrintf(L"\n%s: %s", CString(name).MakeUpper().GetString(), description.GetString());
    const CString aliases = AliasesOf(name);
    if (!aliases.IsEmpty()) acutPrintf(L"\n别名: %s", aliases.GetString());
    if (row == nullptr) return;
    CString prompts(row->prompts);
    prompts.Replace(L"\n", L"\n    ");
    acutPrintf(L"\n提问:\n    %s", prompts.GetString());
    CString example(row->example);
    example.Replace(L"\n", L"\n    ");
    acutPrintf(L"\n示例:\n    %s", example.GetString());
}

// HELP lists the commands; a name typed after it on the same line ("HELP ARC") explains one.
void HelpCommand() {
    Editor* editor = CurrentEditor();
    if (editor == nullptr || !editor->HasQueuedInput()) {
        ListCommands();
        return;
    }
    wchar_t name[kNameBuffer] = {};
    if (acedGetString(0, L"\n命令名<全部>:", name, kNameBuffer) != RTNORM || name[0] == 0) {
        ListCommands();
        return;
    }
    ExplainCommand(name);
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
    RegisterCommand(group, L"HELP", L"列出命令；HELP 命令名 说明一个命令",
                    ACRX_CMD_MODAL | ACRX_CMD_NOUNDOMARKER, HelpCommand);
    AddCommandAlias(L"?", L"HELP");
    AddCommandAlias(L"EXIT", L"QUIT");
}

}  // namespace kelaz
