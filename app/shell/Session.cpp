#include "app/shell/Session.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>

#include "app/commands/LayoutCommands.h"
#include "app/drawing/DrawingView.h"
#include "app/export/Export.h"
#include "app/shell/CommandHelp.h"
#include "app/shell/FileCommands.h"
#include "app/shell/JournalInput.h"
#include "app/shell/RememberedCommands.h"
#include "host/app/DocManager.h"
#include "host/db/Database.h"
#include "host/ed/CommandLine.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/HostCommands.h"
#include "host/ed/InputSource.h"
#include "host/ui/MessageBox.h"
#include "module/entry/ModuleLoad.h"
#include "suite/data/CurrentProject.h"

namespace kelaz {

namespace {

namespace fs = std::filesystem;

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
    if (g_session != nullptr) g_session->Quit();
}

void RunOpen() {
    if (g_session != nullptr) g_session->OpenCommand();
}

void RunProject() {
    if (g_session != nullptr) g_session->ProjectCommand();
}

void RememberedCommand() {
    if (g_session != nullptr) ListRemembered(g_session->ProjectShown());
}

// A drawing named to be started new: no file there yet, in a folder that is there. Anything else
// that cannot be read (a folder, a file without permission) is refused when it is read.
bool IsNewDrawing(const std::string& path) {
    std::error_code ec;
    const fs::file_status status = fs::symlink_status(path, ec);
    if (status.type() != fs::file_type::not_found) return false;
    const fs::path folder = fs::absolute(path).parent_path();
    return fs::is_directory(folder, ec);
}

}  // namespace

std::string AbsolutePath(const std::string& path) {
    std::error_code ec;
    const fs::path absolute = fs::weakly_canonical(fs::absolute(path), ec);
    return ec ? fs::absolute(path).lexically_normal().string() : absolute.string();
}

Session::Session(InputSource& input, std::ostream& out) : m_input(input), m_out(out) {
    InitDrawingClasses();
    // Before the first document, so that the module's reactors hear it.
    m_loadedModule = LoadLayoutModule();
    SetDocumentConsole(&input, &out);
    g_session = this;
    SetFileWriter(this);
    const Adesk::Int32 quiet = ACRX_CMD_MODAL | ACRX_CMD_NOUNDOMARKER;
    RegisterFileCommands(kSessionGroup);
    RegisterCommand(kSessionGroup, L"DUMP", L"列出图形中的每个实体（JSON，每行一个）", quiet,
                    DumpCommand);
    RegisterHelpCommand(kSessionGroup);
    RegisterCommand(kSessionGroup, L"QUIT", L"结束（图形有未保存的修改时先问）", quiet,
                    QuitCommand);
    RegisterCommand(kSessionGroup, L"OPEN", L"打开另一张图形，可先指定它的项目", quiet, RunOpen);
    RegisterCommand(kSessionGroup, L"PROJECT", L"换一个项目，开始一张新图形", quiet, RunProject);
    RegisterCommand(kSessionGroup, L"REMEMBERED",
                    L"列出本项目记住的多管设置行、立管拆分列表和楼层模型", quiet,
                    RememberedCommand);
    RegisterCommand(kSessionGroup, L"STOREYS", L"列出项目的楼层和标高范围（楼层模型）", quiet,
                    ListStoreys);
    RegisterLayoutCommands();
}

Session::~Session() {
    // Here the session ends in order; only a program that dies leaves its journal behind.
    m_journal.Remove();
    while (acDocManager->curDocument() != nullptr) {
        acDocManager->closeDocument(acDocManager->curDocument());
    }
    acedRegCmds->removeGroup(kSessionGroup);
    UnregisterLayoutCommands();
    // After the last document, as the host unloads a module.
    if (m_loadedModule) UnloadLayoutModule();
    KelAzDataMng::CloseProject();
    SetDocumentConsole(nullptr, &std::cout);
    SetFileWriter(nullptr);
    g_session = nullptr;
}

bool Session::Open(const SessionOptions& options, std::string& error) {
    m_options = options;
    m_project = options.project;
    // The commands read project data: the named project, or the default catalogue. A project is
    // opened by its whole path, one way of writing it for each file, so that the module tells
    // two projects apart by their paths and knows the same file named twice.
    CString projectError;
    const bool projectOpen =
        m_project.empty()
            ? KelAzDataMng::OpenDefaultProject()
            : KelAzDataMng::OpenProject(FromUtf8(AbsolutePath(m_project)), projectError);
    if (!projectOpen) {
        error = "不能打开项目 " + m_project + "：" + ToUtf8(projectError);
        return false;
    }
    if (options.drawing.empty()) {
        acDocManager->appContextNewDocument(nullptr);
        return true;
    }
    m_drawingPath = AbsolutePath(options.drawing);
    const CString name = FromUtf8(options.drawing);
    if (options.newDrawingIfMissing && IsNewDrawing(options.drawing)) {
        auto db = std::make_unique<AcDbDatabase>();
        SetDrawingFileName(*db, name);
        AddDocument(std::move(db), name);
        Tell(FormatText(L"%s 还不存在：这是一张新图形，保存时写入这个文件。", name.GetString()));
        return true;
    }
    m_openedState = FileStateOf(options.drawing);
    std::unique_ptr<AcDbDatabase> db = OpenDrawing(options.drawing, error);
    if (db == nullptr) return false;
    AddDocument(std::move(db), name);
    return true;
}

AcApDocument* Session::Document() const { return acDocManager->curDocument(); }

void Session::Tell(const CString& text) const { AfxMessageBox(text, MB_OK | MB_ICONINFORMATION); }

bool Session::InputRunsOut() const {
    return m_replay != nullptr ? m_replay->AtEnd() : !m_options.interactive;
}

bool Session::Interactive() const {
    return m_replay != nullptr ? m_replay->Interactive() : m_options.interactive;
}

void Session::End() {
    // A session rebuilt from its journal goes on past the ends the journal holds: a later
    // session may have gone on from there.
    if (m_replay == nullptr) m_quit = true;
}

bool Session::ConfirmEnd(bool askAnyway) {
    AcDbDatabase* db = CurrentDatabase();
    Editor* editor = CurrentEditor();
    if (db == nullptr || editor == nullptr) return true;
    if (DbmodOf(*db) != 0)
        return ConfirmLeave(L"yes 保存后结束，no 不保存就结束，cancel 回到命令行。");
    if (!askAnyway) return true;
    const int answer = AfxMessageBox(L"结束 kelaz 吗? ok 结束，cancel 回到命令行。",
                                     MB_OKCANCEL | MB_ICONQUESTION);
    // No answer (Ctrl-D again, the end of a script) keeps the session: the safe side.
    if (editor->InputExhausted()) return false;
    return answer == IDOK;
}

bool Session::ConfirmLeave(const wchar_t* choices) {
    AcDbDatabase* db = CurrentDatabase();
    Editor* editor = CurrentEditor();
    if (db == nullptr || editor == nullptr || DbmodOf(*db) == 0) return true;
    const int answer =
        AfxMessageBox(FormatText(L"%s 有未保存的修改。%s", Document()->fileName(), choices),
                      MB_YESNOCANCEL | MB_ICONQUESTION);
    // No answer (Ctrl-D again, the end of a script) stays: the safe side.
    if (editor->InputExhausted()) return false;
    if (answer == IDYES) return SaveUnderItsName(db);
    return answer == IDNO;
}

void Session::Quit() {
    if (ConfirmEnd(false)) End();
}

void Session::Run() {
    while (!m_quit) {
        Editor* editor = CurrentEditor();
        if (editor == nullptr) break;
        if (editor->InputExhausted()) {
            // The input ran out inside a command, which has ended with it. A person's Ctrl-D
            // ends only that command.
            if (InputRunsOut()) break;
            editor->ResumeInput();
        }
        InputSource* input = editor->input();
        const int lineBefore = input != nullptr ? input->LineNumber() : 0;
        CString line;
        if (!editor->ReadLine(kCommandPrompt, Editor::LineKind::kCommand, line)) {
            if (InputRunsOut()) break;
            if (Interactive() && ConfirmEnd(false)) End();
            continue;
        }
        // Ctrl-C cancels what waits; at the command prompt nothing waits, and a second one in a
        // row means the person wants out. (A line queued as typed is no Ctrl-C.)
        const bool interrupt =
            input != nullptr && input->LineNumber() != lineBefore && input->Interrupted();
        if (interrupt && m_interruptedAtPrompt) {
            m_interruptedAtPrompt = false;
            editor->ShowCancel();
            if (ConfirmEnd(true)) End();
            continue;
        }
        m_interruptedAtPrompt = interrupt;
        CommandLine(*editor).RunLine(line);
        if (m_pending != nullptr) SwitchDrawing();
    }
    if (Editor* editor = CurrentEditor()) editor->FinishLine();
}

int Session::Refusals() const {
    const Editor* editor = CurrentEditor();
    return m_refusalsLeft + (editor != nullptr ? editor->Refusals() : 0);
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

bool Session::WriteOutputs(const SessionOptions& options, std::vector<std::string>& errors) {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) {
        errors.push_back("没有打开的图形。");
        return false;
    }
    const size_t before = errors.size();
    std::string why;
    // A failed save is reported in full by the drawing file, which names the file.
    if (!options.save.empty() && !SaveDrawing(db, options.save, why)) errors.push_back(why);
    for (const std::string* path : {&options.dxf, &options.png, &options.svg, &options.pdf}) {
        why.clear();
        if (!path->empty() && !ExportDrawingTo(db, *path, why)) {
            errors.push_back("不能输出 " + *path + "：" + why + "。");
        }
    }
    return errors.size() == before;
}

}  // namespace kelaz
