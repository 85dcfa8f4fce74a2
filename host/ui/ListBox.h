#pragma once

// A list of texts the drafter picks one from.

#include "host/ui/Dialog.h"

inline constexpr int LB_ERR = -1;

class CListBox : public CWnd {
public:
    // Appends the text; its position.
    int AddString(LPCTSTR text);
    int GetCount() const { return static_cast<int>(m_items.GetSize()); }
    // LB_ERR (text untouched) for a position out of range.
    int GetText(int index, CString& text) const;
    int GetCurSel() const { return m_selection; }
    // -1 clears the selection; another position out of range answers LB_ERR.
    int SetCurSel(int index);
    // The first item after startAfter whose text is text in any letter case; LB_ERR for none.
    int FindStringExact(int startAfter, LPCTSTR text) const;
    void ResetContent();
    // The count left, or LB_ERR. Deleting the selected item leaves none selected.
    int DeleteString(UINT index);
    void DescribeAsText(kelaz::ControlText& text) const override;

private:
    CStringArray m_items;
    int m_selection = LB_ERR;
};
