#include <gtest/gtest.h>

#include "host/db/Polyline.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Plane.h"
#include "suite/entities/KelAzSoftLine.h"
#include "tests/support/EntityChecks.h"

namespace {

using namespace kelaz::test;
using kelaz::GiPolyline;

constexpr double kTol = 1e-9;

TEST(KelAzSoftLine, DrawsItsPlanPolylineWithBulgesSeenFromAbove) {
    KelAzSoftLine soft;
    ASSERT_EQ(soft.addVertexAt({0, 0, 300}, {0, 0, 1}, 1.0), Acad::eOk);
    ASSERT_EQ(soft.addVertexAt({1000, 0, 500}, {0, 0, -2}, 0.5), Acad::eOk);
    ASSERT_EQ(soft.addVertexAt({2000, 0, 100}, {1, 0, 0}, 0.7), Acad::eOk);
    ASSERT_EQ(soft.addVertexAt({3000, 0, 100}, {0, 0, 1}), Acad::eOk);
    EXPECT_EQ(soft.numVerts(), 4u);
    AcGeVector3d normal;
    soft.getNormalAt(1, normal);
    EXPECT_EQ(normal, AcGeVector3d(0, 0, -1)) << "normals are kept unit";

    const auto lines = Shapes<GiPolyline>(kelaz::DrawEntity(soft));
    ASSERT_EQ(lines.size(), 1u);
    const GiPolyline& plan = lines[0];
    ASSERT_EQ(plan.points.size(), 4u);
    for (const AcGePoint3d& p : plan.points) EXPECT_EQ(p.z, 300) << "at the first elevation";
    // Up: as filed; down: turned round; level: seen edge-on, so straight in plan.
    EXPECT_EQ(plan.bulges, (std::vector<double>{1.0, -0.5, 0.0, 0.0}));
    EXPECT_VECTOR_NEAR(plan.normal, AcGeVector3d::kZAxis, kTol);
    // The half circle of the first segment dips to y = -500.
    ExpectExtentsNear(ExtentsOf(soft), {0, -500, 300}, {3000, 250, 300}, 1e-6);

    AcDbPolyline pl;
    ASSERT_EQ(soft.GetPlanPolyline(pl), Acad::eOk);
    EXPECT_EQ(pl.elevation(), 300);
    double bulge = 0;
    pl.getBulgeAt(1, bulge);
    EXPECT_EQ(bulge, -0.5);
}

TEST(KelAzSoftLine, VerticesAreEditedByIndex) {
    KelAzSoftLine soft;
    EXPECT_EQ(soft.addVertexAt({0, 0, 0}, AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(soft.numVerts(), 0u);
    EXPECT_TRUE(kelaz::DrawEntity(soft).empty());
    AcDbExtents box;
    EXPECT_EQ(soft.getGeomExtents(box), Acad::eInvalidExtents) << "nothing to measure";

    for (int i = 0; i < 3; ++i) soft.addVertexAt({i * 100.0, 0, 0}, {0, 0, 1}, i * 0.1);
    EXPECT_EQ(soft.setBulgeAt(3, 1.0), Acad::eInvalidIndex);
    EXPECT_EQ(soft.removeVertexAt(3), Acad::eInvalidIndex);
    ASSERT_EQ(soft.setBulgeAt(2, 0.9), Acad::eOk);
    ASSERT_EQ(soft.removeVertexAt(0), Acad::eOk);
    AcGePoint3d p;
    double bulge = 0;
    soft.getPointAt(0, p);
    soft.getBulgeAt(1, bulge);
    EXPECT_EQ(p, AcGePoint3d(100, 0, 0));
    EXPECT_EQ(bulge, 0.9);
    EXPECT_EQ(soft.getPointAt(2, p), Acad::eInvalidIndex);
}

TEST(KelAzSoftLine, MotionsTurnNormalsAndMirroringsTurnBulges) {
    KelAzSoftLine soft;
    soft.addVertexAt({0, 0, 0}, {0, 0, 1}, 0.5);
    soft.addVertexAt({1000, 0, 0}, {0, 0, 1});
    ASSERT_EQ(soft.transformBy(AcGeMatrix3d::rotation(kelaz::kPi / 2, AcGeVector3d::kXAxis)),
              Acad::eOk);
    AcGeVector3d normal;
    soft.getNormalAt(0, normal);
    EXPECT_VECTOR_NEAR(normal, AcGeVector3d(0, -1, 0), kTol);

    KelAzSoftLine plan;
    plan.addVertexAt({0, 0, 0}, {0, 0, 1}, 0.5);
    plan.addVertexAt({1000, 0, 0}, {0, 0, 1});
    const AcDbExtents before = ExtentsOf(plan);
    ASSERT_EQ(plan.transformBy(
                  AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis))),
              Acad::eOk);
    double bulge = 0;
    plan.getBulgeAt(0, bulge);
    EXPECT_EQ(bulge, -0.5);
    // The arc now bows the other way across the X axis.
    const AcDbExtents after = ExtentsOf(plan);
    EXPECT_NEAR(after.maxPoint().y, -before.minPoint().y, 1e-6);

    AcGeMatrix3d stretch;
    stretch.entry[1][1] = 3.0;
    EXPECT_EQ(plan.transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST(KelAzSoftLine, DxfVerticesMustBeComplete) {
    KelAzSoftLine soft;
    soft.addVertexAt({1, 2, 3}, {0, 0, 1}, 0.25);
    // Two vertices announced, one given.
    auto shorter = EditedDxf(soft, [](kelaz::MemoryDxfFiler::Item& item) {
        if (item.code == AcDb::kDxfInt32) item.integer = 2;
    });
    KelAzSoftLine back;
    EXPECT_EQ(back.dxfInFields(&shorter), Acad::eInvalidDxfCode);
    EXPECT_NE(CString(shorter.errorMessage()).Find(L"2 vertices"), -1)
        << kelaz::ToUtf8(CString(shorter.errorMessage()));
    EXPECT_EQ(back.numVerts(), 0u);
}

}  // namespace
