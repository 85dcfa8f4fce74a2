#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/RunProgram.h"
#include "tests/support/WorkFiles.h"

namespace {

namespace fs = std::filesystem;
using kelaz::test::Read;
using kelaz::test::RunKelaz;
using kelaz::test::WorkDir;
using kelaz::test::Write;

const char* const kSession =
    "arc\n0,0\n50,50\n100,0\n"
    "UNDO\nm\n"
    "ERASE\n50,50\n\n"
    "u\n"
    "DUMP\n";

TEST(Shell, PipedShellAndScriptRunPrintTheSameSession) {
    const fs::path dir = WorkDir("shell-vs-run");
    Write(dir / "s.kls", kSession);
    const auto run = kelaz::test::RunKelaz("run '" + (dir / "s.kls").string() + "'");
    const auto shell = kelaz::test::RunKelaz("shell < '" + (dir / "s.kls").string() + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(shell.status, 0);
    EXPECT_EQ(shell.out, run.out);
    EXPECT_NE(run.out.find("\"class\":\"AcDbArc\""), std::string::npos) << run.out;
}

TEST(Shell, ADrawingOpenedFirstIsSavedBackByDefault) {
    const fs::path dir = WorkDir("run-drawing");
    Write(dir / "draw.kls", "ARC\n0,0\n50,50\n100,0\n");
    const std::string drawing = (dir / "one.kdw").string();
    ASSERT_EQ(RunKelaz("run '" + (dir / "draw.kls").string() + "' --save '" + drawing + "'").status,
              0);
    // A second session adds an arc to the drawing and saves it under its own name.
    Write(dir / "more.kls", "ARC\n200,0\n250,50\n300,0\nSAVE\n\n");
    const auto more =
        RunKelaz("run '" + (dir / "more.kls").string() + "' --drawing '" + drawing + "'");
    EXPECT_EQ(more.status, 0) << more.out;
    EXPECT_NE(more.out.find("已保存 " + drawing), std::string::npos) << more.out;
    const auto dump = RunKelaz("dump '" + drawing + "'");
    EXPECT_EQ(std::count(dump.out.begin(), dump.out.end(), '\n'), 2) << dump.out;

    // A drawing that cannot be read stops the run before any command.
    Write(dir / "bad.kdw", "not a drawing");
    const auto bad = RunKelaz("run '" + (dir / "more.kls").string() + "' --drawing '" +
                              (dir / "bad.kdw").string() + "'");
    EXPECT_EQ(bad.status, 2);
    EXPECT_EQ(bad.out, "[kelaz] 不能读取图形 " + (dir / "bad.kdw").string() +
                           "：\n  1. 这不是本程序的图形（文件开头没有图形标识）。\n");

    // Outputs that cannot be written are each named, after the session wrote the others.
    const auto outputs =
        RunKelaz("run '" + (dir / "more.kls").string() + "' --drawing '" + drawing + "' --dxf '" +
                 (dir / "a.dwg").string() + "' --svg '" + (dir / "b.bmp").string() + "' --png '" +
                 (dir / "c.png").string() + "'");
    EXPECT_EQ(outputs.status, 1);
    for (const char* name : {"a.dwg", "b.bmp"}) {
        EXPECT_NE(outputs.out.find("\n[kelaz] 不能输出 " + (dir / name).string() +
                                   "：不认识这种文件后缀（请用 .dxf、.png、.svg 或 .pdf）。\n"),
                  std::string::npos)
            << outputs.out;
    }
    EXPECT_TRUE(fs::exists(dir / "c.png"));
}

TEST(Shell, ProjectFileIsOpenedForTheSession) {
    const fs::path dir = WorkDir("run-project");
    Write(dir / "s.kls", "DUMP\n");
    const std::string project = (dir / "p.kproj").string();
    ASSERT_EQ(RunKelaz("project init '" + project + "'").status, 0);
    EXPECT_EQ(RunKelaz("run '" + (dir / "s.kls").string() + "' --project '" + project + "'").status,
              0);
    Write(dir / "junk.kproj", "junk");
    const auto junk = RunKelaz("run '" + (dir / "s.kls").string() + "' --project '" +
                               (dir / "junk.kproj").string() + "'");
    EXPECT_EQ(junk.status, 2);
    EXPECT_EQ(junk.out.rfind("[kelaz] 不能打开项目 " + (dir / "junk.kproj").string() +
                                 "：不是 kelaz 项目：文件不是 SQLite 数据库。\n",
                             0),
              0u)
        << junk.out;
}

TEST(Shell, EveryPathOfARunIsCheckedBeforeItsFirstCommand) {
    const fs::path dir = WorkDir("run-paths");
    Write(dir / "s.kls", "ARC\n0,0\n50,50\n100,0\n");
    const std::string d = dir.string() + "/";
    ASSERT_EQ(RunKelaz("project init " + d + "project.kdw").status, 0);
    const std::string project = Read(d + "project.kdw");
    ASSERT_EQ(RunKelaz("sample " + d + "locked.kdw").status, 0);
    fs::permissions(d + "locked.kdw", fs::perms::owner_read | fs::perms::group_read);
    fs::create_directory(d + "folder.kdw");
    ASSERT_EQ(::mkfifo((d + "pipe.kelaz").c_str(), 0644), 0);

    const std::pair<std::string, const char*> cases[] = {
        {"--drawing " + d + "folder.kdw", "文件夹"},
        {"--project " + d + "pipe.kelaz", "命名管道"},
        {"--save " + d + "out.dxf", "请用 --dxf"},
        {"--save " + d + "project.kdw", "不是 kelaz 图形"},
        {"--save " + d + "locked.kdw", "只读"},
        {"--png " + d + "none/out.png", "不存在"},
    };
    for (const auto& [options, says] : cases) {
        const auto r = kelaz::test::RunKelazWithin(20, "run " + d + "s.kls " + options);
        EXPECT_EQ(r.status, 2) << options << "\n" << r.out;
        EXPECT_EQ(r.out.find("命令:"), std::string::npos) << "no command ran: " << r.out;
        EXPECT_NE(r.out.find(says), std::string::npos) << r.out;
    }
    EXPECT_EQ(Read(d + "project.kdw"), project);
    EXPECT_FALSE(fs::exists(d + "out.dxf"));
    // A drawing, even one that no longer reads, is replaced.
    Write(dir / "old.kdw", "KELAZDWG damaged");
    EXPECT_EQ(RunKelaz("run " + d + "s.kls --save " + d + "old.kdw").status, 0);
    EXPECT_EQ(RunKelaz("dump " + d + "old.kdw").status, 0);
}

TEST(Shell, HelpOnTheInputGrammar) {
    const auto help = RunKelaz("help input");
    EXPECT_EQ(help.status, 0);
    for (const char* form : {"x,y", "@dx,dy", "drag x,y", "^C", "'NAME", "# ...", "ok | cancel"}) {
        EXPECT_NE(help.out.find(form), std::string::npos) << form;
    }
    const auto nosuch = RunKelaz("help nosuch");
    EXPECT_EQ(nosuch.status, 2);
    EXPECT_EQ(nosuch.out, "[kelaz] 没有关于“nosuch”的帮助；可用的主题：input\n");
    EXPECT_EQ(RunKelaz("run /no/such/script.kls").status, 2);
}

}  // namespace
