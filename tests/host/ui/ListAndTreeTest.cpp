#include <gtest/gtest.h>

#include <vector>

#include "host/ui/DialogDriver.h"
#include "host/ui/ListBox.h"
#include "host/ui/TreeCtrl.h"

namespace {

CString Children(const CTreeCtrl& tree, HTREEITEM parent) {
    CString names;
    for (HTREEITEM item = tree.GetChildItem(parent); item; item = tree.GetNextSiblingItem(item))
        names += tree.GetItemText(item) + L" ";
    return names.TrimRight();
}

// A catalogue tree and a list of sizes; remembers every selection change the tree tells it.
class CatalogueDialog : public CDialog {
public:
    static constexpr int kTree = 17;
    static constexpr int kSizes = 16;

    CatalogueDialog() : CDialog(303) {
        CListBox& sizes = AddControl<CListBox>(kSizes);
        sizes.AddString(L"120x120");
        sizes.AddString(L"200x160");
        tree = &AddControl<CTreeCtrl>(kTree);
        hvac = tree->InsertItem(L"暖通");
        ducts = tree->InsertItem(L"风管", hvac);
        rect = tree->InsertItem(L"矩形风管", ducts);
        tree->SetItemData(rect, 42);
        lamps = tree->InsertItem(L"灯具", tree->InsertItem(L"电气"));
        slashed = tree->InsertItem(L"1_5u\\灯具");
    }

    struct Change {
        int id;
        HTREEITEM from;
        HTREEITEM to;
        UINT action;
        LPARAM data;
    };
    std::vector<Change> changes;
    CTreeCtrl* tree;
    HTREEITEM hvac, ducts, rect, lamps, slashed;

protected:
    void OnTreeSelChanged(int id, const NMTREEVIEW& change) override {
        changes.push_back(
            {id, change.itemOld.hItem, change.itemNew.hItem, change.action, change.itemNew.lParam});
    }
};

}  // namespace

TEST(UiListBox, ItemsSelectionAndDeletion) {
    CListBox list;
    for (const wchar_t* item : {L"送风", L"Return", L"排风"}) list.AddString(item);
    CString text = L"untouched";
    EXPECT_EQ(list.GetText(3, text), LB_ERR);
    EXPECT_EQ(text, L"untouched");
    EXPECT_EQ(list.FindStringExact(-1, L"RETURN"), 1);
    EXPECT_EQ(list.FindStringExact(1, L"return"), LB_ERR) << "the search starts after startAfter";
    EXPECT_EQ(list.SetCurSel(3), LB_ERR);
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    list.SetCurSel(2);
    // Deleting above the selection keeps the same item selected; deleting it leaves none.
    EXPECT_EQ(list.DeleteString(0), 2);
    list.GetText(list.GetCurSel(), text);
    EXPECT_EQ(text, L"排风");
    EXPECT_EQ(list.DeleteString(1), 1);
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    EXPECT_EQ(list.DeleteString(5), LB_ERR);
}

TEST(UiTreeCtrl, InsertNavigateAndDelete) {
    CTreeCtrl tree;
    HTREEITEM b = tree.InsertItem(L"b");
    HTREEITEM a = tree.InsertItem(L"a", TVI_ROOT, TVI_FIRST);
    tree.InsertItem(L"ab", TVI_ROOT, TVI_SORT);
    tree.InsertItem(L"a2", TVI_ROOT, a);
    EXPECT_EQ(Children(tree, TVI_ROOT), L"a a2 ab b");
    EXPECT_EQ(tree.InsertItem(L"x", b, a), nullptr) << "a is no child of b";

    HTREEITEM b1 = tree.InsertItem(L"b1", b);
    HTREEITEM b11 = tree.InsertItem(L"b11", b1);
    tree.InsertItem(L"b2", b);
    EXPECT_EQ(Children(tree, b), L"b1 b2");
    EXPECT_EQ(tree.GetParentItem(b11), b1);
    EXPECT_EQ(tree.GetParentItem(b), nullptr);
    EXPECT_TRUE(tree.ItemHasChildren(b1));
    EXPECT_FALSE(tree.ItemHasChildren(b11));

    // A subtree goes at once; its handles then answer nothing.
    EXPECT_TRUE(tree.DeleteItem(b1));
    EXPECT_EQ(tree.GetCount(), 5u);
    EXPECT_EQ(Children(tree, b), L"b2");
    EXPECT_EQ(tree.GetItemText(b11), L"");
    EXPECT_FALSE(tree.SetItemData(b11, 1));
    EXPECT_EQ(tree.InsertItem(L"x", b1), nullptr);
    EXPECT_TRUE(tree.DeleteAllItems());
    EXPECT_EQ(tree.GetRootItem(), nullptr);
}

TEST(UiTreeCtrl, SelectionUnfoldsTellsTheDialogAndFollowsFolding) {
    CatalogueDialog dialog;
    CTreeCtrl& tree = *dialog.tree;
    EXPECT_EQ(tree.GetItemState(dialog.hvac, TVIS_EXPANDED), 0u);
    ASSERT_TRUE(tree.SelectItem(dialog.rect));
    EXPECT_EQ(tree.GetItemState(dialog.hvac, TVIS_EXPANDED), TVIS_EXPANDED);
    EXPECT_EQ(tree.GetItemState(dialog.ducts, TVIS_EXPANDED | TVIS_SELECTED), TVIS_EXPANDED);
    EXPECT_EQ(tree.GetItemState(dialog.rect, TVIS_SELECTED), TVIS_SELECTED);
    tree.SelectItem(dialog.rect);  // no change, no word
    ASSERT_EQ(dialog.changes.size(), 1u);
    EXPECT_EQ(dialog.changes[0].id, CatalogueDialog::kTree);
    EXPECT_EQ(dialog.changes[0].from, nullptr);
    EXPECT_EQ(dialog.changes[0].to, dialog.rect);
    EXPECT_EQ(dialog.changes[0].action, TVC_UNKNOWN);
    EXPECT_EQ(dialog.changes[0].data, 42);

    // Folding away the selection moves it up to the folded item.
    EXPECT_TRUE(tree.Expand(dialog.hvac, TVE_TOGGLE));
    EXPECT_EQ(tree.GetSelectedItem(), dialog.hvac);
    ASSERT_EQ(dialog.changes.size(), 2u);

    // The drafter selects by text, by a path from the top, or by a text holding a backslash.
    kelaz::ScriptedDialogDriver driver;
    for (const wchar_t* a :
         {L"select 17 暖通\\风管\\矩形风管", L"select 17 灯具", L"select 17 1_5u\\灯具",
          L"select 17 暖通\\灯具", L"select 17 无此项", L"set 17 x", L"select 16 200x160",
          L"select 16 1", L"select 16 2", L"set 16 x", L"ok"}) {
        ASSERT_TRUE(driver.Add(a));
    }
    {
        kelaz::ScopedDialogDriver install(driver);
        EXPECT_EQ(dialog.DoModal(), IDOK);
    }
    ASSERT_EQ(dialog.changes.size(), 5u);
    EXPECT_EQ(dialog.changes[2].to, dialog.rect);
    EXPECT_EQ(dialog.changes[2].action, TVC_BYMOUSE);
    EXPECT_EQ(dialog.changes[3].to, dialog.lamps);
    EXPECT_EQ(dialog.changes[4].from, dialog.lamps);
    EXPECT_EQ(dialog.changes[4].to, dialog.slashed);
    EXPECT_EQ(driver.Refusals().size(), 5u);
    EXPECT_EQ(dialog.Control<CListBox>(CatalogueDialog::kSizes)->GetCurSel(), 1);

    // Deleting the selection with its parent leaves none selected, and says so.
    tree.SelectItem(dialog.lamps);
    EXPECT_TRUE(tree.DeleteItem(tree.GetParentItem(dialog.lamps)));
    EXPECT_EQ(tree.GetSelectedItem(), nullptr);
    ASSERT_EQ(dialog.changes.size(), 7u);
    EXPECT_EQ(dialog.changes[6].from, dialog.lamps);
    EXPECT_EQ(dialog.changes[6].to, nullptr);
}
