#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzPipeValve.h"
#include "suite/tools/ModelSpace.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

TEST(DispGlobaFun, KelAzRoundTruncatesAfterShiftingHalfAwayFromZero) {
    EXPECT_EQ(CDispGlobaFun::KelAzRound(2.5), 3.0);
    EXPECT_EQ(CDispGlobaFun::KelAzRound(-2.5), -3.0);
    EXPECT_EQ(CDispGlobaFun::KelAzRound(0.0), 0.0);
    EXPECT_EQ(CDispGlobaFun::KelAzRound(-0.4), 0.0);
    EXPECT_EQ(CDispGlobaFun::KelAzRound(0.49999), 0.0);
    EXPECT_EQ(CDispGlobaFun::KelAzRound(2999.5), 3000.0);
    EXPECT_EQ(CDispGlobaFun::KelAzRound(-1e12), -2147483648.0);
}

TEST(DispGlobaFun, PrecisionFollowsFixedPointFormatting) {
    EXPECT_EQ(CDispGlobaFun::KelGetPrecision(1.23456, 4), 1.2346);
    EXPECT_EQ(CDispGlobaFun::KelGetPrecision(-1.23456, 2), -1.23);
    EXPECT_EQ(CDispGlobaFun::KelGetPrecision(2.5, 0), 2.0);  // "%10.0f" rounds half to even
    EXPECT_EQ(CDispGlobaFun::KelGetPrecision(3.5, 0), 4.0);
    // 1.0005 is stored just below the half, so formatting rounds it down.
    EXPECT_EQ(CDispGlobaFun::KelGetPrecision(1.0005, 3), 1.0);
    EXPECT_EQ(CDispGlobaFun::KelGetPrecision(123456789.123456, 4), 123456789.1235);

    // Points always go to 4 decimals whatever digits says.
    const AcGePoint3d p =
        CDispGlobaFun::KelGetPointPrecision(AcGePoint3d(1.234567, -2.000049, 3.99996), 2);
    EXPECT_EQ(p.x, 1.2346);
    EXPECT_EQ(p.y, -2.0);
    EXPECT_EQ(p.z, 4.0);
    const AcGePoint2d q = CDispGlobaFun::KelGetPointPrecision(AcGePoint2d(0.123456, 9.87654321), 0);
    EXPECT_EQ(q.x, 0.1235);
    EXPECT_EQ(q.y, 9.8765);
}

TEST(DispGlobaFun, SmallTextAndPointRules) {
    CString s = L"a,b,,c,";
    EXPECT_TRUE(CDispGlobaFun::DeleteCha(s, L','));
    EXPECT_EQ(s, L"abc");
    EXPECT_TRUE(CDispGlobaFun::DeleteCha(s, L'x'));
    EXPECT_EQ(s, L"abc");

    const double a[3] = {0.0, 1000.0, -5.0};
    const double exactlyOff[3] = {1e-8, 1000.0, -5.0};
    const double tooFar[3] = {0.0, 1000.0, -5.0 + 2e-8};
    EXPECT_TRUE(CDispGlobaFun::IsEqualPoints(a, a));
    EXPECT_TRUE(CDispGlobaFun::IsEqualPoints(a, exactlyOff));
    EXPECT_FALSE(CDispGlobaFun::IsEqualPoints(a, tooFar));

    // No list, however it is made, makes a type suited; the walk must also end on every list.
    const wchar_t* leadTypes = L"3\\1\\1,3\\1\\2,3\\1\\3,3\\1\\4,3\\1\\5,3\\1\\6,3\\1\\8";
    EXPECT_FALSE(CDispGlobaFun::IsSuitedType(L"3\\1\\1", leadTypes));
    EXPECT_FALSE(CDispGlobaFun::IsSuitedType(L"3\\1\\8", leadTypes));
    EXPECT_FALSE(CDispGlobaFun::IsSuitedType(L"abcde", L"abcde"));
    EXPECT_FALSE(CDispGlobaFun::IsSuitedType(L"ab", L",ab,ab,"));
    EXPECT_FALSE(CDispGlobaFun::IsSuitedType(L"", L""));
}

TEST(DispGlobaFun, CentresBisectorsAndAngles) {
    EXPECT_TRUE(CDispGlobaFun::CenterOfArc(AcGePoint3d(1000, 0, 0), AcGePoint3d(0, 1000, 0),
                                           AcGePoint3d(-1000, 0, 0))
                    .isEqualTo(AcGePoint3d::kOrigin, AcGeTol()));
    const AcGePoint3d c = CDispGlobaFun::CenterOfArc(
        AcGePoint3d(3000, 1000, 0), AcGePoint3d(1000, 3000, 0), AcGePoint3d(-1000, 1000, 0));
    EXPECT_NEAR(c.x, 1000.0, 1e-9);
    EXPECT_NEAR(c.y, 1000.0, 1e-9);
    // Collinear points have no circle: the origin, even far from it.
    EXPECT_EQ(CDispGlobaFun::CenterOfArc(AcGePoint3d(10, 10, 0), AcGePoint3d(20, 20, 0),
                                         AcGePoint3d(30, 30, 0)),
              AcGePoint3d::kOrigin);

    const AcGeLine3d bisector =
        CDispGlobaFun::VerticalBisector(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0));
    EXPECT_TRUE(bisector.isOn(AcGePoint3d(50, 0, 0)));
    EXPECT_TRUE(bisector.isOn(AcGePoint3d(50, 777, 0)));
    EXPECT_FALSE(bisector.isOn(AcGePoint3d(51, 0, 0)));

    EXPECT_EQ(CDispGlobaFun::GetCenterPoint(AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 3)),
              AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(CDispGlobaFun::GetCenterPoint(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 20, 30))
                    .isEqualTo(AcGePoint3d(5, 10, 15), AcGeTol()));

    const double r = 1000.0;
    EXPECT_NEAR(CDispGlobaFun::CenterAngle(AcGePoint3d(r, 0, 0), AcGePoint3d(0, r, 0), r),
                std::numbers::pi / 2, 1e-12);
    EXPECT_NEAR(CDispGlobaFun::CenterAngle(AcGePoint3d(r, 0, 0), AcGePoint3d(-r, 0, 0), r),
                std::numbers::pi, 1e-12);
}

TEST(DispGlobaFun, BulgeOfHalfAndQuarterCircles) {
    const AcGePoint3d p1(0, 0, 0), p2(2000, 0, 0);
    EXPECT_NEAR(CDispGlobaFun::GetBulge(p1, p2, 1000.0, AcGeVector3d(0, 1, 0)), 1.0, 1e-12);
    const double quarter = 2000.0 / std::sqrt(2.0);
    const double expected = std::tan(std::numbers::pi / 8);
    // The side only places the centre; the bulge is unsigned either way.
    EXPECT_NEAR(CDispGlobaFun::GetBulge(p1, p2, quarter, AcGeVector3d(0, 1, 0)), expected, 1e-12);
    EXPECT_NEAR(CDispGlobaFun::GetBulge(p1, p2, quarter, AcGeVector3d(0, -1, 0)), expected, 1e-12);
    // A very large radius is almost straight.
    EXPECT_LT(CDispGlobaFun::GetBulge(p1, p2, 1e7, AcGeVector3d(0, 1, 0)), 1e-3);
}

TEST(DispGlobaFun, OverlapOfPlanSegmentsUsesOneUnit) {
    const AcGeLineSeg2d a(AcGePoint2d(0, 0), AcGePoint2d(1000, 0));
    const AcGeLineSeg2d near(AcGePoint2d(0.9, 0), AcGePoint2d(1000, 0));
    const AcGeLineSeg2d reversed(AcGePoint2d(1000, 0.9), AcGePoint2d(0, 0));
    const AcGeLineSeg2d far(AcGePoint2d(1.1, 0), AcGePoint2d(1000, 0));
    EXPECT_TRUE(CDispGlobaFun::IsFullOverLap(&a, &near));
    EXPECT_TRUE(CDispGlobaFun::IsFullOverLap(&a, &reversed));
    EXPECT_FALSE(CDispGlobaFun::IsFullOverLap(&a, &far));
    EXPECT_FALSE(CDispGlobaFun::IsFullOverLap(&a, nullptr));
}

TEST(DispGlobaFun, OrderPointsByDistanceKeepsTheWalkOrderOfTies) {
    AcGePoint3dArray one{AcGePoint3d(5, 0, 0)};
    EXPECT_FALSE(CDispGlobaFun::OrderPoints(one, AcGePoint3d::kOrigin));
    EXPECT_EQ(one, AcGePoint3dArray{AcGePoint3d(5, 0, 0)});

    AcGePoint3dArray pts{AcGePoint3d(30, 0, 0), AcGePoint3d(0, 10, 0), AcGePoint3d(20, 0, 0),
                         AcGePoint3d(10, 0, 0), AcGePoint3d(0, 20, 0)};
    EXPECT_TRUE(CDispGlobaFun::OrderPoints(pts, AcGePoint3d::kOrigin));
    // The swaps move (0,10) ahead of (10,0) and (20,0) ahead of (0,20): ties stay as the walk
    // leaves them.
    const AcGePoint3dArray expected{AcGePoint3d(0, 10, 0), AcGePoint3d(10, 0, 0),
                                    AcGePoint3d(20, 0, 0), AcGePoint3d(0, 20, 0),
                                    AcGePoint3d(30, 0, 0)};
    EXPECT_EQ(pts, expected);
}

TEST(DispGlobaFun, ExtentsAndCentreOfAnArcThroughTwoPoints) {
    const AcDbExtents box =
        CDispGlobaFun::SetExtents(AcGePoint3d(10, -5, 3), AcGePoint3d(-2, 7, 3));
    EXPECT_EQ(box.minPoint(), AcGePoint3d(-2, -5, 3));
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(10, 7, 3));

    const double start[3] = {1000, 0, 0};
    const double end[3] = {0, 1000, 0};
    double centre[3] = {-1, -1, -1};
    EXPECT_EQ(CDispGlobaFun::GetCenter(start, end, 1000.0, centre), 2);
    EXPECT_NEAR(centre[0], 0.0, 1e-9);
    EXPECT_NEAR(centre[1], 0.0, 1e-9);
    // Reversed, the counter-clockwise short arc bends the other way.
    EXPECT_EQ(CDispGlobaFun::GetCenter(end, start, 1000.0, centre), 2);
    EXPECT_NEAR(centre[0], 1000.0, 1e-9);
    EXPECT_NEAR(centre[1], 1000.0, 1e-9);
    const double farEnd[3] = {3000, 0, 0};
    centre[0] = 7;
    EXPECT_EQ(CDispGlobaFun::GetCenter(start, farEnd, 999.0, centre), 0);
    EXPECT_EQ(centre[0], 7);
    EXPECT_EQ(CDispGlobaFun::GetCenter(start, farEnd, 1000.0, centre), 1);
    EXPECT_NEAR(centre[0], 2000.0, 1e-9);
}

TEST(DispGlobaFun, PolylinesCrossAtLinesAndArcs) {
    const auto make = [](std::initializer_list<std::pair<AcGePoint2d, double>> vertices,
                         bool closed = false) {
        auto p = std::make_unique<AcDbPolyline>();
        unsigned i = 0;
        for (const auto& [pt, bulge] : vertices) p->addVertexAt(i++, pt, bulge);
        p->setClosed(closed);
        return p;
    };
    // A square and a line through it.
    const auto square = make({{{0, 0}, 0}, {{100, 0}, 0}, {{100, 100}, 0}, {{0, 100}, 0}}, true);
    const auto across = make({{{-50, 50}, 0}, {{150, 50}, 0}});
    AcGePoint3dArray hits;
    EXPECT_TRUE(CDispGlobaFun::GetPolylineInterePoint(across, square, hits));
    ASSERT_EQ(hits.length(), 2);
    EXPECT_TRUE(hits[0].isEqualTo(AcGePoint3d(100, 50, 0)));
    EXPECT_TRUE(hits[1].isEqualTo(AcGePoint3d(0, 50, 0)));

    // A half circle bulging up from (0,0) to (200,0) (counter-clockwise: over the top) meets a
    // vertical line at x 100 at its top only; a line below the chord it misses.
    const auto dome = make({{{200, 0}, 1.0}, {{0, 0}, 0}});
    const auto mast = make({{{100, -500}, 0}, {{100, 500}, 0}});
    hits.removeAll();
    EXPECT_TRUE(CDispGlobaFun::GetPolylineInterePoint(dome, mast, hits));
    ASSERT_EQ(hits.length(), 1);
    EXPECT_POINT_NEAR(hits[0], AcGePoint3d(100, 100, 0), 1e-9);
    const auto below = make({{{-500, -10}, 0}, {{500, -10}, 0}});
    EXPECT_FALSE(CDispGlobaFun::GetPolylineInterePoint(dome, below, hits));

    // Two upper half circles meet once; the lower half of the second would miss the first.
    const auto other = make({{{300, 0}, 1.0}, {{100, 0}, 0}});
    const auto otherBelow = make({{{100, 0}, 1.0}, {{300, 0}, 0}});
    EXPECT_FALSE(CDispGlobaFun::GetPolylineInterePoint(dome, otherBelow, hits));
    hits.removeAll();
    EXPECT_TRUE(CDispGlobaFun::GetPolylineInterePoint(dome, other, hits));
    ASSERT_EQ(hits.length(), 1);
    EXPECT_POINT_NEAR(hits[0], AcGePoint3d(150, 86.602540378443862, 0), 1e-9);
    // A shared corner is listed once, or once per segment that meets it.
    const auto corner = make({{{100, 100}, 0}, {{200, 200}, 0}});
    hits.removeAll();
    EXPECT_TRUE(CDispGlobaFun::GetPolylineInterePoint(square, corner, hits));
    EXPECT_EQ(hits.length(), 1);
    hits.removeAll();
    EXPECT_TRUE(CDispGlobaFun::GetPolylineInterePoint(square, corner, hits, false));
    EXPECT_EQ(hits.length(), 2);
    EXPECT_FALSE(CDispGlobaFun::GetPolylineInterePoint(nullptr, corner, hits));
}

TEST(DispGlobaFun, InsertPointsOfComponents) {
    AcDbDatabase db;
    auto* valve = new KelAzPipeValve;
    valve->SetInsertPoint(AcGePoint3d(10, 20, 600));
    valve->SetSysCode(L"J");
    AcDbObjectId valveId;
    ASSERT_EQ(addToModelSpace(valveId, valve, &db), Acad::eOk);
    auto* fan = new KelAzEquipMent;
    fan->SetInsertPoint(AcGePoint3d(-5, 0, 2800));
    fan->SetSysCode(L"SF");
    AcDbObjectId fanId;
    ASSERT_EQ(addToModelSpace(fanId, fan, &db), Acad::eOk);
    const AcDbObjectId line =
        kelaz::test::Append(db, new AcDbLine(AcGePoint3d(1, 1, 1), AcGePoint3d(2, 2, 2)));

    EXPECT_EQ(CDispGlobaFun::GetInsertPoint(valveId), AcGePoint3d(10, 20, 600));
    CString code = L"untouched";
    EXPECT_EQ(CDispGlobaFun::GetInsertPoint(line, code), AcGePoint3d::kOrigin);
    EXPECT_EQ(code, L"untouched");
    EXPECT_EQ(CDispGlobaFun::GetInsertPoint(fanId, code), AcGePoint3d(-5, 0, 2800));
    EXPECT_EQ(code, L"SF");

    AcGePoint3dArray points;
    CStringArray codes;
    EXPECT_TRUE(
        CDispGlobaFun::GetInsertPoint(AcDbObjectIdArray{fanId, line, valveId}, points, codes));
    EXPECT_EQ(points, (AcGePoint3dArray{AcGePoint3d(-5, 0, 2800), AcGePoint3d::kOrigin,
                                        AcGePoint3d(10, 20, 600)}));
    ASSERT_EQ(codes.GetSize(), 3);
    EXPECT_EQ(codes[1], L"");
    EXPECT_EQ(codes[2], L"J");
}
