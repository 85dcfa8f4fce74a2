#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "suite/data/ContentChecksum.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjCookie.h"
#include "tests/support/ProjectFixture.h"

using kelaz::ProjectDb;
using kelaz::ProjectOpenResult;
using kelaz::ProjectProblem;
using kelaz::test::ReadBytes;
using kelaz::test::WriteBytes;
using namespace KelAzDataMng;

namespace {

// Every table and the table definitions as text, read with plain SQL: what a damaged file
// accepted would have to reproduce.
std::string Contents(kelaz::SqliteDb& db) {
    std::vector<std::string> queries = {
        "SELECT type, name, tbl_name, sql FROM sqlite_schema ORDER BY type, name"};
    for (int i = 0; i < kelaz::kProjectTableCount; ++i)
        queries.push_back(std::string("SELECT * FROM ") + kelaz::kProjectTables[i].name +
                          " ORDER BY " + kelaz::kProjectTables[i].key);
    std::string out;
    for (const std::string& sql : queries) {
        kelaz::SqliteStatement st(db, sql.c_str());
        out += sql + "\n";
        while (st.Step()) {
            for (int c = 0; c < st.Columns(); ++c)
                out += std::to_string(st.Type(c)) + ":" + std::string(st.Bytes(c)) + "|";
            out += "\n";
        }
        if (!st.Ok()) out += "read error: " + db.LastError() + "\n";
    }
    return out;
}

std::string ContentsOf(const std::string& file) {
    kelaz::SqliteDb db;
    if (!db.Open(file, SQLITE_OPEN_READONLY)) return "cannot open";
    return Contents(db);
}

// Runs SQL on a file with plain SQLite, as a program that knows nothing of the checksums would.
int ChangeBehindTheBack(const std::string& file, const std::string& sql) {
    sqlite3* db = nullptr;
    if (sqlite3_open(file.c_str(), &db) != SQLITE_OK) return -1;
    const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr);
    const int changes = sqlite3_total_changes(db);
    sqlite3_close(db);
    return rc == SQLITE_OK ? changes : -1;
}

// A project whose every table holds rows, the edited ones written by the program's own paths.
class ProjectChecksum : public kelaz::test::ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        if (HasFatalFailure()) return;
        CStringArray levels;
        levels.Add(L"2800");
        levels.Add(L"3F+500");
        ASSERT_TRUE(CKelAzProjCookie::Instance()->GetLevelHeightObj()->SetLevelHeight(L"dxbz_level",
                                                                                      levels));
        CArray<SFlangeMapInfo> rows;
        rows.Add({400, L"角钢法兰L25", L"暖通\\风部件\\风法兰\\角钢法兰L25", false});
        rows.Add({800, L"角钢法兰L30", L"暖通\\风部件\\风法兰\\角钢法兰L30", false});
        ASSERT_TRUE(CKelAzProjCookie::Instance()->GetFlanMatchObj()->SetFlanMatchData(
            L"暖通", kFlangeShapeSquare, rows));
        KelAzDataMng::CloseProject();
        m_original = ReadBytes(m_file);
    }

    std::string Copy(const std::string& name) {
        const std::string file = m_dir + "/" + name;
        WriteBytes(file, m_original);
        return file;
    }

    // Opening must refuse the file as damaged, say why, and leave every byte as it was.
    void ExpectRefused(const std::string& file, const char* says) {
        const std::string before = ReadBytes(file);
        ProjectOpenResult result;
        EXPECT_FALSE(ProjectDb::Open(kelaz::FromUtf8(file), result)) << file;
        EXPECT_EQ(result.problem, ProjectProblem::Damaged) << result.message;
        EXPECT_NE(result.message.find(says), std::string::npos) << result.message;
        EXPECT_EQ(ReadBytes(file), before) << file;
        EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
    }

    bool Opens() {
        ProjectOpenResult result;
        const bool opened = ProjectDb::Open(kelaz::FromUtf8(m_file), result) != nullptr;
        EXPECT_TRUE(opened) << result.message;
        return opened;
    }

    std::string m_original;
};

}  // namespace

// The published FNV-1a values: a changed constant would make every existing project unreadable.
TEST(ContentHash, IsFnv1a64) {
    const auto hash = [](std::string_view text) {
        kelaz::ContentHash h;
        h.Add(text);
        return h.Value();
    };
    EXPECT_EQ(hash(""), 0xcbf29ce484222325ULL);
    EXPECT_EQ(hash("a"), 0xaf63dc4c8601ec8cULL);
    EXPECT_EQ(hash("foobar"), 0x85944171f73967e8ULL);
}

TEST_F(ProjectChecksum, OneChangedValueInAnyTableIsRefusedAndTheFileLeftAlone) {
    struct Change {
        const char* table;
        const char* sql;
    };
    const Change changes[] = {
        {"setting", "UPDATE setting SET value = '工程2' WHERE key = 'name'"},
        {"speciality", "UPDATE speciality SET title = '暖通空调!' WHERE name = '暖通'"},
        {"big_category", "UPDATE big_category SET ord = ord + 1 WHERE id = 1"},
        {"small_category", "UPDATE small_category SET name = name || '2' WHERE id = 1"},
        {"attribute", "UPDATE attribute SET size_text = 'B,361,H,360' WHERE name = '方形散流器'"},
        {"attribute_field",
         "UPDATE attribute_field SET value = value || '0' WHERE (attribute_id, ord) = "
         "(SELECT attribute_id, ord FROM attribute_field LIMIT 1)"},
        {"sys_code",
         "UPDATE sys_code SET linetype = 'D@SHED' WHERE id = "
         "(SELECT MIN(id) FROM sys_code WHERE linetype = 'DASHED')"},
        {"floor", "UPDATE floor SET height = height + 1 WHERE id = 1"},
        {"floor_member",
         "UPDATE floor_member SET elevation = elevation + 1 WHERE name = "
         "(SELECT MIN(name) FROM floor_member)"},
        {"lay_mode",
         "UPDATE lay_mode SET code = 'WD' WHERE (floor_id, ord) = "
         "(SELECT floor_id, ord FROM lay_mode LIMIT 1)"},
        {"level_history", "UPDATE level_history SET value = '2801' WHERE value = '2800'"},
        {"flange_match", "UPDATE flange_match SET size = 401 WHERE size = 400"},
        {"command",
         "UPDATE command SET jig_draw_block = 1 - jig_draw_block WHERE name = 'AIRUNIT'"},
        {"layer",
         "UPDATE layer SET linetype = linetype || 'X' WHERE name = (SELECT MIN(name) FROM layer)"},
    };
    std::set<std::string> covered;
    for (const Change& change : changes) {
        SCOPED_TRACE(change.sql);
        const std::string file = Copy(std::string(change.table) + ".kelaz");
        ASSERT_EQ(ChangeBehindTheBack(file, change.sql), 1) << "the change must hit one row";
        ExpectRefused(file, (std::string("1. 表 ") + change.table + "：内容与校验和不符").c_str());
        covered.insert(change.table);
    }
    for (int i = 0; i < kelaz::kProjectTableCount; ++i)
        EXPECT_TRUE(covered.count(kelaz::kProjectTables[i].name)) << kelaz::kProjectTables[i].name;

    // A row gone, the table definitions changed, the checksums themselves damaged.
    const Change others[] = {
        {"表 layer", "DELETE FROM layer WHERE name = (SELECT MAX(name) FROM layer)"},
        {"表的定义与校验和不符",
         "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'description "
         "TEXT NOT NULL', 'description TEXT NOT NULL DEFAULT ''''') WHERE name = 'command'"},
        {"表 floor：内容与校验和不符",
         "UPDATE content_checksum SET checksum = checksum + 1 WHERE name = 'floor'"},
        {"表 layer：没有校验和", "DELETE FROM content_checksum WHERE name = 'layer'"},
        {"未知的表“notes”", "INSERT INTO content_checksum VALUES ('notes', 0)"},
    };
    int n = 0;
    for (const Change& change : others) {
        SCOPED_TRACE(change.sql);
        const std::string file = Copy("other" + std::to_string(++n) + ".kelaz");
        ASSERT_GE(ChangeBehindTheBack(file, change.sql), 0);
        ExpectRefused(file, change.table);
    }
}

// Every editing test of the data module reopens its project through the checked open, so each
// editing path is known to keep the checksums right. What is left is a write that skips them.
TEST_F(ProjectChecksum, AWriteOutsideATransactionIsRolledBackNotLeftUnsealed) {
    ASSERT_TRUE(Opens());  // the writes of the fixture
    ASSERT_TRUE(KelAzDataMng::OpenProject(kelaz::FromUtf8(m_file)));
    EXPECT_FALSE(kelaz::CurrentProject()->Db().Exec("UPDATE setting SET value = 'x'"));
    EXPECT_EQ(CProj::GetPrjName(), L"工程");
    ASSERT_TRUE(CProj::SetCurrentSpec(L"给排水"));  // a setting goes through a transaction
    KelAzDataMng::CloseProject();
    EXPECT_TRUE(Opens());
}

TEST_F(ProjectChecksum, AProjectOfSchema1IsUpgradedButAFileThatOnlySaysSchema1IsNot) {
    const std::string old = Copy("old.kelaz");
    ASSERT_GE(ChangeBehindTheBack(old, "DROP TABLE content_checksum; PRAGMA user_version = 1"), 0);
    {
        ProjectOpenResult result;
        ASSERT_TRUE(ProjectDb::Open(kelaz::FromUtf8(old), result)) << result.message;
    }
    kelaz::SqliteDb db;
    ASSERT_TRUE(db.Open(old, SQLITE_OPEN_READONLY));
    std::int64_t version = 0;
    ASSERT_TRUE(db.QueryInt("PRAGMA user_version", version));
    EXPECT_EQ(version, ProjectDb::kSchemaVersion);
    db.Close();
    EXPECT_EQ(ContentsOf(old), ContentsOf(Copy("original.kelaz")));
    // Opening the upgraded file again changes nothing.
    const std::string upgraded = ReadBytes(old);
    ProjectOpenResult result;
    EXPECT_TRUE(ProjectDb::Open(kelaz::FromUtf8(old), result)) << result.message;
    EXPECT_EQ(ReadBytes(old), upgraded);

    const std::string lowered = Copy("lowered.kelaz");
    ASSERT_GE(ChangeBehindTheBack(lowered, "PRAGMA user_version = 1"), 0);
    ExpectRefused(lowered, "标明数据结构版本 1");
    const std::string stripped = Copy("stripped.kelaz");
    ASSERT_GE(ChangeBehindTheBack(stripped, "DROP TABLE content_checksum"), 0);
    ExpectRefused(stripped, "缺少表 content_checksum");
}

// Bytes changed at random, half of them inside texts and numbers of the catalogue (where the
// integrity check sees nothing): each damaged file is refused untouched or, when the damage
// hit no content (free space, slack in a page), reads back exactly the original.
TEST_F(ProjectChecksum, RandomDamageIsRefusedOrReadsBackTheOriginal) {
    const std::string contents = ContentsOf(Copy("original.kelaz"));
    std::vector<size_t> inValues;
    for (const char* text : {"DASHED", "CONTINUOUS", "B,360,H,360", "方形散流器", "角钢法兰L30",
                             "WC-墙内暗敷", "AIRUNIT", "3F+500"})
        for (size_t at = m_original.find(text); at != std::string::npos;
             at = m_original.find(text, at + 1))
            for (size_t k = 0; text[k]; ++k) inValues.push_back(at + k);
    ASSERT_FALSE(inValues.empty());

    std::mt19937 random(20240611);
    int refused = 0, byChecksum = 0, accepted = 0;
    const std::string file = m_dir + "/damaged.kelaz";
    for (int round = 0; round < 300; ++round) {
        std::string bytes = m_original;
        const int count = 1 + static_cast<int>(random() % 3);
        for (int k = 0; k < count; ++k) {
            const size_t at =
                round % 2 ? random() % bytes.size() : inValues[random() % inValues.size()];
            bytes[at] = static_cast<char>(bytes[at] ^ (1 + random() % 255));
        }
        WriteBytes(file, bytes);
        ProjectOpenResult result;
        std::unique_ptr<ProjectDb> project = ProjectDb::Open(kelaz::FromUtf8(file), result);
        if (project) {
            ++accepted;
            EXPECT_EQ(Contents(project->Db()), contents) << "round " << round;
        } else {
            ++refused;
            if (result.message.find("内容校验和发现") != std::string::npos) ++byChecksum;
        }
        project.reset();
        EXPECT_EQ(ReadBytes(file), bytes) << "round " << round << ": " << result.message;
    }
    EXPECT_GT(byChecksum, 0) << "no damage got past the integrity check: the test proved nothing";
    EXPECT_GT(accepted, 0) << "harmless damage should still open";
    EXPECT_GT(refused, 0);
}
