#include <gtest/gtest.h>

#include <sstream>

#include "app/drawing/DrawingView.h"
#include "app/drawing/Json.h"
#include "app/drawing/SampleDrawing.h"
#include "host/db/Arc.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "module/multipipe/MultiLine.h"
#include "tests/support/DbCheckers.h"

using kelaz::test::Append;

TEST(AppJson, StringsAndNumbersAreValidJson) {
    EXPECT_EQ(kelaz::json::String(L"暖通\\风口 \"A\"\n"), "\"暖通\\\\风口 \\\"A\\\"\\n\"");
    EXPECT_EQ(kelaz::json::String(CString(L"\x01")), "\"\\u0001\"");
    EXPECT_EQ(kelaz::json::Number(1500.0), "1500");
    EXPECT_EQ(kelaz::json::Number(0.1), "0.1");
    EXPECT_EQ(kelaz::json::Number(-0.0), "0");
    EXPECT_EQ(kelaz::json::Number(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(kelaz::json::Number(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(kelaz::json::Point(AcGePoint3d(1, -2, 3.5)), "[1,-2,3.5]");
}

TEST(AppDrawingView, DumpListsStandardEntitiesInDrawingOrder) {
    kelaz::InitDrawingClasses();
    AcDbDatabase db;
    Append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1000, 0, 0)));
    auto* arc = new AcDbArc(AcGePoint3d(0, 0, 0), 1000, 0, 3.14159265358979323846 / 2);
    const AcDbObjectId arcId = Append(db, arc);
    auto* pline = new AcDbPolyline(2);
    pline->addVertexAt(0, AcGePoint2d(0, 0), 1.0);
    pline->addVertexAt(1, AcGePoint2d(100, 0));
    Append(db, pline);
    Append(db, new CMultiLine);
    {
        kelaz::test::Opened<AcDbArc> erased(arcId, AcDb::kForWrite);
        ASSERT_EQ(erased->erase(), Acad::eOk);
    }

    std::ostringstream out;
    kelaz::DumpDrawing(db, out);
    std::istringstream lines(out.str());
    std::string line;
    std::vector<std::string> all;
    while (std::getline(lines, line)) all.push_back(line);
    ASSERT_EQ(all.size(), 3u) << out.str();  // the erased arc is not listed
    EXPECT_NE(all[0].find("\"class\":\"AcDbLine\""), std::string::npos);
    EXPECT_NE(all[0].find("\"start\":[0,0,0],\"end\":[1000,0,0],\"bulge\":0"), std::string::npos)
        << all[0];
    EXPECT_NE(all[0].find("\"attName\":\"\",\"sysCode\":\"\""), std::string::npos);
    EXPECT_NE(all[1].find("\"vertices\":[[0,0,0,1],[100,0,0,0]]"), std::string::npos) << all[1];
    EXPECT_NE(all[2].find("\"class\":\"CMultiLine\""), std::string::npos);
    EXPECT_EQ(all[0].rfind("{\"handle\":\"", 0), 0u);
}

TEST(AppDrawingView, ExportViewCarriesLayersPrimitivesAndHandles) {
    kelaz::InitDrawingClasses();
    AcDbDatabase db;
    kelaz::test::AddLayer(db, L"给水", 3);
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1000, 0, 0));
    ASSERT_EQ(line->setLayer(L"给水"), Acad::eOk);
    const AcDbObjectId id = Append(db, line);

    const kelaz::ExportDrawing drawing = kelaz::BuildExportDrawing(db);
    bool found = false;
    for (const auto& layer : drawing.layers)
        found = found || (layer.name == L"给水" && layer.color == 3);
    EXPECT_TRUE(found);
    ASSERT_EQ(drawing.entities.size(), 1u);
    const kelaz::ExportEntity& e = drawing.entities[0];
    EXPECT_EQ(e.className, "AcDbLine");
    EXPECT_EQ(e.layer, L"给水");
    EXPECT_EQ(e.primitives.size(), 1u);
    EXPECT_TRUE(e.xdata.empty());
    wchar_t handle[32] = {};
    id.handle().getIntoAsciiBuffer(handle, 32);
    EXPECT_EQ(kelaz::FromUtf8(e.handle), CString(handle).MakeUpper());
}

TEST(AppDrawingView, EveryClassSurvivesSaveAndReopenUnchanged) {
    kelaz::InitDrawingClasses();
    AcDbDatabase db;
    ASSERT_TRUE(kelaz::BuildSampleDrawing(db));
    Append(db, new CMultiLine);
    std::ostringstream before;
    kelaz::DumpDrawing(db, before);

    const std::string path = ::testing::TempDir() + "kelaz-reopen.kdw";
    ASSERT_EQ(db.saveAs(kelaz::FromUtf8(path)), Acad::eOk);
    std::string report;
    const std::unique_ptr<AcDbDatabase> reopened = kelaz::OpenDrawing(path, report);
    ASSERT_TRUE(reopened) << report;
    std::ostringstream after;
    kelaz::DumpDrawing(*reopened, after);
    EXPECT_EQ(after.str(), before.str());
    std::remove(path.c_str());
}
