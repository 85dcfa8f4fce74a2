#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "host/db/Arc.h"
#include "host/db/Line.h"
#include "host/db/OpenObject.h"
#include "host/db/Polyline.h"
#include "host/db/UndoLog.h"
#include "host/ed/CommandLine.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "host/ge/GeConstants.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::test::CommandLineHarness;

constexpr double kTol = 1e-9;

struct ArcShape {
    AcGePoint3d center;
    double radius = 0;
    double startAngle = 0;
    double endAngle = 0;
    AcGePoint3d start;
    AcGePoint3d end;
    AcGeVector3d normal;
};

// The arc that acdbEntLast names.
bool LastArc(ArcShape& shape) {
    ads_name name;
    if (acdbEntLast(name) != RTNORM) return false;
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    kelaz::test::Opened<AcDbArc> arc(id, AcDb::kForRead);
    if (arc.status != Acad::eOk) return false;
    shape.center = arc->center();
    shape.radius = arc->radius();
    shape.startAngle = arc->startAngle();
    shape.endAngle = arc->endAngle();
    arc->getStartPoint(shape.start);
    arc->getEndPoint(shape.end);
    shape.normal = arc->normal();
    return true;
}

// The entities of the current drawing that are not erased.
int LiveEntities() {
    ads_name ss;
    if (acedSSGet(L"X", nullptr, nullptr, nullptr, ss) != RTNORM) return 0;
    Adesk::Int32 len = 0;
    acedSSLength(ss, &len);
    acedSSFree(ss);
    return len;
}

TEST(HostCommands, ArcThroughThreePointsIsStoredCounterClockwise) {
    CommandLineHarness cl;
    const ads_point a = {1000, 0, 0};
    const ads_point m = {1500, 500, 0};
    const ads_point b = {1000, 1000, 0};
    // Picked counter-clockwise: from the start point to the end point.
    ASSERT_EQ(acedCommand(RTSTR, L"_.arc", RT3DPOINT, a, RT3DPOINT, m, RT3DPOINT, b, RTNONE),
              RTNORM);
    ArcShape ccw;
    ASSERT_TRUE(LastArc(ccw));
    EXPECT_POINT_NEAR(ccw.center, AcGePoint3d(1000, 500, 0), kTol);
    EXPECT_NEAR(ccw.radius, 500, kTol);
    EXPECT_NEAR(ccw.startAngle, 1.5 * kelaz::kPi, kTol);
    EXPECT_NEAR(ccw.endAngle, 0.5 * kelaz::kPi, kTol);
    EXPECT_POINT_NEAR(ccw.start, AcGePoint3d(1000, 0, 0), kTol);
    EXPECT_POINT_NEAR(ccw.end, AcGePoint3d(1000, 1000, 0), kTol);
    EXPECT_VECTOR_NEAR(ccw.normal, AcGeVector3d::kZAxis, kTol);

    // The same arc picked the other way round is stored from the picked end to the start.
    ASSERT_EQ(acedCommand(RTSTR, L"ARC", RT3DPOINT, b, RT3DPOINT, m, RT3DPOINT, a, RTNONE), RTNORM);
    ArcShape cw;
    ASSERT_TRUE(LastArc(cw));
    EXPECT_POINT_NEAR(cw.start, AcGePoint3d(1000, 0, 0), kTol);
    EXPECT_POINT_NEAR(cw.end, AcGePoint3d(1000, 1000, 0), kTol);
    EXPECT_NEAR(cw.startAngle, ccw.startAngle, kTol);
    EXPECT_NEAR(cw.endAngle, ccw.endAngle, kTol);
    EXPECT_VECTOR_NEAR(cw.normal, AcGeVector3d::kZAxis, kTol);

    // A small clockwise arc (a quarter of a circle round the origin, through 45°).
    const ads_point q0 = {0, 100, 0};
    const ads_point q1 = {100 / std::sqrt(2.0), 100 / std::sqrt(2.0), 0};
    const ads_point q2 = {100, 0, 0};
    ASSERT_EQ(acedCommand(RTSTR, L"arc", RT3DPOINT, q0, RT3DPOINT, q1, RT3DPOINT, q2, RTNONE),
              RTNORM);
    ArcShape quarter;
    ASSERT_TRUE(LastArc(quarter));
    EXPECT_NEAR(quarter.startAngle, 0, kTol);
    EXPECT_NEAR(quarter.endAngle, 0.5 * kelaz::kPi, kTol);
    EXPECT_POINT_NEAR(quarter.start, AcGePoint3d(100, 0, 0), kTol);

    // Three points in a line make no arc.
    const ads_point l2 = {2000, 0, 0};
    const ads_point l3 = {3000, 0, 0};
    EXPECT_EQ(acedCommand(RTSTR, L"ARC", RT3DPOINT, a, RT3DPOINT, l2, RT3DPOINT, l3, RTNONE),
              RTNORM);
    EXPECT_EQ(LiveEntities(), 3);
    EXPECT_NE(cl.Out().find("三点在一条直线上"), std::string::npos);
}

TEST(HostCommands, CommandOverTwoCallsPausesForTheEndPoint) {
    CommandLineHarness cl({L"1000,1000"});
    resbuf echo;
    echo.restype = RTSHORT;
    echo.resval.rint = 0;
    acedSetVar(L"CMDECHO", &echo);
    const ads_point a = {1000, 0, 0};
    const ads_point m = {1500, 500, 0};
    ASSERT_EQ(acedCommand(RTSTR, L"_.arc", RT3DPOINT, a, RT3DPOINT, m, RTNONE), RTNORM);
    EXPECT_TRUE(cl.editor.Commands().HasPending());
    ads_name last;
    EXPECT_NE(acdbEntLast(last), RTNORM);  // nothing drawn yet
    ASSERT_EQ(acedCommand(RTSTR, L"\\", RTNONE), RTNORM);
    EXPECT_FALSE(cl.editor.Commands().HasPending());
    ArcShape arc;
    ASSERT_TRUE(LastArc(arc));
    EXPECT_POINT_NEAR(arc.end, AcGePoint3d(1000, 1000, 0), kTol);
    // With echo off only the pause's prompt shows, with the answer.
    EXPECT_EQ(cl.Out(), "指定圆弧的端点: 1000,1000\n");

    // A cancel at the pause cancels the command.
    cl.Type(L"^C");
    ASSERT_EQ(acedCommand(RTSTR, L"_.arc", RT3DPOINT, a, RT3DPOINT, m, RTSTR, L"\\", RTNONE),
              RTCAN);
    EXPECT_FALSE(cl.editor.Commands().HasPending());
    EXPECT_EQ(LiveEntities(), 1);
}

TEST(HostCommands, UndoMarksStepsAndBackToTheMark) {
    CommandLineHarness cl;
    auto arcAt = [](double x) {
        const ads_point a = {x, 0, 0};
        const ads_point m = {x + 50, 50, 0};
        const ads_point b = {x + 100, 0, 0};
        return acedCommand(RTSTR, L"_.arc", RT3DPOINT, a, RT3DPOINT, m, RT3DPOINT, b, RTNONE);
    };
    ASSERT_EQ(arcAt(0), RTNORM);
    ASSERT_EQ(acedCommand(RTSTR, L"UNDO", RTSTR, L"M", RTNONE), RTNORM);
    ASSERT_EQ(arcAt(1000), RTNORM);
    ASSERT_EQ(arcAt(2000), RTNORM);
    ASSERT_EQ(arcAt(3000), RTNORM);
    EXPECT_EQ(LiveEntities(), 4);
    ASSERT_EQ(acedCommand(RTSTR, L"_u", RTNONE), RTNORM);  // one arc
    EXPECT_EQ(LiveEntities(), 3);
    ASSERT_EQ(acedCommand(RTSTR, L"UNDO", RTSHORT, 1, RTNONE), RTNORM);
    EXPECT_EQ(LiveEntities(), 2);
    ASSERT_EQ(acedCommand(RTSTR, L"UNDO", RTSTR, L"B", RTNONE), RTNORM);  // back to the mark
    EXPECT_EQ(LiveEntities(), 1);
    // Past the mark, and past the beginning.
    ASSERT_EQ(acedCommand(RTSTR, L"UNDO", RTSTR, L"B", RTNONE), RTNORM);
    EXPECT_EQ(LiveEntities(), 0);
    EXPECT_NE(cl.Out().find("没有标记"), std::string::npos);
    ASSERT_EQ(acedCommand(RTSTR, L"U", RTNONE), RTNORM);
    EXPECT_NE(cl.Out().find("已全部放弃"), std::string::npos);
    // A wrong answer cancels the command.
    EXPECT_EQ(acedCommand(RTSTR, L"UNDO", RTSTR, L"Z", RTNONE), RTERROR);
    EXPECT_FALSE(cl.editor.Commands().HasPending());
}

TEST(HostCommands, EchoAndTheRecordedCommandList) {
    CommandLineHarness cl;
    const ads_point a = {0, 0, 0};
    ASSERT_EQ(acedCommand(RTSTR, L"UNDO", RTSTR, L"M", RTNONE), RTNORM);
    EXPECT_EQ(cl.Out(),
              "命令: UNDO\n输入要放弃的操作数目或 [开始(BE)/结束(E)/标记(M)/后退(B)] <1>: M\n");
    resbuf off;
    off.restype = RTSHORT;
    off.resval.rint = 0;
    acedSetVar(L"CMDECHO", &off);
    cl.ClearOut();
    ASSERT_EQ(acedCommand(RTSTR, L"UNDO", RTSTR, L"M", RTNONE), RTNORM);
    EXPECT_EQ(cl.Out(), "");
    EXPECT_EQ(acedCommand(RTSTR, L"NOSUCH", RTNONE), RTERROR);
    EXPECT_EQ(acedCommand(RT3DPOINT, a, RTNONE), RTERROR);
    ASSERT_EQ(acedCommand(RTSTR, L"_.arc", RT3DPOINT, a, RTSTR, L"\\", RTNONE), RTCAN);

    std::vector<std::string> lines;
    for (const kelaz::CommandRecord& record : cl.editor.RecordedCommands()) {
        lines.push_back(kelaz::ToUtf8(kelaz::FormatRecord(record)));
    }
    const std::vector<std::string> expected = {"UNDO M", "UNDO M", "NOSUCH", "0,0,0",
                                               "_.arc 0,0,0 \\"};
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(cl.editor.RecordedCommands()[4][1].type, RT3DPOINT);
}

TEST(HostCommands, EraseByPickAndWindowIsOneUndoStep) {
    CommandLineHarness cl;
    const AcDbObjectId near = kelaz::test::Append(cl.db, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    const AcDbObjectId far = kelaz::test::Append(cl.db, new AcDbLine({0, 500, 0}, {100, 500, 0}));
    kelaz::test::Append(cl.db, new AcDbLine({0, 1000, 0}, {100, 1000, 0}));
    cl.Type(L"50,3");  // picks the first line
    cl.Type(L"W");     // window round the second
    cl.Type(L"-10,490");
    cl.Type(L"110,510");
    cl.Type(L"500,500");  // nothing there
    cl.Type(L"");
    kelaz::CommandLine line(cl.editor);
    ASSERT_TRUE(line.Execute(L"ERASE"));
    EXPECT_TRUE(near.isErased());
    EXPECT_TRUE(far.isErased());
    EXPECT_EQ(LiveEntities(), 1);
    EXPECT_NE(cl.Out().find("未找到对象"), std::string::npos);
    ASSERT_EQ(acedCommand(RTSTR, L"_u", RTNONE), RTNORM);
    EXPECT_FALSE(near.isErased());
    EXPECT_FALSE(far.isErased());
}

TEST(HostCommands, CommandPromptRunsTypedCommandsAndRefusesUnknownOnes) {
    CommandLineHarness cl(
        {L"# draw", L"arc", L"0,0", L"50,50", L"100,0", L"", L"bogus", L"3,4", L"^C", L"u"});
    kelaz::CommandLine line(cl.editor);
    int commands = 0;
    while (line.RunOne()) ++commands;
    EXPECT_EQ(commands, 6);                    // arc, Enter, bogus, 3,4, ^C, u
    EXPECT_FALSE(cl.editor.InputExhausted());  // ran out at the command prompt: a normal end
    EXPECT_EQ(LiveEntities(), 0);              // drawn, then undone
    EXPECT_EQ(cl.Out(),
              "命令: arc\n指定圆弧的起点: 0,0\n指定圆弧的第二个点: 50,50\n指定圆弧的端点: 100,0\n"
              "命令: \n"
              "命令: bogus\n未知命令\"bogus\"。输入 HELP 查看命令列表。\n"
              "命令: 3,4\n未知命令\"3,4\"。输入 HELP 查看命令列表。\n"
              "命令: ^C\n*取消*\n"
              "命令: u\n*放弃* ARC\n命令: ");
}

TEST(HostCommands, WordsAfterTheNameAnswerAndAliasesStandForCommands) {
    // The answers on the command's own line, a quoted one with a blank kept whole; an alias; what
    // a command does not read is dropped with a word and never runs as a command.
    CommandLineHarness cl({L"A 0,0 \"50,50\" 100,0", L"pl 0,0 10,0 20,0", L"", L"u 7 8", L"UNDO 1",
                           L"arc 1,1 2,2 3,1 4,4"});
    kelaz::CommandLine line(cl.editor);
    while (line.RunOne()) {
    }
    EXPECT_EQ(LiveEntities(), 1);  // the arc's second copy; the first and the polyline undone
    const std::string out = cl.Out();
    EXPECT_NE(
        out.find("命令: A 0,0 \"50,50\" 100,0\n指定圆弧的起点: 0,0\n指定圆弧的第二个点: 50,50\n"
                 "指定圆弧的端点: 100,0\n"),
        std::string::npos)
        << out;
    EXPECT_NE(out.find("*放弃* PLINE\nU 没有用到后面的 2 项输入，已忽略。"), std::string::npos)
        << out;
    EXPECT_NE(out.find("*放弃* ARC"), std::string::npos);
    EXPECT_NE(out.find("ARC 没有用到后面的 1 项输入，已忽略。"), std::string::npos) << out;
    EXPECT_FALSE(cl.editor.HasQueuedInput());
}

}  // namespace

namespace {

struct PlineShape {
    std::vector<AcGePoint3d> points;
    std::vector<double> bulges;
    bool closed = false;
};

bool LastPline(PlineShape& shape) {
    ads_name name;
    if (acdbEntLast(name) != RTNORM) return false;
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    kelaz::test::Opened<AcDbPolyline> pline(id, AcDb::kForRead);
    if (!pline) return false;
    shape = {};
    for (unsigned int i = 0; i < pline->numVerts(); ++i) {
        AcGePoint3d p;
        double bulge = 0.0;
        pline->getPointAt(i, p);
        pline->getBulgeAt(i, bulge);
        shape.points.push_back(p);
        shape.bulges.push_back(bulge);
    }
    shape.closed = pline->isClosed();
    return true;
}

}  // namespace

TEST(HostCommands, PlineLinesArcsBackAndClose) {
    CommandLineHarness cl;
    const ads_point p0 = {0, 0, 300}, p1 = {1000, 0, 0}, mid = {1500, 500, 0},
                    end = {1000, 1000, 0}, p3 = {0, 1000, 0};
    ASSERT_EQ(
        acedCommand(RTSTR, L"PLINE", RT3DPOINT, p0, RT3DPOINT, p1, RTSTR, L"a", RT3DPOINT, mid,
                    RT3DPOINT, end, RTSTR, L"L", RT3DPOINT, p3, RTSTR, L"U", RTSTR, L"", RTNONE),
        RTNORM);
    PlineShape shape;
    ASSERT_TRUE(LastPline(shape));
    ASSERT_EQ(shape.points.size(), 3u);
    // At the start point's elevation; the arc bulges counter-clockwise by a half turn, and the
    // step back took the last segment and left the arc's end without a bulge.
    EXPECT_POINT_NEAR(shape.points[2], AcGePoint3d(1000, 1000, 300), kTol);
    EXPECT_NEAR(shape.bulges[0], 0.0, kTol);
    EXPECT_NEAR(shape.bulges[1], 1.0, kTol);
    EXPECT_NEAR(shape.bulges[2], 0.0, kTol);
    EXPECT_FALSE(shape.closed);

    // Clockwise: a negative bulge. Closing needs two segments.
    const ads_point a = {0, 1000, 0}, b = {707.10678118654752, 707.10678118654752, 0},
                    c = {1000, 0, 0};
    ASSERT_EQ(acedCommand(RTSTR, L"PLINE", RT3DPOINT, a, RTSTR, L"A", RT3DPOINT, b, RT3DPOINT, c,
                          RTSTR, L"", RTNONE),
              RTNORM);
    ASSERT_TRUE(LastPline(shape));
    ASSERT_EQ(shape.points.size(), 2u);
    EXPECT_NEAR(shape.bulges[0], -std::tan(kelaz::kPi / 8), 1e-9);

    const ads_point back = {0, 500, 0};
    EXPECT_EQ(acedCommand(RTSTR, L"PLINE", RT3DPOINT, p1, RT3DPOINT, end, RTSTR, L"C", RTNONE),
              RTERROR);
    ASSERT_EQ(acedCommand(RTSTR, L"PLINE", RT3DPOINT, p1, RT3DPOINT, end, RT3DPOINT, back, RTSTR,
                          L"c", RTNONE),
              RTNORM);
    ASSERT_TRUE(LastPline(shape));
    EXPECT_EQ(shape.points.size(), 3u);
    EXPECT_TRUE(shape.closed);
    EXPECT_NE(cl.Out().find("至少要两段才能闭合"), std::string::npos);
}
