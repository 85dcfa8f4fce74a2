#include <gtest/gtest.h>

#include <cmath>

#include "host/ge/GeConstants.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector2d.h"
#include "host/ge/Vector3d.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kTol = 1e-12;
using kelaz::kPi;

TEST(GeVector3d, PerpVectorFollowsTheArbitraryAxisRule) {
    // In the XY plane: the counter-clockwise perpendicular, same length.
    EXPECT_VECTOR_NEAR(AcGeVector3d(3, 4, 0).perpVector(), AcGeVector3d(-4, 3, 0), kTol);
    EXPECT_VECTOR_NEAR(AcGeVector3d(0, -2, 0).perpVector(), AcGeVector3d(2, 0, 0), kTol);
    // Along Z (either way) the world Y axis is used instead: the OCS X axis of a drawing.
    EXPECT_VECTOR_NEAR(AcGeVector3d::kZAxis.perpVector(), AcGeVector3d::kXAxis, kTol);
    EXPECT_VECTOR_NEAR((-AcGeVector3d::kZAxis).perpVector(), -AcGeVector3d::kXAxis, kTol);
    // Just inside and just outside the 1/64 cone, judged on direction, not length.
    const AcGeVector3d nearZ{0.01, 0.01, 1.0};
    EXPECT_VECTOR_NEAR(nearZ.perpVector(), AcGeVector3d::kYAxis.crossProduct(nearZ), kTol);
    EXPECT_VECTOR_NEAR((nearZ * 1000.0).perpVector(),
                       AcGeVector3d::kYAxis.crossProduct(nearZ * 1000.0), kTol);
    const AcGeVector3d offZ{0.02, 0.0, 1.0};
    EXPECT_VECTOR_NEAR(offZ.perpVector(), AcGeVector3d(0, 0.02, 0), kTol);
    for (const AcGeVector3d& v : {nearZ, offZ, AcGeVector3d(1, -2, 3)})
        EXPECT_TRUE(v.perpVector().isPerpendicularTo(v));
}

TEST(GeVector3d, AngleToWithReferenceMeasuresCounterClockwiseAboutIt) {
    const AcGeVector3d x = AcGeVector3d::kXAxis;
    const AcGeVector3d y = AcGeVector3d::kYAxis;
    const AcGeVector3d z = AcGeVector3d::kZAxis;
    EXPECT_NEAR(x.angleTo(y, z), kPi / 2, kTol);
    EXPECT_NEAR(y.angleTo(x, z), 3 * kPi / 2, kTol);
    EXPECT_NEAR(x.angleTo(y, -z), 3 * kPi / 2, kTol);
    EXPECT_NEAR(x.angleTo(AcGeVector3d(-1, -1, 0), z), 5 * kPi / 4, kTol);
    EXPECT_NEAR(x.angleTo(-x, z), kPi, kTol);
    EXPECT_EQ(x.angleTo(x * 5.0, z), 0.0);
    // The unsigned form ignores orientation and is accurate near 0, where acos is not.
    EXPECT_NEAR(y.angleTo(x), kPi / 2, kTol);
    EXPECT_NEAR(x.angleTo(AcGeVector3d(1, 1e-9, 0)), 1e-9, 1e-20);
    // The result stays in [0, 2π) even for a sliver below the reference.
    const double sliver = x.angleTo(AcGeVector3d(1, -1e-300, 0), z);
    EXPECT_GE(sliver, 0.0);
    EXPECT_LT(sliver, kelaz::kTwoPi);
}

TEST(GeVector3d, RotateByFollowsTheRightHandRule) {
    AcGeVector3d v = AcGeVector3d::kXAxis;
    v.rotateBy(kPi / 2, AcGeVector3d::kZAxis);
    EXPECT_VECTOR_NEAR(v, AcGeVector3d::kYAxis, kTol);
    v.rotateBy(kPi / 2, AcGeVector3d(0, 0, -5));  // axis length does not matter
    EXPECT_VECTOR_NEAR(v, AcGeVector3d::kXAxis, kTol);
    // A third of a turn about the diagonal cycles the axes.
    AcGeVector3d w = AcGeVector3d::kXAxis;
    w.rotateBy(2 * kPi / 3, AcGeVector3d(1, 1, 1));
    EXPECT_VECTOR_NEAR(w, AcGeVector3d::kYAxis, kTol);
    // A point turns about the axis through wrtPoint.
    AcGePoint3d p{2, 1, 7};
    p.rotateBy(kPi, AcGeVector3d::kZAxis, AcGePoint3d(1, 1, 0));
    EXPECT_POINT_NEAR(p, AcGePoint3d(0, 1, 7), kTol);
    // No axis, no rotation.
    AcGeVector3d u{1, 2, 3};
    u.rotateBy(1.0, AcGeVector3d::kIdentity);
    EXPECT_EQ(u, AcGeVector3d(1, 2, 3));
}

TEST(GeVector3d, ZeroAndTinyVectorsHaveNoDirection) {
    AcGeVector3d zero;
    zero.normalize();
    EXPECT_EQ(zero, AcGeVector3d::kIdentity);  // not NaN
    const AcGeVector3d tiny{1e-13, 0, 0};
    EXPECT_EQ(tiny.normal(), tiny);
    EXPECT_TRUE(tiny.isZeroLength());
    EXPECT_VECTOR_NEAR(AcGeVector3d(0, 3, 4).normal(), AcGeVector3d(0, 0.6, 0.8), kTol);
    EXPECT_VECTOR_NEAR(AcGeVector3d(0, 3, 4).setLength(10), AcGeVector3d(0, 6, 8), kTol);
    EXPECT_FALSE(zero.isParallelTo(AcGeVector3d::kXAxis));
    EXPECT_FALSE(zero.isPerpendicularTo(AcGeVector3d::kXAxis));
    EXPECT_FALSE(AcGeVector3d::kXAxis.isCodirectionalTo(zero));
    // Direction predicates do not care about length.
    EXPECT_TRUE(AcGeVector3d(2, 0, 0).isParallelTo(AcGeVector3d(-1e-3, 0, 0)));
    EXPECT_FALSE(AcGeVector3d(2, 0, 0).isCodirectionalTo(AcGeVector3d(-1e-3, 0, 0)));
    EXPECT_FALSE(AcGeVector3d(1, 0, 0).isParallelTo(AcGeVector3d(1, 1e-6, 0)));
}

TEST(GeTol, GlobalToleranceIsTheDefault) {
    const AcGeTol saved = AcGeContext::gTol;
    AcGeContext::gTol.setEqualPoint(0.1);
    AcGeContext::gTol.setEqualVector(0.01);
    const bool points = AcGePoint3d(1, 1, 1).isEqualTo(AcGePoint3d(1, 1, 1.05));
    const bool vectors = AcGeVector3d(1, 0, 0).isParallelTo(AcGeVector3d(1, 0.005, 0));
    AcGeContext::gTol = saved;
    EXPECT_TRUE(points);
    EXPECT_TRUE(vectors);
    EXPECT_FALSE(AcGePoint3d(1, 1, 1).isEqualTo(AcGePoint3d(1, 1, 1.05)));
    EXPECT_EQ(AcGeTol().equalPoint(), 1e-10);
    EXPECT_EQ(AcGeTol().equalVector(), 1e-12);
}

TEST(GeVector2d, AnglesAndRotation) {
    EXPECT_NEAR(AcGeVector2d(0, -1).angle(), 3 * kPi / 2, kTol);
    EXPECT_NEAR(AcGeVector2d(-1, 0).angle(), kPi, kTol);
    EXPECT_NEAR(AcGeVector2d(1, 1).angleTo(AcGeVector2d(1, -1)), kPi / 2, kTol);
    EXPECT_NEAR(AcGeVector2d(1, -1).angleTo(AcGeVector2d(1, 1)), kPi / 2, kTol);
    AcGeVector2d v{2, 0};
    v.rotateBy(kPi / 2);
    EXPECT_VECTOR_NEAR(v, AcGeVector2d(0, 2), kTol);
    EXPECT_VECTOR_NEAR(v.perpVector(), AcGeVector2d(-2, 0), kTol);
    AcGePoint2d p{2, 1};
    p.rotateBy(kPi / 2, AcGePoint2d(1, 1));
    EXPECT_POINT_NEAR(p, AcGePoint2d(1, 2), kTol);
    EXPECT_EQ(AcGeVector2d().normal(), AcGeVector2d::kIdentity);
}

}  // namespace
