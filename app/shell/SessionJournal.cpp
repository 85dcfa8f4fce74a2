// The session's side of its recovery journal: starting it, recovering from one left behind,
// rebuilding a drawing from one, and the saves it records.

#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <ostream>

#include "app/drawing/DrawingView.h"
#include "app/shell/Interrupt.h"
#include "app/shell/JournalInput.h"
#include "app/shell/Session.h"
#include "host/app/DocManager.h"
#include "host/db/Database.h"
#include "host/ed/Editor.h"
#include "host/ui/MessageBox.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace kelaz {

namespace {

namespace fs = std::filesystem;

// Local time: 2024-05-01T10:00:00 in a journal's header, 20240501-100000 in a file name.
std::string Now(bool forFileName) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    if (forFileName) {
        std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    } else {
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
    }
    return text;
}

// A free name for a journal set aside: plan.kdw.journal.stale, .stale-2, ...
std::string SetAsidePath(const std::string& journal) {
    std::string path = journal + ".stale";
    for (int n = 2; fs::exists(path); ++n) path = journal + ".stale-" + std::to_string(n);
    return path;
}

// Journals of drawings without a name that sessions left behind (nobody holds them).
std::vector<std::string> LeftBehindUntitled(const std::string& folder) {
    std::vector<std::string> found;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        if (entry.path().extension() != ".journal") continue;
        JournalFile probe;
        std::string why;
        if (probe.Open(entry.path().string(), false, why) != JournalFile::OpenStatus::kOpened) {
            continue;
        }
        std::string bytes;
        JournalContents contents;
        if (probe.Read(bytes) && ParseJournal(bytes, contents) && contents.InputRecords() > 0) {
            found.push_back(entry.path().string());
        }
    }
    return found;
}

}  // namespace

Session::JournalStart Session::StartJournal(std::string& error) {
    if (m_drawingPath.empty()) return StartUntitledJournal();
    const std::string path = JournalPathFor(m_drawingPath);
    std::string why;
    switch (m_journal.Open(path, false, why)) {
        case JournalFile::OpenStatus::kBusy:
            error = m_options.drawing + " 正在另一个 kelaz 会话中编辑（" + path + " 被占用）。";
            return JournalStart::kBusy;
        case JournalFile::OpenStatus::kFailed:
            Tell(FormatText(L"不能建立会话记录 %s：%s。这次会话中断后将不能恢复。",
                            FromUtf8(path).GetString(), FromUtf8(why).GetString()));
            return JournalStart::kWithout;
        case JournalFile::OpenStatus::kOpened:
            break;
    }
    std::string bytes;
    JournalContents left;
    // A journal cut off before its first line, or with no line, holds nothing to recover.
    if (!m_journal.Read(bytes) || !ParseJournal(bytes, left) || left.InputRecords() == 0) {
        return StartNewJournal();
    }
    const JournalCheck check = CheckJournal(left, FileStateOf(m_drawingPath));
    if (!check.belongs) {
        // Kept for a person to look at, never replayed.
        const std::string aside = SetAsidePath(path);
        std::error_code ec;
        fs::rename(path, aside, ec);
        if (fs::exists(JournalBasePath(path)))
            fs::rename(JournalBasePath(path), aside + "-base", ec);
        m_journal.Close();
        Tell(FormatText(L"%s 是另一个版本的 %s 的会话记录，不能用来恢复：%s已改名为 %s。",
                        FromUtf8(path).GetString(), FromUtf8(m_options.drawing).GetString(),
                        check.why.GetString(), FromUtf8(aside).GetString()));
        if (m_journal.Open(path, true, why) != JournalFile::OpenStatus::kOpened) {
            Tell(FormatText(L"不能建立会话记录 %s：%s。这次会话中断后将不能恢复。",
                            FromUtf8(path).GetString(), FromUtf8(why).GetString()));
            return JournalStart::kWithout;
        }
        return StartNewJournal();
    }
    const std::string project = m_project.empty() ? std::string() : AbsolutePath(m_project);
    if (left.header.project != project) {
        m_journal.Close();
        const std::string used = left.header.project.empty() ? "默认项目" : left.header.project;
        error = path + " 记录的会话用的是 " + used + "，不能在这里恢复；用 kelaz recover " +
                m_options.drawing + " 恢复，或换用那个项目。";
        return JournalStart::kRefused;
    }

    const int answer = AfxMessageBox(
        FormatText(L"%s 有一份没有正常结束的会话记录（%s，开始于 %s，读了 %d 行）。yes "
                   L"按记录恢复图形后继续，no 丢弃记录、从文件中的图形开始，cancel 不开始。",
                   FromUtf8(m_options.drawing).GetString(), FromUtf8(path).GetString(),
                   FromUtf8(left.header.started).GetString(), left.InputRecords()),
        MB_YESNOCANCEL | MB_ICONQUESTION);
    Editor* editor = CurrentEditor();
    if (answer == IDCANCEL || editor == nullptr || editor->InputExhausted()) {
        m_journal.Close();
        error = "会话没有开始；" + path + " 保留未动。";
        return JournalStart::kCancelled;
    }
    if (answer == IDNO) return StartNewJournal();

    if (!Rebuild(left, check, error)) {
        m_journal.Close();
        return JournalStart::kRefused;
    }
    // The journal goes on from its last whole record, with what the replay saw at its end.
    m_header = left.header;
    m_basePreserved = m_header.base.exists && FileStateOf(JournalBasePath(path)) == m_header.base;
    m_journal.SetSync(m_options.interactive);
    m_journal.Continue(left.completeSize);
    Editor* rebuilt = CurrentEditor();
    if (rebuilt != nullptr && rebuilt->InputExhausted()) {
        // The journal ended inside a command, which ended without its input: a later replay
        // must do the same there.
        m_journal.Append({JournalRecord::Kind::kEnd});
        rebuilt->ResumeInput();
    }
    JournalRecord mode{JournalRecord::Kind::kMode};
    mode.interactive = m_options.interactive;
    m_journal.Append(mode);
    ReadFromJournaledInput();
    Tell(FormatText(L"已按 %s 恢复：重放了 %d 行。", FromUtf8(path).GetString(),
                    left.InputRecords()));
    return JournalStart::kRecovered;
}

// A drawing without a name: its journal goes to kelaz's state folder. A script's session is its
// own record, so only a person is told when no journal can be kept for it.
Session::JournalStart Session::StartUntitledJournal(bool atStart) {
    const std::string folder = UntitledJournalFolder();
    std::error_code ec;
    if (!folder.empty()) fs::create_directories(folder, ec);
    if (folder.empty() || !fs::is_directory(folder, ec)) {
        if (m_options.interactive) {
            Tell(L"没有地方放这张无名图形的会话记录（$HOME 不能写）。这次会话中断后将不能恢复。");
        }
        return JournalStart::kWithout;
    }
    if (m_options.interactive && atStart) {
        const std::vector<std::string> left = LeftBehindUntitled(folder);
        if (!left.empty()) {
            CString list;
            for (const std::string& path : left) list += L"\n  " + FromUtf8(path);
            Tell(
                FormatText(L"有 %d 份无名图形的会话记录没有正常结束：%s\n用 kelaz recover 记录 "
                           L"--save 图形.kdw 恢复。",
                           static_cast<int>(left.size()), list.GetString()));
        }
    }
    const std::string path =
        folder + "/untitled-" + Now(true) + "-" + std::to_string(::getpid()) + ".journal";
    std::string why;
    if (m_journal.Open(path, true, why) != JournalFile::OpenStatus::kOpened) {
        if (m_options.interactive) {
            Tell(FormatText(L"不能建立会话记录 %s：%s。这次会话中断后将不能恢复。",
                            FromUtf8(path).GetString(), FromUtf8(why).GetString()));
        }
        return JournalStart::kWithout;
    }
    return StartNewJournal();
}

Session::JournalStart Session::StartNewJournal() {
    m_header = JournalHeader();
    m_header.started = Now(false);
    m_header.pid = static_cast<long>(::getpid());
    m_header.drawing = m_drawingPath;
    m_header.base = m_openedState;
    m_header.project = m_project.empty() ? std::string() : AbsolutePath(m_project);
    if (ProjectDb* project = CurrentProject()) project->ReadSessionState(m_header.projectState);
    m_basePreserved = false;
    JournalRecord mode{JournalRecord::Kind::kMode};
    mode.interactive = m_options.interactive;
    if (!m_journal.Start(m_header) || !m_journal.Append(mode)) {
        Tell(FormatText(L"不能写会话记录 %s。这次会话中断后将不能恢复。",
                        FromUtf8(m_journal.Path()).GetString()));
        m_journal.Remove();
        return JournalStart::kWithout;
    }
    m_journal.SetSync(m_options.interactive);
    ReadFromJournaledInput();
    return JournalStart::kStarted;
}

void Session::ReadFromJournaledInput() {
    m_journaled = std::make_unique<JournaledInput>(m_input, &m_journal);
    SetDocumentConsole(m_journaled.get(), &m_out);
}

bool Session::Rebuild(const JournalContents& journal, const JournalCheck& check,
                      std::string& error) {
    const JournalHeader& header = journal.header;
    std::unique_ptr<AcDbDatabase> db;
    if (check.basePath.empty()) {
        db = std::make_unique<AcDbDatabase>();
    } else if ((db = OpenDrawing(check.basePath, error)) == nullptr) {
        return false;
    }
    const CString name = FromUtf8(header.drawing);
    if (!name.IsEmpty()) SetDrawingFileName(*db, name);
    while (acDocManager->curDocument() != nullptr) {
        acDocManager->closeDocument(acDocManager->curDocument());
    }
    AddDocument(std::move(db), name);
    ProjectDb* project = CurrentProject();
    if (project == nullptr || !project->RestoreSessionState(header.projectState)) {
        error = "项目的设置不能恢复成那次会话开始时的样子。";
        return false;
    }

    ReplayInput replay(journal.records);
    std::ostream muted(nullptr);
    InputSource* live =
        m_journaled != nullptr ? static_cast<InputSource*>(m_journaled.get()) : &m_input;
    SetDocumentConsole(&replay, &muted);
    m_replay = &replay;
    Run();
    m_replay = nullptr;
    m_quit = false;
    SetDocumentConsole(live, &m_out);
    return true;
}

bool Session::Save(AcDbDatabase& db, const std::string& path, std::string& error) {
    if (m_replay != nullptr) {
        // The file is there already (or was not written then): the replay takes only what the
        // save did to the drawing, its name and its unchanged state.
        const RecordedSave save = m_replay->TakeSave();
        if (save.outcome == RecordedSave::Outcome::kSaved) {
            SetDrawingFileName(db, FromUtf8(save.path));
            acdbSetDbmod(&db, 0);
            return true;
        }
        error = "不能保存图形 " + path + "：\n  1. " +
                (save.outcome == RecordedSave::Outcome::kFailed ? "记录中的这次保存当时就失败了。"
                                                                : "会话在这次保存中途结束了。");
        return false;
    }
    FileWriteGuard writing;
    const std::string absolute = AbsolutePath(path);
    if (m_journal.IsOpen()) {
        PreserveBase(absolute);
        JournalRecord begins{JournalRecord::Kind::kSaveBegins};
        begins.path = absolute;
        m_journal.Append(begins);
    }
    const bool saved = WriteDrawing(db, path, error);
    if (m_journal.IsOpen()) {
        JournalRecord outcome{saved ? JournalRecord::Kind::kSaved
                                    : JournalRecord::Kind::kSaveFailed};
        outcome.path = absolute;
        if (saved) outcome.saved = FileStateOf(absolute);
        m_journal.Append(outcome);
    }
    return saved;
}

std::string Session::Recall(const std::function<std::string()>& look) {
    std::string fact;
    if (m_replay != nullptr && m_replay->TakeFact(fact)) return fact;
    fact = look();
    if (m_replay == nullptr && m_journal.IsOpen()) {
        JournalRecord found{JournalRecord::Kind::kFact};
        found.path = fact;
        m_journal.Append(found);
    }
    return fact;
}

bool Session::Export(AcDbDatabase& db, const std::string& path, std::string& error) {
    if (m_replay != nullptr) return true;
    FileWriteGuard writing;
    return WriteExport(db, path, error);
}

// A save over the file the session started from would take away what the journal replays
// from: the file is kept first, as a second name of it (the save writes a new file and renames
// it into place) or else as a copy.
void Session::PreserveBase(const std::string& absolutePath) {
    if (m_basePreserved || !m_header.base.exists || absolutePath != m_header.drawing) return;
    const std::string base = JournalBasePath(m_journal.Path());
    std::error_code ec;
    fs::remove(base, ec);
    if (::link(m_header.drawing.c_str(), base.c_str()) != 0) {
        fs::copy_file(m_header.drawing, base, fs::copy_options::overwrite_existing, ec);
    }
    m_basePreserved = FileStateOf(base) == m_header.base;
    if (!m_basePreserved) {
        fs::remove(base, ec);
        Tell(FormatText(L"不能保留会话开始时的图形（%s）：这次保存之后会话若中断，将不能恢复。",
                        FromUtf8(base).GetString()));
    }
}

}  // namespace kelaz
