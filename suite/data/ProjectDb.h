#pragma once

// One project is one SQLite file. Opening checks the file before anything is read or changed: it
// must be an SQLite database, carry the project's application id, pass the integrity check, have
// a schema this program knows and contents that match their checksums (ContentChecksum.h).
// Every change runs inside a transaction that also renews the checksums, so a process killed in
// the middle of a write leaves the previous state behind.

#include <memory>
#include <string>
#include <vector>

#include "host/text/CString.h"
#include "suite/data/AttCatalogue.h"
#include "suite/data/SqliteDb.h"

namespace kelaz {

enum class ProjectProblem {
    None,
    Missing,      // no such file
    Exists,       // creation refused: the file is there already
    NotDatabase,  // not an SQLite database at all
    Foreign,      // an SQLite database of another application
    Damaged,      // ours, but truncated, corrupt or incomplete
    TooNew,       // written by a later version of the schema
    Io,           // the file system refused a read or a write
};

// A row of the project that drafting changes as it goes: a setting (the current speciality and
// floor) or an entry of the elevation history. A session replayed from its journal puts the rows
// back as they were when it began, so that its commands read what they read the first time.
struct ProjectSessionRow {
    enum class Table { kSetting, kLevelHistory };
    Table table = Table::kSetting;
    CString key;
    std::int64_t ord = 0;  // kLevelHistory
    CString value;
    bool operator==(const ProjectSessionRow&) const = default;
};

struct ProjectOpenResult {
    ProjectProblem problem = ProjectProblem::None;
    std::string message;  // for the user, UTF-8, empty when all went well
};

class ProjectDb {
public:
    // "KLAZ": marks the file as a project of this program in the SQLite header.
    static constexpr std::int32_t kApplicationId = 0x4B4C415A;
    // 2: the contents carry checksums. A file of schema 1 is upgraded when it is opened.
    static constexpr std::int64_t kSchemaVersion = 2;

    // Opens an existing project file for reading and writing; null with the reason on refusal.
    static std::unique_ptr<ProjectDb> Open(const CString& path, ProjectOpenResult& result);
    // A project that lives in memory only, filled with the default catalogue.
    static std::unique_ptr<ProjectDb> CreateDefaultInMemory(ProjectOpenResult& result);
    // Writes the default catalogue to a new file. An existing file is replaced only when
    // overwrite is set, and then only once the new project is complete.
    static bool CreateDefaultFile(const CString& path, bool overwrite, ProjectOpenResult& result);

    const CString& Path() const { return m_path; }
    SqliteDb& Db() { return m_db; }
    AttCatalogue& Catalogue() { return m_catalogue; }

    // The project's own settings (name, current speciality, current floor).
    CString GetSetting(const wchar_t* key);
    bool SetSetting(const wchar_t* key, const CString& value);

    // The rows drafting changes, and putting them back (all of them replaced, in one
    // transaction).
    bool ReadSessionState(std::vector<ProjectSessionRow>& rows);
    bool RestoreSessionState(const std::vector<ProjectSessionRow>& rows);

private:
    ProjectDb() = default;
    bool Prepare(ProjectOpenResult& result);
    bool UpgradeFromVersion1(ProjectOpenResult& result);

    CString m_path;
    SqliteDb m_db;
    AttCatalogue m_catalogue;
};

// Creates the tables and fills them with the default catalogue (speciality, floors, categories,
// system codes, laying modes, commands, layers). The caller holds the transaction.
bool WriteDefaultCatalogue(SqliteDb& db, const CString& projectName);

// A row of the command table every new project starts with.
struct DefaultCommand {
    CString name;
    CString description;
    bool jigDrawBlock = false;
    bool checkAttribute = false;
    bool updateUi = false;
    CString bigType;
    CString smallTypes;
    CString refreshPath;
    CString extra;
};
// The default row of a command (names matched ignoring ASCII case); false when it has none.
bool DefaultCommandRow(const CString& name, DefaultCommand& row);

// The tables a project file must have, each with its primary key (columns as in ORDER BY); used
// by the open checks and the content checksums.
struct ProjectTable {
    const char* name;
    const char* key;
};
extern const ProjectTable kProjectTables[];
extern const int kProjectTableCount;
// The statements that create them.
extern const char* const kProjectSchemaSql;

}  // namespace kelaz
