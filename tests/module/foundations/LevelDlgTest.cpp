#include <gtest/gtest.h>

#include "host/db/OpenObject.h"
#include "host/ui/DialogDriver.h"
#include "module/foundations/LevelDlg.h"
#include "module/foundations/PickLevel.h"
#include "suite/data/ProjCookie.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/tools/ModelSpace.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/ProjectFixture.h"

namespace {

using LevelDlg = kelaz::test::ProjectTest;

CString TextOf(CWnd* wnd) {
    CString text;
    wnd->GetWindowText(text);
    return text;
}

AcDbObjectId AddPipe(AcDbDatabase& db, double x, double z1, double z2) {
    auto* pipe = new KelAzPipe;
    pipe->setStartPoint(AcGePoint3d(x, 0, z1));
    pipe->setEndPoint(AcGePoint3d(x, 1000, z2));
    AcDbObjectId id;
    EXPECT_EQ(addToModelSpace(id, pipe, &db), Acad::eOk);
    return id;
}

}  // namespace

TEST_F(LevelDlg, HistoryFieldsAndTheSwitch) {
    kelaz::CurrentLevel() = 0;
    {
        CLevelDlg box(L"PLACE");
        ASSERT_TRUE(box.Create());
        EXPECT_EQ(TextOf(box.GetDlgItem(CLevelDlg::kLevelCombo)), L"2800") << "no history yet";
        EXPECT_EQ(box.Control<CButton>(CLevelDlg::kPickButton)->GetBitmap(),
                  CLevelDlg::kPickBitmap);
        kelaz::ScriptedDialogDriver driver;
        // Text that reads as no number becomes 0 when the field is left; the switch greys the
        // field and the pick button.
        for (const wchar_t* a : {L"set 232 abc", L"check 207 0", L"set 232 1", L"check 207 1",
                                 L"set 232 3500", L"key enter", L"ok"}) {
            driver.Add(a);
        }
        kelaz::ScopedDialogDriver install(driver);
        EXPECT_EQ(box.RunModeless(), IDOK);
        ASSERT_EQ(driver.Refusals().size(), 1u);
        // Every control names what it is for; the switch greys both the field and the pick.
        ASSERT_GE(driver.Shown().size(), 3u);
        EXPECT_EQ(driver.Shown()[0],
                  L"[标高]\n"
                  L"  207  复选  输入标高  选中\n"
                  L"  232  组合  标高      [2800]\n"
                  L"  204  按钮  拾取标高\n"
                  L"    1  按钮  确定\n"
                  L"    2  按钮  取消");
        EXPECT_NE(driver.Shown()[2].Find(L"232  组合  标高      [0]   不可用\n"
                                         L"  204  按钮  拾取标高        不可用"),
                  -1);
        EXPECT_EQ(kelaz::CurrentLevel(), 3500.0);
        EXPECT_EQ(box.m_bCheck, 1);
    }
    // The box kept what was typed, most recent first, and its place.
    const CStringArray history =
        KelAzDataMng::CKelAzProjCookie::Instance()->GetLevelHeightObj()->GetLevelHeight(
            L"PLACE_level");
    ASSERT_GE(history.GetSize(), 1);
    EXPECT_EQ(history[0], L"3500");
    CLevelDlg again(L"PLACE");
    ASSERT_TRUE(again.Create());
    EXPECT_EQ(TextOf(again.GetDlgItem(CLevelDlg::kLevelCombo)), L"3500");
    CRect rect;
    again.GetWindowRect(&rect);
    EXPECT_EQ(rect.left, 20);
}

TEST_F(LevelDlg, PickTakesTheElevationOfLevelObjectsOnly) {
    kelaz::test::CommandLineHarness cl;
    const AcDbObjectId level = AddPipe(cl.db, 0, 3000, 3000.00005);
    AddPipe(cl.db, 5000, 3000, 3000.001);
    auto* coil = new KelAzSoftLine;
    coil->addVertexAt(AcGePoint3d(10000, 0, 450), AcGeVector3d::kZAxis, 0);
    coil->addVertexAt(AcGePoint3d(10000, 1000, 450), AcGeVector3d::kZAxis, 0);
    AcDbObjectId coilId;
    ASSERT_EQ(addToModelSpace(coilId, coil, &cl.db), Acad::eOk);

    kelaz::RecordingMessageSink sink;
    kelaz::ScopedMessageSink install(sink);
    CLevelDlg box(L"PICK");
    ASSERT_TRUE(box.Create());
    CWnd* field = box.GetDlgItem(CLevelDlg::kLevelCombo);
    double picked = 0;

    // A pipe level within 0.0001: its start's elevation goes into the box and is read back.
    CPickLevel::m_pLevelEdit = field;
    CPickLevel::m_pLevelParent = &box;
    cl.Type(L"0,500");
    ASSERT_TRUE(CPickLevel::GetLevelOnDlg(picked));
    EXPECT_EQ(picked, 3000.0);
    EXPECT_EQ(TextOf(field), L"3000");
    EXPECT_EQ(kelaz::CurrentLevel(), 3000.0);
    EXPECT_EQ(CPickLevel::m_pLevelEdit, nullptr);
    EXPECT_TRUE(box.IsWindowVisible());
    (void)level;

    // A sloping pipe and a soft line that is no floor heating coil have no single elevation.
    for (const wchar_t* at : {L"5000,500", L"10000,500"}) {
        CPickLevel::m_pLevelEdit = field;
        CPickLevel::m_pLevelParent = &box;
        cl.Type(at);
        EXPECT_FALSE(CPickLevel::GetLevelOnDlg(picked)) << kelaz::ToUtf8(std::wstring_view(at));
    }
    ASSERT_EQ(sink.Records().size(), 2u);
    EXPECT_EQ(sink.Records()[0].text, L"所选构件不能正确提取标高!");
    {
        KelAzSoftLine* line = nullptr;
        ASSERT_EQ(acdbOpenObject(line, coilId, AcDb::kForWrite), Acad::eOk);
        line->SetSmallTypeNamePath(L"暖通\\水暖设备\\地暖盘管");
        line->close();
    }
    cl.Type(L"10000,500");
    ASSERT_TRUE(CPickLevel::GetLevelOnDlg(picked));
    EXPECT_EQ(picked, 450.0);
    // Enter picks nothing and clears the pick.
    CPickLevel::m_pLevelEdit = field;
    cl.Type(L"");
    EXPECT_FALSE(CPickLevel::GetLevelOnDlg(picked));
    EXPECT_EQ(CPickLevel::m_pLevelEdit, nullptr);
    EXPECT_EQ(picked, 450.0);
}
