#include <gtest/gtest.h>

#include "host/db/HostApplicationServices.h"
#include "host/db/LayerTable.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/KelAzSupport.h"
#include "suite/entities/LayerRule.h"
#include "tests/support/EntityChecks.h"

namespace {

using namespace kelaz::test;
using kelaz::GiCircle;
using kelaz::GiPolyline;

constexpr double kTol = 1e-9;

bool HasLayer(AcDbDatabase& db, const wchar_t* name) {
    Opened<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForRead);
    return layers->has(name);
}

TEST(SuiteLayers, TheSystemCodeChoosesTheLayerUnlessTheEntityNamesItsOwn) {
    EXPECT_EQ(kelaz::LayerForSysCode(L" 给水 "), L"给水");
    EXPECT_EQ(kelaz::LayerForSysCode(L""), kelaz::kDefaultSuiteLayer);
    EXPECT_EQ(kelaz::LayerForSysCode(L"J/L:1"), L"J_L_1") << "names a layer cannot hold";

    AcDbDatabase db;
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    // Not yet in the drawing: the working drawing gets the layer.
    auto* pipe = new KelAzPipe();
    ASSERT_EQ(pipe->SetSysCode(L"给水"), Acad::eOk);
    EXPECT_EQ(pipe->layer(), L"给水");
    EXPECT_TRUE(HasLayer(db, L"给水"));
    const AcDbObjectId id = Append(db, pipe);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);

    Opened<KelAzPipe> opened(id, AcDb::kForWrite);
    ASSERT_EQ(opened->SetLayName(L"管线-A"), Acad::eOk);
    EXPECT_EQ(opened->layer(), L"管线-A");
    ASSERT_EQ(opened->SetSysCode(L"排水"), Acad::eOk);
    EXPECT_EQ(opened->layer(), L"管线-A") << "its own layer wins over the code's";
    ASSERT_EQ(opened->SetLayName(L""), Acad::eOk);
    EXPECT_EQ(opened->layer(), L"排水");
    ASSERT_EQ(opened->SetSysCode(L"消防", false), Acad::eOk);
    EXPECT_EQ(opened->GetSysCode(), L"消防");
    EXPECT_EQ(opened->layer(), L"排水") << "recorded only";

    // A name the layer table refuses changes nothing.
    EXPECT_EQ(opened->SetLayName(L"a|b"), Acad::eInvalidSymbolTableName);
    EXPECT_EQ(opened->GetLayName(), L"");
    EXPECT_EQ(opened->layer(), L"排水");
    EXPECT_FALSE(HasLayer(db, L"a|b"));
}

TEST(KelAzDuct, DrawsSidesAndCentreOrItsSectionWhenVertical) {
    KelAzDuct duct;
    duct.setStartPoint({0, 0, 2800});
    duct.setEndPoint({4000, 0, 2800});
    EXPECT_EQ(Shapes<GiPolyline>(kelaz::DrawEntity(duct)).size(), 1u) << "no width: its line";
    ASSERT_EQ(duct.SetWidth(800), Acad::eOk);
    ASSERT_EQ(duct.SetHeight(400), Acad::eOk);
    EXPECT_EQ(duct.SetWidth(-1), Acad::eInvalidInput);
    EXPECT_FALSE(duct.IsRound());
    auto lines = Shapes<GiPolyline>(kelaz::DrawEntity(duct));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_POINT_NEAR(lines[0].points[0], AcGePoint3d(0, 400, 2800), kTol);
    EXPECT_POINT_NEAR(lines[1].points[1], AcGePoint3d(4000, -400, 2800), kTol);
    EXPECT_POINT_NEAR(lines[2].points[1], AcGePoint3d(4000, 0, 2800), kTol);
    ExpectExtentsNear(ExtentsOf(duct), {0, -400, 2800}, {4000, 400, 2800}, kTol);

    // A uniform scaling scales the section with the run.
    ASSERT_EQ(duct.transformBy(AcGeMatrix3d::scaling(0.5)), Acad::eOk);
    EXPECT_EQ(duct.GetWidth(), 400);
    EXPECT_EQ(duct.GetHeight(), 200);

    // Seen end-on it shows its section: a rectangle, or a circle when round.
    duct.setEndPoint({0, 0, 5000});
    lines = Shapes<GiPolyline>(kelaz::DrawEntity(duct));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].closed);
    EXPECT_POINT_NEAR(lines[0].points[2], AcGePoint3d(200, 100, 1400), kTol);
    duct.SetHeight(0);
    const auto circles = Shapes<GiCircle>(kelaz::DrawEntity(duct));
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_EQ(circles[0].radius, 200);
}

TEST(KelAzSupport, DrawsItsLineWithAMarkAcrossEachEnd) {
    KelAzSupport support;
    support.setStartPoint({0, 0, 0});
    support.setEndPoint({0, 1000, 0});
    const auto lines = Shapes<GiPolyline>(kelaz::DrawEntity(support));
    ASSERT_EQ(lines.size(), 3u);
    const double half = kelaz::kSupportMarkLength / 2;
    EXPECT_POINT_NEAR(lines[1].points[0], AcGePoint3d(half, 0, 0), kTol);
    EXPECT_POINT_NEAR(lines[1].points[1], AcGePoint3d(-half, 0, 0), kTol);
    EXPECT_POINT_NEAR(lines[2].points[0], AcGePoint3d(half, 1000, 0), kTol);
    ExpectExtentsNear(ExtentsOf(support), {-half, 0, 0}, {half, 1000, 0}, kTol);

    KelAzPipe pipe;
    pipe.setEndPoint({300, 400, 500});
    ASSERT_EQ(Shapes<GiPolyline>(kelaz::DrawEntity(pipe)).size(), 1u);
    ExpectExtentsNear(ExtentsOf(pipe), {0, 0, 0}, {300, 400, 500}, kTol);
    AcGeMatrix3d flat;
    flat.entry[2][2] = 0.0;
    EXPECT_EQ(pipe.transformBy(flat), Acad::eInvalidInput) << "a singular matrix";
}

}  // namespace
