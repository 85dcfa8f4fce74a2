#include <gtest/gtest.h>

#include <cmath>

#include "host/ge/Line3d.h"
#include "host/ge/Plane.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kTol = 1e-12;

TEST(GePlane, SignedDistanceAndProjection) {
    const AcGePlane plane{AcGePoint3d(0, 0, 2), AcGeVector3d(0, 0, -3)};  // faces down
    EXPECT_VECTOR_NEAR(plane.normal(), -AcGeVector3d::kZAxis, kTol);
    EXPECT_NEAR(plane.signedDistanceTo(AcGePoint3d(5, 5, 0)), 2.0, kTol);
    EXPECT_NEAR(plane.signedDistanceTo(AcGePoint3d(5, 5, 3)), -1.0, kTol);
    EXPECT_NEAR(plane.distanceTo(AcGePoint3d(5, 5, 3)), 1.0, kTol);
    EXPECT_POINT_NEAR(AcGePoint3d(5, 6, 9).orthoProject(plane), AcGePoint3d(5, 6, 2), kTol);
    // Projection along a slanted direction lands on the plane, on the line of projection.
    const AcGePoint3d along = AcGePoint3d(1, 1, 0).project(plane, AcGeVector3d(1, 0, 1));
    EXPECT_POINT_NEAR(along, AcGePoint3d(3, 1, 2), kTol);
    // A direction parallel to the plane never reaches it.
    EXPECT_EQ(AcGePoint3d(1, 1, 0).project(plane, AcGeVector3d::kXAxis), AcGePoint3d(1, 1, 0));
    EXPECT_TRUE(plane.isOn(AcGePoint3d(-7, 4, 2 + 5e-11)));
    EXPECT_FALSE(plane.isOn(AcGePoint3d(-7, 4, 2 + 5e-10)));
}

TEST(GePlane, ConstructionForms) {
    // ax + by + cz + d = 0: origin is the point nearest the world origin.
    const AcGePlane eq{0, 3, 4, -10};
    EXPECT_VECTOR_NEAR(eq.normal(), AcGeVector3d(0, 0.6, 0.8), kTol);
    EXPECT_POINT_NEAR(eq.pointOnPlane(), AcGePoint3d(0, 1.2, 1.6), kTol);
    // Three points: normal along u × v.
    const AcGePlane three{AcGePoint3d(1, 0, 5), AcGePoint3d(0, 0, 5), AcGePoint3d(0, 1, 5)};
    EXPECT_VECTOR_NEAR(three.normal(), AcGeVector3d::kZAxis, kTol);
    EXPECT_TRUE(three.isCoplanarTo(AcGePlane(AcGePoint3d(9, 9, 5), -AcGeVector3d::kZAxis)));
    EXPECT_FALSE(three.isCoplanarTo(AcGePlane::kXYPlane));
    EXPECT_TRUE(three.isParallelTo(AcGePlane::kXYPlane));
    // (origin, normal): axes by the arbitrary axis rule, v = normal × u.
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    AcGePlane(AcGePoint3d(1, 2, 3), AcGeVector3d::kZAxis).getCoordSystem(origin, u, v);
    EXPECT_VECTOR_NEAR(u, AcGeVector3d::kXAxis, kTol);
    EXPECT_VECTOR_NEAR(v, AcGeVector3d::kYAxis, kTol);
    // Collinear points span no plane.
    const AcGePlane flat{AcGePoint3d(1, 0, 0), AcGePoint3d(0, 0, 0), AcGePoint3d(2, 0, 0)};
    EXPECT_TRUE(flat.normal().isZeroLength());
}

TEST(GePlane, ParametersAlongSkewedAxes) {
    const AcGePlane plane{AcGePoint3d(1, 1, 1), AcGeVector3d(2, 0, 0), AcGeVector3d(1, 1, 0)};
    const AcGePoint2d param{0.25, -3.0};
    const AcGePoint3d pnt = plane.evalPoint(param);
    EXPECT_POINT_NEAR(pnt, AcGePoint3d(1 + 0.5 - 3, 1 - 3, 1), kTol);
    // Height above the plane does not change the parameters.
    EXPECT_POINT_NEAR((pnt + AcGeVector3d(0, 0, 4)).convert2d(plane), param, kTol);
    EXPECT_POINT_NEAR(AcGePoint3d(plane, param), pnt, kTol);
    EXPECT_VECTOR_NEAR(AcGeVector3d(3, 1, 9).convert2d(plane), AcGeVector2d(1, 1), kTol);
}

TEST(GePlane, IntersectionOfPlanes) {
    const AcGePlane a{AcGePoint3d(0, 0, 2), AcGeVector3d::kZAxis};
    const AcGePlane b{AcGePoint3d(5, 0, 0), AcGeVector3d(1, 1, 0)};
    AcGeLine3d line;
    ASSERT_TRUE(a.intersectWith(b, line));
    EXPECT_TRUE(a.isOn(line.pointOnLine()));
    EXPECT_TRUE(b.isOn(line.pointOnLine()));
    EXPECT_TRUE(line.direction().isParallelTo(AcGeVector3d(1, -1, 0)));
    EXPECT_FALSE(a.intersectWith(AcGePlane(AcGePoint3d(0, 0, 7), -AcGeVector3d::kZAxis), line));
}

}  // namespace
