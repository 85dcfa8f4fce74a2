#include "host/ui/TreeCtrl.h"

#include <algorithm>

const CTreeCtrl::Item* CTreeCtrl::Find(HTREEITEM item) const {
    const auto found = m_items.find(reinterpret_cast<Key>(item));
    return found == m_items.end() ? nullptr : &found->second;
}

CTreeCtrl::Item* CTreeCtrl::Find(HTREEITEM item) {
    const auto found = m_items.find(reinterpret_cast<Key>(item));
    return found == m_items.end() ? nullptr : &found->second;
}

std::vector<CTreeCtrl::Key>& CTreeCtrl::SiblingsOf(Key parent) {
    return parent == 0 ? m_roots : m_items.at(parent).children;
}

const std::vector<CTreeCtrl::Key>& CTreeCtrl::SiblingsOf(Key parent) const {
    return parent == 0 ? m_roots : m_items.at(parent).children;
}

HTREEITEM CTreeCtrl::InsertItem(LPCTSTR text, HTREEITEM parent, HTREEITEM after) {
    Key parentKey = 0;
    if (parent != nullptr && parent != TVI_ROOT) {
        if (!Find(parent)) return nullptr;
        parentKey = reinterpret_cast<Key>(parent);
    }
    std::vector<Key>& siblings = SiblingsOf(parentKey);
    auto at = siblings.end();
    if (after == TVI_FIRST) {
        at = siblings.begin();
    } else if (after == TVI_SORT) {
        const CString key(text);
        at = std::find_if(siblings.begin(), siblings.end(),
                          [&](Key k) { return m_items.at(k).text.Compare(key) > 0; });
    } else if (after != TVI_LAST) {
        at = std::find(siblings.begin(), siblings.end(), reinterpret_cast<Key>(after));
        if (at == siblings.end()) return nullptr;
        ++at;
    }
    const Key key = m_next++;
    siblings.insert(at, key);
    Item& item = m_items[key];
    item.text = text;
    item.parent = parentKey;
    return Handle(key);
}

HTREEITEM CTreeCtrl::GetChildItem(HTREEITEM item) const {
    if (item == nullptr || item == TVI_ROOT) return m_roots.empty() ? nullptr : Handle(m_roots[0]);
    const Item* found = Find(item);
    return found && !found->children.empty() ? Handle(found->children[0]) : nullptr;
}

HTREEITEM CTreeCtrl::GetNextSiblingItem(HTREEITEM item) const {
    const Item* found = Find(item);
    if (!found) return nullptr;
    const std::vector<Key>& siblings = SiblingsOf(found->parent);
    auto at = std::find(siblings.begin(), siblings.end(), reinterpret_cast<Key>(item));
    return at + 1 < siblings.end() ? Handle(*(at + 1)) : nullptr;
}

HTREEITEM CTreeCtrl::GetParentItem(HTREEITEM item) const {
    const Item* found = Find(item);
    return found && found->parent != 0 ? Handle(found->parent) : nullptr;
}

CString CTreeCtrl::GetItemText(HTREEITEM item) const {
    const Item* found = Find(item);
    return found ? found->text : CString();
}

BOOL CTreeCtrl::SetItemText(HTREEITEM item, LPCTSTR text) {
    Item* found = Find(item);
    if (!found) return FALSE;
    found->text = text;
    return TRUE;
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM item) const {
    const Item* found = Find(item);
    return found ? found->data : 0;
}

BOOL CTreeCtrl::SetItemData(HTREEITEM item, DWORD_PTR data) {
    Item* found = Find(item);
    if (!found) return FALSE;
    found->data = data;
    return TRUE;
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM item) const {
    const Item* found = Find(item);
    return found && !found->children.empty() ? TRUE : FALSE;
}

BOOL CTreeCtrl::SelectItem(HTREEITEM item) { return Select(item, TVC_UNKNOWN); }

BOOL CTreeCtrl::Select(HTREEITEM item, UINT action) {
    if (item == nullptr) {
        ChangeSelection(0, action);
        return TRUE;
    }
    if (!Find(item)) return FALSE;
    for (Key up = Find(item)->parent; up != 0; up = m_items.at(up).parent) {
        m_items.at(up).expanded = true;
    }
    ChangeSelection(reinterpret_cast<Key>(item), action);
    return TRUE;
}

void CTreeCtrl::ChangeSelection(Key to, UINT action) {
    if (to == m_selected) return;
    NMTREEVIEW change;
    change.hdr.hwndFrom = GetSafeHwnd();
    change.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    change.hdr.code = TVN_SELCHANGED;
    change.action = action;
    change.itemOld.hItem = Handle(m_selected);
    change.itemOld.lParam = static_cast<LPARAM>(GetItemData(Handle(m_selected)));
    change.itemNew.hItem = Handle(to);
    change.itemNew.lParam = static_cast<LPARAM>(GetItemData(Handle(to)));
    m_selected = to;
    if (CWnd* parent = GetParent()) {
        parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(GetDlgCtrlID()),
                            reinterpret_cast<LPARAM>(&change));
    }
}

UINT CTreeCtrl::GetItemState(HTREEITEM item, UINT mask) const {
    const Item* found = Find(item);
    if (!found) return 0;
    UINT state = 0;
    if (reinterpret_cast<Key>(item) == m_selected) state |= TVIS_SELECTED;
    if (found->expanded) state |= TVIS_EXPANDED;
    return state & mask;
}

BOOL CTreeCtrl::Expand(HTREEITEM item, UINT code) {
    Item* found = Find(item);
    if (!found || code < TVE_COLLAPSE || code > TVE_TOGGLE) return FALSE;
    found->expanded = code == TVE_TOGGLE ? !found->expanded : code == TVE_EXPAND;
    if (found->expanded) return TRUE;
    // A selection that folds away moves up to the item folded, so that it stays in sight.
    const Key key = reinterpret_cast<Key>(item);
    for (Key up = m_selected != 0 ? m_items.at(m_selected).parent : 0; up != 0;
         up = m_items.at(up).parent) {
        if (up == key) {
            ChangeSelection(key, TVC_UNKNOWN);
            break;
        }
    }
    return TRUE;
}

void CTreeCtrl::Erase(Key key) {
    for (Key child : m_items.at(key).children) Erase(child);
    m_items.erase(key);
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM item) {
    if (item == TVI_ROOT) {
        m_items.clear();
        m_roots.clear();
        ChangeSelection(0, TVC_UNKNOWN);
        return TRUE;
    }
    const Item* found = Find(item);
    if (!found) return FALSE;
    const Key key = reinterpret_cast<Key>(item);
    bool selectionGoes = false;
    for (Key up = m_selected; up != 0; up = m_items.at(up).parent) {
        if (up == key) selectionGoes = true;
    }
    std::vector<Key>& siblings = SiblingsOf(found->parent);
    siblings.erase(std::find(siblings.begin(), siblings.end(), key));
    Erase(key);
    if (selectionGoes) ChangeSelection(0, TVC_UNKNOWN);
    return TRUE;
}

namespace kelaz {

namespace {

HTREEITEM FindText(const CTreeCtrl& tree, HTREEITEM first, const CString& text) {
    for (HTREEITEM item = first; item != nullptr; item = tree.GetNextSiblingItem(item)) {
        if (tree.GetItemText(item).CompareNoCase(text) == 0) return item;
        if (HTREEITEM below = FindText(tree, tree.GetChildItem(item), text)) return below;
    }
    return nullptr;
}

}  // namespace

HTREEITEM FindTreeItem(const CTreeCtrl& tree, const CString& text) {
    if (HTREEITEM item = FindText(tree, tree.GetRootItem(), text)) return item;
    if (text.Find(L'\\') < 0) return nullptr;
    HTREEITEM parent = TVI_ROOT;
    HTREEITEM item = nullptr;
    int start = 0;
    while (start <= text.GetLength()) {
        int end = text.Find(L'\\', start);
        if (end < 0) end = text.GetLength();
        const CString part = text.Mid(start, end - start);
        item = tree.GetChildItem(parent);
        while (item != nullptr && tree.GetItemText(item).CompareNoCase(part) != 0) {
            item = tree.GetNextSiblingItem(item);
        }
        if (item == nullptr) return nullptr;
        parent = item;
        start = end + 1;
    }
    return item;
}

}  // namespace kelaz
