#include <gtest/gtest.h>

#include <set>

#include "host/db/Circle.h"
#include "host/db/Line.h"
#include "host/db/OpenObject.h"
#include "host/db/Polyline.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/DbCheckers.h"

namespace {

using kelaz::test::Append;
using kelaz::test::CommandLineHarness;

AcDbObjectId IdOf(const ads_name name) {
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    return id;
}

std::set<AcDbObjectId> Members(const ads_name ss) {
    std::set<AcDbObjectId> ids;
    Adesk::Int32 len = 0;
    EXPECT_EQ(acedSSLength(ss, &len), RTNORM);
    for (Adesk::Int32 i = 0; i < len; ++i) {
        ads_name e;
        EXPECT_EQ(acedSSName(ss, i, e), RTNORM);
        ids.insert(IdOf(e));
    }
    return ids;
}

TEST(EntSel, PicksTheEntityDrawnNearestAmongNeighbours) {
    CommandLineHarness cl;
    // A large circle whose box holds every pick but whose line passes far from them.
    Append(cl.db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 500));
    const AcDbObjectId upper = Append(cl.db, new AcDbLine({-100, 3, 0}, {100, 3, 0}));
    const AcDbObjectId lower = Append(cl.db, new AcDbLine({-100, -6, 0}, {100, -6, 0}));
    // A half circle from (200,0) to (300,0) bulging below: its bottom is at (250,-50).
    auto* bow = new AcDbPolyline();
    bow->addVertexAt(0, AcGePoint2d(200, 0), 1.0);
    bow->addVertexAt(1, AcGePoint2d(300, 0));
    const AcDbObjectId arc = Append(cl.db, bow);

    for (const wchar_t* line : {L"0,0", L"0,-5", L"250,-48", L"250,0", L"0,499", L"", L"x"}) {
        cl.Type(line);
    }
    ads_name name;
    ads_point at;
    ASSERT_EQ(acedEntSel(L"\n选择对象:", name, at), RTNORM);
    EXPECT_EQ(IdOf(name), upper);
    EXPECT_EQ(at[0], 0.0);
    ASSERT_EQ(acedEntSel(L"\n选择对象:", name, at), RTNORM);
    EXPECT_EQ(IdOf(name), lower);
    ASSERT_EQ(acedEntSel(L"\n选择对象:", name, at), RTNORM);
    EXPECT_EQ(IdOf(name), arc);  // on the arc, not on its chord
    // ERRNO tells a miss from Enter, and is cleared by a pick that finds something.
    resbuf errNo{};
    const auto lastErrNo = [&] {
        EXPECT_EQ(acedGetVar(L"ERRNO", &errNo), RTNORM);
        return errNo.resval.rint;
    };
    // The chord's middle is 50 from the arc and 6 from nothing else: a miss.
    EXPECT_EQ(acedEntSel(L"\n选择对象:", name, at), RTERROR);
    EXPECT_EQ(lastErrNo(), kelaz::kErrNoPickMissed);
    // Near the circle's top.
    ASSERT_EQ(acedEntSel(L"\n选择对象:", name, at), RTNORM);
    EXPECT_NE(IdOf(name), upper);
    EXPECT_EQ(lastErrNo(), 0);
    EXPECT_EQ(acedEntSel(L"\n选择对象:", name, at), RTERROR);  // Enter
    EXPECT_EQ(lastErrNo(), kelaz::kErrNoNullPick);
    acedInitGet(0, L"eXit");
    EXPECT_EQ(acedEntSel(L"\n选择对象[退出(X)]:", name, at), RTKWORD);
    EXPECT_NE(cl.Out().find("未选中对象"), std::string::npos);
}

TEST(SSGet, WindowTakesWhatIsInsideCrossingAlsoWhatItMeets) {
    CommandLineHarness cl;
    const AcDbObjectId inside = Append(cl.db, new AcDbLine({10, 10, 0}, {90, 90, 0}));
    const AcDbObjectId across = Append(cl.db, new AcDbLine({50, 50, 0}, {150, 50, 0}));
    Append(cl.db, new AcDbLine({200, 200, 0}, {300, 300, 0}));
    kelaz::test::AddLayer(cl.db, L"水管", 5);
    auto* onLayer = new AcDbLine({20, 80, 0}, {30, 80, 0});
    onLayer->setLayer(L"水管");
    const AcDbObjectId tagged = Append(cl.db, onLayer);

    const ads_point a = {0, 0, 0};
    const ads_point b = {100, 100, 0};
    ads_name ss;
    ASSERT_EQ(acedSSGet(L"W", a, b, nullptr, ss), RTNORM);
    EXPECT_EQ(Members(ss), (std::set<AcDbObjectId>{inside, tagged}));
    EXPECT_EQ(acedSSFree(ss), RTNORM);
    EXPECT_EQ(acedSSFree(ss), RTERROR);  // freed already
    Adesk::Int32 len = 0;
    EXPECT_EQ(acedSSLength(ss, &len), RTERROR);

    // Corners given the other way round select the same.
    ASSERT_EQ(acedSSGet(L"_C", b, a, nullptr, ss), RTNORM);
    EXPECT_EQ(Members(ss), (std::set<AcDbObjectId>{inside, across, tagged}));
    ads_name e;
    EXPECT_EQ(acedSSName(ss, 3, e), RTERROR);
    acedSSFree(ss);

    resbuf layer;
    layer.rbnext = nullptr;
    layer.restype = 8;
    wchar_t layerName[] = L"水管";
    layer.resval.rstring = layerName;
    ASSERT_EQ(acedSSGet(L"C", a, b, &layer, ss), RTNORM);
    EXPECT_EQ(Members(ss), (std::set<AcDbObjectId>{tagged}));
    acedSSFree(ss);

    const ads_point c = {400, 400, 0};
    const ads_point d = {500, 500, 0};
    EXPECT_EQ(acedSSGet(L"W", c, d, nullptr, ss), RTERROR);  // nothing there
    EXPECT_EQ(acedSSGet(L"F", a, b, nullptr, ss), RTERROR);  // no such mode

    // Asked at the command line: a crossing, then a pick, then Enter.
    for (const wchar_t* line : {L"c", L"40,40", L"60,60", L"250,250", L""}) cl.Type(line);
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, ss), RTNORM);
    EXPECT_EQ(Members(ss).size(), 3u);  // both lines through the little box and the far one
    acedSSFree(ss);
}

}  // namespace
