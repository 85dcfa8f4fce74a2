#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <variant>

#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"
#include "host/ui/DialogDriver.h"
#include "module/foundations/LevelDlg.h"
#include "module/multipipe/DrawMlead.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzMainLead.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

struct Laid {
    CString attName;
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge = 0.0;
};

class DrawMlead : public kelaz::test::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(KelAzDataMng::CProj::SetCurrentSpec(L"电气"));
        CMultiPipeRowStore::ClearAll();
        kelaz::CurrentLevel() = 2800.0;
    }
    void TearDown() override {
        CMultiPipeRowStore::ClearAll();
        CommandTest::TearDown();
    }
    void AddRow(const wchar_t* comp, const wchar_t* name, double horz, double vert = 0.0) {
        auto row = std::make_unique<MultiPipeRow>();
        row->spec = L"电气";
        row->compType = comp;
        row->lineName = name;
        row->sysCode = L"WL";
        row->layMode = L"N/A";
        row->horzOffset = horz;
        row->vertOffset = vert;
        CMultiPipeRowStore::StoredRows(L"电气")->push_back(std::move(row));
    }
    // Runs the command with the settings confirmed as stored; what the command line showed.
    std::string Run(std::vector<CString> lines, std::vector<CString> dialog = {L"ok"}) {
        kelaz::ScriptedInput input(std::move(lines));
        std::ostringstream out;
        kelaz::Editor editor(&db, &input, &out);
        kelaz::ScopedEditor scope(editor);
        kelaz::ScriptedDialogDriver driver;
        for (const CString& action : dialog) driver.Add(action);
        kelaz::ScopedDialogDriver useDriver(driver);
        pAddMlead();
        EXPECT_EQ(CDrawMlead::Current(), nullptr);
        return out.str();
    }
    std::vector<Laid> Leads() {
        std::vector<Laid> out;
        for (const AcDbObjectId& id : kelaz::test::ModelSpaceIds(db)) {
            kelaz::test::Opened<KelAzLead> lead(id, AcDb::kForRead);
            if (!lead) continue;
            Laid laid{lead->GetAttName(), {}, {}, lead->GetBulge()};
            lead->getStartPoint(laid.start);
            lead->getEndPoint(laid.end);
            out.push_back(laid);
        }
        return out;
    }
};

}  // namespace

TEST_F(DrawMlead, ABundleTurnsACornerWithMitresAndTheLastPieceIsTakenBack) {
    AddRow(L"照明导线", L"BV-2.5", 100);
    AddRow(L"动力导线", L"BV-6", 200);
    AddRow(L"导管", L"SC20", 300);
    const std::string shown = Run({L"0,0", L"drag 5000,0", L"5000,0", L"5000,4000", L"A",
                                   L"6000,6000", L"8000,6500", L"U", L"", L"^C"});
    EXPECT_NE(shown.find("捕捉下一个端点[A-圆弧，U-退回]"), std::string::npos);
    EXPECT_NE(shown.find("回退"), std::string::npos);

    const std::vector<Laid> leads = Leads();
    ASSERT_EQ(leads.size(), 6u) << "two legs of three lines; the arc was taken back";
    const double offsets[] = {100, 200, 300};
    const wchar_t* names[] = {L"电气\\管线\\照明导线\\BV-2.5", L"电气\\管线\\动力导线\\BV-6",
                              L"电气\\管线\\导管\\SC20"};
    for (int row = 0; row < 3; ++row) {
        const double d = offsets[row];
        const Laid& first = leads[row];
        const Laid& second = leads[3 + row];
        EXPECT_EQ(first.attName, CString(names[row]));
        // Right of travel along +x is -y; the left turn up +y puts the corner outside.
        EXPECT_POINT_NEAR(first.start, AcGePoint3d(0, -d, 2800), 1e-9);
        EXPECT_POINT_NEAR(first.end, AcGePoint3d(5000 + d, -d, 2800), 1e-9);
        EXPECT_POINT_NEAR(second.start, first.end, 0.0);
        EXPECT_POINT_NEAR(second.end, AcGePoint3d(5000 + d, 4000, 2800), 1e-9);
    }
    // Neighbours stay exactly 100 apart along both legs.
    for (int row = 0; row + 1 < 3; ++row) {
        EXPECT_DOUBLE_EQ(leads[row].start.y - leads[row + 1].start.y, 100.0);
        EXPECT_DOUBLE_EQ(leads[3 + row + 1].start.x - leads[3 + row].start.x, 100.0);
    }
}

TEST_F(DrawMlead, ThePreviewShowsWhatThePointThenLays) {
    AddRow(L"照明导线", L"BV-2.5", 100);
    AddRow(L"导管", L"SC20", 300);
    kelaz::ScriptedInput input({L"0,0", L"4000,0", L"drag 4000,3000", L"4000,3000", L"", L"^C"});
    std::ostringstream out;
    kelaz::Editor editor(&db, &input, &out);
    kelaz::ScopedEditor scope(editor);
    kelaz::ScriptedDialogDriver dialog;
    dialog.Add(L"ok");
    kelaz::ScopedDialogDriver useDriver(dialog);
    pAddMlead();
    const kelaz::GiPrimitiveList& preview = editor.DragPreview();
    ASSERT_EQ(preview.size(), 2u);
    const std::vector<Laid> leads = Leads();
    ASSERT_EQ(leads.size(), 4u);
    for (int row = 0; row < 2; ++row) {
        const auto* line = std::get_if<kelaz::GiPolyline>(&preview[row].shape);
        ASSERT_NE(line, nullptr);
        ASSERT_EQ(line->points.size(), 3u);
        const Laid& laid = leads[2 + row];
        // The same two ends, flat, whichever way round the preview draws them.
        const AcGePoint3d a(laid.start.x, laid.start.y, 0), b(laid.end.x, laid.end.y, 0);
        const bool forward = line->points.front().distanceTo(a) < 1e-9;
        EXPECT_POINT_NEAR(line->points.front(), forward ? a : b, 1e-9);
        EXPECT_POINT_NEAR(line->points.back(), forward ? b : a, 1e-9);
    }
}

TEST_F(DrawMlead, AnOffsetWiderThanTheArcEndsThePassWithTheMessage) {
    AddRow(L"照明导线", L"BV-2.5", 100);
    AddRow(L"动力导线", L"BV-6", 200);
    // Along +x, then a clockwise arc of radius 150 (centre on the right, where offsets go).
    const std::string shown =
        Run({L"0,0", L"1000,0", L"A", L"1106.066,-43.934", L"1150,-150", L"^C"});
    EXPECT_NE(shown.find("Error:当前圆弧半径小于偏移量，请重新选择"), std::string::npos);
    EXPECT_EQ(Leads().size(), 2u) << "the straight leg stays, the arc is not laid";
}

TEST_F(DrawMlead, UndoAtTheFirstPointKeepsItAndOtherKeywordsChangeNothing) {
    AddRow(L"照明导线", L"BV-2.5", 100);
    Run({L"1000,1000", L"U", L"2000,1000", L"", L"^C"});
    const std::vector<Laid> leads = Leads();
    ASSERT_EQ(leads.size(), 1u);
    EXPECT_POINT_NEAR(leads[0].start, AcGePoint3d(1000, 900, 2800), 1e-9);

    CDrawMlead driver(L"dxbz");
    EXPECT_EQ(driver.RollBack(L"A"), 1);
    EXPECT_EQ(driver.RollBack(L"U"), 0) << "nothing drawn";
    EXPECT_EQ(driver.SegmentGroups(), 0u);
}

TEST_F(DrawMlead, TheElevationBoxGivesPointsTheirHeightUnlessItIsTooLong) {
    CDrawMlead driver(L"dxbz");
    driver.Create();
    AcGePoint3d pt(10, 20, 0);
    kelaz::CurrentLevel() = 2800.0;
    ASSERT_TRUE(driver.AdjustPt(pt));
    EXPECT_EQ(pt.z, 2800.0);
    // Thirteen characters pass, fourteen do not.
    driver.Control<CWnd>(CLevelDlg::kLevelCombo)->SetWindowText(L"12345678901234");
    EXPECT_FALSE(driver.AdjustPt(pt));
    ASSERT_FALSE(Texts().empty());
    EXPECT_EQ(Texts().back(), CString(L"输入数值过大!"));
    driver.Control<CWnd>(CLevelDlg::kLevelCombo)->SetWindowText(L"1234567890123");
    EXPECT_TRUE(driver.AdjustPt(pt));
    EXPECT_EQ(pt.z, 1234567890123.0);
    driver.DestroyWindow();
}

TEST_F(DrawMlead, ARisingPieceIsLaidLevelWithAVerticalLeadAtTheChosenEnd) {
    AddRow(L"照明导线", L"BV-2.5", 100);
    // The box's check off: the points keep the elevations typed.
    kelaz::ScriptedInput input({L"0,0,3000", L"4000,0,2800", L"", L"^C"});
    std::ostringstream out;
    kelaz::Editor editor(&db, &input, &out);
    kelaz::ScopedEditor scope(editor);
    kelaz::ScriptedDialogDriver dialog;
    dialog.Add(L"ok");
    dialog.Add(L"key 2");
    kelaz::ScopedDialogDriver useDriver(dialog);
    CDrawMlead::Current() = nullptr;
    {
        CDrawMlead driver(L"dxbz");
        driver.m_bCheck = 0;
        CDrawMlead::Current() = &driver;
        driver.Draw();
        CDrawMlead::Current() = nullptr;
    }
    const std::vector<Laid> leads = Leads();
    ASSERT_EQ(leads.size(), 1u);
    EXPECT_EQ(leads[0].start.z, 3000.0);
    EXPECT_EQ(leads[0].end.z, 3000.0);
    int risers = 0;
    for (const AcDbObjectId& id : kelaz::test::ModelSpaceIds(db)) {
        kelaz::test::Opened<KelAzMainLead> riser(id, AcDb::kForRead);
        if (riser) ++risers;
    }
    EXPECT_EQ(risers, 1);
}
