#include <gtest/gtest.h>

#include "host/ge/GeConstants.h"
#include "host/ge/Line3d.h"
#include "host/ge/Matrix3d.h"
#include "host/ge/Plane.h"
#include "host/ge/Scale3d.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kTol = 1e-12;
using kelaz::kPi;

// A general affine matrix: rotation, non-uniform scale, shear and translation.
AcGeMatrix3d Awkward() {
    AcGeMatrix3d m = AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 3), AcGePoint3d(5, -1, 2));
    AcGeMatrix3d skew;
    skew.setCoordSystem(AcGePoint3d(100, 200, -300), AcGeVector3d(2, 0, 0), AcGeVector3d(0.5, 3, 0),
                        AcGeVector3d(0, 0.1, 0.25));
    return m * skew;
}

TEST(GeMatrix3d, InverseRoundTrip) {
    const AcGeMatrix3d m = Awkward();
    ASSERT_FALSE(m.isSingular());
    EXPECT_MATRIX_NEAR(m * m.inverse(), AcGeMatrix3d::kIdentity, 1e-12);
    EXPECT_MATRIX_NEAR(m.inverse() * m, AcGeMatrix3d::kIdentity, 1e-12);
    const AcGePoint3d p{3, -4, 12};
    EXPECT_POINT_NEAR(m.inverse() * (m * p), p, 1e-10);
    EXPECT_NEAR(m.det() * m.inverse().det(), 1.0, 1e-12);
    EXPECT_NEAR(m.det(), 2 * 3 * 0.25, 1e-12);  // the rotation keeps volume
    // Smallness is not singularity.
    EXPECT_FALSE(AcGeMatrix3d::scaling(1e-6).isSingular());
    // A flattening matrix cannot be inverted and comes back unchanged.
    AcGeMatrix3d flat;
    flat.setCoordSystem(AcGePoint3d(1, 2, 3), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                        AcGeVector3d(1, 1, 0));
    EXPECT_TRUE(flat.isSingular());
    EXPECT_EQ(flat.inverse(), flat);
    AcGeMatrix3d copy = flat;
    EXPECT_EQ(copy.invert(), flat);
}

TEST(GeMatrix3d, ProductOrderAndTransforms) {
    const AcGeMatrix3d move = AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0));
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis);
    // (a * b) applies b first.
    EXPECT_POINT_NEAR((move * turn) * AcGePoint3d(1, 0, 0), AcGePoint3d(10, 1, 0), kTol);
    AcGeMatrix3d pre = turn;
    pre.preMultBy(move);
    EXPECT_MATRIX_NEAR(pre, move * turn, 0.0);
    AcGeMatrix3d post = turn;
    post.postMultBy(move);
    EXPECT_POINT_NEAR(post * AcGePoint3d(1, 0, 0), AcGePoint3d(0, 11, 0), kTol);
    // Vectors ignore translation.
    EXPECT_VECTOR_NEAR(AcGeVector3d(1, 0, 0).transformBy(move * turn), AcGeVector3d(0, 1, 0), kTol);
    // Rotation about an axis through a centre keeps the centre.
    const AcGePoint3d c{3, 4, 5};
    EXPECT_POINT_NEAR(AcGeMatrix3d::rotation(1.3, AcGeVector3d(1, 1, 0), c) * c, c, kTol);
    EXPECT_POINT_NEAR(AcGeMatrix3d::scaling(3, c) * AcGePoint3d(4, 4, 5), AcGePoint3d(6, 4, 5),
                      kTol);
    // Mirrors are their own inverse and flip orientation.
    const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane(c, AcGeVector3d(0, 0, 2)));
    EXPECT_POINT_NEAR(mirror * AcGePoint3d(1, 1, 7), AcGePoint3d(1, 1, 3), kTol);
    EXPECT_NEAR(mirror.det(), -1.0, kTol);
    EXPECT_POINT_NEAR(AcGeMatrix3d::mirroring(c) * AcGePoint3d::kOrigin, AcGePoint3d(6, 8, 10),
                      kTol);
    const AcGeLine3d axis{AcGePoint3d(0, 1, 0), AcGeVector3d::kXAxis};
    EXPECT_POINT_NEAR(AcGeMatrix3d::mirroring(axis) * AcGePoint3d(5, 3, 0), AcGePoint3d(5, -1, 0),
                      kTol);
    AcGeMatrix3d scaled;
    AcGeScale3d(2, 3, 4).getMatrix(scaled);
    EXPECT_POINT_NEAR(scaled * AcGePoint3d(1, 1, 1), AcGePoint3d(2, 3, 4), kTol);
    EXPECT_EQ(scaled.scale(), 4.0);
}

TEST(GeMatrix3d, ShapeQueries) {
    const AcGeMatrix3d rigid = AcGeMatrix3d::rotation(0.3, AcGeVector3d(1, -2, 5)) *
                               AcGeMatrix3d::translation(AcGeVector3d(1e5, 2e5, 0));
    EXPECT_TRUE(rigid.isUniScaledOrtho());
    EXPECT_TRUE((rigid * AcGeMatrix3d::scaling(2.5)).isUniScaledOrtho());
    EXPECT_NEAR((rigid * AcGeMatrix3d::scaling(2.5)).scale(), 2.5, kTol);
    EXPECT_TRUE((rigid * AcGeMatrix3d::mirroring(AcGePlane::kYZPlane)).isUniScaledOrtho());
    EXPECT_FALSE(Awkward().isUniScaledOrtho());
    EXPECT_VECTOR_NEAR(rigid.getTranslation(), rigid * AcGePoint3d::kOrigin - AcGePoint3d::kOrigin,
                       1e-9);
    EXPECT_TRUE(rigid.isEqualTo(rigid * AcGeMatrix3d::rotation(1e-14, AcGeVector3d::kZAxis)));
    EXPECT_FALSE(rigid.isEqualTo(rigid * AcGeMatrix3d::rotation(1e-9, AcGeVector3d::kZAxis)));
    EXPECT_MATRIX_NEAR(Awkward().transpose().transpose(), Awkward(), 0.0);
}

TEST(GeMatrix3d, AlignCoordSysMapsFrameOntoFrame) {
    const AcGePoint3d fromOrigin{1, 2, 3};
    const AcGeVector3d fx{0, 1, 0};
    const AcGeVector3d fy{-1, 0, 0};
    const AcGeVector3d fz{0, 0, 1};
    const AcGePoint3d toOrigin{-5, 0, 7};
    const AcGeVector3d tx = AcGeVector3d(1, 1, 0).normal();
    const AcGeVector3d ty{0, 0, 1};
    const AcGeVector3d tz = tx.crossProduct(ty);
    const AcGeMatrix3d m =
        AcGeMatrix3d::alignCoordSys(fromOrigin, fx, fy, fz, toOrigin, tx, ty, tz);
    EXPECT_POINT_NEAR(m * fromOrigin, toOrigin, kTol);
    EXPECT_VECTOR_NEAR(m * fx, tx, kTol);
    EXPECT_VECTOR_NEAR(m * fy, ty, kTol);
    EXPECT_VECTOR_NEAR(m * fz, tz, kTol);
    EXPECT_POINT_NEAR(m * (fromOrigin + fx * 2 + fz * 3), toOrigin + tx * 2 + tz * 3, kTol);
    // getCoordSystem reads back what setCoordSystem stored.
    AcGePoint3d o;
    AcGeVector3d x, y, z;
    AcGeMatrix3d frame;
    frame.setCoordSystem(toOrigin, tx, ty, tz);
    frame.getCoordSystem(o, x, y, z);
    EXPECT_EQ(o, toOrigin);
    EXPECT_EQ(x, tx);
    EXPECT_EQ(z, tz);
}

TEST(GeMatrix3d, PlaneToWorldRoundTrip) {
    const AcGeVector3d normal{1, -2, 2};
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
    EXPECT_TRUE(toWorld.isUniScaledOrtho());
    EXPECT_VECTOR_NEAR(toWorld * AcGeVector3d::kZAxis, normal.normal(), kTol);
    EXPECT_VECTOR_NEAR(toWorld * AcGeVector3d::kXAxis, normal.perpVector().normal(), kTol);
    EXPECT_MATRIX_NEAR(AcGeMatrix3d::worldToPlane(normal) * toWorld, AcGeMatrix3d::kIdentity, kTol);
    // The world Z normal gives the identity: plane coordinates are world coordinates.
    EXPECT_MATRIX_NEAR(AcGeMatrix3d::planeToWorld(AcGeVector3d::kZAxis), AcGeMatrix3d::kIdentity,
                       0);
    // Through a plane: its origin and u axis, squared up.
    const AcGePlane plane{AcGePoint3d(4, 5, 6), AcGeVector3d(0, 2, 0), AcGeVector3d(0, 1, 1)};
    const AcGeMatrix3d planeToWorld = AcGeMatrix3d::planeToWorld(plane);
    EXPECT_POINT_NEAR(planeToWorld * AcGePoint3d(3, 0, 0), AcGePoint3d(4, 8, 6), kTol);
    EXPECT_POINT_NEAR(planeToWorld * AcGePoint3d(0, 2, 0), AcGePoint3d(4, 5, 8), kTol);
    const AcGePoint3d world{-1, 9, 4};
    const AcGePoint3d local = AcGeMatrix3d::worldToPlane(plane) * world;
    EXPECT_NEAR(local.z, plane.signedDistanceTo(world), kTol);
    EXPECT_POINT_NEAR(planeToWorld * local, world, 1e-12);
}

}  // namespace
