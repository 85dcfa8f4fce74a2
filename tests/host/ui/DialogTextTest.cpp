#include <gtest/gtest.h>

#include "host/ui/Dialog.h"
#include "host/ui/DialogText.h"
#include "host/ui/ListBox.h"
#include "host/ui/TreeCtrl.h"

namespace {

// One of every control, each labelled the way a template labels it.
class DuctDialog : public CDialog {
public:
    DuctDialog() : CDialog(301) {
        SetWindowText(L"风管设置");
        AddStatic(L"名称(&N)");
        AddEdit(10).SetWindowText(L"送风管");
        AddButton(11, L"圆形(&R)", CButton::Style::kRadio);
        AddButton(12, L"矩形(&S)", CButton::Style::kRadio).SetCheck(BST_CHECKED);
        AddButton(13, L"保温", CButton::Style::kCheckBox).SetCheck(BST_INDETERMINATE);
        AddStatic(L"系统");
        CComboBox& system = AddComboBox(14);
        system.AddString(L"送风");
        system.AddString(L"回风");
        system.SetCurSel(1);
        AddButton(15, L"清空(&C)").EnableWindow(FALSE);
        AddStatic(L"规格");
        CListBox& sizes = AddControl<CListBox>(16);
        for (const wchar_t* size : {L"120x120", L"200x160", L"1000x400"}) sizes.AddString(size);
        sizes.SetCurSel(1);
        AddStatic(L"构件");
        CTreeCtrl& tree = AddControl<CTreeCtrl>(17);
        HTREEITEM hvac = tree.InsertItem(L"暖通");
        HTREEITEM outlets = tree.InsertItem(L"风口", hvac);
        HTREEITEM diffuser = tree.InsertItem(L"方形散流器", outlets);
        tree.InsertItem(L"条形风口", outlets);
        tree.InsertItem(L"矩形风管", tree.InsertItem(L"风管", hvac));
        tree.InsertItem(L"灯具", tree.InsertItem(L"电气"));
        tree.SelectItem(diffuser);
        AddButton(18, L"隐藏").ShowWindow(SW_HIDE);
        AddStatic(L"单位毫米");
    }
};

// Labels that are no labels, mnemonics of every form, a dialog without a title.
class PlainDialog : public CDialog {
public:
    PlainDialog() : CDialog(302) {
        AddStatic(L"说明");
        AddButton(20, L"其它(&)");
        AddButton(21, L"A&&B");
        AddButton(22, L"&Save");
        AddStatic(L"看不见").ShowWindow(SW_HIDE);
        AddEdit(23);
    }
};

}  // namespace

TEST(DialogText, EveryControlWithItsLabelKeyAndState) {
    DuctDialog dialog;
    // OK and Cancel come last; the hidden button is left out; the folded 风管 hides its child.
    EXPECT_EQ(kelaz::DialogText(dialog),
              L"[风管设置]\n"
              L"  10  编辑  名称            [送风管]\n"
              L"  11  单选  圆形      键 R  未选\n"
              L"  12  单选  矩形      键 S  选中\n"
              L"  13  复选  保温            不定\n"
              L"  14  组合  系统            [回风]\n"
              L"            0  送风\n"
              L"            1  回风  选中\n"
              L"  15  按钮  清空      键 C            不可用\n"
              L"  16  列表  规格\n"
              L"            0  120x120\n"
              L"            1  200x160   选中\n"
              L"            2  1000x400\n"
              L"  17  树形  构件\n"
              L"            - 暖通\n"
              L"              - 风口\n"
              L"                  方形散流器  选中\n"
              L"                  条形风口\n"
              L"              + 风管\n"
              L"            + 电气\n"
              L"      文字  单位毫米\n"
              L"   1  按钮  确定\n"
              L"   2  按钮  取消");

    PlainDialog plain;
    EXPECT_EQ(kelaz::DialogText(plain),
              L"[对话框 302]\n"
              L"      文字  说明\n"
              L"  20  按钮  其它\n"
              L"  21  按钮  A&B\n"
              L"  22  按钮  Save  键 S\n"
              L"  23  编辑              []\n"
              L"   1  按钮  确定\n"
              L"   2  按钮  取消");

    EXPECT_EQ(kelaz::DisplayWidth(L"1_5u\\灯具"), 9);
    EXPECT_EQ(kelaz::DisplayWidth(L"［Ａ］"), 6) << "full-width forms take two columns";
}
