#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "host/db/Polyline.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Plane.h"
#include "suite/entities/KelAzLead.h"
#include "tests/support/EntityChecks.h"

namespace {

using namespace kelaz::test;
using kelaz::GiArc;
using kelaz::GiPolyline;
using kelaz::kPi;

constexpr double kTol = 1e-9;

AcGeTol Loose() {
    AcGeTol tol;
    tol.setEqualPoint(1e-6);
    return tol;
}

std::unique_ptr<KelAzLead> MakeLead(const AcGePoint3d& start, const AcGePoint3d& end,
                                    double bulge) {
    auto lead = std::make_unique<KelAzLead>();
    lead->setStartPoint(start);
    lead->setEndPoint(end);
    lead->SetBulge(bulge);
    return lead;
}

TEST(KelAzLead, ArcLeadGivesItsCentreRadiusDrawingAndExtentsFromTheBulge) {
    // A half turn counter-clockwise from (0,0) to (1000,0) dips to (500,-500).
    auto leadPtr = MakeLead({0, 0, 0}, {1000, 0, 0}, 1.0);
    KelAzLead& lead = *leadPtr;
    AcDbPolyline pl;
    ASSERT_EQ(lead.GetPolyline(pl), Acad::eOk);
    ASSERT_EQ(pl.numVerts(), 2u);
    AcGeCircArc3d seg;
    ASSERT_EQ(pl.getArcSegAt(0, seg), Acad::eOk);
    EXPECT_POINT_NEAR(seg.center(), AcGePoint3d(500, 0, 0), kTol);
    EXPECT_NEAR(seg.radius(), 500, kTol);
    EXPECT_TRUE(seg.isOn(AcGePoint3d(500, -500, 0)));

    const auto arcs = Shapes<GiArc>(kelaz::DrawEntity(lead));
    ASSERT_EQ(arcs.size(), 1u);
    EXPECT_POINT_NEAR(arcs[0].center, seg.center(), kTol);
    EXPECT_NEAR(arcs[0].radius, 500, kTol);
    EXPECT_NEAR(arcs[0].sweep, kPi, kTol);
    ExpectExtentsNear(ExtentsOf(lead), {0, -500, 0}, {1000, 0, 0}, kTol);

    // Seen from below the same bulge turns the other way.
    lead.SetNormal({0, 0, -1});
    ExpectExtentsNear(ExtentsOf(lead), {0, 0, 0}, {1000, 500, 0}, kTol);
    ASSERT_EQ(lead.GetPolyline(pl), Acad::eOk);
    ASSERT_EQ(pl.numVerts(), 2u) << "the vertices are replaced, not added";
    ASSERT_EQ(pl.getArcSegAt(0, seg), Acad::eOk);
    EXPECT_TRUE(seg.isOn(AcGePoint3d(500, 500, 0)));

    // A quarter turn sweeps a quarter of the circle, not its whole box.
    auto quarterPtr = MakeLead({1000, 0, 0}, {0, 1000, 0}, std::tan(kPi / 8));
    KelAzLead& quarter = *quarterPtr;
    ExpectExtentsNear(ExtentsOf(quarter), {0, 0, 0}, {1000, 1000, 0}, 1e-6);
}

TEST(KelAzLead, StraightLeadDrawsItsLineAndLayingTypeOneDrawsItDashed) {
    auto leadPtr = MakeLead({0, 0, 100}, {3000, 4000, 100}, 0.0);
    KelAzLead& lead = *leadPtr;
    auto lines = Shapes<GiPolyline>(kelaz::DrawEntity(lead));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_POINT_NEAR(lines[0].points[1], AcGePoint3d(3000, 4000, 100), kTol);

    lead.SetLayingType(KelAzLead::kDashedLayingType);
    lines = Shapes<GiPolyline>(kelaz::DrawEntity(lead));
    ASSERT_GT(lines.size(), 5u);
    EXPECT_POINT_NEAR(lines.front().points[0], AcGePoint3d(0, 0, 100), kTol);
    EXPECT_POINT_NEAR(lines.back().points[1], AcGePoint3d(3000, 4000, 100), kTol);
    const double dash = lines[0].points[0].distanceTo(lines[0].points[1]);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        EXPECT_NEAR(lines[i].points[0].distanceTo(lines[i].points[1]), dash, 1e-6);
        EXPECT_GT(lines[i].points[0].distanceTo(lines[i - 1].points[1]), 0.0) << "a gap";
    }

    // A dashed arc is arcs along the same circle, from its start to its end.
    auto arcPtr = MakeLead({0, 0, 0}, {4000, 0, 0}, 1.0);
    KelAzLead& arc = *arcPtr;
    arc.SetLayingType(KelAzLead::kDashedLayingType);
    const auto pieces = Shapes<GiArc>(kelaz::DrawEntity(arc));
    ASSERT_GT(pieces.size(), 5u);
    double swept = 0.0;
    for (const GiArc& a : pieces) {
        EXPECT_POINT_NEAR(a.center, AcGePoint3d(2000, 0, 0), kTol);
        swept += a.sweep;
    }
    EXPECT_LT(swept, kPi);
    EXPECT_VECTOR_NEAR(pieces.front().startVector, AcGeVector3d(-1, 0, 0), kTol);
    ExpectExtentsNear(ExtentsOf(arc), {0, -2000, 0}, {4000, 0, 0}, kTol);
}

TEST(KelAzLead, DashRunsCoverTheRunFromEndToEnd) {
    const auto runs = kelaz::DashRuns(1000.0, 300.0, 150.0);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_DOUBLE_EQ(runs[0].first, 0.0);
    EXPECT_DOUBLE_EQ(runs[1].second, 1000.0);
    EXPECT_NEAR(runs[0].second - runs[0].first, runs[1].second - runs[1].first, 1e-9);
    EXPECT_EQ(kelaz::DashRuns(200.0).size(), 1u) << "too short for a gap: one dash";
    EXPECT_TRUE(kelaz::DashRuns(0.0).empty());
}

TEST(KelAzLead, MirroringTurnsTheBulgeRoundAndKeepsTheArcInPlace) {
    auto leadPtr = MakeLead({1000, 0, 0}, {0, 1000, 0}, std::tan(kPi / 8));
    KelAzLead& lead = *leadPtr;
    const AcGeMatrix3d mirror =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(2000, 0, 0), AcGeVector3d::kXAxis));
    ASSERT_EQ(lead.transformBy(mirror), Acad::eOk);
    EXPECT_NEAR(lead.GetBulge(), -std::tan(kPi / 8), kTol);
    AcDbPolyline pl;
    lead.GetPolyline(pl);
    AcGeCircArc3d seg;
    ASSERT_EQ(pl.getArcSegAt(0, seg), Acad::eOk);
    EXPECT_POINT_NEAR(seg.center(), AcGePoint3d(4000, 0, 0), 1e-6);
    const double r = 1000 / std::sqrt(2.0);
    EXPECT_TRUE(seg.isOn(AcGePoint3d(4000 - r, r, 0), Loose()));

    // Stretching an arc would make it an ellipse: refused, and nothing moves.
    AcGeMatrix3d stretch;
    stretch.entry[0][0] = 2.0;
    const auto before = Filed(lead);
    EXPECT_EQ(lead.transformBy(stretch), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(Filed(lead), before);
    auto straightPtr = MakeLead({1, 1, 0}, {2, 3, 0}, 0.0);
    KelAzLead& straight = *straightPtr;
    ASSERT_EQ(straight.transformBy(stretch), Acad::eOk);
    AcGePoint3d end;
    straight.getEndPoint(end);
    EXPECT_POINT_NEAR(end, AcGePoint3d(4, 3, 0), kTol);
}

TEST(KelAzLead, BadValuesAreRefusedFromCallersAndFromFiles) {
    auto leadPtr = MakeLead({0, 0, 0}, {10, 0, 0}, 0.5);
    KelAzLead& lead = *leadPtr;
    EXPECT_EQ(lead.SetNormal(AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(lead.SetBulge(std::numeric_limits<double>::quiet_NaN()), Acad::eInvalidInput);
    EXPECT_EQ(lead.GetNormal(), AcGeVector3d::kZAxis);
    EXPECT_EQ(lead.GetBulge(), 0.5);
    ASSERT_EQ(lead.SetNormal({0, 3, 4}), Acad::eOk);
    EXPECT_VECTOR_NEAR(lead.GetNormal(), AcGeVector3d(0, 0.6, 0.8), kTol);

    // A DXF record whose normal is no direction: a message, and the lead keeps its own.
    auto damaged = EditedDxf(lead, [](kelaz::MemoryDxfFiler::Item& item) {
        if (item.code == AcDb::kDxfNormalX) item.real[0] = item.real[1] = item.real[2] = 0.0;
    });
    auto targetPtr = MakeLead({5, 5, 5}, {6, 6, 6}, 0.25);
    KelAzLead& target = *targetPtr;
    EXPECT_EQ(target.dxfInFields(&damaged), Acad::eInvalidDxfCode);
    EXPECT_NE(CString(damaged.errorMessage()).Find(L"normal"), -1);
    EXPECT_EQ(target.GetBulge(), 0.25);
    EXPECT_EQ(target.GetNormal(), AcGeVector3d::kZAxis);
}

}  // namespace
