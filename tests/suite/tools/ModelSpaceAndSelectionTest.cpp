#include <gtest/gtest.h>

#include "host/db/Circle.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/Line.h"
#include "suite/tools/Highlight.h"
#include "suite/tools/KELToolKit.h"
#include "suite/tools/ModelSpace.h"
#include "tests/support/DbCheckers.h"

namespace {

// A drawing that is the working database for the length of a test.
class WorkingDrawing : public ::testing::Test {
protected:
    WorkingDrawing() { acdbHostApplicationServices()->setWorkingDatabase(&db); }
    ~WorkingDrawing() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbObjectId AddLine(const AcGePoint3d& a, const AcGePoint3d& b, const wchar_t* layer = L"0") {
        EXPECT_EQ(kelaz::EnsureLayer(&db, layer, 3), Acad::eOk);
        auto* line = new AcDbLine(a, b);
        EXPECT_EQ(line->setLayer(layer), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(addToModelSpace(id, line), Acad::eOk);
        return id;
    }

    AcDbDatabase db;
};

}  // namespace

TEST_F(WorkingDrawing, AddToModelSpaceAppendsClosesAndMakesMissingLayers) {
    const AcDbObjectId id = AddLine(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0), L"给水");
    ASSERT_FALSE(id.isNull());
    // Closed by addToModelSpace: a writer can open it at once.
    kelaz::test::Opened<AcDbLine> line(id, AcDb::kForWrite);
    ASSERT_EQ(line.status, Acad::eOk);
    EXPECT_EQ(line->layer(), L"给水");
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db.getLayerTable(layers, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(layers->has(L"给水"));
    layers->close();

    // Without a drawing nothing is taken: the entity is still the caller's and id is untouched.
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    AcDbObjectId untouched = id;
    auto* orphan = new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 10);
    EXPECT_EQ(addToModelSpace(untouched, orphan), Acad::eNoDatabase);
    EXPECT_EQ(untouched, id);
    EXPECT_TRUE(orphan->objectId().isNull());
    delete orphan;
}

TEST_F(WorkingDrawing, SelectByClassWindowToleranceAndLayers) {
    const AcDbObjectId inside = AddLine(AcGePoint3d(10, 10, 0), AcGePoint3d(90, 10, 0), L"SF");
    const AcDbObjectId pokesOut = AddLine(AcGePoint3d(10, 50, 0), AcGePoint3d(115, 50, 0), L"HF");
    AcDbObjectId circle;
    ASSERT_EQ(
        addToModelSpace(circle, new AcDbCircle(AcGePoint3d(50, 50, 0), AcGeVector3d::kZAxis, 5)),
        Acad::eOk);

    AcDbObjectIdArray ids;
    ASSERT_TRUE(
        KELToolKit::SelectEntity(ids, L"AcDbLine", AcGePoint3d(0, 0, 0), AcGePoint3d(100, 100, 0)));
    EXPECT_EQ(ids, AcDbObjectIdArray{inside});
    // The tolerance grows the window: the line ending 15 past the edge comes in at 20.
    ASSERT_TRUE(
        KELToolKit::SelectEntity(ids, L"LINE", AcGePoint3d(100, 100, 0), AcGePoint3d(0, 0, 0), 20));
    EXPECT_EQ(ids, (AcDbObjectIdArray{inside, pokesOut}));
    EXPECT_FALSE(
        KELToolKit::SelectEntity(ids, L"NoSuchClass", AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
    EXPECT_TRUE(ids.isEmpty());

    // Crossing on layers: a comma list, or any layer when empty.
    ASSERT_TRUE(KELToolKit::SelectInterEntity(ids, L"AcDbLine", AcGePoint3d(100, 40, 0),
                                              AcGePoint3d(120, 60, 0), L""));
    EXPECT_EQ(ids, AcDbObjectIdArray{pokesOut});
    ASSERT_TRUE(KELToolKit::SelectInterEntity(ids, L"AcDbLine", AcGePoint3d(0, 0, 0),
                                              AcGePoint3d(200, 200, 0), L"SF,XX"));
    EXPECT_EQ(ids, AcDbObjectIdArray{inside});
    ASSERT_TRUE(KELToolKit::SelectInterEntity(ids, L"AcDbEntity", AcGePoint3d(40, 40, 0),
                                              AcGePoint3d(60, 60, 0), L""));
    EXPECT_EQ(ids, (AcDbObjectIdArray{pokesOut, circle}));
}

TEST_F(WorkingDrawing, HighlightsAreCountedWhileTheyLive) {
    const AcDbObjectId id = AddLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    EXPECT_EQ(kelaz::HighlightLevel(id), 0);
    {
        CHighlight first(id);
        EXPECT_EQ(kelaz::HighlightLevel(id), 1);
        {
            CHighlight second(id);
            EXPECT_EQ(CHighlight::Count(id), 2);
        }
        EXPECT_EQ(CHighlight::Count(id), 1);
    }
    EXPECT_EQ(CHighlight::Count(id), 0);
    EXPECT_EQ(kelaz::HighlightLevel(id), 0);
}

TEST(ToolsKELToolKit, ExtentsMeetAndArcsThroughThreePoints) {
    const AcDbExtents a(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 10, 0));
    EXPECT_TRUE(
        KELToolKit::ExtentsInter(a, AcDbExtents(AcGePoint3d(10, 10, 0), AcGePoint3d(20, 20, 0))));
    EXPECT_FALSE(
        KELToolKit::ExtentsInter(a, AcDbExtents(AcGePoint3d(10.5, 0, 0), AcGePoint3d(20, 20, 0))));
    // A flat box around a point meets a box only at the point's height.
    EXPECT_FALSE(
        KELToolKit::ExtentsInter(a, AcDbExtents(AcGePoint3d(4, 4, 1), AcGePoint3d(6, 6, 1))));

    AcGeCircArc3d arc;
    ASSERT_TRUE(KELToolKit::FormArcByTreePt(AcGePoint3d(0, 1000, 0), AcGePoint3d(1000, 0, 0),
                                            AcGePoint3d(0, -1000, 0), arc));
    EXPECT_NEAR(arc.radius(), 1000.0, 1e-9);
    EXPECT_TRUE(arc.normal().isEqualTo(-AcGeVector3d::kZAxis));  // clockwise seen from above
    EXPECT_FALSE(KELToolKit::FormArcByTreePt(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0),
                                             AcGePoint3d(2, 2, 0), arc));
    EXPECT_NEAR(arc.radius(), 1000.0, 1e-9);
}
