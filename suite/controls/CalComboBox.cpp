#include "suite/controls/CalComboBox.h"

void CalComboBox::RememberText(int maxItems) {
    CString text;
    GetWindowText(text);
    if (text.IsEmpty()) return;
    CStringArray items;
    items.Add(text);
    for (const CString& item : GetItems()) {
        if (item != text && items.GetSize() < maxItems) items.Add(item);
    }
    ResetContent();
    for (const CString& item : items) AddString(item);
    SetCurSel(0);
}

CStringArray CalComboBox::GetItems() const {
    CStringArray items;
    for (int i = 0; i < GetCount(); ++i) {
        CString item;
        GetLBText(i, item);
        items.Add(item);
    }
    return items;
}
