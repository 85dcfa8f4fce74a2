#include <gtest/gtest.h>

#include "host/ed/CommandStack.h"
#include "host/ui/Dialog.h"
#include "host/ui/DialogDriver.h"
#include "host/ui/MessageBox.h"
#include "tests/support/CommandLineHarness.h"

namespace {

using kelaz::DialogAction;
using Kind = kelaz::DialogAction::Kind;

TEST(DialogActions, EveryActionAndWhatIsWrongWithBadOnes) {
    DialogAction a;
    CString error;
    ASSERT_TRUE(kelaz::ParseDialogAction(L"OK", a, error));
    EXPECT_EQ(a.kind, Kind::kOk);
    ASSERT_TRUE(kelaz::ParseDialogAction(L"esc", a, error));
    EXPECT_EQ(a.kind, Kind::kCancel);
    ASSERT_TRUE(kelaz::ParseDialogAction(L"set 232 3F+500  # floor form", a, error));
    EXPECT_EQ(a.kind, Kind::kSet);
    EXPECT_EQ(a.control, 232);
    EXPECT_EQ(a.value, L"3F+500");
    ASSERT_TRUE(kelaz::ParseDialogAction(L"select 1001 强电 桥架", a, error));
    EXPECT_EQ(a.kind, Kind::kSelect);
    EXPECT_EQ(a.value, L"强电 桥架");
    ASSERT_TRUE(kelaz::ParseDialogAction(L"check 207 0", a, error));
    EXPECT_EQ(a.value, L"0");
    ASSERT_TRUE(kelaz::ParseDialogAction(L"click 204", a, error));
    EXPECT_EQ(a.control, 204);
    // An empty line is Enter; a line of only a comment is no action at all.
    ASSERT_TRUE(kelaz::ParseDialogAction(L"  ", a, error));
    EXPECT_EQ(a.kind, Kind::kKey);
    EXPECT_EQ(a.value, L"enter");

    for (const wchar_t* bad : {L"okay", L"ok now", L"set", L"set x 1", L"set 1.5 a", L"check 207 3",
                               L"click 204 twice", L"select 9", L"0,0", L"# note"}) {
        error.Empty();
        EXPECT_FALSE(kelaz::ParseDialogAction(bad, a, error)) << kelaz::ToUtf8(CString(bad));
        EXPECT_FALSE(error.IsEmpty());
    }
}

TEST(DialogActions, TheCommandLineDriverReadsTheSameInput) {
    kelaz::test::CommandLineHarness cl({L"set 232 2800", L"push 1", L"ok"});
    kelaz::DialogDriver& driver = kelaz::CurrentDialogDriver();
    CDialog box(200);
    box.SetWindowText(L"标高");
    DialogAction a;
    ASSERT_TRUE(driver.NextAction(box, a));
    EXPECT_EQ(a.kind, Kind::kSet);
    ASSERT_TRUE(driver.NextAction(box, a));  // "push 1" is refused and read on
    EXPECT_EQ(a.kind, Kind::kOk);
    EXPECT_FALSE(driver.NextAction(box, a));  // nothing left: the dialog is cancelled
    EXPECT_NE(cl.Out().find("[标高] 对话框操作:push 1\n对话框操作是"), std::string::npos);
    EXPECT_TRUE(cl.editor.InputExhausted());

    kelaz::ScriptedDialogDriver scripted;
    EXPECT_TRUE(scripted.Add(CString(L"cancel")));
    EXPECT_FALSE(scripted.Add(CString(L"nonsense")));
    kelaz::ScopedDialogDriver scope(scripted);
    ASSERT_TRUE(kelaz::CurrentDialogDriver().NextAction(box, a));
    EXPECT_EQ(a.kind, Kind::kCancel);
}

// A name field and a flag; Enter confirms.
class NameDialog : public CDialog {
public:
    NameDialog() : CDialog(310) {
        SetWindowText(L"名称");
        AddStatic(L"名称");
        AddEdit(10);
        AddButton(11, L"保温", CButton::Style::kCheckBox);
    }
};

NameDialog* g_open = nullptr;
// A transparent command that changes the open dialog behind the drafter's back.
void FillName() { g_open->GetDlgItem(10)->SetWindowText(L"回风管"); }

TEST(DialogActions, TheCommandLineShowsTheDialogAndAnEmptyLineIsEnter) {
    ASSERT_EQ(acedRegCmds->addCommand(L"TEST", L"FILL", nullptr, ACRX_CMD_TRANSPARENT, FillName),
              Acad::eOk);
    kelaz::test::CommandLineHarness cl({L"check 11 1", L"click 10", L"'FILL", L""});
    NameDialog dialog;
    g_open = &dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    g_open = nullptr;
    acedRegCmds->removeGroup(L"TEST");
    // Shown on opening, after the check, after the transparent command; not after the refused
    // click, nor once Enter has closed it.
    EXPECT_EQ(cl.Out(),
              "[名称]\n"
              "  10  编辑  名称  []\n"
              "  11  复选  保温  未选\n"
              "   1  按钮  确定\n"
              "   2  按钮  取消\n"
              "[名称] 对话框操作:check 11 1\n"
              "[名称]\n"
              "  10  编辑  名称  []\n"
              "  11  复选  保温  选中\n"
              "   1  按钮  确定\n"
              "   2  按钮  取消\n"
              "[名称] 对话框操作:click 10\n"
              "控件 10 不接受这个操作。\n"
              "[名称] 对话框操作:'FILL\n"
              "[名称]\n"
              "  10  编辑  名称  [回风管]\n"
              "  11  复选  保温  选中\n"
              "   1  按钮  确定\n"
              "   2  按钮  取消\n"
              "[名称] 对话框操作:\n");
}

TEST(ConsoleMessageBox, QuestionsAreAnsweredFromTheCommandLine) {
    kelaz::test::CommandLineHarness cl({L"maybe", L"Y", L"n", L"cancel"});
    kelaz::ConsoleMessageSink console;
    kelaz::ScopedMessageSink scope(console);
    EXPECT_EQ(MessageBox(nullptr, L"删除所选管线?", L"Kelsoft", MB_YESNO | 0x12130), IDYES);
    EXPECT_EQ(MessageBox(nullptr, L"继续?", L"Kelsoft", MB_YESNO), IDNO);
    EXPECT_EQ(MessageBox(nullptr, L"保存?", L"Kelsoft", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(MessageBox(nullptr, L"楼层信息错误!", L"Kelsoft", 0x12030), IDOK);
    // Input that has run out answers the quiet default: no.
    EXPECT_EQ(MessageBox(nullptr, L"再问?", L"Kelsoft", MB_YESNO), IDNO);
    EXPECT_EQ(cl.Out(),
              "[Kelsoft] 删除所选管线?\n(yes/no): maybe\n请回答 yes 或 no。\n(yes/no): Y\n"
              "[Kelsoft] 继续?\n(yes/no): n\n"
              "[Kelsoft] 保存?\n(ok/cancel): cancel\n"
              "[Kelsoft] 楼层信息错误!\n"
              "[Kelsoft] 再问?\n(yes/no): ");
}

}  // namespace
