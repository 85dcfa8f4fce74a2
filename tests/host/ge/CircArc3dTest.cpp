#include <gtest/gtest.h>

#include "host/ge/CircArc3d.h"
#include "host/ge/GeConstants.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kTol = 1e-12;
using kelaz::kPi;

TEST(GeCircArc3d, ThroughThreePointsCounterClockwise) {
    // Centre (1, 2, 3), radius 5: from angle 0 through 90° to 180°, picked counter-clockwise.
    const AcGePoint3d c{1, 2, 3};
    const AcGeCircArc3d arc{c + AcGeVector3d(5, 0, 0), c + AcGeVector3d(0, 5, 0),
                            c + AcGeVector3d(-3, -4, 0)};
    EXPECT_POINT_NEAR(arc.center(), c, 1e-12);
    EXPECT_NEAR(arc.radius(), 5.0, kTol);
    EXPECT_VECTOR_NEAR(arc.normal(), AcGeVector3d::kZAxis, kTol);
    EXPECT_VECTOR_NEAR(arc.refVec(), AcGeVector3d::kXAxis, kTol);
    EXPECT_EQ(arc.startAng(), 0.0);
    EXPECT_NEAR(arc.endAng(), kPi + std::atan2(4.0, 3.0), kTol);
    EXPECT_POINT_NEAR(arc.startPoint(), c + AcGeVector3d(5, 0, 0), 1e-12);
    EXPECT_POINT_NEAR(arc.endPoint(), c + AcGeVector3d(-3, -4, 0), 1e-12);
    EXPECT_NEAR(arc.length(), 5.0 * arc.endAng(), kTol);
    // The middle pick is on the arc; its mirror image on the unpicked side is not.
    EXPECT_TRUE(arc.isOn(c + AcGeVector3d(0, 5, 0)));
    EXPECT_TRUE(arc.isOn(c + AcGeVector3d(-5, 0, 0)));
    EXPECT_FALSE(arc.isOn(c + AcGeVector3d(0, -5, 0)));
    EXPECT_FALSE(arc.isOn(c + AcGeVector3d(0, 5, 1e-6)));
}

TEST(GeCircArc3d, ThroughThreePointsClockwise) {
    // The same corner picked the other way round: the normal flips so the arc still runs
    // counter-clockwise about it, and the sweep is the short quarter, not three quarters.
    const AcGePoint3d start{10, 0, 0};
    const AcGePoint3d mid = AcGePoint3d(10, 0, 0).rotateBy(-kPi / 4, AcGeVector3d::kZAxis);
    const AcGePoint3d end{0, -10, 0};
    const AcGeCircArc3d arc{start, mid, end};
    EXPECT_POINT_NEAR(arc.center(), AcGePoint3d::kOrigin, 1e-12);
    EXPECT_NEAR(arc.radius(), 10.0, kTol);
    EXPECT_VECTOR_NEAR(arc.normal(), -AcGeVector3d::kZAxis, kTol);
    EXPECT_NEAR(arc.endAng() - arc.startAng(), kPi / 2, kTol);
    EXPECT_POINT_NEAR(arc.startPoint(), start, 1e-12);
    EXPECT_POINT_NEAR(arc.endPoint(), end, 1e-12);
    EXPECT_POINT_NEAR(arc.evalPoint(kPi / 4), mid, 1e-12);
    EXPECT_FALSE(arc.isOn(AcGePoint3d(-10, 0, 0)));
    // An arc in a tilted plane keeps all three points.
    const AcGePoint3d p1{1, 0, 0};
    const AcGePoint3d p2{0, 1, 1};
    const AcGePoint3d p3{-1, 0, 2};
    const AcGeCircArc3d tilted{p1, p2, p3};
    EXPECT_POINT_NEAR(tilted.startPoint(), p1, 1e-12);
    EXPECT_POINT_NEAR(tilted.endPoint(), p3, 1e-12);
    EXPECT_TRUE(tilted.isOn(p2));
}

TEST(GeCircArc3d, CollinearPicksLeaveADegenerateArc) {
    const AcGeCircArc3d line{AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(3, 3, 3)};
    EXPECT_EQ(line.radius(), 0.0);
    const AcGeCircArc3d same{AcGePoint3d(2, 0, 0), AcGePoint3d(2, 0, 0), AcGePoint3d(5, 0, 0)};
    EXPECT_EQ(same.radius(), 0.0);
}

TEST(GeCircArc3d, AnglesAndSweep) {
    // A full circle takes its reference vector from the arbitrary axis rule.
    const AcGeCircArc3d circle{AcGePoint3d(0, 0, 0), AcGeVector3d(0, 0, -2), 3.0};
    EXPECT_VECTOR_NEAR(circle.refVec(), -AcGeVector3d::kXAxis, kTol);
    EXPECT_NEAR(circle.length(), 6 * kPi, kTol);
    EXPECT_TRUE(circle.isOn(AcGePoint3d(0, -3, 0)));
    // An end angle below the start wraps round through the reference direction.
    AcGeCircArc3d arc{AcGePoint3d::kOrigin, AcGeVector3d::kZAxis,
                      AcGeVector3d::kXAxis, 1.0,
                      3 * kPi / 2,          kPi / 2};
    EXPECT_NEAR(arc.endAng() - arc.startAng(), kPi, kTol);
    EXPECT_TRUE(arc.isOn(AcGePoint3d(1, 0, 0)));
    EXPECT_FALSE(arc.isOn(AcGePoint3d(-1, 0, 0)));
    EXPECT_TRUE(arc.isOn(AcGePoint3d(0, 1 + 5e-11, 0)));  // at the end, within tolerance
    arc.setAngles(0.0, 5 * kPi);
    EXPECT_NEAR(arc.endAng(), 2 * kPi, kTol);
    // A reference vector off the plane is projected onto it.
    arc.setAxes(AcGeVector3d::kZAxis, AcGeVector3d(0, 2, 7));
    EXPECT_VECTOR_NEAR(arc.refVec(), AcGeVector3d::kYAxis, kTol);
}

}  // namespace
