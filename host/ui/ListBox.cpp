#include "host/ui/ListBox.h"

int CListBox::AddString(LPCTSTR text) { return static_cast<int>(m_items.Add(text)); }

int CListBox::GetText(int index, CString& text) const {
    if (index < 0 || index >= GetCount()) return LB_ERR;
    text = m_items[index];
    return text.GetLength();
}

int CListBox::SetCurSel(int index) {
    if (index < -1 || index >= GetCount()) return LB_ERR;
    m_selection = index;
    return index == -1 ? LB_ERR : index;
}

int CListBox::FindStringExact(int startAfter, LPCTSTR text) const {
    for (int i = startAfter + 1; i < GetCount(); ++i) {
        if (m_items[i].CompareNoCase(text) == 0) return i;
    }
    return LB_ERR;
}

void CListBox::ResetContent() {
    m_items.RemoveAll();
    m_selection = LB_ERR;
}

int CListBox::DeleteString(UINT index) {
    if (index >= static_cast<UINT>(GetCount())) return LB_ERR;
    const int at = static_cast<int>(index);
    m_items.RemoveAt(at);
    if (m_selection == at) {
        m_selection = LB_ERR;
    } else if (m_selection > at) {
        --m_selection;
    }
    return GetCount();
}
