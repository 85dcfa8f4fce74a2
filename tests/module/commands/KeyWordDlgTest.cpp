#include <gtest/gtest.h>

#include "host/ui/DialogDriver.h"
#include "module/commands/KeyWordDlg.h"

namespace {

CStringArray Items(std::initializer_list<const wchar_t*> items) {
    CStringArray out;
    for (const wchar_t* item : items) out.Add(item);
    return out;
}

// Shows the dialog with the items and the actions given; answers DoModal's result.
INT_PTR Show(CKeyWordDlg& dialog, std::initializer_list<const wchar_t*> items,
             std::initializer_list<const wchar_t*> actions) {
    dialog.SetCaption(L"处理方式");
    dialog.SetItems(Items(items));
    kelaz::ScriptedDialogDriver driver;
    for (const wchar_t* a : actions) driver.Add(a);
    kelaz::ScopedDialogDriver install(driver);
    return dialog.DoModal();
}

}  // namespace

TEST(KeyWordDlg, ItemsSplitIntoKeyAndName) {
    CKeyWordDlg dialog;
    CString name, key;
    dialog.SplitItem(L"A-弧线", name, key);
    EXPECT_EQ(key, L"A");
    EXPECT_EQ(name, L"弧线");
    dialog.SplitItem(L"-弧线", name, key);
    EXPECT_EQ(key, L"");
    EXPECT_EQ(name, L"弧线");
    dialog.SplitItem(L"直线", name, key);
    EXPECT_EQ(key, L"");
    EXPECT_EQ(name, L"直线");
    dialog.SplitItem(L"UN-退回-一步", name, key);
    EXPECT_EQ(key, L"UN");
    EXPECT_EQ(name, L"退回-一步");
}

TEST(KeyWordDlg, AKeyLetterSelectsAndConfirms) {
    CKeyWordDlg dialog;
    EXPECT_EQ(
        Show(dialog, {L"1-起点自动生成竖向构件", L"2-终点自动生成竖向构件", L"-其它"}, {L"key 2"}),
        IDOK);
    EXPECT_EQ(dialog.GetKeyWord(), L"2");
    CString text;
    dialog.GetDlgItem(206)->GetWindowText(text);
    EXPECT_EQ(text, L"起点自动生成竖向构件(&1)");
    dialog.GetDlgItem(208)->GetWindowText(text);
    EXPECT_EQ(text, L"其它(&)");
    EXPECT_FALSE(dialog.GetDlgItem(209)->IsWindowVisible());
    dialog.GetWindowText(text);
    EXPECT_EQ(text, L"处理方式");
}

TEST(KeyWordDlg, UpperCaseOnlySelectsSpaceConfirms) {
    CKeyWordDlg dialog;
    // 'U' picks 退回 through its mnemonic without closing; space then confirms it.
    EXPECT_EQ(Show(dialog, {L"a-弧线", L"u-退回"}, {L"key U", L"key space"}), IDOK);
    EXPECT_EQ(dialog.GetKeyWord(), L"u");
    EXPECT_FALSE(dialog.IsCharInKeyWord(L'U'));
    EXPECT_TRUE(dialog.IsCharInKeyWord(L'a'));

    CKeyWordDlg keysOfTwo;
    EXPECT_EQ(Show(keysOfTwo, {L"AB-两个字母", L"C-一个"}, {L"key a", L"cancel"}), IDCANCEL);
    EXPECT_EQ(keysOfTwo.GetKeyWord(), L"AB") << "the first item stays selected; 'a' is no key";
}

TEST(KeyWordDlg, SixItemsShowNoButton) {
    CKeyWordDlg dialog;
    EXPECT_EQ(Show(dialog, {L"1-一", L"2-二", L"3-三", L"4-四", L"5-五", L"6-六"}, {L"key 6"}),
              IDOK)
        << "a key letter still confirms";
    for (int id = 206; id <= 210; ++id) EXPECT_FALSE(dialog.GetDlgItem(id)->IsWindowVisible());
    EXPECT_EQ(dialog.GetKeyWord(), L"1") << "no button was picked: the first item";

    CKeyWordDlg none;
    EXPECT_EQ(Show(none, {}, {L"ok"}), IDOK);
    EXPECT_EQ(none.GetKeyWord(), L"");
}

TEST(KeyWordDlg, TheCommandLineSeesTheItemsWithTheirKeys) {
    CKeyWordDlg dialog;
    dialog.SetCaption(L"处理方式");
    dialog.SetItems(Items({L"a-弧线", L"u-退回", L"-其它"}));
    kelaz::ScriptedDialogDriver driver;
    driver.Add(L"key U");
    driver.Add(L"key space");
    kelaz::ScopedDialogDriver install(driver);
    EXPECT_EQ(dialog.DoModal(), IDOK);
    // The buttons left over are hidden and not shown; an item without a key has none to type.
    ASSERT_EQ(driver.Shown().size(), 2u) << "opened, then U selected without closing";
    EXPECT_EQ(driver.Shown()[0],
              L"[处理方式]\n"
              L"  206  单选  弧线  键 a  选中\n"
              L"  207  单选  退回  键 u  未选\n"
              L"  208  单选  其它        未选\n"
              L"    1  按钮  确定\n"
              L"    2  按钮  取消");
    EXPECT_NE(driver.Shown()[1].Find(L"207  单选  退回  键 u  选中"), -1);
}
