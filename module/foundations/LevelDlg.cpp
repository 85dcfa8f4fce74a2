#include "module/foundations/LevelDlg.h"

#include <cwchar>

#include "host/app/DocManager.h"
#include "module/foundations/PickLevel.h"
#include "suite/data/ProjCookie.h"

namespace kelaz {
double& CurrentLevel() {
    static double level = 0.0;
    return level;
}
}  // namespace kelaz

namespace {
// How far from the host window's corner the box opens the first time.
constexpr int kPlacementMargin = 20;
}  // namespace

CLevelDlg::CLevelDlg(const CString& name, CWnd* pParent)
    : CDialog(IDD, pParent), m_strName(name), m_pos(name) {
    SetWindowText(L"标高");
    AddButton(kCheckBox, L"输入标高", CButton::Style::kCheckBox);
    AddStatic(L"标高");
    AddControl<CalComboBox>(kLevelCombo);
    // The button shows a bitmap; its text names it where no bitmap can be seen.
    AddButton(kPickButton, L"拾取标高");
}

CLevelDlg::~CLevelDlg() { DestroyWindow(); }

BOOL CLevelDlg::Create() {
    AcApDocument* doc = acDocManager->curDocument();
    if (doc) acDocManager->lockDocument(doc);
    const BOOL created = CDialog::Create(IDD, acedGetAcadFrame());
    if (doc) acDocManager->unlockDocument(doc);
    return created;
}

BOOL CLevelDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    auto* combo = Control<CalComboBox>(kLevelCombo);
    const CStringArray history =
        KelAzDataMng::CKelAzProjCookie::Instance()->GetLevelHeightObj()->GetLevelHeight(
            HistoryKey());
    combo->ResetContent();
    if (history.IsEmpty()) {
        combo->SetWindowText(kDefaultLevel);
    } else {
        for (const CString& level : history) combo->AddString(level);
        combo->SetCurSel(0);
    }
    m_pos.GetNewPos(this, kPlacementMargin, kPlacementMargin);
    Control<CButton>(kPickButton)->SetBitmap(kPickBitmap);
    return TRUE;
}

void CLevelDlg::DoDataExchange(CDataExchange* dx) {
    CDialog::DoDataExchange(dx);
    DDX_Check(dx, kCheckBox, m_bCheck);
    DDX_Text(dx, kLevelCombo, kelaz::CurrentLevel());
}

void CLevelDlg::OnKillFocus(int id) {
    if (id != kLevelCombo) return;
    CWnd* combo = GetDlgItem(kLevelCombo);
    CString text;
    combo->GetWindowText(text);
    double value = 0.0;
    if (std::swscanf(text.GetString(), L"%lf", &value) != 1) combo->SetWindowText(L"0");
}

void CLevelDlg::OnClicked(int id) {
    if (id == kCheckBox) {
        const BOOL on = Control<CButton>(kCheckBox)->GetCheck() == BST_CHECKED ? TRUE : FALSE;
        GetDlgItem(kLevelCombo)->EnableWindow(on);
        GetDlgItem(kPickButton)->EnableWindow(on);
        return;
    }
    if (id == kPickButton) {
        CPickLevel::GetLevel(GetDlgItem(kLevelCombo), this);
        return;
    }
    CDialog::OnClicked(id);
}

BOOL CLevelDlg::PreTranslateMessage(MSG* msg) {
    // Enter in a field goes on to the next one; only on the OK button does it close the box.
    if (msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN && GetFocus() != GetDlgItem(IDOK)) {
        NextDlgCtrl();
        return TRUE;
    }
    return CDialog::PreTranslateMessage(msg);
}

LRESULT CLevelDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kRereadMessage) {
        UpdateData(TRUE);
        return 0;
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

BOOL CLevelDlg::DestroyWindow() {
    if (!GetSafeHwnd()) return FALSE;
    CRect rect;
    GetWindowRect(&rect);
    m_pos.SetDialogPos(rect);
    auto* combo = Control<CalComboBox>(kLevelCombo);
    combo->RememberText(KelAzDataMng::CLevelHeightCookie::kMaxEntries);
    KelAzDataMng::CKelAzProjCookie::Instance()->GetLevelHeightObj()->SetLevelHeight(
        HistoryKey(), combo->GetItems());
    return CDialog::DestroyWindow();
}
