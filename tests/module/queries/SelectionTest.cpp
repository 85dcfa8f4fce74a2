#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "host/db/Line.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/InputSource.h"
#include "module/entry/DispGlobaFun.h"
#include "module/queries/KelAzSelect.h"
#include "module/queries/KelAzSelectFun.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzPipe.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

class Selection : public kelaz::test::CommandTest {
protected:
    AcDbObjectId Pipe(const AcGePoint3d& a, const AcGePoint3d& b, const wchar_t* layer = nullptr) {
        auto* pipe = new KelAzPipe;
        pipe->setStartPoint(a);
        pipe->setEndPoint(b);
        if (layer != nullptr) pipe->setLayer(layer);
        return kelaz::test::Append(db, pipe);
    }
    AcDbObjectId Lamp(const AcGePoint3d& at) {
        auto* lamp = new KelAzEquipMent;
        lamp->SetInsertPoint(at);
        return kelaz::test::Append(db, lamp);
    }
};

// A command line over the test's drawing with the answers given.
struct Typed {
    Typed(AcDbDatabase& db, std::initializer_list<const wchar_t*> lines)
        : input(lines), editor(&db, &input, &out), scope(editor) {}
    kelaz::ScriptedInput input;
    std::ostringstream out;
    kelaz::Editor editor;
    kelaz::ScopedEditor scope;
};

// What the tracking function was handed: the cursor with the value as its height, and the
// previous point.
std::vector<AcGePoint3d> g_tracked;
std::vector<AcGePoint3d> g_previous;
void Track(const AcGePoint3d& previous, const AcGePoint3d& cursor, double value) {
    g_tracked.emplace_back(cursor.x, cursor.y, value);
    g_previous.push_back(previous);
}

}  // namespace

TEST_F(Selection, PointsAndLinesAgainstBoxesAndSegments) {
    const AcDbExtents box(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 100, 10));
    EXPECT_TRUE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(101, 50, 5), box));  // its unit box
    EXPECT_FALSE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(101.5, 50, 5), box));
    EXPECT_FALSE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(50, 50, 20), box));  // too high

    const AcGePoint3d a(0, 0, 3000), b(1000, 0, 3000);
    EXPECT_TRUE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(500, 9, 3000), a, b, false, 10.0));
    EXPECT_FALSE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(500, 11, 3000), a, b, false, 10.0));
    EXPECT_FALSE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(500, 0, 0), a, b, false, 10.0));
    EXPECT_TRUE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(500, 0, 0), a, b, true, 10.0));
    EXPECT_FALSE(CKelAzSelectFun::PtIsInExtents(AcGePoint3d(1011, 0, 0), a, b, true, 10.0));

    // A diagonal pipe whose box meets the square but which passes beside it.
    const AcDbObjectId diagonal = Pipe(AcGePoint3d(0, 100, 0), AcGePoint3d(100, 0, 0));
    const AcDbExtents corner(AcGePoint3d(80, 80, -1), AcGePoint3d(100, 100, 1));
    EXPECT_FALSE(CKelAzSelectFun::LineIsInterExtents(diagonal, corner));
    EXPECT_TRUE(CKelAzSelectFun::LineIsInterExtents(
        diagonal, AcDbExtents(AcGePoint3d(40, 40, 0), AcGePoint3d(60, 60, 0))));
    EXPECT_FALSE(CKelAzSelectFun::LineIsInExtents(
        diagonal, AcDbExtents(AcGePoint3d(40, 40, 0), AcGePoint3d(60, 60, 0))));
    EXPECT_TRUE(CKelAzSelectFun::LineIsInExtents(
        diagonal, AcDbExtents(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 100, 0))));
    // A vertical riser in plan is a point: it meets a box around it.
    const AcDbObjectId riser = Pipe(AcGePoint3d(50, 50, 0), AcGePoint3d(50, 50, 3000));
    EXPECT_TRUE(CKelAzSelectFun::LineIsInterExtents(riser, corner) == false);
    EXPECT_TRUE(CKelAzSelectFun::LineIsInterExtents(
        riser, AcDbExtents(AcGePoint3d(49, 49, 0), AcGePoint3d(51, 51, 0))));

    // An object that is no line is told of on the command line.
    Typed cl(db, {});
    EXPECT_FALSE(CKelAzSelectFun::LineIsInExtents(Lamp(AcGePoint3d()), box));
    EXPECT_EQ(cl.out.str(), "This entity can not open for read!");
}

TEST_F(Selection, WindowsLayersClassesAndTheWholeDrawing) {
    kelaz::test::AddLayer(db, L"给水", 3);
    kelaz::test::AddLayer(db, L"排水", 4);
    const AcDbObjectId p1 = Pipe(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0), L"给水");
    const AcDbObjectId p2 = Pipe(AcGePoint3d(0, 50, 0), AcGePoint3d(300, 50, 0), L"排水");
    const AcDbObjectId lamp = Lamp(AcGePoint3d(50, 20, 2800));
    kelaz::test::Append(db, new AcDbLine(AcGePoint3d(0, 10, 0), AcGePoint3d(10, 10, 0)));
    AcDbObjectIdArray ids;
    const AcGePoint3d lo(-10, -10, 0), hi(200, 200, 0);
    ASSERT_TRUE(CKelAzSelectFun::SelectEntity(ids, L"KelAzPipe", lo, hi, false));
    EXPECT_EQ(ids, AcDbObjectIdArray({p1}));
    ASSERT_TRUE(CKelAzSelectFun::SelectEntity(ids, L"KELAZPIPE", lo, hi, true));
    EXPECT_EQ(ids, AcDbObjectIdArray({p1, p2}));
    // No class: every suite entity, never the host's own line.
    ASSERT_TRUE(CKelAzSelectFun::SelectEntity(ids, L"", lo, hi, true));
    EXPECT_EQ(ids.length(), 3);
    EXPECT_FALSE(CKelAzSelectFun::SelectEntity(ids, L"NoSuchClass", lo, hi, true));
    EXPECT_TRUE(ids.isEmpty());
    ASSERT_TRUE(CKelAzSelectFun::SelectEntityInLayer(ids, L"x, 排水", L"", lo, hi));
    EXPECT_EQ(ids, AcDbObjectIdArray({p2}));
    ASSERT_TRUE(CKelAzSelectFun::SelectEntity(ids, L"KelAzNode", AcGePoint3d(50, 20, 0), 1.0));
    EXPECT_EQ(ids, AcDbObjectIdArray({lamp}));
    ASSERT_TRUE(CKelAzSelectFun::SelectAllEntity(ids, L"KelAzCurveEntity"));
    EXPECT_EQ(ids, AcDbObjectIdArray({p1, p2}));

    // Erased entities are gone from every selection.
    {
        kelaz::test::Opened<KelAzPipe> pipe(p1, AcDb::kForWrite);
        pipe->erase();
    }
    ASSERT_TRUE(CKelAzSelectFun::SelectAllEntity(ids, L"KelAzPipe"));
    EXPECT_EQ(ids, AcDbObjectIdArray({p2}));
    ASSERT_TRUE(CDispGlobaFun::GetEntByKelExtents(
        ids, AcDbExtents(AcGePoint3d(-1000, -1000, 0), AcGePoint3d(1000, 1000, 0)), L"", false));
    EXPECT_EQ(ids, AcDbObjectIdArray({p2, lamp}));
    EXPECT_FALSE(CDispGlobaFun::GetEntByKelExtents(ids, AcDbExtents(), L"", true));
}

TEST_F(Selection, ComponentsByInsertionPointAndLinesByTheirEnds) {
    const AcDbObjectId low = Lamp(AcGePoint3d(1000, 1000, 0));
    const AcDbObjectId high = Lamp(AcGePoint3d(1005, 1000, 3000));
    AcDbObjectIdArray ids;
    ASSERT_TRUE(CKelAzSelectFun::SelectPunEntity(ids, AcGePoint3d(1000, 1000, 0), 10.0, true));
    EXPECT_EQ(ids, AcDbObjectIdArray({low, high}));
    ASSERT_TRUE(CKelAzSelectFun::SelectPunEntity(ids, AcGePoint3d(1000, 1000, 0), 10.0, false));
    EXPECT_EQ(ids, AcDbObjectIdArray({low}));
    // The window holds the insertion point of one; the other's symbol reaches into it only.
    ASSERT_TRUE(CKelAzSelectFun::SelectPunEntity(ids, AcGePoint3d(900, 900, 0),
                                                 AcGePoint3d(1002, 1100, 0)));
    EXPECT_EQ(ids, AcDbObjectIdArray({low}));

    const AcDbObjectId a = Pipe(AcGePoint3d(0, 0, 0), AcGePoint3d(500, 0, 0));
    const AcDbObjectId b = Pipe(AcGePoint3d(500, 0.5, 0), AcGePoint3d(500, 800, 0));
    const AcDbObjectId c = Pipe(AcGePoint3d(500, 800, 0), AcGePoint3d(900, 800, 0));
    Pipe(AcGePoint3d(250, -100, 0), AcGePoint3d(250, 100, 0));  // crosses a, ends elsewhere
    ASSERT_TRUE(CKelAzSelectFun::GetAssoLine(ids, AcGePoint3d(500, 0, 0), 1.0));
    EXPECT_EQ(ids, AcDbObjectIdArray({a, b}));
    ASSERT_TRUE(CKelAzSelectFun::GetAssoLine(ids, AcGePoint3d(500, 0, 0), 0.1));
    EXPECT_EQ(ids, AcDbObjectIdArray({a}));
    ASSERT_TRUE(CKelAzSelectFun::GetAssoLine(ids, b, 1.0));
    EXPECT_EQ(ids, AcDbObjectIdArray({a, c}));
    ASSERT_TRUE(CKelAzSelectFun::GetAssoLine(ids, c, 0.1));
    EXPECT_EQ(ids, AcDbObjectIdArray({b}));

    // What stands at a point: the nearest drawing first.
    ASSERT_TRUE(CDispGlobaFun::FindEntity(ids, AcGePoint3d(500, 3, 0), L"KelAzPipe", 5.0));
    EXPECT_EQ(ids, AcDbObjectIdArray({b, a}));
    EXPECT_FALSE(CDispGlobaFun::FindEntity(ids, AcGePoint3d(700, 400, 0), L"", 5.0));
}

TEST_F(Selection, FilterLeavesEverythingAndRemoveAllEmpties) {
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(L"电气\\灯具\\普通灯具\\荧光灯"));
    auto* lamp = new KelAzEquipMent;
    lamp->SetInsertPoint(AcGePoint3d(0, 0, 2800));
    lamp->SetTypeNamePath(L"电气\\灯具\\普通灯具");
    AcDbObjectIdArray ids{kelaz::test::Append(db, lamp), Lamp(AcGePoint3d(0, 0, 2800))};
    const AcDbObjectIdArray before = ids;
    AcGePoint3dArray points{AcGePoint3d(1, 2, 3)};
    EXPECT_TRUE(CDispGlobaFun::FiltrateId(points, ids, 2800));
    EXPECT_EQ(ids, before);
    ASSERT_EQ(points.length(), 1);
    EXPECT_EQ(points[0], AcGePoint3d(1, 2, 3));

    EXPECT_TRUE(CDispGlobaFun::RemoveAll(ids));
    EXPECT_TRUE(ids.isEmpty());
    EXPECT_TRUE(CDispGlobaFun::RemoveAll(ids));
    EXPECT_TRUE(CDispGlobaFun::RemoveAll(points));
    EXPECT_TRUE(points.isEmpty());
}

TEST_F(Selection, PointPromptsWithReferenceAndNextPointWithTracking) {
    {
        Typed cl(db, {L"r", L"1000,1000", L"@200,0", L"R", L"5,5", L""});
        AcGePoint3d p;
        ASSERT_EQ(CKelAzSelect::GetInsertPoint(p, true), RTNORM);
        EXPECT_EQ(p, AcGePoint3d(1200, 1000, 0));
        // Enter right after the reference takes the reference.
        ASSERT_EQ(CKelAzSelect::GetPoint(p, true), RTNORM);
        EXPECT_EQ(p, AcGePoint3d(5, 5, 0));
        EXPECT_EQ(cl.out.str(),
                  "指定插入点[参考点(R)]:r\n指定参考点:1000,1000\n请指定插入点:@200,0\n"
                  "指定第一点[参考点(R)]:R\n指定参考点:5,5\n指定第一点:\n");
    }
    {
        // R is no keyword when no reference is offered: asked again.
        Typed cl(db, {L"r", L"3,4", L"^C"});
        AcGePoint3d p(9, 9, 9);
        EXPECT_EQ(CKelAzSelect::GetPoint(p, false), RTNORM);
        EXPECT_EQ(p, AcGePoint3d(3, 4, 0));
        EXPECT_EQ(CKelAzSelect::GetInsertPoint(p, false), RTCAN);
        EXPECT_EQ(p, AcGePoint3d(3, 4, 0)) << "untouched on a cancel";
    }
    {
        Typed cl(db, {L"a", L"U", L"10,0", L"", L"^C"});
        AcGePoint3d p;
        ACHAR word[8] = {};
        ASSERT_EQ(CKelAzSelect::GetNextPoint(p, AcGePoint3d(), nullptr, 0.0), RTKWORD);
        ASSERT_EQ(acedGetInput(word), RTNORM);
        EXPECT_EQ(CString(word), L"A");
        ASSERT_EQ(CKelAzSelect::GetNextPoint(p, AcGePoint3d(), nullptr, 0.0), RTKWORD);
        ASSERT_EQ(acedGetInput(word), RTNORM);
        EXPECT_EQ(CString(word), L"U");
        ASSERT_EQ(CKelAzSelect::GetNextPoint(p, AcGePoint3d(), nullptr, 0.0), RTNORM);
        EXPECT_EQ(p, AcGePoint3d(10, 0, 0));
        EXPECT_EQ(CKelAzSelect::GetNextPoint(p, AcGePoint3d(), nullptr, 0.0), RTNONE);
        EXPECT_EQ(CKelAzSelect::GetNextPoint(p, AcGePoint3d(), nullptr, 0.0), RTCAN);
        EXPECT_EQ(cl.out.str().find("指定下一点[圆弧(A)/回退(U)]<回车结束>:a\n"), 0u);
    }
    {
        // Each cursor move reaches the tracking function; the accepted point does too.
        g_tracked.clear();
        g_previous.clear();
        Typed cl(db, {L"drag 1,0", L"drag 2,0", L"3,0", L"drag 4,0", L"u", L""});
        AcGePoint3d p;
        ASSERT_EQ(CKelAzSelect::GetNextPoint(p, AcGePoint3d(), Track, 7.0), RTNORM);
        EXPECT_EQ(p, AcGePoint3d(3, 0, 0));
        EXPECT_EQ(g_tracked, std::vector<AcGePoint3d>({AcGePoint3d(1, 0, 7), AcGePoint3d(2, 0, 7),
                                                       AcGePoint3d(3, 0, 7)}));
        ASSERT_EQ(CKelAzSelect::GetNextPoint(p, p, Track, 7.0), RTKWORD);
        ACHAR word[8] = {};
        ASSERT_EQ(acedGetInput(word), RTNORM);
        EXPECT_EQ(CString(word), L"U");
        EXPECT_EQ(CKelAzSelect::GetNextPoint(p, p, Track, 7.0), RTNONE);
        EXPECT_EQ(g_tracked.size(), 4u);
        EXPECT_EQ(g_previous.back(), AcGePoint3d(3, 0, 0));
    }
}
