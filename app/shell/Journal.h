#pragma once

// A session's recovery journal: every line the session reads, written to a file as it is read,
// so that the drawing can be rebuilt after the program dies (a crash, kill -9, a closed
// terminal). The command line is a session's only input: opening what the session started from
// and running the same lines again gives the same drawing.
//
// A drawing's journal lies beside it (plan.kdw.journal); a drawing without a name keeps its
// journal in kelaz's state folder ($XDG_STATE_HOME/kelaz, else ~/.local/state/kelaz). A running
// session holds a lock on its journal, so a journal nobody holds is one a session left behind.
// A session that goes to another drawing (OPEN, PROJECT) removes the journal of the drawing it
// leaves, whose work was saved or let go by the person's answer, and starts one for the drawing
// it goes to, naming that drawing's project: a journal never spans two drawings.
//
// The file is UTF-8 text, one record per line, fields separated by blanks, text escaped (\\ \t
// \n \r). The header:
//   kelaz-journal 1                  the format
//   started 2024-05-01T10:00:00 4242 when, and the process
//   drawing /abs/plan.kdw            the drawing's file; nothing after "drawing" when unnamed
//   base new | base SIZE CRC32       what the session started from: a new drawing, or the file
//                                    as it was then (a save over it keeps that file as
//                                    plan.kdw.journal-base)
//   project default | project PATH   the project the commands read
//   setting KEY VALUE                the project's settings and elevation history as they were,
//   level KEY ORD VALUE              put back before a replay
//   begin
// Then what happened, in order:
//   M 1 | M 0        input from here on is a person at a terminal (1) or a script (0)
//   L TEXT           a line read
//   C                Ctrl-C at a terminal
//   E                the input ran out (Ctrl-D, the end of a script)
//   P PATH           a save of the drawing to PATH begins
//   S SIZE CRC32 PATH  ... and succeeded: the file holds this
//   F PATH           ... and failed
//   K TEXT           what the session found out from the files around it (whether a file to
//                    be replaced existed, whether a drawing to open could be ...), so that a
//                    replay decides as the session did
// A record counts once its line is complete; a kill may cut off the last one.

#include <cstdint>
#include <string>
#include <vector>

#include "host/text/CString.h"
#include "suite/data/ProjectDb.h"

namespace kelaz {

inline constexpr int kJournalFormat = 1;

// What a file holds, as far as a journal needs to know: nothing, or bytes of this size and
// CRC-32.
struct FileState {
    bool exists = false;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;
    bool operator==(const FileState&) const = default;
};
FileState FileStateOf(const std::string& path);

struct JournalHeader {
    std::string started;  // local time, ISO 8601
    long pid = 0;
    std::string drawing;  // absolute; empty for a drawing without a name
    FileState base;       // !exists: the session started from a new drawing
    std::string project;  // absolute; empty for the default project
    std::vector<ProjectSessionRow> projectState;
};

struct JournalRecord {
    enum class Kind { kMode, kLine, kInterrupt, kEnd, kSaveBegins, kSaved, kSaveFailed, kFact };
    JournalRecord(Kind k = Kind::kLine) : kind(k) {}  // NOLINT: a record is its kind first

    Kind kind;
    CString text;              // kLine
    bool interactive = false;  // kMode
    std::string path;          // the saves; kFact: what was found
    FileState saved;           // kSaved
};

struct JournalContents {
    JournalHeader header;
    std::vector<JournalRecord> records;
    // The bytes up to the end of the last complete record.
    std::uint64_t completeSize = 0;
    // Lines, interrupts and ends of input: what a replay reads.
    int InputRecords() const;
};

std::string FormatJournalHeader(const JournalHeader& header);
std::string FormatJournalRecord(const JournalRecord& record);
// False when the bytes hold no complete header of a format this program reads.
bool ParseJournal(const std::string& bytes, JournalContents& contents);

// Where the journal of a drawing lies, and the copy of the file it started from.
std::string JournalPathFor(const std::string& absoluteDrawing);
std::string JournalBasePath(const std::string& journalPath);
// The folder of the journals of drawings without a name; empty when there is no home.
std::string UntitledJournalFolder();

// Whether a journal may rebuild the drawing whose file is now in the state `current`: only when
// the file is the one the session started from, or the one it last saved there (or was saving
// when it died). Anything else means the file changed after the session, and the journal no
// longer describes it.
struct JournalCheck {
    bool belongs = false;
    // Where the drawing the session started from is read: empty for a new drawing.
    std::string basePath;
    CString why;  // when it does not belong
};
JournalCheck CheckJournal(const JournalContents& contents, const FileState& current);

// The journal file of a running session: created or taken over, locked while the session runs,
// written one record at a time.
class JournalFile {
public:
    JournalFile() = default;
    ~JournalFile();
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    enum class OpenStatus { kOpened, kBusy, kFailed };
    // Opens (creating it when missing) and locks the journal. kBusy when another session holds
    // it. exclusive: the file must not exist yet.
    OpenStatus Open(const std::string& path, bool exclusive, std::string& error);
    bool IsOpen() const { return m_fd >= 0; }
    const std::string& Path() const { return m_path; }

    // The whole file as it is.
    bool Read(std::string& bytes) const;
    // Empties the file and writes a new header.
    bool Start(const JournalHeader& header);
    // Goes on after the complete records of the file (dropping a record a kill cut off).
    bool Continue(std::uint64_t completeSize);
    // Writes one record at once. With sync set, each record reaches the disk before the line is
    // acted on: a person's lines come slowly and cannot be typed again; a script's can.
    bool Append(const JournalRecord& record);
    void SetSync(bool sync) { m_sync = sync; }

    // The session ended in order: the journal and the copy of its base go.
    void Remove();
    // Leaves the file as it is and lets go of it.
    void Close();

private:
    bool WriteAll(const std::string& bytes);

    int m_fd = -1;
    std::string m_path;
    bool m_sync = false;
};

}  // namespace kelaz
