#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

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

class ProjectFile : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = kelaz::test::MakeTempDir();
        ASSERT_FALSE(m_dir.empty());
    }
    void TearDown() override {
        KelAzDataMng::CloseProject();
        std::error_code ignored;
        std::filesystem::remove_all(m_dir, ignored);
    }
    std::string NewProject(const std::string& name) {
        const std::string file = m_dir + "/" + name;
        ProjectOpenResult result;
        EXPECT_TRUE(ProjectDb::CreateDefaultFile(kelaz::FromUtf8(file), false, result))
            << result.message;
        return file;
    }
    // Opening must refuse the file for the expected reason and leave every byte as it was.
    void ExpectRefused(const std::string& file, ProjectProblem problem, const char* says) {
        const std::string before = ReadBytes(file);
        ProjectOpenResult result;
        EXPECT_FALSE(ProjectDb::Open(kelaz::FromUtf8(file), result)) << file;
        EXPECT_EQ(result.problem, problem) << file << ": " << result.message;
        EXPECT_NE(result.message.find(says), std::string::npos) << result.message;
        EXPECT_EQ(ReadBytes(file), before) << file;
        EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
    }
    std::string m_dir;
};

constexpr int kRowsPerWrite = 400;

// The writer's loop: every write replaces the whole table by rows that all carry the write's
// number, so a reader can tell a half-done write from a whole one.
[[noreturn]] void WriteForever(const std::string& file, int ready) {
    if (!KelAzDataMng::OpenProject(kelaz::FromUtf8(file))) _exit(3);
    boost::shared_ptr<CFlanMatchCookie> tables = CKelAzProjCookie::Instance()->GetFlanMatchObj();
    for (int generation = 1;; ++generation) {
        CArray<SFlangeMapInfo> rows;
        for (int i = 0; i < kRowsPerWrite; ++i)
            rows.Add({generation * 10000.0 + i, kelaz::FormatText(L"法兰%d", generation),
                      L"暖通\\风部件\\风法兰\\共板法兰", false});
        if (!tables->SetFlanMatchData(L"暖通", kFlangeShapeSquare, rows)) _exit(4);
        if (generation == 2 && ::write(ready, "x", 1) != 1) _exit(5);
    }
}

}  // namespace

TEST_F(ProjectFile, RefusesWhatIsNotAnIntactProjectWithoutTouchingIt) {
    const std::string text = m_dir + "/notes.kelaz";
    WriteBytes(text, "楼层 1 4500\n楼层 2 4200\n");
    ExpectRefused(text, ProjectProblem::NotDatabase, "不是 SQLite 数据库");
    const std::string empty = m_dir + "/empty.kelaz";
    WriteBytes(empty, "");
    ExpectRefused(empty, ProjectProblem::NotDatabase, "不是 SQLite 数据库");

    const std::string foreign = m_dir + "/other.db";
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(foreign.c_str(), &db), SQLITE_OK);
    sqlite3_exec(db, "CREATE TABLE floor(name TEXT); INSERT INTO floor VALUES ('1');", nullptr,
                 nullptr, nullptr);
    sqlite3_close(db);
    ExpectRefused(foreign, ProjectProblem::Foreign, "另一个应用程序");

    const std::string good = NewProject("good.kelaz");
    const std::string whole = ReadBytes(good);
    const std::string truncated = m_dir + "/truncated.kelaz";
    WriteBytes(truncated, whole.substr(0, whole.size() / 2));
    ExpectRefused(truncated, ProjectProblem::Damaged, "已损坏");

    // A lost block in the middle of the file.
    const std::string damaged = m_dir + "/damaged.kelaz";
    std::string broken = whole;
    const size_t page = 4096;
    for (size_t at = 2 * page; at + page < broken.size(); at += 4 * page)
        broken.replace(at, 512, 512, '\xA5');
    WriteBytes(damaged, broken);
    ExpectRefused(damaged, ProjectProblem::Damaged, "已损坏");

    const std::string newer = m_dir + "/newer.kelaz";
    WriteBytes(newer, whole);
    ASSERT_EQ(sqlite3_open(newer.c_str(), &db), SQLITE_OK);
    sqlite3_exec(db, "PRAGMA user_version = 7", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    ExpectRefused(newer, ProjectProblem::TooNew, "较新的 kelaz");

    // A refused file leaves the open project current.
    ASSERT_TRUE(KelAzDataMng::OpenProject(kelaz::FromUtf8(good)));
    CString error;
    EXPECT_FALSE(KelAzDataMng::OpenProject(kelaz::FromUtf8(foreign), error));
    EXPECT_NE(error.Find(L"另一个应用程序"), -1);
    EXPECT_EQ(CProj::GetPrjPath(), kelaz::FromUtf8(good));
}

TEST_F(ProjectFile, CreationRefusesAnExistingFileUnlessForced) {
    const std::string file = m_dir + "/p.kelaz";
    WriteBytes(file, "mine");
    ProjectOpenResult result;
    EXPECT_FALSE(ProjectDb::CreateDefaultFile(kelaz::FromUtf8(file), false, result));
    EXPECT_EQ(result.problem, ProjectProblem::Exists);
    EXPECT_EQ(ReadBytes(file), "mine");
    ASSERT_TRUE(ProjectDb::CreateDefaultFile(kelaz::FromUtf8(file), true, result));
    EXPECT_TRUE(ProjectDb::Open(kelaz::FromUtf8(file), result)) << result.message;
    EXPECT_FALSE(std::filesystem::exists(file + ".kelaz-new"));
}

TEST_F(ProjectFile, AWriterKilledMidWriteLeavesThePreviousState) {
    const std::string file = NewProject("killed.kelaz");
    int killedInsideAWrite = 0;
    for (int round = 0; round < 6; ++round) {
        int pipeEnds[2];
        ASSERT_EQ(::pipe(pipeEnds), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::close(pipeEnds[0]);
            WriteForever(file, pipeEnds[1]);
        }
        ::close(pipeEnds[1]);
        char ready = 0;
        ASSERT_EQ(::read(pipeEnds[0], &ready, 1), 1) << "the writer never got going";
        ::close(pipeEnds[0]);
        std::this_thread::sleep_for(std::chrono::milliseconds(10 + 17 * round));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        // A journal left behind means the kill came inside a transaction: before the file was
        // touched (a journal a reader ignores) or while it was written (one it rolls back).
        if (std::filesystem::exists(file + "-journal")) ++killedInsideAWrite;

        CString error;
        ASSERT_TRUE(KelAzDataMng::OpenProject(kelaz::FromUtf8(file), error)) << error;
        CArray<SFlangeMapInfo> rows;
        ASSERT_TRUE(CKelAzProjCookie::Instance()->GetFlanMatchObj()->GetFlanMatchData(
            L"暖通", kFlangeShapeSquare, rows));
        ASSERT_EQ(rows.GetSize(), kRowsPerWrite);
        const int generation = static_cast<int>(rows[0].dSize / 10000);
        EXPECT_GE(generation, 2);
        for (INT_PTR i = 0; i < rows.GetSize(); ++i) {
            EXPECT_EQ(rows[i].dSize, generation * 10000.0 + static_cast<double>(i));
            EXPECT_EQ(rows[i].strFlangeName, kelaz::FormatText(L"法兰%d", generation));
        }
        KelAzDataMng::CloseProject();
    }
    EXPECT_GT(killedInsideAWrite, 0) << "no kill landed inside a write; the test proved nothing";
}
