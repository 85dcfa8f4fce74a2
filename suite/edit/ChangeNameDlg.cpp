#include "suite/edit/ChangeNameDlg.h"

#include "suite/data/Att.h"
#include "suite/tools/KelMessageBox.h"

namespace {

CString CaptionOf(int mode) {
    switch (mode) {
        case 0:
            return L"修改管线名称";
        case 3:
            return L"修改线路名称";
        default:
            return L"修改名称";
    }
}

}  // namespace

CChangeNameDlg::CChangeNameDlg(const CString& path, int mode, CWnd* pParent)
    : CDialog(IDD, pParent), m_path(path), m_mode(mode) {
    AddStatic(L"名称");
    AddEdit(kNameEdit);
    KelAzDataMng::SAttDataIndex index;
    if (KelAzDataMng::AttNameToAttId(path, index))
        m_name = KelAzDataMng::CAttDetailMem(index).GetName();
}

BOOL CChangeNameDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(CaptionOf(m_mode));
    if (CWnd* edit = GetDlgItem(kNameEdit)) edit->SetWindowText(m_name);
    return TRUE;
}

void CChangeNameDlg::OnOK() {
    CString typed;
    if (CWnd* edit = GetDlgItem(kNameEdit)) edit->GetWindowText(typed);
    typed.Trim();
    if (typed == m_name) {
        EndDialog(IDOK);
        return;
    }
    KelAzDataMng::SAttDataIndex index;
    if (!KelAzDataMng::AttNameToAttId(m_path, index)) {
        kelaz::ShowWarning(L"找不到要修改的名称");
        return;
    }
    if (typed.IsEmpty()) {
        kelaz::ShowWarning(L"名称不能为空");
        return;
    }
    if (typed.Find(L'\\') >= 0) {
        kelaz::ShowWarning(L"名称不能含有\\");
        return;
    }
    KelAzDataMng::CAttDetailMem member(index);
    if (!member.SetName(typed)) {
        kelaz::ShowWarning(L"该名称已存在");
        return;
    }
    // The project keeps the name at once; a write that fails leaves the old name everywhere.
    if (!KelAzDataMng::CAtt::Save()) {
        member.SetName(m_name);
        KelAzDataMng::CAtt::Save();
        kelaz::ShowWarning(L"项目保存失败，名称未修改");
        return;
    }
    m_name = typed;
    const int slash = m_path.ReverseFind(L'\\');
    m_path = m_path.Left(slash + 1) + m_name;
    EndDialog(IDOK);
}

CString ShowChangeNameDlgForOther(const CString& path, int mode) {
    CChangeNameDlg dlg(path, mode);
    dlg.DoModal();
    return dlg.GetName();
}
