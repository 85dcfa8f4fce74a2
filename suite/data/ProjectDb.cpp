#include "suite/data/ProjectDb.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <set>
#include <vector>

#include "suite/data/ContentChecksum.h"

#include "host/db/FileReplace.h"

namespace kelaz {

namespace {

constexpr char kSqliteMagic[16] = "SQLite format 3";  // with its terminating zero: 16 bytes
constexpr size_t kMaxReportedProblems = 5;

// The message is a sentence, whatever text of SQLite's it ends with.
bool Refuse(ProjectOpenResult& result, ProjectProblem problem, std::string message) {
    if (!message.ends_with("。")) message += "。";
    result.problem = problem;
    result.message = std::move(message);
    return false;
}

// The header is read by hand first so that a file that is no database is never handed to
// SQLite, which would take an empty file for an empty database.
bool HasSqliteHeader(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    char head[sizeof kSqliteMagic] = {};
    if (!in.read(head, sizeof head)) return false;
    return std::memcmp(head, kSqliteMagic, sizeof head) == 0;
}

bool FileExists(const std::string& file) {
    struct stat st {};
    return ::stat(file.c_str(), &st) == 0;
}

CString ProjectNameOf(const CString& path) {
    CString name = path;
    const int slash = name.ReverseFind(L'/');
    if (slash >= 0) name = name.Mid(slash + 1);
    const int dot = name.ReverseFind(L'.');
    if (dot > 0) name = name.Left(dot);
    return name;
}

// Numbered problems, the first few only.
std::string NumberedProblems(const std::vector<std::string>& problems) {
    std::string text;
    for (size_t i = 0; i < problems.size() && i < kMaxReportedProblems; ++i)
        text += "\n  " + std::to_string(i + 1) + ". " + problems[i] + "。";
    return text;
}

bool FillNewProject(SqliteDb& db, const CString& name, ProjectOpenResult& result) {
    db.SetBeforeCommit(&WriteContentChecksums);
    SqliteTransaction tx(db);
    const std::string header =
        "PRAGMA application_id = " + std::to_string(ProjectDb::kApplicationId) +
        "; PRAGMA user_version = " + std::to_string(ProjectDb::kSchemaVersion) + ";";
    if (!tx.Begun() || !db.Exec(kProjectSchemaSql) || !db.Exec(kContentChecksumSchemaSql) ||
        !WriteDefaultCatalogue(db, name) || !db.Exec(header.c_str()) || !tx.Commit())
        return Refuse(result, ProjectProblem::Io, "不能写入默认项目：" + db.LastError());
    return true;
}

}  // namespace

std::unique_ptr<ProjectDb> ProjectDb::Open(const CString& path, ProjectOpenResult& result) {
    result = {};
    const std::string file = ToUtf8(path);
    struct stat st {};
    if (::stat(file.c_str(), &st) != 0) {
        Refuse(result, ProjectProblem::Missing, "项目文件不存在");
        return nullptr;
    }
    if (!S_ISREG(st.st_mode) || !HasSqliteHeader(file)) {
        Refuse(result, ProjectProblem::NotDatabase, "不是 kelaz 项目：文件不是 SQLite 数据库");
        return nullptr;
    }
    std::unique_ptr<ProjectDb> project(new ProjectDb);
    project->m_path = path;
    if (!project->m_db.Open(file, SQLITE_OPEN_READWRITE)) {
        Refuse(result, ProjectProblem::Io, "SQLite 不能打开这个文件：" + project->m_db.LastError());
        return nullptr;
    }
    project->m_db.SetBeforeCommit(&WriteContentChecksums);
    if (!project->Prepare(result)) return nullptr;
    return project;
}

bool ProjectDb::Prepare(ProjectOpenResult& result) {
    std::int64_t appId = 0;
    if (!m_db.QueryInt("PRAGMA application_id", appId))
        return Refuse(result, ProjectProblem::Damaged, "项目文件已损坏：" + m_db.LastError());
    if (appId != kApplicationId) {
        return Refuse(result, ProjectProblem::Foreign,
                      "不是 kelaz 项目：这是另一个应用程序的 SQLite 数据库（application_id 为 " +
                          std::to_string(appId) + "）");
    }

    {
        SqliteStatement check(m_db, "PRAGMA integrity_check");
        std::vector<std::string> problems;
        while (check.Step()) {
            std::string line = ToUtf8(check.Text(0));
            if (line == "ok") break;
            problems.push_back(std::move(line));
        }
        if (!check.Ok())
            return Refuse(result, ProjectProblem::Damaged, "项目文件已损坏：" + m_db.LastError());
        if (!problems.empty())
            return Refuse(result, ProjectProblem::Damaged,
                          "项目文件已损坏（完整性检查发现 " + std::to_string(problems.size()) +
                              " 处问题）：" + NumberedProblems(problems));
    }

    std::int64_t version = 0;
    if (!m_db.QueryInt("PRAGMA user_version", version))
        return Refuse(result, ProjectProblem::Damaged, "项目文件已损坏：" + m_db.LastError());
    if (version > kSchemaVersion)
        return Refuse(result, ProjectProblem::TooNew,
                      "项目由较新的 kelaz 写成（数据结构版本 " + std::to_string(version) +
                          "，本程序认得的版本到 " + std::to_string(kSchemaVersion) + " 为止）");
    if (version < 1)
        return Refuse(result, ProjectProblem::Damaged, "项目文件不完整：没有数据结构版本");

    std::set<std::string> tables;
    {
        SqliteStatement list(m_db, "SELECT name FROM sqlite_schema WHERE type = 'table'");
        while (list.Step()) tables.insert(ToUtf8(list.Text(0)));
        if (!list.Ok())
            return Refuse(result, ProjectProblem::Damaged, "项目文件已损坏：" + m_db.LastError());
    }
    for (int i = 0; i < kProjectTableCount; ++i)
        if (!tables.count(kProjectTables[i].name))
            return Refuse(result, ProjectProblem::Damaged,
                          std::string("项目文件不完整：缺少表 ") + kProjectTables[i].name);

    const bool hasChecksums = tables.count(kContentChecksumTable) != 0;
    if (version == 1) {
        // Schema 1 kept no checksums. Such a file that has the table anyway is a later file
        // whose version number was damaged, not one to upgrade.
        if (hasChecksums)
            return Refuse(result, ProjectProblem::Damaged,
                          "项目文件已损坏：它标明数据结构版本 1，却存有较新版本才有的校验和");
        if (!UpgradeFromVersion1(result)) return false;
    } else if (!hasChecksums) {
        return Refuse(result, ProjectProblem::Damaged,
                      std::string("项目文件不完整：缺少表 ") + kContentChecksumTable);
    }

    {
        std::vector<std::string> problems;
        if (!CheckContentChecksums(m_db, problems))
            return Refuse(result, ProjectProblem::Damaged, "项目文件已损坏：" + m_db.LastError());
        if (!problems.empty())
            return Refuse(result, ProjectProblem::Damaged,
                          "项目文件已损坏（内容校验和发现 " + std::to_string(problems.size()) +
                              " 处问题）：" + NumberedProblems(problems));
    }

    if (!m_db.Exec("PRAGMA foreign_keys = ON") || !m_catalogue.Load(m_db))
        return Refuse(result, ProjectProblem::Damaged,
                      "不能读取项目的构件目录：" + m_db.LastError());
    return true;
}

// The file passed every check of schema 1, so its contents are taken as they are and sealed:
// drafters keep their projects. One transaction, so the file is either upgraded or left as it
// was.
bool ProjectDb::UpgradeFromVersion1(ProjectOpenResult& result) {
    SqliteTransaction tx(m_db);
    const std::string version = "PRAGMA user_version = " + std::to_string(kSchemaVersion);
    if (!tx.Begun() || !m_db.Exec(kContentChecksumSchemaSql) || !m_db.Exec(version.c_str()) ||
        !tx.Commit())
        return Refuse(result, ProjectProblem::Io,
                      "不能把数据结构版本 1 的项目升级到版本 " + std::to_string(kSchemaVersion) +
                          "：" + m_db.LastError());
    return true;
}

std::unique_ptr<ProjectDb> ProjectDb::CreateDefaultInMemory(ProjectOpenResult& result) {
    result = {};
    std::unique_ptr<ProjectDb> project(new ProjectDb);
    if (!project->m_db.Open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) {
        Refuse(result, ProjectProblem::Io, "不能建立默认项目：" + project->m_db.LastError());
        return nullptr;
    }
    if (!FillNewProject(project->m_db, L"默认项目", result) || !project->Prepare(result))
        return nullptr;
    return project;
}

bool ProjectDb::CreateDefaultFile(const CString& path, bool overwrite, ProjectOpenResult& result) {
    result = {};
    const std::string file = ToUtf8(path);
    if (!overwrite && FileExists(file))
        return Refuse(result, ProjectProblem::Exists, "文件已经存在（要替换它，请加 --force）");

    // Built in a temporary file beside the target and renamed over it at the end, so that the
    // target is either the old file or the complete new project, never a half-written one.
    std::string why;
    const FileStatus status = ReplaceFile(file, [&](const std::string& temporary) {
        SqliteDb db;
        if (!db.Open(temporary, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) {
            why = "不能建立文件：" + db.LastError();
            return false;
        }
        ProjectOpenResult filled;
        if (FillNewProject(db, ProjectNameOf(path), filled)) return true;
        why = filled.message;
        db.Close();
        ::unlink((temporary + "-journal").c_str());
        return false;
    });
    if (!status.ok()) {
        return Refuse(result, ProjectProblem::Io,
                      !why.empty() ? why : "不能写入：" + FileProblemText(status));
    }
    return true;
}

CString ProjectDb::GetSetting(const wchar_t* key) {
    SqliteStatement st(m_db, "SELECT value FROM setting WHERE key = ?1");
    st.Bind(1, CString(key));
    return st.Step() ? st.Text(0) : CString();
}

bool ProjectDb::SetSetting(const wchar_t* key, const CString& value) {
    SqliteTransaction tx(m_db);
    SqliteStatement st(m_db, "INSERT OR REPLACE INTO setting(key, value) VALUES (?1, ?2)");
    return tx.Begun() && st.Bind(1, CString(key)).Bind(2, value).Run() && tx.Commit();
}

bool ProjectDb::ReadSessionState(std::vector<ProjectSessionRow>& rows) {
    std::vector<ProjectSessionRow> out;
    SqliteStatement settings(m_db, "SELECT key, value FROM setting ORDER BY key");
    while (settings.Step()) {
        out.push_back({ProjectSessionRow::Table::kSetting, settings.Text(0), 0, settings.Text(1)});
    }
    SqliteStatement levels(m_db, "SELECT key, ord, value FROM level_history ORDER BY key, ord");
    while (levels.Step()) {
        out.push_back({ProjectSessionRow::Table::kLevelHistory, levels.Text(0), levels.Int(1),
                       levels.Text(2)});
    }
    if (!settings.Ok() || !levels.Ok()) return false;
    rows = std::move(out);
    return true;
}

bool ProjectDb::RestoreSessionState(const std::vector<ProjectSessionRow>& rows) {
    SqliteTransaction tx(m_db);
    if (!tx.Begun() || !m_db.Exec("DELETE FROM setting; DELETE FROM level_history;")) return false;
    SqliteStatement setting(m_db, "INSERT INTO setting(key, value) VALUES (?1, ?2)");
    SqliteStatement level(m_db, "INSERT INTO level_history(key, ord, value) VALUES (?1, ?2, ?3)");
    for (const ProjectSessionRow& row : rows) {
        SqliteStatement& st = row.table == ProjectSessionRow::Table::kSetting ? setting : level;
        st.Reset();
        st.Bind(1, row.key);
        if (row.table == ProjectSessionRow::Table::kSetting) {
            st.Bind(2, row.value);
        } else {
            st.Bind(2, row.ord).Bind(3, row.value);
        }
        if (!st.Run()) return false;
    }
    return tx.Commit();
}

}  // namespace kelaz
