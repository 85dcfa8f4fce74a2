#pragma once

// A drafting session at kelaz's command line: one document at a time (a new drawing, or one
// opened from a file), the session commands (SAVE, EXPORT, DUMP, HELP, QUIT, OPEN, PROJECT,
// REMEMBERED, STOREYS) beside the host's, and the loop that reads and runs commands until the input
// runs out or the session ends. The session loads the layout module before its first document and
// unloads it after its last, so the module's document reactors hear every document it makes.
//
// OPEN goes to another drawing, of the same project or of another one; PROJECT goes to another
// project with a new drawing. A drawing belongs to the project it was made in (its components
// name that project's categories and system codes), so it is never carried across: the drawing
// left is put away, asked about first as QUIT asks.
//
// Nothing unsaved is dropped without a question: QUIT, and at a terminal Ctrl-D or a second
// Ctrl-C at the command prompt, ask before ending when the drawing has changes (DBMOD). And the
// session keeps a recovery journal (see Journal.h) of every line it reads, from which a session
// that died is rebuilt: at the start of the next session on the same drawing, or by kelaz
// recover.

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "app/shell/CommandHelp.h"
#include "app/shell/FileCommands.h"
#include "app/shell/Journal.h"
#include "host/ed/CommandStack.h"
#include "host/text/CString.h"

class AcApDocument;

namespace kelaz {

class InputSource;
class JournaledInput;
class ReplayInput;

struct SessionOptions {
    std::string drawing;  // opened first when not empty
    std::string project;  // the project database the commands read; the default one when empty
    // Written when the session ends normally, those that are not empty.
    std::string save;
    std::string dxf;
    std::string png;
    std::string svg;
    std::string pdf;
    // A person answers at a terminal: Ctrl-D inside a command ends that command only, and
    // Ctrl-D at the command prompt offers to end the session.
    bool interactive = false;
    // A drawing named that does not exist yet is started new, to be saved under that name.
    bool newDrawingIfMissing = false;
    // Keep a recovery journal, and offer to recover from one a session left behind.
    bool journal = false;
};

class Session : private FileWriter {
public:
    Session(InputSource& input, std::ostream& out);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Opens the project and the drawing (or starts a new one). False with the reason when either
    // cannot be read.
    bool Open(const SessionOptions& options, std::string& error);

    enum class JournalStart {
        kStarted,    // a new journal
        kRecovered,  // the drawing was rebuilt from the journal left behind, which goes on
        kWithout,    // no journal can be written here (the session was told why)
        kBusy,       // another session works on the drawing
        kRefused,    // a journal left behind cannot be recovered here (error says why)
        kCancelled,  // the person chose not to start; the journal left behind is untouched
    };
    // Starts the journal; when one was left behind, offers to recover from it.
    JournalStart StartJournal(std::string& error);
    // Rebuilds the drawing from a journal that belongs to it (CheckJournal): opens what the
    // session started from, puts the project's rows back and runs the journal's lines, writing
    // nothing. False with the reason.
    bool Rebuild(const JournalContents& journal, const JournalCheck& check, std::string& error);

    // Reads and runs commands until the input runs out or the session ends.
    void Run();
    // The input ran out while a command waited for an answer: where, and for what.
    bool StoppedInCommand() const;
    // Answers the command line refused so far (wrong answers, unknown commands, refusals).
    int Refusals() const;
    int StoppedAtLine() const;
    std::string StoppedAtPrompt() const;
    // Saves and exports as the options ask. False with one message for each output not written.
    bool WriteOutputs(const SessionOptions& options, std::vector<std::string>& errors);

    AcApDocument* Document() const;
    const std::string& ProjectPath() const { return m_project; }
    // QUIT: ends the session, asking first when the drawing has changes.
    void Quit();
    // OPEN: another drawing file; the keyword P names its project first.
    void OpenCommand();
    // PROJECT: another project file, with a new drawing in it.
    void ProjectCommand();
    // The project as the drafter named it, or "默认项目".
    CString ProjectShown() const;

private:
    bool Save(AcDbDatabase& db, const std::string& path, std::string& error) override;
    bool Export(AcDbDatabase& db, const std::string& path, std::string& error) override;
    std::string Recall(const std::function<std::string()>& look) override;

    // The input has nothing more to give, for good.
    bool InputRunsOut() const;
    bool Interactive() const;
    // Asks what to do with unsaved changes (or, with askAnyway, whether to end at all); true
    // when the session may end.
    bool ConfirmEnd(bool askAnyway);
    // Asks what to do with the drawing's unsaved changes before it is left; true when it may be
    // left (saved, or the person let the changes go), at once when there are none. choices ends
    // the question: what yes, no and cancel do.
    bool ConfirmLeave(const wchar_t* choices);
    void End();

    // A drawing read and a project checked by OPEN or PROJECT, to be gone to at the command
    // prompt: the document of the command that asked cannot be closed under it.
    struct PendingSwitch {
        std::unique_ptr<AcDbDatabase> db;  // null: a new drawing
        std::string drawing;               // as named; empty for a new drawing
        FileState drawingState;            // the file when it was read
        std::string project;               // as named; empty: the project stays
    };
    // Whether OPEN may go to the drawing, asked once and kept in the journal: "ok", or
    // "refused " and why. db gets the drawing read.
    std::string OpenVerdict(const std::string& drawing, const std::string& project,
                            std::unique_ptr<AcDbDatabase>& db, FileState& state);
    std::string ProjectVerdict(const std::string& project);
    void SwitchDrawing();
    // The journal of the drawing gone to, after the one of the drawing left is removed.
    void RestartJournal();

    JournalStart StartNewJournal();
    // atStart: a person is told of journals of drawings without a name left behind.
    JournalStart StartUntitledJournal(bool atStart = true);
    void ReadFromJournaledInput();
    void PreserveBase(const std::string& absolutePath);
    void Tell(const CString& text) const;

    InputSource& m_input;
    std::ostream& m_out;
    SessionOptions m_options;
    std::string m_project;      // as given
    std::string m_drawingPath;  // absolute; empty for a drawing without a name
    FileState m_openedState;    // the drawing's file when it was opened
    bool m_quit = false;
    bool m_interruptedAtPrompt = false;
    std::unique_ptr<PendingSwitch> m_pending;
    int m_refusalsLeft = 0;  // refused in the drawings the session left
    bool m_loadedModule = false;

    JournalFile m_journal;
    JournalHeader m_header;
    bool m_basePreserved = false;
    std::unique_ptr<JournaledInput> m_journaled;
    ReplayInput* m_replay = nullptr;
};

// path made absolute, with the links of the folders it is in resolved.
std::string AbsolutePath(const std::string& path);

}  // namespace kelaz
