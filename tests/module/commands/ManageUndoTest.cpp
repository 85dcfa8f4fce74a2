#include <gtest/gtest.h>

#include "host/db/Line.h"
#include "host/db/UndoLog.h"
#include "host/ed/CommandLine.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/CommandStack.h"
#include "host/ed/EditorInput.h"
#include "module/commands/ManageUndo.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/DbCheckers.h"

namespace {

using kelaz::test::CommandLineHarness;

void SetEcho(short value) {
    resbuf rb;
    rb.restype = RTSHORT;
    rb.resval.rint = value;
    ASSERT_EQ(acedSetVar(L"CMDECHO", &rb), RTNORM);
}

std::vector<std::string> Recorded(const kelaz::Editor& editor) {
    std::vector<std::string> lines;
    for (const kelaz::CommandRecord& r : editor.RecordedCommands()) {
        lines.push_back(kelaz::ToUtf8(kelaz::FormatRecord(r)));
    }
    return lines;
}

// A line added as one undo step of its own, as a command would add it.
AcDbObjectId AddLine(AcDbDatabase& db, double y) {
    db.undoLog().beginGroup();
    const AcDbObjectId id = kelaz::test::Append(db, new AcDbLine({0, y, 0}, {100, y, 0}));
    db.undoLog().endGroup();
    return id;
}

TEST(ManageUndo, SendsTheUndoCommandsQuietlyAndLeavesEchoOn) {
    CommandLineHarness cl;
    SetEcho(0);
    CManageUndo::InsertUndoSign();
    EXPECT_EQ(cl.editor.CmdEcho(), 1);
    SetEcho(0);
    CManageUndo::UndoByStep();
    EXPECT_EQ(cl.editor.CmdEcho(), 1);
    CManageUndo::UndoByStep();  // with echo on before, too
    EXPECT_EQ(cl.editor.CmdEcho(), 1);
    const std::vector<std::string> expected = {"UNDO M", "_u", "_u", "_u", "_u"};
    EXPECT_EQ(Recorded(cl.editor), expected);
    // Echo is off while the commands run: nothing but the "nothing left" notes is printed.
    EXPECT_EQ(cl.Out().find("命令:"), std::string::npos);
}

TEST(ManageUndo, StepsBackOverTheChangesSinceTheMarkAndTheMark) {
    CommandLineHarness cl;
    const AcDbObjectId before = AddLine(cl.db, 0);
    CManageUndo::InsertUndoSign();
    const AcDbObjectId after = AddLine(cl.db, 10);
    EXPECT_EQ(cl.db.undoLog().numSteps(), 3);
    CManageUndo::UndoByStep();
    EXPECT_TRUE(after.isErased());
    EXPECT_FALSE(before.isErased());
    EXPECT_EQ(cl.db.undoLog().numSteps(), 1);  // the mark went with the second step
}

// A suite command: a segment, a mark, another segment, and a step back from inside the command.
AcDbDatabase* g_db = nullptr;
AcDbObjectId g_first;
AcDbObjectId g_second;
void DrawTwoSegmentsAndStepBack() {
    g_first = kelaz::test::Append(*g_db, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    CManageUndo::InsertUndoSign();
    g_second = kelaz::test::Append(*g_db, new AcDbLine({100, 0, 0}, {200, 0, 0}));
    CManageUndo::UndoByStep();
}

TEST(ManageUndo, InsideARunningCommandUndoesOnlyWhatFollowedTheMark) {
    CommandLineHarness cl({L"TWOSEG"});
    g_db = &cl.db;
    ASSERT_EQ(acedRegCmds->addCommand(L"TEST", L"TWOSEG", nullptr, ACRX_CMD_MODAL,
                                      DrawTwoSegmentsAndStepBack),
              Acad::eOk);
    kelaz::CommandLine line(cl.editor);
    ASSERT_TRUE(line.RunOne());
    EXPECT_FALSE(g_first.isErased());
    EXPECT_TRUE(g_second.isErased());
    // The command's first segment is one step: U takes it away.
    ASSERT_EQ(acedCommand(RTSTR, L"_u", RTNONE), RTNORM);
    EXPECT_TRUE(g_first.isErased());
    acedRegCmds->removeGroup(L"TEST");
}

}  // namespace
