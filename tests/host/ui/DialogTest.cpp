#include <gtest/gtest.h>

#include "host/ui/Dialog.h"
#include "host/ui/DialogDriver.h"

namespace {

// A dialog with one of every control: a name, a kind chosen by radio buttons, a flag, a list.
class SampleDialog : public CDialog {
public:
    SampleDialog() : CDialog(300) {
        SetWindowText(L"样例");
        AddEdit(10);
        AddButton(11, L"圆形(&R)", CButton::Style::kRadio);
        AddButton(12, L"矩形(&S)", CButton::Style::kRadio);
        AddButton(13, L"保温", CButton::Style::kCheckBox);
        CComboBox& list = AddComboBox(14);
        list.AddString(L"送风");
        list.AddString(L"回风");
        AddButton(15, L"清空");
    }
    CString name = L"风管";
    int kind = 1;
    int insulated = 0;
    int clicks = 0;
    int killed = 0;

protected:
    void DoDataExchange(CDataExchange* dx) override {
        DDX_Text(dx, 10, name);
        DDX_Radio(dx, 11, kind);
        DDX_Check(dx, 13, insulated);
    }
    void OnClicked(int id) override {
        if (id == 15) {
            ++clicks;
            GetDlgItem(10)->SetWindowText(L"");
            GetDlgItem(13)->EnableWindow(FALSE);
        }
        CDialog::OnClicked(id);
    }
    void OnKillFocus(int id) override {
        if (id == 10) ++killed;
    }
};

INT_PTR ShowWith(SampleDialog& dialog, std::initializer_list<const wchar_t*> actions,
            kelaz::ScriptedDialogDriver& driver) {
    for (const wchar_t* a : actions)
        EXPECT_TRUE(driver.Add(a)) << kelaz::ToUtf8(std::wstring_view(a));
    kelaz::ScopedDialogDriver install(driver);
    return dialog.DoModal();
}

}  // namespace

TEST(UiDialog, ActionsWorkTheControlsAndOkExchangesTheData) {
    SampleDialog dialog;
    kelaz::ScriptedDialogDriver driver;
    EXPECT_EQ(
        ShowWith(dialog, {L"set 10 矩形风管", L"check 12 1", L"check 13 1", L"select 14 回风", L"ok"},
            driver),
        IDOK);
    EXPECT_EQ(dialog.name, L"矩形风管");
    EXPECT_EQ(dialog.kind, 1);
    EXPECT_EQ(dialog.insulated, 1);
    EXPECT_EQ(dialog.killed, 1) << "leaving the name field is noticed";
    EXPECT_EQ(dialog.Control<CComboBox>(14)->GetCurSel(), 1);
    EXPECT_TRUE(driver.Refusals().empty());
    EXPECT_FALSE(dialog.GetSafeHwnd()) << "closed after DoModal";
}

TEST(UiDialog, RadioGroupsMnemonicsAndRefusals) {
    SampleDialog dialog;
    kelaz::ScriptedDialogDriver driver;
    // Opening puts the members into the controls: kind 1 checks the second radio button.
    // The mnemonic R selects the first; a click on 清空 disables the flag, which then refuses.
    EXPECT_EQ(ShowWith(dialog,
                  {L"key r", L"click 15", L"check 13 1", L"set 99 x", L"select 14 排风", L"key q",
                   L"cancel"},
                  driver),
              IDCANCEL);
    EXPECT_EQ(dialog.Control<CButton>(11)->GetCheck(), BST_CHECKED);
    EXPECT_EQ(dialog.Control<CButton>(12)->GetCheck(), BST_UNCHECKED);
    EXPECT_EQ(dialog.clicks, 1);
    EXPECT_EQ(driver.Refusals().size(), 4u);
    // Cancel keeps the members as they were.
    EXPECT_EQ(dialog.name, L"风管");
    EXPECT_EQ(dialog.kind, 1);

    // Input that runs out cancels.
    SampleDialog again;
    kelaz::ScriptedDialogDriver empty;
    EXPECT_EQ(ShowWith(again, {L"set 10 x"}, empty), IDCANCEL);
}

TEST(UiDialog, ActionLinesAreParsedStrictly) {
    kelaz::DialogAction action;
    CString error;
    ASSERT_TRUE(kelaz::ParseDialogAction(L"set 232 3F+500  # a comment", action, error));
    EXPECT_EQ(action.kind, kelaz::DialogAction::Kind::kSet);
    EXPECT_EQ(action.control, 232);
    EXPECT_EQ(action.value, L"3F+500");
    ASSERT_TRUE(kelaz::ParseDialogAction(L"key space", action, error));
    EXPECT_EQ(action.kind, kelaz::DialogAction::Kind::kKey);
    EXPECT_EQ(action.value, L"space");
    ASSERT_TRUE(kelaz::ParseDialogAction(L"KEY A", action, error));
    EXPECT_EQ(action.value, L"A");
    for (const wchar_t* bad :
         {L"key", L"key ab", L"click", L"click 1 2", L"check 3 5", L"press 1", L"set x y"}) {
        EXPECT_FALSE(kelaz::ParseDialogAction(bad, action, error))
            << kelaz::ToUtf8(std::wstring_view(bad));
        EXPECT_FALSE(error.IsEmpty());
    }
}
