#include <gtest/gtest.h>

#include <variant>

#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "host/ge/GeConstants.h"
#include "host/gi/GiCollector.h"
#include "host/gi/PrimitiveExtents.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

// Draws text in world draw and, unless told otherwise, asks for viewport draw where it draws a
// circle on another layer.
class TwoViews : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(TwoViews);

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override {
        mode->subEntityTraits().setColor(1);
        mode->geometry().text(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2.5,
                              1.0, 0.0, L"DN100");
        return worldOnly ? Adesk::kTrue : Adesk::kFalse;
    }
    void viewportDraw(AcGiViewportDraw* mode) override {
        mode->subEntityTraits().setLayer(circleLayer);
        mode->geometry().circle(AcGePoint3d(20, 0, 0), 1, AcGeVector3d::kZAxis);
    }

    bool worldOnly = false;
    AcDbObjectId circleLayer;
};

}  // namespace

ACRX_DXF_DEFINE_MEMBERS(TwoViews, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        TWOVIEWS, KelazTest)

namespace {

using kelaz::GiArc;
using kelaz::GiCircle;
using kelaz::GiPolyline;
using kelaz::GiText;
using kelaz::kPi;

constexpr double kTol = 1e-9;

TEST(WorldDraw, StandardEntitiesDrawOnePrimitiveEach) {
    AcDbLine line(AcGePoint3d(0, 0, 1), AcGePoint3d(3, 4, 1));
    line.setColorIndex(3);
    auto prims = kelaz::DrawEntity(line);
    ASSERT_EQ(prims.size(), 1u);
    EXPECT_EQ(prims[0].traits.color, 3) << "traits start with the entity's colour";
    EXPECT_TRUE(prims[0].traits.layer.IsEmpty()) << "and its own layer";
    const auto& pl = std::get<GiPolyline>(prims[0].shape);
    ASSERT_EQ(pl.points.size(), 2u);
    EXPECT_EQ(pl.points[1], AcGePoint3d(3, 4, 1));
    EXPECT_EQ(pl.bulges, (std::vector<double>{0, 0}));
    EXPECT_FALSE(pl.closed);

    prims = kelaz::DrawEntity(AcDbCircle(AcGePoint3d(1, 2, 3), AcGeVector3d(0, 0, 2), 4));
    ASSERT_EQ(prims.size(), 1u);
    const auto& c = std::get<GiCircle>(prims[0].shape);
    EXPECT_EQ(c.center, AcGePoint3d(1, 2, 3));
    EXPECT_EQ(c.radius, 4);
    EXPECT_VECTOR_NEAR(c.normal, AcGeVector3d::kZAxis, kTol);

    // About -Z, angle 0 points along -X (the plane's own X axis).
    prims = kelaz::DrawEntity(AcDbArc(AcGePoint3d::kOrigin, AcGeVector3d(0, 0, -1), 5, kPi / 2, 0));
    ASSERT_EQ(prims.size(), 1u);
    const auto& a = std::get<GiArc>(prims[0].shape);
    EXPECT_VECTOR_NEAR(a.normal, AcGeVector3d(0, 0, -1), kTol);
    EXPECT_VECTOR_NEAR(a.startVector, AcGeVector3d(0, 1, 0), kTol);
    EXPECT_NEAR(a.sweep, 1.5 * kPi, kTol);
    EXPECT_EQ(a.radius, 5);

    AcDbPolyline poly;
    poly.addVertexAt(0, AcGePoint2d(0, 0), 0.25);
    poly.addVertexAt(1, AcGePoint2d(10, 0), -1);
    poly.addVertexAt(2, AcGePoint2d(10, 10), 0.5);
    poly.setClosed(Adesk::kTrue);
    poly.setElevation(2);
    prims = kelaz::DrawEntity(poly);
    ASSERT_EQ(prims.size(), 1u);
    const auto& p = std::get<GiPolyline>(prims[0].shape);
    EXPECT_TRUE(p.closed);
    EXPECT_EQ(p.points, (std::vector<AcGePoint3d>{{0, 0, 2}, {10, 0, 2}, {10, 10, 2}}));
    EXPECT_EQ(p.bulges, (std::vector<double>{0.25, -1, 0.5})) << "the closing segment's too";
    EXPECT_VECTOR_NEAR(p.normal, AcGeVector3d::kZAxis, kTol);
}

TEST(WorldDraw, TraitsAndViewportDrawFollowTheHost) {
    AcDbDatabase db;
    const AcDbObjectId layer = kelaz::test::AddLayer(db, L"Marks", 4);
    TwoViews entity;
    entity.circleLayer = layer;
    auto prims = kelaz::DrawEntity(entity);
    ASSERT_EQ(prims.size(), 2u) << "world draw answered false: viewport draw too";
    const auto& text = std::get<GiText>(prims[0].shape);
    EXPECT_EQ(text.text, L"DN100");
    EXPECT_EQ(text.height, 2.5);
    EXPECT_EQ(prims[0].traits.color, 1);
    EXPECT_TRUE(prims[0].traits.layer.IsEmpty());
    EXPECT_EQ(prims[1].traits.color, 1) << "traits last until changed";
    EXPECT_EQ(prims[1].traits.layer, L"Marks");
    EXPECT_TRUE(std::holds_alternative<GiCircle>(prims[1].shape));

    // An entity that draws itself has extents without code of its own: text (five characters
    // as high as wide) and the circle.
    AcDbExtents ext;
    ASSERT_EQ(entity.getGeomExtents(ext), Acad::eOk);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(1, -1, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(21, 3.5, 0), kTol);

    entity.worldOnly = true;
    EXPECT_EQ(kelaz::DrawEntity(entity).size(), 1u);
}

TEST(WorldDraw, CollectorNormalisesWhatItIsGiven) {
    kelaz::GiCollector collector(7);
    AcGiWorldGeometry& g = collector.worldDraw().geometry();
    // A clockwise sweep is the counter-clockwise sweep about the other side.
    g.circularArc(AcGePoint3d::kOrigin, 2, AcGeVector3d::kZAxis, AcGeVector3d(3, 0, 0), -kPi / 2,
                  kAcGiArcChord);
    // The circle through three points.
    g.circle(AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0), AcGePoint3d(-1, 0, 0));
    g.circle(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(2, 2, 2));  // no circle

    AcDbPolyline poly;
    for (unsigned i = 0; i < 4; ++i) poly.addVertexAt(i, AcGePoint2d(i, i * i), 0.1 * (i + 1));
    poly.setClosed(Adesk::kTrue);
    g.pline(poly, 2, 0);  // from vertex 2 to the end: segments 2 and 3 (closing)
    g.pline(poly, 1, 1);

    const auto& prims = collector.primitives();
    ASSERT_EQ(prims.size(), 5u);
    const auto& arc = std::get<GiArc>(prims[0].shape);
    EXPECT_VECTOR_NEAR(arc.normal, AcGeVector3d(0, 0, -1), kTol);
    EXPECT_NEAR(arc.sweep, kPi / 2, kTol);
    EXPECT_VECTOR_NEAR(arc.startVector, AcGeVector3d::kXAxis, kTol);
    const auto& chord = std::get<GiPolyline>(prims[1].shape);
    EXPECT_POINT_NEAR(chord.points[0], AcGePoint3d(0, -2, 0), kTol);
    EXPECT_POINT_NEAR(chord.points[1], AcGePoint3d(2, 0, 0), kTol);
    const auto& circle = std::get<GiCircle>(prims[2].shape);
    EXPECT_POINT_NEAR(circle.center, AcGePoint3d::kOrigin, kTol);
    EXPECT_NEAR(circle.radius, 1, kTol);

    const auto& tail = std::get<GiPolyline>(prims[3].shape);
    EXPECT_FALSE(tail.closed) << "a part of a closed polyline is an open run";
    EXPECT_EQ(tail.points, (std::vector<AcGePoint3d>{{2, 4, 0}, {3, 9, 0}, {0, 0, 0}}));
    ASSERT_EQ(tail.bulges.size(), 3u);
    EXPECT_NEAR(tail.bulges[0], 0.3, kTol);
    EXPECT_NEAR(tail.bulges[1], 0.4, kTol);
    EXPECT_EQ(tail.bulges[2], 0.0);
    const auto& one = std::get<GiPolyline>(prims[4].shape);
    EXPECT_EQ(one.points, (std::vector<AcGePoint3d>{{1, 1, 0}, {2, 4, 0}}));
    EXPECT_EQ(prims[4].traits.color, 7);

    // The box of what was drawn counts the chord and the arc's quarter below the X axis.
    const AcDbExtents ext = kelaz::PrimitiveListExtents({prims[0], prims[1]});
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(0, -2, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(2, 0, 0), kTol);
}

}  // namespace
