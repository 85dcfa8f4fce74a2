#pragma once

// The framework's windows, controls and dialogs, headless: every control keeps what a drafter
// sees of it (text, check state, list items, enabled, visible) and a dialog applies the actions
// of its driver one by one as clicks and typing would. A dialog class holds all its behaviour
// (validation, data exchange, handlers); only the pixels are missing.

#include <map>
#include <memory>
#include <vector>

#include "host/text/Array.h"
#include "host/text/CString.h"
#include "host/ui/MessageBox.h"

namespace kelaz {
struct DialogAction;
struct ControlText;
}  // namespace kelaz

struct NMTREEVIEW;

using LRESULT = INT_PTR;

struct MSG {
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

inline constexpr UINT WM_NOTIFY = 0x004E;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_CHAR = 0x0102;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_USER = 0x0400;
inline constexpr WPARAM VK_RETURN = 0x0D;
inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOW = 5;
inline constexpr int BST_UNCHECKED = 0;
inline constexpr int BST_CHECKED = 1;
inline constexpr int BST_INDETERMINATE = 2;
inline constexpr int CB_ERR = -1;
// The id of texts no code refers to.
inline constexpr int IDC_STATIC = -1;

// The header of a notification a control sends its parent (WM_NOTIFY, lParam points to it).
struct NMHDR {
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    UINT code = 0;
};

struct CRect {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
    LONG Width() const { return right - left; }
    LONG Height() const { return bottom - top; }
    friend bool operator==(const CRect&, const CRect&) = default;
};

class CWnd {
public:
    CWnd() = default;
    virtual ~CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    // Null unless the window exists (created and not destroyed).
    HWND GetSafeHwnd() const;
    void SetWindowText(LPCTSTR text) { m_text = text; }
    void GetWindowText(CString& text) const { text = m_text; }
    BOOL ShowWindow(int cmdShow);
    BOOL IsWindowVisible() const { return m_visible ? TRUE : FALSE; }
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const { return m_enabled ? TRUE : FALSE; }
    int GetDlgCtrlID() const { return m_id; }
    CWnd* GetParent() const { return m_parent; }
    // A child control of this window; null when there is none of that id.
    CWnd* GetDlgItem(int id) const;
    virtual BOOL DestroyWindow();
    void GetWindowRect(CRect* rect) const { *rect = m_rect; }
    void MoveWindow(const CRect& rect) { m_rect = rect; }

    // The control with the keyboard focus, null when none.
    static CWnd* GetFocus();
    CWnd* SetFocus();

    // A message the window answers at once (the framework's SendMessage).
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Keyboard messages pass here before the window handles them; TRUE when taken.
    virtual BOOL PreTranslateMessage(MSG* msg);
    // The window's own message handling.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // What the command line's text form of a dialog shows of this control.
    virtual void DescribeAsText(kelaz::ControlText& text) const;
    // An action only a control of its own kind understands (a grid's cells); false with the
    // reason when the control cannot take it.
    virtual bool TakeAction(const kelaz::DialogAction& action, CString& why);

protected:
    friend class CDialog;
    CString m_text;
    bool m_exists = false;
    bool m_visible = true;
    bool m_enabled = true;
    int m_id = 0;
    CWnd* m_parent = nullptr;
    CRect m_rect;
    std::vector<std::unique_ptr<CWnd>> m_children;
};

// The host's main window, the parent of its modeless dialogs.
CWnd* acedGetAcadFrame();

class CButton : public CWnd {
public:
    enum class Style { kPush, kCheckBox, kRadio };
    explicit CButton(Style style = Style::kPush) : m_style(style) {}
    Style GetStyle() const { return m_style; }
    int GetCheck() const { return m_check; }
    void SetCheck(int check) { m_check = check; }
    // The bitmap shown on the button (a resource number; 0 for none).
    void SetBitmap(UINT bitmap) { m_bitmap = bitmap; }
    UINT GetBitmap() const { return m_bitmap; }
    void DescribeAsText(kelaz::ControlText& text) const override;

private:
    Style m_style;
    int m_check = BST_UNCHECKED;
    UINT m_bitmap = 0;
};

class CEdit : public CWnd {
public:
    void DescribeAsText(kelaz::ControlText& text) const override;
};

// Text on the dialog. Placed right before another control in the template, it is that
// control's label.
class CStatic : public CWnd {
public:
    void DescribeAsText(kelaz::ControlText& text) const override;
};

class CComboBox : public CWnd {
public:
    int AddString(LPCTSTR text);
    int GetCount() const { return static_cast<int>(m_items.GetSize()); }
    void GetLBText(int index, CString& text) const;
    int GetCurSel() const { return m_selection; }
    // Puts the item's text in the box; CB_ERR (and no selection) for an index out of range.
    int SetCurSel(int index);
    int FindStringExact(int startAfter, LPCTSTR text) const;
    void ResetContent();
    void DescribeAsText(kelaz::ControlText& text) const override;

private:
    CStringArray m_items;
    int m_selection = CB_ERR;
};

class CDataExchange;

class CDialog : public CWnd {
public:
    // Every dialog template has its OK and Cancel buttons.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);

    // Shows the dialog and lets the current dialog driver work it until it closes: IDOK or
    // IDCANCEL. A driver that has no more actions cancels it.
    virtual INT_PTR DoModal();
    // A modeless dialog: exists (OnInitDialog has run) until DestroyWindow.
    virtual BOOL Create(UINT templateId, CWnd* parent = nullptr);
    // Lets the driver work a modeless dialog until it is closed by ok or cancel (the command
    // line's way of giving a modeless dialog the drafter's attention).
    INT_PTR RunModeless();

    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    void EndDialog(int result);
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    UINT GetTemplateId() const { return m_templateId; }
    // Applies one driver action as the drafter's click or typing would; false with the reason
    // when the dialog cannot take it (no such control, disabled, hidden, wrong kind).
    bool ApplyAction(const kelaz::DialogAction& action, CString& why);
    BOOL PreTranslateMessage(MSG* msg) override;
    // Passes the notifications of its controls to their handlers.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // The controls in template order (the text form reads them so).
    std::vector<const CWnd*> Controls() const;
    // A control of the dialog as its class; null when there is none of that id and class.
    template <class T>
    T* Control(int id) const {
        return dynamic_cast<T*>(GetDlgItem(id));
    }

protected:
    virtual void DoDataExchange(CDataExchange* dx);
    // A button was clicked (the message map's clicked handlers).
    virtual void OnClicked(int id);
    // A control lost the keyboard focus.
    virtual void OnKillFocus(int id);
    // The selection of tree control id changed (the message map's TVN_SELCHANGED handlers).
    virtual void OnTreeSelChanged(int id, const NMTREEVIEW& change);
    // Moves the focus to the next enabled, visible control after the one that has it.
    void NextDlgCtrl();

    // The controls of the dialog's template; a dialog adds its own in its constructor.
    CButton& AddButton(int id, const wchar_t* text, CButton::Style style = CButton::Style::kPush);
    CEdit& AddEdit(int id) { return AddControl<CEdit>(id); }
    CComboBox& AddComboBox(int id) { return AddControl<CComboBox>(id); }
    // A text; put right before a control, it labels that control.
    CStatic& AddStatic(const wchar_t* text, int id = IDC_STATIC);
    template <class T>
    T& AddControl(int id) {
        auto control = std::make_unique<T>();
        T& ref = *control;
        Adopt(std::move(control), id);
        return ref;
    }

private:
    void Adopt(std::unique_ptr<CWnd> control, int id);
    INT_PTR Drive();
    void MoveFocus(CWnd* to);
    // The mnemonic letter of a button ("弧线(&A)" has A) clicks it.
    bool ClickMnemonic(wchar_t ch);
    void Click(CButton& button);

    UINT m_templateId;
    int m_result = 0;
    bool m_ended = false;
};

// Exchange between a dialog's members and its controls.
class CDataExchange {
public:
    CDataExchange(CDialog* dialog, bool saveAndValidate)
        : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}
    CDialog* m_pDlgWnd;
    bool m_bSaveAndValidate;
    bool m_failed = false;
    // A control that cannot be exchanged stops the exchange, as the framework's Fail does.
    void Fail() { m_failed = true; }
};

void DDX_Text(CDataExchange* dx, int id, CString& value);
// A number the text does not read as fails the exchange with a message.
void DDX_Text(CDataExchange* dx, int id, double& value);
void DDX_Check(CDataExchange* dx, int id, int& value);
// The radio buttons from firstId on, while they are radio buttons: value is the index of the
// checked one, -1 for none.
void DDX_Radio(CDataExchange* dx, int firstId, int& value);
