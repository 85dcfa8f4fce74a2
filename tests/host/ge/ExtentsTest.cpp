#include <gtest/gtest.h>

#include "host/ge/Extents.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Matrix3d.h"
#include "host/ge/Scale3d.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kTol = 1e-12;

TEST(GeExtents, BuildUpFromEmpty) {
    AcDbExtents ext;
    EXPECT_TRUE(kelaz::ExtentsIsEmpty(ext));
    ext.addPoint(AcGePoint3d(1, -2, 3));
    EXPECT_FALSE(kelaz::ExtentsIsEmpty(ext));
    EXPECT_EQ(ext.minPoint(), AcGePoint3d(1, -2, 3));
    EXPECT_EQ(ext.maxPoint(), AcGePoint3d(1, -2, 3));
    ext.addPoint(AcGePoint3d(-4, 5, 3));
    AcDbExtents other;
    ext.addExt(other);  // empty: nothing to add
    other.addPoint(AcGePoint3d(0, 0, 10));
    ext.addExt(other);
    EXPECT_EQ(ext.minPoint(), AcGePoint3d(-4, -2, 3));
    EXPECT_EQ(ext.maxPoint(), AcGePoint3d(1, 5, 10));
    // Refused: the minimum is above the maximum in z.
    EXPECT_FALSE(ext.set(AcGePoint3d(0, 0, 1), AcGePoint3d(1, 1, 0)));
    EXPECT_EQ(ext.minPoint(), AcGePoint3d(-4, -2, 3));
    EXPECT_TRUE(kelaz::ExtentsIsEmpty(AcDbExtents(AcGePoint3d(0, 0, 1), AcGePoint3d(1, 1, 0))));
    // Swept along a vector: each side grows the way the component points.
    ext.expandBy(AcGeVector3d(2, -3, 0));
    EXPECT_EQ(ext.minPoint(), AcGePoint3d(-4, -5, 3));
    EXPECT_EQ(ext.maxPoint(), AcGePoint3d(3, 5, 10));
    AcDbExtents empty;
    empty.expandBy(AcGeVector3d(1, 1, 1));
    EXPECT_TRUE(kelaz::ExtentsIsEmpty(empty));
}

TEST(GeExtents, TransformBoundsTheMovedCorners) {
    AcDbExtents ext{AcGePoint3d(0, 0, 0), AcGePoint3d(2, 2, 1)};
    // An eighth of a turn about the box's corner, then a move.
    ext.transformBy(AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0)) *
                    AcGeMatrix3d::rotation(kelaz::kPi / 4, AcGeVector3d::kZAxis));
    const double r = std::sqrt(2.0);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(10 - r, 0, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(10 + r, 2 * r, 1), kTol);
    // A mirror swaps which corner is smallest.
    AcGeMatrix3d flip;
    AcGeScale3d(-1, 1, 1).getMatrix(flip);
    AcDbExtents box{AcGePoint3d(1, 1, 1), AcGePoint3d(3, 2, 2)};
    box.transformBy(flip);
    EXPECT_EQ(box.minPoint(), AcGePoint3d(-3, 1, 1));
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(-1, 2, 2));
    AcDbExtents empty;
    empty.transformBy(flip);
    EXPECT_TRUE(kelaz::ExtentsIsEmpty(empty));
}

TEST(GeExtents, ContainmentAndOverlap) {
    const AcDbExtents box{AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1)};
    EXPECT_TRUE(kelaz::ExtentsContain(box, AcGePoint3d(1, 0.5, 0)));
    EXPECT_TRUE(kelaz::ExtentsContain(box, AcGePoint3d(1 + 5e-11, 0.5, 0)));
    EXPECT_FALSE(kelaz::ExtentsContain(box, AcGePoint3d(1.001, 0.5, 0)));
    EXPECT_FALSE(kelaz::ExtentsContain(AcDbExtents(), AcGePoint3d::kOrigin));
    // Touching faces overlap; a gap does not, on any one axis.
    EXPECT_TRUE(
        kelaz::ExtentsIntersect(box, AcDbExtents(AcGePoint3d(1, 1, 1), AcGePoint3d(2, 2, 2))));
    EXPECT_FALSE(
        kelaz::ExtentsIntersect(box, AcDbExtents(AcGePoint3d(0, 0, 1.5), AcGePoint3d(1, 1, 2))));
    EXPECT_FALSE(kelaz::ExtentsIntersect(box, AcDbExtents()));
}

TEST(GeScale3d, ProductsAndComparison) {
    const AcGeScale3d s{2, 3, 4};
    EXPECT_EQ(s * AcGeScale3d(0.5, 2, -1), AcGeScale3d(1, 6, -4));
    EXPECT_EQ(2.0 * s, AcGeScale3d(4, 6, 8));
    EXPECT_EQ(s[2], 4.0);
    EXPECT_TRUE(s.isEqualTo(AcGeScale3d(2, 3, 4 + 1e-13)));
    EXPECT_FALSE(s.isEqualTo(AcGeScale3d(2, 3, 4 + 1e-9)));
    EXPECT_EQ(AcGeScale3d(), AcGeScale3d::kIdentity);
}

}  // namespace
