#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/KelazProcess.h"
#include "tests/support/RunProgram.h"

namespace {

namespace fs = std::filesystem;
using kelaz::test::KelazProcess;
using kelaz::test::RunKelaz;

int Arcs(const fs::path& drawing) {
    const std::string dump = RunKelaz("dump '" + drawing.string() + "'").out;
    int n = 0;
    for (size_t at = dump.find("\"class\":\"AcDbArc\""); at != std::string::npos;
         at = dump.find("\"class\":\"AcDbArc\"", at + 1)) {
        ++n;
    }
    return n;
}

// A person at a terminal (a pseudo-terminal here): Ctrl-C and Ctrl-D are keys, read by the line
// editor and the terminal's own signal handling, not lines.
TEST(Terminal, CtrlCAndCtrlDCancelWhatWaitsAndAskBeforeEnding) {
    const fs::path dir = fs::path(::testing::TempDir()) / "terminal";
    fs::remove_all(dir);
    fs::create_directories(dir);
    const fs::path plan = dir / "plan.kdw";
    ASSERT_EQ(RunKelaz("sample '" + plan.string() + "'").status, 0);
    const int arcs = Arcs(plan);
    KelazProcess shell(
        {"shell", "--drawing", plan.string()}, dir, KelazProcess::Input::kTerminal,
        KelazProcess::Output::kCaptured,
        {{"HOME", dir.string()}, {"XDG_STATE_HOME", dir.string()}, {"TERM", "xterm"}});
    ASSERT_TRUE(shell.Started());
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();

    // Ctrl-C at a point prompt cancels the command, as ^C does; the session goes on.
    shell.Write("ARC\r");
    ASSERT_TRUE(shell.WaitFor("起点")) << shell.Output();
    shell.Write("0,0\r");
    ASSERT_TRUE(shell.WaitFor("第二个点")) << shell.Output();
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x03");
    ASSERT_TRUE(shell.WaitFor("*取消*")) << shell.Output();
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();
    shell.Write("ARC\r0,0\r50,50\r100,0\r");
    ASSERT_TRUE(shell.WaitFor("端点")) << shell.Output();
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();

    // Ctrl-D inside a command ends that command only.
    shell.Write("ARC\r");
    ASSERT_TRUE(shell.WaitFor("起点")) << shell.Output();
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x04");
    ASSERT_TRUE(shell.WaitFor("*取消*")) << shell.Output();
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();

    // One Ctrl-C at the command prompt cancels nothing; a second one offers to end, and with an
    // unsaved arc asks what to do with it: cancel stays.
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x03");
    ASSERT_TRUE(shell.WaitFor("*取消*")) << shell.Output();
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x03");
    ASSERT_TRUE(shell.WaitFor("有未保存的修改")) << shell.Output();
    ASSERT_TRUE(shell.WaitFor("(yes/no/cancel): ")) << shell.Output();
    shell.Write("cancel\r");
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();
    int status = 0;
    EXPECT_FALSE(shell.Ended(status)) << shell.Output();

    // Ctrl-D at the command prompt asks the same; a Ctrl-D at the question keeps the session.
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x04");
    ASSERT_TRUE(shell.WaitFor("(yes/no/cancel): ")) << shell.Output();
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x04");
    ASSERT_TRUE(shell.WaitFor("命令: ")) << shell.Output();
    ASSERT_TRUE(shell.WaitForKeys()) << shell.Output();
    shell.Write("\x04");
    ASSERT_TRUE(shell.WaitFor("(yes/no/cancel): ")) << shell.Output();
    shell.Write("yes\r");
    status = shell.Wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << shell.Output();
    EXPECT_EQ(Arcs(plan), arcs + 1);
    EXPECT_FALSE(fs::exists(dir / "plan.kdw.journal"));
}

}  // namespace
