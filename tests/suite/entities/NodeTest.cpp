#include <gtest/gtest.h>

#include "host/ge/GeConstants.h"
#include "host/ge/Plane.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzKdEnt.h"
#include "suite/entities/KelAzKelSectEnt.h"
#include "suite/entities/KelAzPipeValve.h"
#include "tests/support/EntityChecks.h"

namespace {

using namespace kelaz::test;
using kelaz::GiCircle;
using kelaz::GiPolyline;
using kelaz::GiText;
using kelaz::kPi;

constexpr double kTol = 1e-9;

std::vector<GiPolyline> Outlines(const KelAzEntity& e) {
    std::vector<GiPolyline> closed;
    for (const GiPolyline& p : Shapes<GiPolyline>(kelaz::DrawEntity(e))) {
        if (p.closed) closed.push_back(p);
    }
    return closed;
}

void ExpectPoints(const std::vector<AcGePoint3d>& actual,
                  const std::vector<AcGePoint3d>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) EXPECT_POINT_NEAR(actual[i], expected[i], 1e-6);
}

TEST(KelAzNode, EquipmentDrawsItsTurnedAndScaledRectangleAndAChineseLabel) {
    KelAzEquipMent equipment;
    equipment.SetAttName(L"暖通\\风口\\方形散流器");
    equipment.SetInsertPoint({1000, 2000, 0});
    equipment.setRotation(kPi / 2);
    equipment.setScaleFactors(AcGeScale3d(2, 2, 1));
    const kelaz::GiPrimitiveList drawn = kelaz::DrawEntity(equipment);

    const auto outlines = Outlines(equipment);
    ASSERT_EQ(outlines.size(), 1u);
    ExpectPoints(outlines[0].points,
                 {{1400, 1400, 0}, {1400, 2600, 0}, {600, 2600, 0}, {600, 1400, 0}});
    EXPECT_EQ(Shapes<GiPolyline>(drawn).size(), 3u) << "the rectangle and its two diagonals";

    const auto texts = Shapes<GiText>(drawn);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].text, L"方形散流器");
    EXPECT_NEAR(texts[0].height, 2 * kelaz::kNodeLabelHeight, kTol);
    EXPECT_VECTOR_NEAR(texts[0].direction, AcGeVector3d::kYAxis, kTol);
    // Centred under the symbol, which after the quarter turn is on its +X side.
    EXPECT_POINT_NEAR(texts[0].position, AcGePoint3d(2100, 750, 0), 1e-6);

    KelAzEquipMent bare;
    ExpectExtentsNear(ExtentsOf(bare), {-300, -200, 0}, {300, 200, 0}, kTol);
    EXPECT_TRUE(Shapes<GiText>(kelaz::DrawEntity(bare)).empty()) << "no name, no label";
}

TEST(KelAzNode, ValveAndSectionSymbols) {
    KelAzPipeValve valve;
    valve.SetAttName(L"阀门");
    EXPECT_EQ(valve.GetLabelText(), L"阀门");
    const auto triangles = Outlines(valve);
    ASSERT_EQ(triangles.size(), 2u);
    ExpectPoints(triangles[0].points, {{-200, -100, 0}, {-200, 100, 0}, {0, 0, 0}});
    ExpectPoints(triangles[1].points, {{200, -100, 0}, {200, 100, 0}, {0, 0, 0}});

    KelAzKelSectEnt section;
    section.SetInsertPoint({0, 0, 500});
    auto circles = Shapes<GiCircle>(kelaz::DrawEntity(section));
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_POINT_NEAR(circles[0].center, AcGePoint3d(0, 0, 500), kTol);
    EXPECT_EQ(Outlines(section).size(), 1u);
    // Scaled unevenly the section is an ellipse, drawn as a polygon through its axes' ends.
    section.setScaleFactors(AcGeScale3d(2, 1, 1));
    EXPECT_TRUE(Shapes<GiCircle>(kelaz::DrawEntity(section)).empty());
    const auto outlines = Outlines(section);
    ASSERT_EQ(outlines.size(), 2u);
    const auto& ellipse = outlines[1].points;
    EXPECT_POINT_NEAR(ellipse[0], AcGePoint3d(320, 0, 500), kTol);
    EXPECT_POINT_NEAR(ellipse[ellipse.size() / 4], AcGePoint3d(0, 160, 500), 1e-6);
}

TEST(KelAzNode, MotionsTurnTheFrameAndStretchingsGoIntoTheScale) {
    KelAzEquipMent equipment;
    equipment.SetInsertPoint({1000, 0, 0});
    equipment.setRotation(0.3);
    const auto before = Outlines(equipment);
    const AcGeMatrix3d mirror =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis));
    ASSERT_EQ(equipment.transformBy(mirror), Acad::eOk);
    EXPECT_NEAR(equipment.scaleFactors().sx, -1, kTol) << "a mirroring flips X";
    EXPECT_POINT_NEAR(equipment.GetInsertPoint(), AcGePoint3d(-1000, 0, 0), kTol);
    EXPECT_VECTOR_NEAR(equipment.normal(), AcGeVector3d::kZAxis, kTol);
    std::vector<AcGePoint3d> mirrored;
    for (AcGePoint3d p : before[0].points) mirrored.push_back(p.transformBy(mirror));
    ExpectPoints(Outlines(equipment)[0].points, mirrored);

    // A stretch along the frame's own axis scales it; across the frame it would shear it.
    KelAzPipeValve valve;
    AcGeMatrix3d stretch;
    stretch.entry[0][0] = 2.0;
    ASSERT_EQ(valve.transformBy(stretch), Acad::eOk);
    EXPECT_TRUE(valve.scaleFactors().isEqualTo(AcGeScale3d(2, 1, 1)));
    valve.setRotation(kPi / 4);
    const auto turned = Filed(valve);
    EXPECT_EQ(valve.transformBy(stretch), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(Filed(valve), turned);

    // Turned onto a wall, the symbol lies in the wall's plane.
    KelAzNode node;
    ASSERT_EQ(node.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kXAxis)), Acad::eOk);
    EXPECT_VECTOR_NEAR(node.normal(), AcGeVector3d(0, -1, 0), kTol);
    const auto circles = Shapes<GiCircle>(kelaz::DrawEntity(node));
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_VECTOR_NEAR(circles[0].normal, AcGeVector3d(0, -1, 0), kTol);
}

TEST(KelAzNode, BadPlacementsAreRefused) {
    KelAzNode node;
    EXPECT_EQ(node.setScaleFactors(AcGeScale3d(1, 0, 1)), Acad::eInvalidInput);
    EXPECT_EQ(node.setNormal(AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(node.scaleFactors(), AcGeScale3d::kIdentity);
    EXPECT_EQ(node.normal(), AcGeVector3d::kZAxis);

    KelAzKdEnt kd;
    KelAzCommon::Placement3D skew({1, 2, 3}, {1, 0, 0}, {1, 1, 0});
    EXPECT_EQ(kd.SetPlacement(skew), Acad::eInvalidInput);
    KelAzCommon::Placement3D p;
    EXPECT_FALSE(p.SetAxes({1, 0, 0}, {-2, 0, 0})) << "parallel axes make no frame";
    ASSERT_TRUE(skew.SetAxes({2, 0, 0}, {1, 1, 0}));
    EXPECT_VECTOR_NEAR(skew.GetYAxis(), AcGeVector3d::kYAxis, kTol);
    ASSERT_EQ(kd.SetPlacement(skew), Acad::eOk);
    // The marker is a square about the location in the placement's plane.
    const auto outlines = Outlines(kd);
    ASSERT_EQ(outlines.size(), 1u);
    EXPECT_POINT_NEAR(outlines[0].points[0], AcGePoint3d(-99, -98, 3), kTol);
    EXPECT_POINT_NEAR(outlines[0].points[2], AcGePoint3d(101, 102, 3), kTol);
}

}  // namespace
