#include <gtest/gtest.h>

#include <cmath>

#include "host/ge/BoundedPlane.h"
#include "host/ge/Line3d.h"
#include "host/ge/LineSeg2d.h"
#include "host/ge/LineSeg3d.h"
#include "host/ge/Plane.h"
#include "host/ge/Ray3d.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kTol = 1e-12;

TEST(GeLinearEnt3d, LineLineIntersection) {
    AcGePoint3d hit;
    // Crossing lines, defined by vectors of different lengths.
    const AcGeLine3d diagonal{AcGePoint3d(0, 0, 1), AcGeVector3d(3, 3, 0)};
    ASSERT_TRUE(
        diagonal.intersectWith(AcGeLine3d(AcGePoint3d(4, 0, 1), AcGePoint3d(4, 1, 1)), hit));
    EXPECT_POINT_NEAR(hit, AcGePoint3d(4, 4, 1), kTol);
    // Skew lines miss unless they pass within equalPoint.
    EXPECT_FALSE(
        diagonal.intersectWith(AcGeLine3d(AcGePoint3d(4, 0, 1.001), AcGeVector3d::kYAxis), hit));
    EXPECT_TRUE(diagonal.intersectWith(
        AcGeLine3d(AcGePoint3d(4, 0, 1 + 5e-11), AcGeVector3d::kYAxis), hit));
    AcGeTol loose;
    loose.setEqualPoint(0.01);
    EXPECT_TRUE(diagonal.intersectWith(AcGeLine3d(AcGePoint3d(4, 0, 1.001), AcGeVector3d::kYAxis),
                                       hit, loose));
    // Parallel and collinear lines have no single intersection.
    const AcGeLine3d shifted{AcGePoint3d(0, 1, 1), AcGeVector3d(-1, -1, 0)};
    EXPECT_FALSE(diagonal.intersectWith(shifted, hit));
    EXPECT_FALSE(
        diagonal.intersectWith(AcGeLine3d(AcGePoint3d(9, 9, 1), AcGeVector3d(1, 1, 0)), hit));
    EXPECT_TRUE(diagonal.isColinearTo(AcGeLineSeg3d(AcGePoint3d(9, 9, 1), AcGePoint3d(10, 10, 1))));
    EXPECT_FALSE(diagonal.isColinearTo(shifted));
}

TEST(GeLinearEnt3d, BoundsLimitIntersections) {
    const AcGeLineSeg3d seg{AcGePoint3d(0, 0, 0), AcGePoint3d(2, 0, 0)};
    AcGePoint3d hit;
    // A segment that stops short of the crossing, and one that ends exactly on it.
    EXPECT_FALSE(
        seg.intersectWith(AcGeLineSeg3d(AcGePoint3d(1, 3, 0), AcGePoint3d(1, 0.5, 0)), hit));
    ASSERT_TRUE(seg.intersectWith(AcGeLineSeg3d(AcGePoint3d(1, 3, 0), AcGePoint3d(1, 0, 0)), hit));
    EXPECT_POINT_NEAR(hit, AcGePoint3d(1, 0, 0), kTol);
    // Past the segment's end, within and beyond the point tolerance.
    EXPECT_TRUE(
        seg.intersectWith(AcGeLine3d(AcGePoint3d(2 + 5e-11, 0, 0), AcGeVector3d::kYAxis), hit));
    EXPECT_FALSE(
        seg.intersectWith(AcGeLine3d(AcGePoint3d(2 + 1e-9, 0, 0), AcGeVector3d::kYAxis), hit));
    // A ray is bounded at its start only.
    const AcGeRay3d ray{AcGePoint3d(1, 1, 0), AcGeVector3d(0, 1, 0)};
    EXPECT_FALSE(ray.intersectWith(seg, hit));
    EXPECT_TRUE(AcGeRay3d(AcGePoint3d(1, 1, 0), AcGeVector3d(0, -1, 0)).intersectWith(seg, hit));
    // isOn and closestPointTo respect the ends too.
    EXPECT_TRUE(seg.isOn(AcGePoint3d(2 + 5e-11, 0, 0)));
    EXPECT_FALSE(seg.isOn(AcGePoint3d(2.1, 0, 0)));
    EXPECT_TRUE(AcGeLine3d(seg.startPoint(), seg.endPoint()).isOn(AcGePoint3d(2.1, 0, 0)));
    EXPECT_POINT_NEAR(seg.closestPointTo(AcGePoint3d(-3, 4, 0)), seg.startPoint(), kTol);
    EXPECT_NEAR(seg.distanceTo(AcGePoint3d(1, 4, 3)), 5.0, kTol);
    EXPECT_POINT_NEAR(seg.midPoint(), AcGePoint3d(1, 0, 0), kTol);
    EXPECT_POINT_NEAR(seg.evalPoint(0.25), AcGePoint3d(0.5, 0, 0), kTol);
}

TEST(GeLinearEnt3d, PlaneIntersectionRespectsTheLineBounds) {
    const AcGePlane plane{AcGePoint3d(0, 0, 5), AcGeVector3d::kZAxis};
    AcGePoint3d hit;
    ASSERT_TRUE(plane.intersectWith(AcGeLine3d(AcGePoint3d(1, 1, 0), AcGeVector3d(1, 0, 1)), hit));
    EXPECT_POINT_NEAR(hit, AcGePoint3d(6, 1, 5), kTol);
    EXPECT_FALSE(
        plane.intersectWith(AcGeLineSeg3d(AcGePoint3d(1, 1, 0), AcGePoint3d(1, 1, 4)), hit));
    EXPECT_FALSE(plane.intersectWith(AcGeLine3d(AcGePoint3d(0, 0, 5), AcGeVector3d::kXAxis), hit));
    const AcGePlane perp =
        AcGeLineSeg3d(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 3, 4)).perpPlane(AcGePoint3d(0, 3, 4));
    EXPECT_NEAR(perp.signedDistanceTo(AcGePoint3d(0, 0, 0)), -5.0, kTol);
}

TEST(GeBoundedPlane, IntersectionWithinTheParallelogram) {
    // A slanted parallelogram through three corners.
    const AcGeBoundedPlane quad{AcGePoint3d(4, 0, 0), AcGePoint3d(0, 0, 0), AcGePoint3d(1, 2, 2)};
    AcGePoint3d hit;
    const AcGeVector3d down{0, 0, -1};
    // Inside: straight down onto the middle.
    ASSERT_TRUE(quad.intersectWith(AcGeLine3d(AcGePoint3d(2.5, 1, 10), down), hit));
    EXPECT_POINT_NEAR(hit, AcGePoint3d(2.5, 1, 1), kTol);
    EXPECT_TRUE(quad.isOn(hit));
    // Over the plane but outside the parallelogram, past the slanted edge.
    EXPECT_FALSE(quad.intersectWith(AcGeLine3d(AcGePoint3d(0.2, 1, 10), down), hit));
    EXPECT_FALSE(quad.isOn(AcGePoint3d(0.2, 1, 1)));
    EXPECT_TRUE(AcGePlane(AcGePoint3d(4, 0, 0), AcGePoint3d(0, 0, 0), AcGePoint3d(1, 2, 2))
                    .isOn(AcGePoint3d(0.2, 1, 1)));
    // Just past the far edge: within the point tolerance, then beyond it.
    EXPECT_TRUE(quad.intersectWith(AcGeLine3d(AcGePoint3d(4 + 5e-11, 0, 10), down), hit));
    EXPECT_FALSE(quad.intersectWith(AcGeLine3d(AcGePoint3d(4 + 1e-9, 0, 10), down), hit));
    // Parallel to the plane, even lying in it.
    EXPECT_FALSE(quad.intersectWith(AcGeLine3d(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 1, 1)), hit));
    // A segment that stops short of the plane, and one that reaches it.
    EXPECT_FALSE(
        quad.intersectWith(AcGeLineSeg3d(AcGePoint3d(2.5, 1, 10), AcGePoint3d(2.5, 1, 2)), hit));
    EXPECT_TRUE(
        quad.intersectWith(AcGeLineSeg3d(AcGePoint3d(2.5, 1, 10), AcGePoint3d(2.5, 1, 1)), hit));
}

TEST(GeLineSeg2d, IntersectionAndDistance) {
    const AcGeLineSeg2d seg{AcGePoint2d(0, 0), AcGePoint2d(4, 2)};
    AcGePoint2d hit;
    ASSERT_TRUE(seg.intersectWith(AcGeLineSeg2d(AcGePoint2d(0, 2), AcGePoint2d(4, 0)), hit));
    EXPECT_POINT_NEAR(hit, AcGePoint2d(2, 1), kTol);
    // The lines cross at (2, 1) but this one ends before it.
    EXPECT_FALSE(seg.intersectWith(AcGeLineSeg2d(AcGePoint2d(0, 2), AcGePoint2d(1.9, 1.05)), hit));
    // Touching at an end point counts.
    EXPECT_TRUE(seg.intersectWith(AcGeLineSeg2d(AcGePoint2d(4, 2), AcGePoint2d(5, 0)), hit));
    EXPECT_POINT_NEAR(hit, AcGePoint2d(4, 2), kTol);
    // Parallel, whether overlapping or not.
    EXPECT_FALSE(seg.intersectWith(AcGeLineSeg2d(AcGePoint2d(2, 1), AcGePoint2d(6, 3)), hit));
    EXPECT_TRUE(seg.isParallelTo(AcGeLineSeg2d(AcGePoint2d(0, 1), AcGePoint2d(-2, 0))));
    EXPECT_NEAR(seg.distanceTo(AcGePoint2d(5, 4)), std::hypot(1.0, 2.0), kTol);
    EXPECT_TRUE(seg.isOn(AcGePoint2d(3, 1.5)));
    EXPECT_FALSE(seg.isOn(AcGePoint2d(6, 3)));
}

}  // namespace
