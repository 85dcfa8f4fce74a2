#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <tuple>

#include "app/shell/CommandHelpTable.h"
#include "app/shell/Session.h"
#include "host/ed/CommandStack.h"
#include "host/ed/HostCommands.h"
#include "host/ed/InputSource.h"
#include "tests/support/RunProgram.h"
#include "tests/support/WorkFiles.h"

namespace {

namespace fs = std::filesystem;
using kelaz::test::RunKelaz;
using kelaz::test::WorkDir;

std::string Script(const fs::path& dir, const std::string& name, const std::string& bytes) {
    const fs::path path = dir / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return "run '" + path.string() + "'";
}

}  // namespace

TEST(ScriptTruth, RefusedLinesMakeTheStatusAndNonTextIsRefusedAtOnce) {
    const fs::path dir = WorkDir("script-truth");
    // A byte order mark is no part of the first command.
    auto r = RunKelaz(Script(dir, "bom.kls",
                             "\xEF\xBB\xBF"
                             "ARC\n0,0\n50,50\n100,0\n"));
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(r.out.find("未知命令"), std::string::npos) << r.out;

    // Unknown commands and wrong answers: the script runs on, the outputs are written, the
    // count is told and the status is 1.
    const std::string kdw = (dir / "out.kdw").string();
    r = RunKelaz(Script(dir, "wrong.kls", "FOO\nARC\nhello\n0,0\n50,50\n100,0\n") + " --save '" +
                 kdw + "'");
    EXPECT_EQ(r.status, 1) << r.out;
    EXPECT_NE(r.out.find("wrong.kls: 2 处输入被拒绝或是未知命令"), std::string::npos) << r.out;
    EXPECT_TRUE(fs::exists(kdw));

    // Not UTF-8 text: refused before anything runs.
    for (const auto& [name, bytes, says] :
         {std::tuple<std::string, std::string, std::string>{"utf16.kls",
                                                            "\xFF\xFE"
                                                            "A\0R\0C\0",
                                                            "UTF-16"},
          {"nul.kls", std::string("ARC\n0,0\0\n", 10), "第 2 行有 NUL"},
          {"latin1.kls", "ARC\n\xE9t\xE9\n", "第 2 行不是 UTF-8"},
          {"overlong.kls", "\xC0\xAF\n", "第 1 行不是 UTF-8"}}) {
        r = RunKelaz(Script(dir, name, bytes));
        EXPECT_EQ(r.status, 2) << name;
        EXPECT_NE(r.out.find(says), std::string::npos) << name << ": " << r.out;
        EXPECT_EQ(r.out.find("命令:"), std::string::npos) << name;
    }
    r = RunKelaz("run '" + dir.string() + "'");
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.out.find("是一个目录"), std::string::npos) << r.out;
    EXPECT_EQ(RunKelaz("run '" + (dir / "missing.kls").string() + "'").status, 2);
}

TEST(ScriptTruth, HelpCoversEveryCommandAndExplainsOne) {
    // Every command of the command line has its row of prompts and example.
    kelaz::ScriptedInput none;
    {
        kelaz::Session session(none, std::cout);
        for (const kelaz::HostCommandInfo& info : kelaz::HostCommandList())
            EXPECT_NE(kelaz::FindCommandHelp(info.name), nullptr)
                << "no help for " << kelaz::ToUtf8(CString(info.name));
        AcEdCommandIterator* it = acedRegCmds->iterator();
        for (; !it->done(); it->next()) {
            EXPECT_NE(kelaz::FindCommandHelp(it->command()->globalName()), nullptr)
                << "no help for the command "
                << kelaz::ToUtf8(CString(it->command()->globalName()));
        }
        delete it;
    }
    const fs::path dir = WorkDir("script-help");
    const auto r =
        RunKelaz(Script(dir, "help.kls", "HELP\nHELP rectlayout\nHELP a\nHELP nosuch\n"));
    EXPECT_NE(r.out.find("  ARCLAYOUT"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find(" A=ARC E=ERASE"), std::string::npos) << r.out;
    EXPECT_NE(
        r.out.find("RECTLAYOUT: 在矩形区域内按行布置当前构件\n提问:\n    指定布置区域的角点:"),
        std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("示例:\n    RECTLAYOUT 0,0 6000,0 0,4000"), std::string::npos);
    EXPECT_NE(r.out.find("ARC: 三点画圆弧：起点、第二个点、端点\n别名: A"), std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("没有命令\"nosuch\""), std::string::npos) << r.out;
}
