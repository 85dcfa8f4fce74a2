#include <gtest/gtest.h>
#include <sqlite3.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/RunProgram.h"

using kelaz::test::RunKelaz;

namespace {

class AppProject : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = ::testing::TempDir() + "kelaz-app-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        m_dir = pattern;
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(m_dir, ignored);
    }
    static std::string Bytes(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    static void Write(const std::string& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    }
    std::string m_dir;
};

// Everything after the first line (which names the file).
std::string Body(const std::string& out) { return out.substr(out.find('\n') + 1); }

}  // namespace

TEST_F(AppProject, InitThenShowPrintsTheDefaultProject) {
    const std::string file = m_dir + "/办公楼.kelaz";
    const auto init = RunKelaz("project init '" + file + "'");
    ASSERT_EQ(init.status, 0) << init.out;
    EXPECT_EQ(init.out, "[kelaz] 默认项目已写入 " + file + "。\n");
    const auto shown = RunKelaz("project show '" + file + "'");
    ASSERT_EQ(shown.status, 0) << shown.out;
    const std::string& out = shown.out;
    EXPECT_EQ(out.rfind("项目 办公楼（" + file + "）\n", 0), 0u) << out.substr(0, 200);
    const char* expected[] = {
        "当前专业 暖通，当前楼层 1\n",
        "\n专业：暖通、给排水、消防、电气、1_5u\n",
        "  3/6：3600，8700；WC-墙内暗敷、CC-顶板内暗敷、FC-地面内暗敷、SCE-吊顶内敷设\n",
        "  7,9：3600，23100；",
        "\n    9：3600，31200\n",
        "\n    风部件\n      风法兰\n        角钢法兰L25  [1] 法兰 B,25,H,3\n",
        "        单栓室内消火栓  [2] 消火栓 B,700,H,240  安装高度 1100\n",
        "\n      空调机组\n        组合式空调机组  [1] 空调机组",
        "  暖通：SF 送风（4，CONTINUOUS）、HF 回风（3，DASHED）",
        "  1_5u：WL 照明",
        "  AIRUNIT      jau 布置风设备  风设备：空调机组,风机,风机盘管  刷新 暖通\\风设备\n",
        "  FLANGETABLE  --- 法兰匹配表  风部件：风法兰  +方形  +圆形\n",
        "  电气-灯具-WL 2 CONTINUOUS\n",
    };
    for (const char* text : expected) EXPECT_NE(out.find(text), std::string::npos) << text;

    // The file holds exactly the built-in catalogue.
    const auto builtIn = RunKelaz("project show");
    ASSERT_EQ(builtIn.status, 0);
    EXPECT_EQ(builtIn.out.rfind("项目 默认项目（内置，未保存）\n", 0), 0u);
    EXPECT_EQ(Body(builtIn.out), Body(out));
}

TEST_F(AppProject, InitKeepsAnExistingFileUnlessForced) {
    const std::string file = m_dir + "/p.kelaz";
    Write(file, "keep me");
    const auto refused = RunKelaz("project init " + file);
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out,
              "[kelaz] 不能建立项目 " + file + "：文件已经存在（要替换它，请加 --force）。\n");
    EXPECT_EQ(Bytes(file), "keep me");
    ASSERT_EQ(RunKelaz("project init --force " + file).status, 0);
    EXPECT_EQ(RunKelaz("project show " + file).status, 0);
    EXPECT_EQ(RunKelaz("project init").status, 2);  // FILE is required
}

TEST_F(AppProject, ShowRefusesDamagedOrForeignFilesAndLeavesThemAlone) {
    const std::string good = m_dir + "/good.kelaz";
    ASSERT_EQ(RunKelaz("project init " + good).status, 0);
    const std::string whole = Bytes(good);

    const std::string text = m_dir + "/text.kelaz";
    Write(text, "not a project\n");
    const std::string truncated = m_dir + "/truncated.kelaz";
    Write(truncated, whole.substr(0, whole.size() / 3));
    const std::string foreign = m_dir + "/foreign.sqlite";
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(foreign.c_str(), &db), SQLITE_OK);
    sqlite3_exec(db, "CREATE TABLE t(x); INSERT INTO t VALUES (1);", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    // Valid SQLite throughout, one value changed by a program that keeps no checksums.
    const std::string changed = m_dir + "/changed.kelaz";
    Write(changed, whole);
    ASSERT_EQ(sqlite3_open(changed.c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "UPDATE sys_code SET linetype = 'D@SHED' WHERE linetype = 'DASHED'",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(db);

    const std::pair<std::string, const char*> cases[] = {
        {text, "：不是 kelaz 项目：文件不是 SQLite 数据库。\n"},
        {truncated, "：项目文件已损坏"},
        {foreign, "：不是 kelaz 项目：这是另一个应用程序的 SQLite 数据库"},
        {m_dir + "/missing.kelaz", "：项目文件不存在。\n"},
        {changed,
         "：项目文件已损坏（内容校验和发现 1 处问题）：\n"
         "  1. 表 sys_code：内容与校验和不符。\n"},
    };
    for (const auto& [file, says] : cases) {
        const std::string before = Bytes(file);
        const auto r = RunKelaz("project show " + file);
        EXPECT_EQ(r.status, 2) << file;
        EXPECT_EQ(r.out.rfind("[kelaz] 不能打开项目 " + file + says, 0), 0u) << r.out;
        EXPECT_EQ(r.out.find("专业："), std::string::npos);
        EXPECT_EQ(Bytes(file), before) << file;
    }
    EXPECT_FALSE(std::filesystem::exists(m_dir + "/missing.kelaz"));
}

TEST_F(AppProject, InitForceKeepsTheModeFollowsLinksAndRefusesWhatIsNoFile) {
    const std::string file = m_dir + "/p.kelaz";
    ASSERT_EQ(RunKelaz("project init " + file).status, 0);
    ASSERT_EQ(::chmod(file.c_str(), 0664), 0);
    std::filesystem::create_symlink("p.kelaz", m_dir + "/link.kelaz");
    const auto forced = RunKelaz("project init --force " + m_dir + "/link.kelaz");
    ASSERT_EQ(forced.status, 0) << forced.out;
    EXPECT_TRUE(std::filesystem::is_symlink(m_dir + "/link.kelaz"));
    struct stat st {};
    ASSERT_EQ(::stat(file.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0664u);
    EXPECT_EQ(RunKelaz("project show " + file).status, 0);

    std::filesystem::create_directory(m_dir + "/folder.kelaz");
    ASSERT_EQ(::mkfifo((m_dir + "/pipe.kelaz").c_str(), 0644), 0);
    for (const std::string& args :
         {"project show " + m_dir + "/folder.kelaz", "project show " + m_dir + "/pipe.kelaz",
          "project init --force " + m_dir + "/folder.kelaz",
          "project init --force " + m_dir + "/pipe.kelaz"}) {
        const auto r = kelaz::test::RunKelazWithin(20, args);
        EXPECT_EQ(r.status, 2) << args << "\n" << r.out;
        EXPECT_NE(r.out.find("：\n  1. "), std::string::npos) << r.out;
    }
    EXPECT_TRUE(std::filesystem::is_directory(m_dir + "/folder.kelaz"));
    EXPECT_TRUE(std::filesystem::is_fifo(m_dir + "/pipe.kelaz"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_dir),
                            std::filesystem::directory_iterator()),
              4)
        << "no temporary file is left";
}
