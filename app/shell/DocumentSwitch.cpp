// Going to another drawing or another project within a session: OPEN and PROJECT.
//
// Each goes in three steps. First what the files say (can the drawing be read, is another session
// on it, does the project open) is found out once and kept in the journal, so that a replay
// decides as the session did. Then the drawing left is asked about as QUIT asks. Last, at the
// command prompt, the project is made current and the new document created through the document
// manager, whose reactors then see the project of the drawing gone to; the document left is
// closed, its journal removed (its work was saved, or let go by the person's answer) and a
// journal started for the drawing gone to. A replay never takes the last step: the journal of
// a drawing ends where the session went elsewhere, and goes on only where the session stayed.

#include <filesystem>
#include <memory>

#include "app/FilePaths.h"
#include "app/drawing/DrawingView.h"
#include "app/shell/JournalInput.h"
#include "app/shell/Session.h"
#include "host/app/DocManager.h"
#include "host/db/Database.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ui/MessageBox.h"
#include "module/entry/ModuleLoad.h"
#include "module/pipes/DocReactor.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjectDb.h"

namespace kelaz {

namespace {

// Longer than any path a person types.
constexpr size_t kPathBuffer = 4096;

constexpr const char* kOk = "ok";
constexpr const char* kRefused = "refused ";

// kelaz's own word inside a session, as SAVE gives it.
void Warn(const std::string& text) { AfxMessageBox(FromUtf8(text), MB_OK | MB_ICONWARNING); }

// A file name typed at a prompt; false when cancelled.
bool AskText(const CString& prompt, CString& text) {
    ACHAR buffer[kPathBuffer] = {};
    if (acedGetString(1, prompt, buffer, kPathBuffer) != RTNORM) return false;
    text = buffer;
    text.Trim();
    return true;
}

// Why a journal beside the drawing keeps another session from it; empty when none does. A
// journal with lines in it is work a session left behind: it is recovered in a session of its
// own, never replaced from here.
std::string JournalInTheWay(const std::string& drawing) {
    const std::string journal = JournalPathFor(AbsolutePath(drawing));
    if (!FileExists(journal)) return std::string();
    JournalFile probe;
    std::string why;
    switch (probe.Open(journal, false, why)) {
        case JournalFile::OpenStatus::kBusy:
            return drawing + " 正在另一个 kelaz 会话中编辑（" + journal + " 被占用）。";
        case JournalFile::OpenStatus::kFailed:
            return "不能打开 " + journal + "：" + why + "。";
        case JournalFile::OpenStatus::kOpened:
            break;
    }
    std::string bytes;
    JournalContents left;
    if (probe.Read(bytes) && ParseJournal(bytes, left) && left.InputRecords() > 0) {
        return drawing + " 有一份没有正常结束的会话记录（" + journal + "）：先用 kelaz recover " +
               drawing + " 恢复，或在一个新的 kelaz 会话中打开它。";
    }
    return std::string();
}

// The why of a verdict that refuses.
std::string Reason(const std::string& verdict) {
    const std::string prefix = kRefused;
    return verdict.rfind(prefix, 0) == 0 ? verdict.substr(prefix.size()) : verdict;
}

// The file of the drawing the session is in; empty for one never saved.
std::string CurrentDrawingFile() {
    AcApDocument* doc = acDocManager->curDocument();
    const wchar_t* name = nullptr;
    if (doc == nullptr || doc->database()->getFilename(name) != Acad::eOk || name == nullptr) {
        return std::string();
    }
    return ToUtf8(CString(name));
}

std::string CurrentProjectFile() { return ToUtf8(KelAzDataMng::CProj::GetPrjPath()); }

bool IsCurrentProject(const std::string& project) {
    const std::string current = CurrentProjectFile();
    return !current.empty() && SameFile(current, project);
}

}  // namespace

CString Session::ProjectShown() const {
    return m_project.empty() ? CString(L"默认项目") : FromUtf8(m_project);
}

std::string Session::OpenVerdict(const std::string& drawing, const std::string& project,
                                 std::unique_ptr<AcDbDatabase>& db, FileState& state) {
    std::string bad;
    if (!(bad = CheckDrawingName(drawing)).empty()) return kRefused + bad;
    if (!(bad = CheckReadPath(drawing, "图形")).empty()) return kRefused + bad;
    if (!FileExists(drawing)) return kRefused + ("图形文件 " + drawing + " 不存在。");
    if (const std::string own = CurrentDrawingFile(); !own.empty() && SameFile(own, drawing)) {
        return kRefused + (drawing + " 就是现在的图形。");
    }
    if (!(bad = JournalInTheWay(drawing)).empty()) return kRefused + bad;
    if (!project.empty() && !IsCurrentProject(project)) {
        const std::string verdict = ProjectVerdict(project);
        if (verdict != kOk) return verdict;
    }
    state = FileStateOf(drawing);
    db = OpenDrawing(drawing, bad);
    if (db == nullptr) return kRefused + bad;
    return kOk;
}

std::string Session::ProjectVerdict(const std::string& project) {
    std::string bad;
    if (!(bad = CheckReadPath(project, "项目")).empty()) return kRefused + bad;
    if (!FileExists(project)) return kRefused + ("项目文件 " + project + " 不存在。");
    ProjectOpenResult result;
    if (ProjectDb::Open(FromUtf8(project), result) == nullptr) {
        return kRefused + ("不能打开项目 " + project + "：" + result.message);
    }
    return kOk;
}

void Session::OpenCommand() {
    std::string project;
    CString answer;
    for (;;) {
        const wchar_t* prompt =
            project.empty() ? L"\n打开图形文件[项目(P)]: " : L"\n打开图形文件: ";
        if (!AskText(prompt, answer)) return;
        if (!project.empty() || (answer.CompareNoCase(L"P") != 0 && answer != L"项目")) break;
        CString named;
        if (!AskText(FormatText(L"\n项目文件 <%s>: ", ProjectShown().GetString()), named)) return;
        // Enter keeps the project; the drawing is asked for as before.
        if (!named.IsEmpty()) project = ToUtf8(named);
    }
    if (answer.IsEmpty()) {
        acutPrintf(L"\n没有打开图形：没有给出文件名。");
        return;
    }
    const std::string drawing = ToUtf8(answer);
    std::unique_ptr<AcDbDatabase> db;
    FileState state;
    const std::string verdict = Recall([&] { return OpenVerdict(drawing, project, db, state); });
    if (verdict != kOk) {
        Warn(Reason(verdict));
        acutPrintf(L"\n没有打开 %s。", answer.GetString());
        return;
    }
    if (!ConfirmLeave(FormatText(L"yes 保存后打开 %s，no 不保存就打开，cancel 回到命令行。",
                                 answer.GetString()))) {
        acutPrintf(L"\n没有打开 %s。", answer.GetString());
        return;
    }
    if (m_replay != nullptr) return;
    // Saving the drawing left may have written the very file to be opened.
    if (!(FileStateOf(drawing) == state)) {
        std::string report;
        state = FileStateOf(drawing);
        db = OpenDrawing(drawing, report);
        if (db == nullptr) {
            Warn(report);
            acutPrintf(L"\n没有打开 %s。", answer.GetString());
            return;
        }
    }
    m_pending = std::make_unique<PendingSwitch>();
    m_pending->db = std::move(db);
    m_pending->drawing = drawing;
    m_pending->drawingState = state;
    // Naming the project the session is in changes no project.
    if (!IsCurrentProject(project)) m_pending->project = project;
}

void Session::ProjectCommand() {
    CString named;
    if (!AskText(FormatText(L"\n项目文件 <%s>: ", ProjectShown().GetString()), named)) return;
    if (named.IsEmpty()) {
        acutPrintf(L"\n项目没有改变。");
        return;
    }
    const std::string project = ToUtf8(named);
    const std::string verdict = Recall(
        [&] { return IsCurrentProject(project) ? std::string("same") : ProjectVerdict(project); });
    if (verdict == "same") {
        acutPrintf(L"\n%s 已经是现在的项目。", named.GetString());
        return;
    }
    if (verdict != kOk) {
        Warn(Reason(verdict));
        acutPrintf(L"\n项目没有改变。");
        return;
    }
    if (!ConfirmLeave(L"yes 保存后换项目，no 不保存就换，cancel 回到命令行。")) {
        acutPrintf(L"\n项目没有改变。");
        return;
    }
    if (m_replay != nullptr) return;
    m_pending = std::make_unique<PendingSwitch>();
    m_pending->project = project;
}

void Session::SwitchDrawing() {
    const std::unique_ptr<PendingSwitch> go = std::move(m_pending);
    AcApDocument* left = Document();
    Editor* leftEditor = CurrentEditor();
    if (!go->project.empty()) {
        CString error;
        if (!KelAzDataMng::OpenProject(FromUtf8(AbsolutePath(go->project)), error)) {
            Warn("不能打开项目 " + go->project + "：" + ToUtf8(error));
            acutPrintf(L"\n仍在 %s。", left != nullptr ? left->fileName() : L"");
            return;
        }
        m_project = go->project;
    }
    if (leftEditor != nullptr) {
        m_refusalsLeft += leftEditor->Refusals();
        leftEditor->FinishLine();
    }
    const CDocReactor* reactor = LoadedDocReactor();
    const CString projectBefore = reactor != nullptr ? reactor->ProjectName() : CString();
    if (go->db != nullptr) {
        AddDocument(std::move(go->db), FromUtf8(go->drawing));
        m_drawingPath = AbsolutePath(go->drawing);
        m_openedState = go->drawingState;
    } else {
        acDocManager->appContextNewDocument(nullptr);
        m_drawingPath.clear();
        m_openedState = FileState();
    }
    m_options.drawing = go->drawing;
    if (left != nullptr) acDocManager->closeDocument(left);
    RestartJournal();

    if (go->drawing.empty()) {
        acutPrintf(L"\n已换到项目 %s，开始一张新图形。", ProjectShown().GetString());
    } else if (go->project.empty()) {
        acutPrintf(L"\n已打开 %s。", FromUtf8(go->drawing).GetString());
    } else {
        acutPrintf(L"\n已打开 %s，项目 %s。", FromUtf8(go->drawing).GetString(),
                   ProjectShown().GetString());
    }
    if (reactor != nullptr && reactor->ProjectName() != projectBefore) {
        acutPrintf(L"\n换了项目：记住的多管设置行、立管拆分列表和楼层模型已清除。");
    }
}

void Session::RestartJournal() {
    if (!m_options.journal) return;
    m_journal.Remove();
    m_basePreserved = false;
    if (m_drawingPath.empty()) {
        StartUntitledJournal(false);
        return;
    }
    const std::string path = JournalPathFor(m_drawingPath);
    std::string why;
    if (m_journal.Open(path, false, why) != JournalFile::OpenStatus::kOpened) {
        Tell(FormatText(L"不能建立会话记录 %s：%s。这次会话中断后将不能恢复。",
                        FromUtf8(path).GetString(), FromUtf8(why).GetString()));
        // What is read from here on goes past the journal of the drawing left, removed.
        m_journaled = std::make_unique<JournaledInput>(m_input, nullptr);
        SetDocumentConsole(m_journaled.get(), &m_out);
        return;
    }
    StartNewJournal();
}

}  // namespace kelaz
