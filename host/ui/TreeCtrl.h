#pragma once

// A tree of texts (categories above their members) the drafter selects one item of. Items are
// reached through opaque handles; a handle of a deleted item answers nothing.

#include <map>
#include <vector>

#include "host/ui/Dialog.h"

struct HTREEITEM__;
using HTREEITEM = HTREEITEM__*;

// Where InsertItem puts an item: the top level, or first, last or in order among its siblings.
inline const HTREEITEM TVI_ROOT = reinterpret_cast<HTREEITEM>(static_cast<UINT_PTR>(-0x10000));
inline const HTREEITEM TVI_FIRST = reinterpret_cast<HTREEITEM>(static_cast<UINT_PTR>(-0x0FFFF));
inline const HTREEITEM TVI_LAST = reinterpret_cast<HTREEITEM>(static_cast<UINT_PTR>(-0x0FFFE));
inline const HTREEITEM TVI_SORT = reinterpret_cast<HTREEITEM>(static_cast<UINT_PTR>(-0x0FFFD));

inline constexpr UINT TVE_COLLAPSE = 0x1;
inline constexpr UINT TVE_EXPAND = 0x2;
inline constexpr UINT TVE_TOGGLE = 0x3;
inline constexpr UINT TVIS_SELECTED = 0x2;
inline constexpr UINT TVIS_EXPANDED = 0x20;

// The selection of a tree changed; sent to its parent with WM_NOTIFY.
inline constexpr UINT TVN_SELCHANGED = 0U - 400U - 51U;
// What changed the selection.
inline constexpr UINT TVC_UNKNOWN = 0x0;
inline constexpr UINT TVC_BYMOUSE = 0x1;

struct TVITEM {
    HTREEITEM hItem = nullptr;
    LPARAM lParam = 0;  // the item's data
};

struct NMTREEVIEW {
    NMHDR hdr;
    UINT action = TVC_UNKNOWN;
    TVITEM itemOld;
    TVITEM itemNew;
};

class CTreeCtrl : public CWnd {
public:
    // Null when parent is no item or after is no sibling under it.
    HTREEITEM InsertItem(LPCTSTR text, HTREEITEM parent = TVI_ROOT, HTREEITEM after = TVI_LAST);
    UINT GetCount() const { return static_cast<UINT>(m_items.size()); }
    HTREEITEM GetRootItem() const { return GetChildItem(TVI_ROOT); }
    // The first child; of TVI_ROOT (or null), the first item of the top level.
    HTREEITEM GetChildItem(HTREEITEM item) const;
    HTREEITEM GetNextSiblingItem(HTREEITEM item) const;
    // Null for an item of the top level.
    HTREEITEM GetParentItem(HTREEITEM item) const;
    CString GetItemText(HTREEITEM item) const;
    BOOL SetItemText(HTREEITEM item, LPCTSTR text);
    DWORD_PTR GetItemData(HTREEITEM item) const;
    BOOL SetItemData(HTREEITEM item, DWORD_PTR data);
    BOOL ItemHasChildren(HTREEITEM item) const;
    // Selects the item (null: none), expanding the items above it so that it can be seen, and
    // tells the parent when the selection changed.
    BOOL SelectItem(HTREEITEM item);
    HTREEITEM GetSelectedItem() const { return Handle(m_selected); }
    // TVE_EXPAND, TVE_COLLAPSE or TVE_TOGGLE: whether the children are shown.
    BOOL Expand(HTREEITEM item, UINT code);
    // TVIS_SELECTED and TVIS_EXPANDED, as far as mask asks.
    UINT GetItemState(HTREEITEM item, UINT mask) const;
    // Deletes the item and everything under it (TVI_ROOT: all). A selection deleted with it
    // becomes none, and the parent is told.
    BOOL DeleteItem(HTREEITEM item);
    BOOL DeleteAllItems() { return DeleteItem(TVI_ROOT); }
    void DescribeAsText(kelaz::ControlText& text) const override;

private:
    friend class CDialog;  // the drafter's selection, told as by the mouse

    using Key = UINT_PTR;
    struct Item {
        CString text;
        DWORD_PTR data = 0;
        Key parent = 0;
        std::vector<Key> children;
        bool expanded = false;
    };

    static HTREEITEM Handle(Key key) { return reinterpret_cast<HTREEITEM>(key); }
    const Item* Find(HTREEITEM item) const;
    Item* Find(HTREEITEM item);
    std::vector<Key>& SiblingsOf(Key parent);
    const std::vector<Key>& SiblingsOf(Key parent) const;
    void Erase(Key key);
    BOOL Select(HTREEITEM item, UINT action);
    void ChangeSelection(Key to, UINT action);

    std::map<Key, Item> m_items;
    std::vector<Key> m_roots;
    Key m_next = 1;
    Key m_selected = 0;
};

namespace kelaz {
// The item whose text is text (the first in the order shown, any letter case), or else the item
// a backslash path of texts from the top level leads to; null when there is none.
HTREEITEM FindTreeItem(const CTreeCtrl& tree, const CString& text);
}  // namespace kelaz
