#include "app/shell/Session.h"

#include <iostream>
#include <memory>
#include <sstream>

#include "app/commands/LayoutCommands.h"
#include "app/drawing/DrawingView.h"
#include "app/export/Export.h"
#include "app/shell/CommandHelp.h"
#include "app/shell/FileCommands.h"
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

Session* g_session = nullptr;

AcDbDatabase* CurrentDatabase() {
    AcApDocument* doc = acDocManager->curDocument();
    return doc != nullptr ? doc->database() : nullptr;
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

void QuitCommand() {
    if (g_session != nullptr) g_session->RequestQuit();
}

}  // namespace

Session::Session(InputSource& input, std::ostream& out) {
    InitDrawingClasses();
    SetDocumentConsole(&input, &out);
    g_session = this;
    const Adesk::Int32 quiet = ACRX_CMD_MODAL | ACRX_CMD_NOUNDOMARKER;
    RegisterFileCommands(kSessionGroup);
    RegisterCommand(kSessionGroup, L"DUMP", L"列出图形中的每个实体（JSON，每行一个）", quiet,
                    DumpCommand);
    RegisterHelpCommand(kSessionGroup);
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

int Session::Refusals() const {
    const Editor* editor = CurrentEditor();
    return editor != nullptr ? editor->Refusals() : 0;
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
