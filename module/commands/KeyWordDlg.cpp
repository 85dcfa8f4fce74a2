#include "module/commands/KeyWordDlg.h"

#include <cwctype>

CKeyWordDlg::CKeyWordDlg(CWnd* pParent) : CDialog(IDD, pParent) {
    for (int i = 0; i < kMaxItems; ++i) {
        AddButton(kFirstRadio + i, L"", CButton::Style::kRadio).ShowWindow(SW_HIDE);
    }
}

void CKeyWordDlg::SetItems(const CStringArray& items) {
    for (const CString& item : items) {
        CString name, key;
        SplitItem(item, name, key);
        m_arrNames.Add(name);
        m_arrKeys.Add(key);
    }
}

void CKeyWordDlg::SplitItem(CString item, CString& name, CString& key) {
    name.Empty();
    key.Empty();
    const int dash = item.Find(L'-');
    if (dash > 0) {
        key = item.Left(dash);
        item = item.Mid(dash + 1);
    }
    item.TrimLeft(L'-');
    name = item;
}

void CKeyWordDlg::AddItemControl() {
    const int count = static_cast<int>(m_arrNames.GetSize());
    // More than five are not offered in part: the drafter types the keyword instead.
    if (count > kMaxItems || count == 0) return;
    for (int i = 0; i < count; ++i) {
        CWnd* button = GetDlgItem(kFirstRadio + i);
        button->ShowWindow(SW_SHOW);
        button->SetWindowText(m_arrNames[i] + L"(&" + m_arrKeys[i] + L")");
    }
}

CString CKeyWordDlg::GetKeyWord() {
    if (m_nIndex < 0 || m_nIndex >= m_arrKeys.GetSize()) return CString();
    return m_arrKeys[m_nIndex];
}

bool CKeyWordDlg::IsCharInKeyWord(wchar_t ch) {
    for (const CString& key : m_arrKeys) {
        CString lower = key;
        lower.MakeLower();
        if (lower.GetLength() == 1 && lower[0] == ch) return true;
    }
    return false;
}

BOOL CKeyWordDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_strCaption.IsEmpty()) SetWindowText(m_strCaption);
    AddItemControl();
    return TRUE;
}

BOOL CKeyWordDlg::PreTranslateMessage(MSG* msg) {
    // The dialog's own handling first: a mnemonic letter selects its button.
    const BOOL handled = CDialog::PreTranslateMessage(msg);
    if (msg->message == WM_CHAR) {
        const auto ch = static_cast<wchar_t>(msg->wParam);
        if (ch == L' ' || IsCharInKeyWord(ch)) {
            OnOK();
            return TRUE;
        }
    }
    return handled;
}

void CKeyWordDlg::DoDataExchange(CDataExchange* dx) {
    CDialog::DoDataExchange(dx);
    DDX_Radio(dx, kFirstRadio, m_nIndex);
}

void CKeyWordDlg::OnClicked(int id) {
    if (id == kFirstRadio + 1) {
        OnBnClickedRadio2();
        return;
    }
    CDialog::OnClicked(id);
}
