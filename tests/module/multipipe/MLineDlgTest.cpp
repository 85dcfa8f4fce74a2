#include <gtest/gtest.h>

#include "host/ui/DialogDriver.h"
#include "host/ui/DialogText.h"
#include "module/multipipe/MLineDlg.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/HorizontalLayMng.h"
#include "suite/data/Proj.h"
#include "suite/data/SysCode.h"
#include "suite/grid/KELGrid1.h"
#include "tests/support/CommandFixture.h"

namespace {

constexpr int kGrid = CMLineDlg::kGrid;

class MLineDlg : public kelaz::test::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(KelAzDataMng::CProj::SetCurrentSpec(L"电气"));
        ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L"WL"));
        CMultiPipeRowStore::ClearAll();
    }
    void TearDown() override {
        CMultiPipeRowStore::ClearAll();
        CommandTest::TearDown();
    }
    // Opens the dialog and works it with the actions; its result.
    INT_PTR Work(CMLineDlg& dlg, std::initializer_list<const wchar_t*> actions) {
        for (const wchar_t* a : actions)
            EXPECT_TRUE(driver.Add(CString(a))) << kelaz::ToUtf8(CString(a));
        kelaz::ScopedDialogDriver use(driver);
        return dlg.DoModal();
    }
    MultiPipeRowList& Stored() { return *CMultiPipeRowStore::StoredRows(L"电气"); }

    kelaz::ScriptedDialogDriver driver;
};

}  // namespace

TEST(GridCtrl, CellsStatesSelectionAndDeletionOfRows) {
    CKELGrid1 grid;
    grid.SetDefaultCellType(CKELGrid1::kReadOnlyCell);
    grid.SetColumnCount(3);
    grid.SetRowCount(1);
    grid.SetFixedRowCount(1);
    grid.SetFixedColumnCount(1);
    for (int i = 0; i < 4; ++i) grid.InsertRow(kelaz::FormatText(L"%d", i + 1));
    ASSERT_EQ(grid.GetRowCount(), 5);
    EXPECT_EQ(grid.GetItemState(2, 1) & GVIS_READONLY, GVIS_READONLY) << "the default type";
    EXPECT_EQ(grid.GetItemState(0, 1) & GVIS_FIXED, GVIS_FIXED);
    grid.SetItemState(2, 2, GVIS_DROPDOWNLIST);
    grid.SetItemText(3, 2, L"x");

    CString why;
    EXPECT_FALSE(grid.TypeIntoCell(2, 1, L"a", why)) << "read-only";
    EXPECT_FALSE(grid.TypeIntoCell(0, 1, L"a", why)) << "fixed";
    EXPECT_FALSE(grid.TypeIntoCell(2, 2, L"a", why)) << "only chosen";
    EXPECT_FALSE(grid.ChooseInCell(2, 2, L"b", why)) << "no options yet";
    grid.SetOptionsFun([](int row, int col, CStringArray& options) {
        options.Add(kelaz::FormatText(L"r%dc%d", row, col));
        options.Add(L"b");
    });
    EXPECT_TRUE(grid.ChooseInCell(2, 2, L"b", why)) << kelaz::ToUtf8(why);
    EXPECT_TRUE(grid.ChooseInCell(2, 2, L"0", why)) << "by position";
    EXPECT_EQ(grid.GetItemText(2, 2), CString(L"r2c2"));
    EXPECT_FALSE(grid.ChooseInCell(2, 2, L"c", why));

    // Deleting a selected range of rows keeps the fixed row and what lies outside it.
    grid.SetSelectedRange(0, 1, 2, 2, false);
    EXPECT_EQ(grid.DelSelRow(), TRUE);
    EXPECT_EQ(grid.GetRowCount(), 3);
    EXPECT_EQ(grid.GetItemText(1, 2), CString(L"x"));
    EXPECT_FALSE(grid.GetSelectedCellRange().IsValid());
    EXPECT_EQ(grid.DelSelRow(), FALSE);
}

TEST(GridCtrl, GridActionsParseWithTheirCells) {
    kelaz::DialogAction a;
    CString error;
    ASSERT_TRUE(kelaz::ParseDialogAction(L"cell 10001 2 6 350", a, error));
    EXPECT_EQ(a.kind, kelaz::DialogAction::Kind::kCell);
    EXPECT_EQ(a.row, 2);
    EXPECT_EQ(a.column, 6);
    EXPECT_EQ(a.value, CString(L"350"));
    ASSERT_TRUE(kelaz::ParseDialogAction(L"row 10001 3", a, error));
    EXPECT_EQ(a.kind, kelaz::DialogAction::Kind::kRange);
    EXPECT_EQ(a.column, -1);
    ASSERT_TRUE(kelaz::ParseDialogAction(L"range 10001 1 1 2 6", a, error));
    EXPECT_EQ(a.row2, 2);
    EXPECT_EQ(a.column2, 6);
    ASSERT_TRUE(kelaz::ParseDialogAction(L"range 10001 1 2", a, error));
    EXPECT_EQ(a.row2, 1);
    EXPECT_EQ(a.column2, 2);
    ASSERT_TRUE(kelaz::ParseDialogAction(L"choose 10001 1 4 WC-墙内暗敷", a, error));
    EXPECT_EQ(a.value, CString(L"WC-墙内暗敷"));
    EXPECT_FALSE(kelaz::ParseDialogAction(L"cell 10001 x 2 1", a, error));
    EXPECT_FALSE(kelaz::ParseDialogAction(L"range 10001 1 2 3", a, error));
    EXPECT_FALSE(kelaz::ParseDialogAction(L"choose 10001 1 4", a, error));
}

TEST_F(MLineDlg, RowsTakeTheFirstFreeOffsetAndOkChecksThem) {
    CMLineDlg dlg;
    const INT_PTR result = Work(
        dlg,
        {L"select 211 照明导线\\BV-2.5", L"select 211 照明导线\\BV-2.5", L"select 211 导管\\SC20",
         // The second row goes; the next one takes its offset again.
         L"row 10001 2", L"click 212", L"select 211 动力导线\\BV-6",
         // The third row typed onto the first one's offsets: refused, then moved.
         L"cell 10001 3 6 100", L"ok", L"cell 10001 3 5 abc", L"ok", L"cell 10001 3 5 50", L"ok"});
    EXPECT_EQ(result, IDOK);
    ASSERT_EQ(Stored().size(), 3u);
    EXPECT_EQ(Stored()[0]->lineName, CString(L"BV-2.5"));
    EXPECT_EQ(Stored()[1]->lineName, CString(L"SC20"));
    EXPECT_EQ(Stored()[1]->horzOffset, 300.0);
    EXPECT_EQ(Stored()[2]->compType, CString(L"动力导线"));
    EXPECT_EQ(Stored()[2]->horzOffset, 100.0);
    EXPECT_EQ(Stored()[2]->vertOffset, 50.0);
    EXPECT_EQ(Stored()[0]->sysCode, CString(L"WL"));
    EXPECT_EQ(Stored()[0]->spec, CString(L"电气"));
    // Before the typing, the new row had 200, freed by the deletion.
    const std::vector<CString> texts = Texts();
    int coincide = 0;
    for (const CString& t : texts) coincide += t == L"管线重合请重新输入数据" ? 1 : 0;
    EXPECT_EQ(coincide, 2) << "100/0 twice (\"abc\" reads 0), then 100/50 passes";
    EXPECT_NE(kelaz::ToUtf8(driver.Shown()[6]).find("200"), std::string::npos);
}

TEST_F(MLineDlg, DeleteAsksForAWholeRowAndAnEmptyGridIsRefused) {
    CMLineDlg dlg;
    EXPECT_EQ(Work(dlg, {L"ok", L"select 211 照明导线\\BV-4", L"range 10001 1 5", L"click 212",
                         L"cancel"}),
              IDCANCEL);
    const std::vector<CString> texts = Texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], CString(L"请选择管线"));
    EXPECT_EQ(texts[1], CString(L"请先选择要删除的行"));
    EXPECT_EQ(sink.Records()[0].caption, CString(L"Kelsoft"));
    EXPECT_EQ(sink.Records()[0].flags & 0xF0, MB_ICONINFORMATION);
    EXPECT_EQ(sink.Records()[1].flags & 0xF0, MB_ICONWARNING);
    // A cancelled dialog keeps what was typed for the next time.
    ASSERT_EQ(Stored().size(), 1u);
    EXPECT_EQ(Stored()[0]->lineName, CString(L"BV-4"));
}

TEST_F(MLineDlg, CablesHaveNoLayingModeAndUnknownCodesAreReset) {
    auto cable = std::make_unique<MultiPipeRow>();
    cable->spec = L"电气";
    cable->compType = L"电缆";
    cable->lineName = L"YJV-5x10";
    cable->sysCode = L"NO-SUCH";
    cable->layMode = L"N/A";
    cable->horzOffset = 100;
    Stored().push_back(std::move(cable));
    auto other = std::make_unique<MultiPipeRow>();
    other->spec = L"1_5u";  // kept, not shown
    other->compType = L"配线";
    other->lineName = L"BV-2.5";
    Stored().push_back(std::move(other));

    CMLineDlg dlg;
    EXPECT_EQ(Work(dlg, {L"choose 10001 1 4 0", L"ok"}), IDOK);
    ASSERT_EQ(driver.Refusals().size(), 1u) << "the N/A cell takes no laying mode";
    CKELGrid1* grid = dlg.Grid();
    EXPECT_EQ(grid->GetItemText(1, 4), CString(L"N/A"));
    EXPECT_EQ(grid->GetItemBkColour(1, 4), COLORREF(0x00FFFF));
    EXPECT_NE(grid->GetItemState(1, 4) & GVIS_READONLY, 0u);
    EXPECT_EQ(grid->GetItemText(1, 0), CString(L" 1 "));
    EXPECT_EQ(grid->GetRowHeight(0), grid->GetDefCellHeight() * 2 - 8);
    EXPECT_EQ(grid->GetColumnWidth(2), 75);
    std::vector<KelAzDataMng::CSysCodeData> codes;
    ASSERT_TRUE(KelAzDataMng::CISysCode::GetSpecCodeInfos(L"电气", codes));
    ASSERT_EQ(Stored().size(), 1u) << "the list of 电气 holds what the dialog showed";
    EXPECT_EQ(Stored()[0]->sysCode, codes.front().GetFullName());
    // The text form shows the yellow, read-only cell.
    EXPECT_NE(kelaz::ToUtf8(driver.Shown()[0]).find("N/A[只读,黄]"), std::string::npos);
}

TEST_F(MLineDlg, TheFirstLayingModeRequestOnlyPrimesTheList) {
    CMLineDlg::LayModePrimed() = false;
    CMLineDlg::DefaultLayMode().Empty();
    CMLineDlg dlg;
    EXPECT_EQ(Work(dlg, {L"select 211 照明导线\\BV-2.5", L"choose 10001 1 4 0",
                         L"choose 10001 1 4 0", L"ok"}),
              IDOK);
    ASSERT_EQ(driver.Refusals().size(), 1u) << "the first list is empty";
    CStringArray names;
    ASSERT_TRUE(KelAzDataMng::CHorizontalLayMng::GetLayModeName(
        KelAzDataMng::CProj::GetCurFloorName(), names));
    ASSERT_GT(names.GetSize(), 1);
    // Last name first; the last becomes the default for new rows.
    EXPECT_EQ(dlg.Grid()->GetItemText(1, 4), names[names.GetSize() - 1]);
    EXPECT_EQ(CMLineDlg::DefaultLayMode(), names[names.GetSize() - 1]);
}

TEST_F(MLineDlg, RenamingALineKindIsKeptInTheProject) {
    CMLineDlg dlg;
    EXPECT_EQ(Work(dlg, {L"select 211 照明导线\\BV-2.5", L"range 10001 1 2",
                         L"set 221 BV-2.5-450/750V", L"ok", L"ok"}),
              IDOK);
    EXPECT_EQ(Stored()[0]->lineName, CString(L"BV-2.5-450/750V"));
    Reopen();
    KelAzDataMng::SAttDataIndex index;
    EXPECT_TRUE(KelAzDataMng::AttNameToAttId(L"电气\\管线\\照明导线\\BV-2.5-450/750V", index));
    EXPECT_FALSE(KelAzDataMng::AttNameToAttId(L"电气\\管线\\照明导线\\BV-2.5", index));
}
