#include "app/shell/Session.h"

#include <iostream>
#include <map>
#include <memory>
#include <sstream>

#include "app/commands/LayoutCommands.h"
#include "app/drawing/DrawingView.h"
#include "app/export/Export.h"
#include "app/shell/InputHelp.h"
#include "host/app/DocManager.h"
#include "host/db/Database.h"
#include "host/ed/CommandLine.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/HostCommands.h"
#include "suite/data/CurrentProject.h"

namespace kelaz {

namespace {

constexpr const wchar_t* kSessionGroup = L"KELAZ_SESSION";
// Longer than any path a person types.
constexpr size_t kPathBuffer = 4096;

Session* g_session = nullptr;

std::map<CString, CString>& Descriptions() {
    static std::map<CString, CString> descriptions;
    return descriptions;
}

AcDbDatabase* CurrentDatabase() {
    AcApDocument* doc = acDocManager->curDocument();
    return doc != nullptr ? doc->database() : nullptr;
}

// Asks for a file name; Enter gives the default. False when cancelled or nothing was given.
bool AskPath(const CString& prompt, const CString& fallback, std::string& path) {
    ACHAR text[kPathBuffer] = {};
    if (acedGetString(1, prompt, text, kPathBuffer) != RTNORM) return false;
    CString chosen(text);
    chosen.Trim();
    if (chosen.IsEmpty()) chosen = fallback;
    if (chosen.IsEmpty()) return false;
    path = ToUtf8(chosen);
    return true;
}

bool SaveDrawing(AcDbDatabase* db, const std::string& path, std::string& error) {
    if (db->saveAs(FromUtf8(path)) == Acad::eOk) return true;
    error = ToUtf8(LastFileReport(*db));
    return false;
}

bool ExportDrawingTo(AcDbDatabase* db, const std::string& path, std::string& error) {
    return ExportByName(BuildExportDrawing(*db), path, error);
}

void SaveCommand() {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) return;
    const wchar_t* current = nullptr;
    db->getFilename(current);
    const CString name = current != nullptr ? CString(current) : CString();
    const CString prompt = name.IsEmpty() ? CString(L"\n保存为文件: ")
                                          : FormatText(L"\n保存为文件 <%s>: ", name.GetString());
    std::string path;
    if (!AskPath(prompt, name, path)) {
        acutPrintf(L"\n没有保存：图形还没有文件名。");
        return;
    }
    std::string error;
    if (SaveDrawing(db, path, error)) {
        acutPrintf(L"\n已保存 %s", FromUtf8(path).GetString());
    } else {
        acutPrintf(L"\n不能保存：%s", FromUtf8(error).GetString());
    }
}

void ExportCommand() {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) return;
    std::string path;
    if (!AskPath(L"\n输出到文件 (.dxf .png .svg .pdf): ", CString(), path)) {
        acutPrintf(L"\n没有输出。");
        return;
    }
    std::string error;
    if (ExportDrawingTo(db, path, error)) {
        acutPrintf(L"\n已输出 %s", FromUtf8(path).GetString());
    } else {
        acutPrintf(L"\n不能输出：%s", FromUtf8(error).GetString());
    }
}

void DumpCommand() {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) return;
    std::ostringstream json;
    DumpDrawing(*db, json);
    std::istringstream lines(json.str());
    for (std::string line; std::getline(lines, line);) {
        acutPrintf(L"\n%s", FromUtf8(line).GetString());
    }
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

void QuitCommand() {
    if (g_session != nullptr) g_session->RequestQuit();
}

}  // namespace

Acad::ErrorStatus RegisterCommand(const wchar_t* group, const wchar_t* name,
                                  const wchar_t* description, Adesk::Int32 flags,
                                  AcRxFunctionPtr function) {
    const Acad::ErrorStatus es = acedRegCmds->addCommand(group, name, name, flags, function);
    if (es == Acad::eOk) Descriptions()[CString(name).MakeUpper()] = description;
    return es;
}

Session::Session(InputSource& input, std::ostream& out) {
    InitDrawingClasses();
    SetDocumentConsole(&input, &out);
    g_session = this;
    const Adesk::Int32 quiet = ACRX_CMD_MODAL | ACRX_CMD_NOUNDOMARKER;
    RegisterCommand(kSessionGroup, L"SAVE", L"保存图形（默认存回当前文件）", quiet, SaveCommand);
    RegisterCommand(kSessionGroup, L"EXPORT", L"输出 DXF、PNG、SVG 或 PDF（按文件后缀）", quiet,
                    ExportCommand);
    RegisterCommand(kSessionGroup, L"DUMP", L"列出图形中的每个实体（JSON，每行一个）", quiet,
                    DumpCommand);
    RegisterCommand(kSessionGroup, L"HELP", L"列出命令", quiet, HelpCommand);
    RegisterCommand(kSessionGroup, L"QUIT", L"结束", quiet, QuitCommand);
    RegisterLayoutCommands();
}

Session::~Session() {
    while (acDocManager->curDocument() != nullptr) {
        acDocManager->closeDocument(acDocManager->curDocument());
    }
    acedRegCmds->removeGroup(kSessionGroup);
    UnregisterLayoutCommands();
    KelAzDataMng::CloseProject();
    SetDocumentConsole(nullptr, &std::cout);
    g_session = nullptr;
}

bool Session::Open(const SessionOptions& options, std::string& error) {
    m_project = options.project;
    // The commands read project data: the named project, or the default catalogue.
    CString projectError;
    const bool projectOpen = m_project.empty()
                                 ? KelAzDataMng::OpenDefaultProject()
                                 : KelAzDataMng::OpenProject(FromUtf8(m_project), projectError);
    if (!projectOpen) {
        error = "project " + m_project + ": " + ToUtf8(projectError);
        return false;
    }
    if (options.drawing.empty()) {
        acDocManager->appContextNewDocument(nullptr);
        return true;
    }
    std::unique_ptr<AcDbDatabase> db = OpenDrawing(options.drawing, error);
    if (db == nullptr) return false;
    AddDocument(std::move(db), FromUtf8(options.drawing));
    return true;
}

AcApDocument* Session::Document() const { return acDocManager->curDocument(); }

void Session::Run() {
    while (!m_quit) {
        Editor* editor = CurrentEditor();
        if (editor == nullptr || editor->InputExhausted()) break;
        CommandLine line(*editor);
        if (!line.RunOne()) break;
    }
    if (Editor* editor = CurrentEditor()) editor->FinishLine();
}

bool Session::StoppedInCommand() const {
    const Editor* editor = CurrentEditor();
    return editor != nullptr && editor->InputExhausted();
}

int Session::StoppedAtLine() const {
    const Editor* editor = CurrentEditor();
    return editor != nullptr ? editor->ExhaustedLine() : 0;
}

std::string Session::StoppedAtPrompt() const {
    const Editor* editor = CurrentEditor();
    return editor != nullptr ? ToUtf8(editor->ExhaustedPrompt()) : std::string();
}

bool Session::WriteOutputs(const SessionOptions& options, std::string& error) {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) {
        error = "no drawing is open";
        return false;
    }
    bool ok = true;
    std::string why;
    if (!options.save.empty() && !SaveDrawing(db, options.save, why)) {
        error += "save to " + options.save + ": " + why + "\n";
        ok = false;
    }
    for (const std::string* path : {&options.dxf, &options.png, &options.svg, &options.pdf}) {
        why.clear();
        if (!path->empty() && !ExportDrawingTo(db, *path, why)) {
            error += "export to " + *path + ": " + why + "\n";
            ok = false;
        }
    }
    return ok;
}

}  // namespace kelaz
