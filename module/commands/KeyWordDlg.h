#pragma once

// The options of a command prompt offered as up to five radio buttons: the drafter picks one
// with the mouse or by typing its key letter (which also confirms), or confirms the current
// one with the space bar. Items are written key-name, as "A-弧线".

#include "host/ui/Dialog.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CKeyWordDlg : public CDialog {
public:
    enum { IDD = 204 };
    // The radio buttons, in order.
    static constexpr int kFirstRadio = 206;
    static constexpr int kMaxItems = 5;

    explicit CKeyWordDlg(CWnd* pParent = nullptr);

    void SetCaption(CString caption) { m_strCaption = caption; }
    // Appends every item, split into its name and key.
    void SetItems(const CStringArray& items);
    void SplitItem(CString item, CString& name, CString& key);
    // Labels and shows a button per item, as "弧线(&A)"; more than five items, or none, show
    // no button at all.
    void AddItemControl();
    // The key of the chosen item; empty when the choice is no item.
    CString GetKeyWord();
    // Is the character a one-letter key (keys compared in lower case)?
    bool IsCharInKeyWord(wchar_t ch);

    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* msg) override;

protected:
    void DoDataExchange(CDataExchange* dx) override;
    void OnClicked(int id) override;

private:
    void OnBnClickedRadio2() {}

    int m_nIndex = 0;
    CString m_strCaption;
    CStringArray m_arrNames;
    CStringArray m_arrKeys;
};
