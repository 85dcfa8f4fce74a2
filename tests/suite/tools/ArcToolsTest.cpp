#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "suite/tools/CalMethod.h"
#include "suite/tools/DealArc.h"
#include "suite/tools/Globl_Fun.h"
#include "tests/support/GeCheckers.h"

namespace {
const AcGeVector3d kUp = AcGeVector3d::kZAxis;
}

TEST(ToolsDealArc, CentreAndTurnOfThreePickedPoints) {
    // A counter-clockwise quarter from (1000,0) to (0,1000) about the origin, picked at 45 degrees;
    // the end point is picked higher, the centre stays in the start's plane.
    const double s = 1000.0 / std::sqrt(2.0);
    const AcGePoint3d start(1000, 0, 0), mid(s, s, 0), end(0, 1000, 300);
    AcGePoint3d c(9, 9, 9);
    ASSERT_TRUE(CDealArc::ArcLineCenter(start, mid, end, kUp, c));
    EXPECT_POINT_NEAR(c, AcGePoint3d(0, 0, 0), 1e-9);
    EXPECT_EQ(CDealArc::BaselineArcDirection(start, mid, end, kUp), 1);
    EXPECT_EQ(CDealArc::BaselineArcDirection(end, mid, start, kUp), -1);
    EXPECT_EQ(CDealArc::BaselineArcDirection(start, mid, end, -kUp), -1);
    // Traced from start to end it bends left: offsets to the right grow; the reverse bends right.
    EXPECT_EQ(CDealArc::ArcOffsetOrientation(start, end, mid, kUp), 0);
    EXPECT_NE(CDealArc::ArcOffsetOrientation(end, start, mid, kUp), 0);

    const AcGePoint3d a(0, 0, 0), b(50, 50, 0), d(100, 100, 0);
    c = AcGePoint3d(7, 7, 7);
    EXPECT_FALSE(CDealArc::ArcLineCenter(a, b, d, kUp, c));
    EXPECT_EQ(c, AcGePoint3d(7, 7, 7));
    EXPECT_EQ(CDealArc::BaselineArcDirection(a, b, d, kUp), 0);
}

TEST(ToolsDealArc, PointsAlongTheSweepInEitherSense) {
    const AcGePoint3d o(0, 0, 0), start(1000, 0, 0), end(0, 1000, 0);
    const double s = 1000.0 / std::sqrt(2.0);
    EXPECT_POINT_NEAR(CDealArc::GetArcAnyPoint(o, start, end, 1, kUp), AcGePoint3d(s, s, 0), 1e-9);
    // Clockwise from (1000,0) to (0,1000) is the long way round, through (-s,-s).
    EXPECT_POINT_NEAR(CDealArc::GetArcAnyPoint(o, start, end, -1, kUp), AcGePoint3d(-s, -s, 0),
                      1e-9);
    EXPECT_POINT_NEAR(CDealArc::GetArcAnyPoint(o, start, end, 1, kUp, 1.0), end, 1e-9);
}

TEST(ToolsCalMethod, BulgeSignFollowsTheTurnSeenFromAbove) {
    const double quarter = std::tan(std::numbers::pi / 8);
    const AcGeCircArc3d ccw(AcGePoint3d(1000, 0, 0),
                            AcGePoint3d(707.10678118654755, 707.10678118654755, 0),
                            AcGePoint3d(0, 1000, 0));
    EXPECT_NEAR(CalMethod::GetBugle(ccw), quarter, 1e-12);
    const AcGeCircArc3d cw(AcGePoint3d(0, 1000, 0),
                           AcGePoint3d(707.10678118654755, 707.10678118654755, 0),
                           AcGePoint3d(1000, 0, 0));
    EXPECT_NEAR(CalMethod::GetBugle(cw), -quarter, 1e-12);
    const AcGeCircArc3d half(AcGePoint3d(-1, 0, 0), AcGePoint3d(0, -1, 0), AcGePoint3d(1, 0, 0));
    EXPECT_NEAR(CalMethod::GetBugle(half), 1.0, 1e-12);
}

TEST(ToolsGloblFun, SplitKeepsEmptyItemsBetweenSeparators) {
    CStringArray items;
    items.Add(L"old");
    CGlobl_Fun::StrToStrAry(L"风口,,阀门,", items, L',');
    ASSERT_EQ(items.GetSize(), 4);
    EXPECT_EQ(items[0], L"风口");
    EXPECT_EQ(items[1], L"");
    EXPECT_EQ(items[2], L"阀门");
    EXPECT_EQ(items[3], L"");
    CGlobl_Fun::StrToStrAry(L"", items, L',');
    EXPECT_EQ(items.GetSize(), 0);
    CGlobl_Fun::StrToStrAry(L"一", items, L',');
    ASSERT_EQ(items.GetSize(), 1);
    EXPECT_EQ(items[0], L"一");
}
