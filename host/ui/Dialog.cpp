#include "host/ui/Dialog.h"

#include <cwctype>

#include "host/ui/DialogDriver.h"
#include "host/ui/ListBox.h"
#include "host/ui/TreeCtrl.h"

namespace {
CWnd* g_focus = nullptr;
}  // namespace

namespace {
struct MainFrame : CWnd {
    MainFrame() {
        m_exists = true;
        SetWindowText(L"kelaz");
    }
};
}  // namespace

CWnd* acedGetAcadFrame() {
    static CWnd* frame = new MainFrame;  // lives as long as the program, as the host's frame does
    return frame;
}

HWND CWnd::GetSafeHwnd() const {
    return m_exists ? reinterpret_cast<HWND>(const_cast<CWnd*>(this)) : nullptr;
}

BOOL CWnd::ShowWindow(int cmdShow) {
    const BOOL wasVisible = IsWindowVisible();
    m_visible = cmdShow != SW_HIDE;
    return wasVisible;
}

BOOL CWnd::EnableWindow(BOOL enable) {
    const BOOL wasDisabled = m_enabled ? FALSE : TRUE;
    m_enabled = enable != FALSE;
    return wasDisabled;
}

CWnd* CWnd::GetDlgItem(int id) const {
    for (const auto& child : m_children) {
        if (child->m_id == id) return child.get();
    }
    return nullptr;
}

BOOL CWnd::DestroyWindow() {
    if (!m_exists) return FALSE;
    m_exists = false;
    for (auto& child : m_children) {
        child->m_exists = false;
        if (g_focus == child.get()) g_focus = nullptr;
    }
    if (g_focus == this) g_focus = nullptr;
    return TRUE;
}

CWnd* CWnd::GetFocus() { return g_focus; }

CWnd* CWnd::SetFocus() {
    CWnd* previous = g_focus;
    g_focus = this;
    return previous;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return WindowProc(message, wParam, lParam);
}

BOOL CWnd::PreTranslateMessage(MSG* /*msg*/) { return FALSE; }

LRESULT CWnd::WindowProc(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return 0; }

bool CWnd::TakeAction(const kelaz::DialogAction& action, CString& why) {
    why = kelaz::FormatText(L"控件 %d 不接受这个操作。", action.control);
    return false;
}

int CComboBox::AddString(LPCTSTR text) { return static_cast<int>(m_items.Add(text)); }

void CComboBox::GetLBText(int index, CString& text) const {
    text = index >= 0 && index < GetCount() ? m_items[index] : CString();
}

int CComboBox::SetCurSel(int index) {
    if (index < 0 || index >= GetCount()) {
        m_selection = CB_ERR;
        return CB_ERR;
    }
    m_selection = index;
    m_text = m_items[index];
    return index;
}

int CComboBox::FindStringExact(int startAfter, LPCTSTR text) const {
    for (int i = startAfter + 1; i < GetCount(); ++i) {
        if (m_items[i].CompareNoCase(text) == 0) return i;
    }
    return CB_ERR;
}

void CComboBox::ResetContent() {
    m_items.RemoveAll();
    m_selection = CB_ERR;
    m_text.Empty();
}

CDialog::CDialog(UINT templateId, CWnd* parent) : m_templateId(templateId) {
    m_parent = parent;
    AddButton(IDOK, L"确定");
    AddButton(IDCANCEL, L"取消");
}

CButton& CDialog::AddButton(int id, const wchar_t* text, CButton::Style style) {
    auto button = std::make_unique<CButton>(style);
    button->m_text = text;
    CButton& ref = *button;
    Adopt(std::move(button), id);
    return ref;
}

CStatic& CDialog::AddStatic(const wchar_t* text, int id) {
    CStatic& label = AddControl<CStatic>(id);
    label.SetWindowText(text);
    return label;
}

std::vector<const CWnd*> CDialog::Controls() const {
    std::vector<const CWnd*> controls;
    for (const auto& child : m_children) controls.push_back(child.get());
    return controls;
}

void CDialog::Adopt(std::unique_ptr<CWnd> control, int id) {
    control->m_id = id;
    control->m_parent = this;
    m_children.push_back(std::move(control));
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::EndDialog(int result) {
    m_result = result;
    m_ended = true;
}

BOOL CDialog::UpdateData(BOOL saveAndValidate) {
    CDataExchange dx(this, saveAndValidate != FALSE);
    DoDataExchange(&dx);
    return dx.m_failed ? FALSE : TRUE;
}

void CDialog::DoDataExchange(CDataExchange* /*dx*/) {}

void CDialog::OnClicked(int id) {
    if (id == IDOK) OnOK();
    if (id == IDCANCEL) OnCancel();
}

void CDialog::OnKillFocus(int /*id*/) {}

void CDialog::OnTreeSelChanged(int /*id*/, const NMTREEVIEW& /*change*/) {}

LRESULT CDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY && lParam != 0) {
        const auto* header = reinterpret_cast<const NMHDR*>(lParam);
        if (header->code == TVN_SELCHANGED) {
            OnTreeSelChanged(static_cast<int>(header->idFrom),
                             *reinterpret_cast<const NMTREEVIEW*>(lParam));
        }
        return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

void CDialog::MoveFocus(CWnd* to) {
    CWnd* from = GetFocus();
    if (from == to) return;
    to->SetFocus();
    if (from && from->m_parent == this) OnKillFocus(from->m_id);
}

void CDialog::NextDlgCtrl() {
    CWnd* focus = GetFocus();
    size_t at = 0;
    while (at < m_children.size() && m_children[at].get() != focus) ++at;
    for (size_t step = 1; step <= m_children.size(); ++step) {
        CWnd* next = m_children[(at + step) % m_children.size()].get();
        // Texts take no focus: the tab goes on to the control they name.
        if (next->m_visible && next->m_enabled && !dynamic_cast<CStatic*>(next)) {
            MoveFocus(next);
            return;
        }
    }
}

void CDialog::Click(CButton& button) {
    MoveFocus(&button);
    if (button.GetStyle() == CButton::Style::kCheckBox) {
        button.SetCheck(button.GetCheck() == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED);
    } else if (button.GetStyle() == CButton::Style::kRadio) {
        // A radio button checks itself and clears the others of its group: the radio buttons
        // next to it in the template.
        size_t at = 0;
        while (m_children[at].get() != &button) ++at;
        size_t first = at;
        while (first > 0) {
            auto* prev = dynamic_cast<CButton*>(m_children[first - 1].get());
            if (!prev || prev->GetStyle() != CButton::Style::kRadio) break;
            --first;
        }
        for (size_t i = first; i < m_children.size(); ++i) {
            auto* b = dynamic_cast<CButton*>(m_children[i].get());
            if (!b || b->GetStyle() != CButton::Style::kRadio) break;
            b->SetCheck(b == &button ? BST_CHECKED : BST_UNCHECKED);
        }
    }
    OnClicked(button.GetDlgCtrlID());
}

bool CDialog::ClickMnemonic(wchar_t ch) {
    const wchar_t wanted = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ch)));
    for (const auto& child : m_children) {
        auto* button = dynamic_cast<CButton*>(child.get());
        if (!button || !button->m_visible || !button->m_enabled) continue;
        const int amp = button->m_text.Find(L'&');
        if (amp < 0 || amp + 1 >= button->m_text.GetLength()) continue;
        if (std::towupper(static_cast<wint_t>(button->m_text[amp + 1])) ==
            static_cast<wint_t>(wanted)) {
            Click(*button);
            return true;
        }
    }
    return false;
}

BOOL CDialog::PreTranslateMessage(MSG* msg) {
    // The dialog's own keyboard handling: a mnemonic letter clicks its button, Enter presses
    // the default button (OK).
    if (msg->message == WM_CHAR)
        return ClickMnemonic(static_cast<wchar_t>(msg->wParam)) ? TRUE : FALSE;
    if (msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN) {
        OnOK();
        return TRUE;
    }
    return FALSE;
}

bool CDialog::ApplyAction(const kelaz::DialogAction& action, CString& why) {
    using Kind = kelaz::DialogAction::Kind;
    if (action.kind == Kind::kOk) {
        OnOK();
        return true;
    }
    if (action.kind == Kind::kCancel) {
        OnCancel();
        return true;
    }
    if (action.kind == Kind::kKey) {
        MSG msg;
        msg.hwnd = GetSafeHwnd();
        if (action.value == L"enter") {
            msg.message = WM_KEYDOWN;
            msg.wParam = VK_RETURN;
        } else {
            msg.message = WM_CHAR;
            msg.wParam = action.value == L"space" ? L' ' : static_cast<WPARAM>(action.value[0]);
        }
        if (!PreTranslateMessage(&msg))
            why = kelaz::FormatText(L"按键 %s 在这个对话框里没有作用。", action.value.GetString());
        return why.IsEmpty();
    }
    CWnd* control = GetDlgItem(action.control);
    if (!control) {
        why = kelaz::FormatText(L"对话框里没有控件 %d。", action.control);
        return false;
    }
    if (!control->m_visible || !control->m_enabled) {
        why = kelaz::FormatText(L"控件 %d 现在不能操作。", action.control);
        return false;
    }
    if (action.kind == Kind::kCell || action.kind == Kind::kRange || action.kind == Kind::kChoose) {
        MoveFocus(control);
        return control->TakeAction(action, why);
    }
    auto* button = dynamic_cast<CButton*>(control);
    auto* combo = dynamic_cast<CComboBox*>(control);
    auto* list = dynamic_cast<CListBox*>(control);
    auto* tree = dynamic_cast<CTreeCtrl*>(control);
    switch (action.kind) {
        case Kind::kSet:
            // Only fields take typed text.
            if (button || list || tree || dynamic_cast<CStatic*>(control)) break;
            MoveFocus(control);
            control->SetWindowText(action.value);
            if (combo) {
                const int at = combo->FindStringExact(-1, action.value);
                combo->SetCurSel(at);
                combo->SetWindowText(action.value);
            }
            return true;
        case Kind::kCheck:
            if (!button || button->GetStyle() == CButton::Style::kPush) break;
            if (button->GetStyle() == CButton::Style::kRadio) {
                if (action.value != L"1") break;  // a radio button is cleared by checking another
                Click(*button);
                return true;
            }
            MoveFocus(button);
            button->SetCheck(_wtoi(action.value));
            OnClicked(button->GetDlgCtrlID());
            return true;
        case Kind::kClick:
            if (!button) break;
            Click(*button);
            return true;
        case Kind::kSelect: {
            if (!combo && !list && !tree) break;
            bool found = false;
            if (tree) {
                HTREEITEM item = kelaz::FindTreeItem(*tree, action.value);
                MoveFocus(control);
                found = item != nullptr && tree->Select(item, TVC_BYMOUSE);
            } else {
                // An item by its text first, then by its position.
                int at = combo ? combo->FindStringExact(-1, action.value)
                               : list->FindStringExact(-1, action.value);
                if (at < 0 && action.value.SpanIncluding(L"0123456789") == action.value)
                    at = _wtoi(action.value);
                MoveFocus(control);
                found = at >= 0 && (combo ? combo->SetCurSel(at) : list->SetCurSel(at)) == at;
            }
            if (!found) {
                why = kelaz::FormatText(L"控件 %d 没有这一项: %s", action.control,
                                        action.value.GetString());
                return false;
            }
            return true;
        }
        default:
            break;
    }
    why = kelaz::FormatText(L"控件 %d 不接受这个操作。", action.control);
    return false;
}

INT_PTR CDialog::Drive() {
    kelaz::DialogDriver& driver = kelaz::CurrentDialogDriver();
    driver.Show(*this);
    while (!m_ended) {
        kelaz::DialogAction action;
        if (!driver.NextAction(*this, action)) {
            OnCancel();
            if (!m_ended) EndDialog(IDCANCEL);  // no more input closes whatever the dialog says
            break;
        }
        CString why;
        if (!ApplyAction(action, why)) {
            driver.Refuse(why);
        } else if (!m_ended) {
            driver.Show(*this);  // the action may have changed what the drafter sees
        }
    }
    return m_result;
}

INT_PTR CDialog::DoModal() {
    m_exists = true;
    for (auto& child : m_children) child->m_exists = true;
    m_ended = false;
    m_result = 0;
    OnInitDialog();
    const INT_PTR result = Drive();
    DestroyWindow();
    return result;
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) {
    m_templateId = templateId;
    m_parent = parent;
    m_exists = true;
    for (auto& child : m_children) child->m_exists = true;
    m_ended = false;
    OnInitDialog();
    return TRUE;
}

INT_PTR CDialog::RunModeless() {
    m_ended = false;
    m_result = 0;
    return Drive();
}

void DDX_Text(CDataExchange* dx, int id, CString& value) {
    if (dx->m_failed) return;
    CWnd* control = dx->m_pDlgWnd->GetDlgItem(id);
    if (!control) return dx->Fail();
    if (dx->m_bSaveAndValidate) {
        control->GetWindowText(value);
    } else {
        control->SetWindowText(value);
    }
}

void DDX_Text(CDataExchange* dx, int id, double& value) {
    if (dx->m_failed) return;
    CWnd* control = dx->m_pDlgWnd->GetDlgItem(id);
    if (!control) return dx->Fail();
    if (!dx->m_bSaveAndValidate) {
        control->SetWindowText(kelaz::FormatText(L"%g", value));
        return;
    }
    CString text;
    control->GetWindowText(text);
    wchar_t* end = nullptr;
    const double read = std::wcstod(text.GetString(), &end);
    CString rest(end);
    if (text.Trim().IsEmpty() || !rest.Trim().IsEmpty()) {
        AfxMessageBox(L"请输入一个数。");
        control->SetFocus();
        return dx->Fail();
    }
    value = read;
}

void DDX_Check(CDataExchange* dx, int id, int& value) {
    if (dx->m_failed) return;
    auto* button = dynamic_cast<CButton*>(dx->m_pDlgWnd->GetDlgItem(id));
    if (!button) return dx->Fail();
    if (dx->m_bSaveAndValidate) {
        value = button->GetCheck();
    } else {
        button->SetCheck(value);
    }
}

void DDX_Radio(CDataExchange* dx, int firstId, int& value) {
    if (dx->m_failed) return;
    std::vector<CButton*> group;
    for (int id = firstId;; ++id) {
        auto* button = dynamic_cast<CButton*>(dx->m_pDlgWnd->GetDlgItem(id));
        if (!button || button->GetStyle() != CButton::Style::kRadio) break;
        group.push_back(button);
    }
    if (group.empty()) return dx->Fail();
    if (dx->m_bSaveAndValidate) {
        value = -1;
        for (size_t i = 0; i < group.size(); ++i) {
            if (group[i]->GetCheck() == BST_CHECKED) value = static_cast<int>(i);
        }
    } else {
        for (size_t i = 0; i < group.size(); ++i) {
            group[i]->SetCheck(static_cast<int>(i) == value ? BST_CHECKED : BST_UNCHECKED);
        }
    }
}
