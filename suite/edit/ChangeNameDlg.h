#pragma once

// The edit module's rename dialog for a member of the project's catalogue (a line kind, a
// flange): the drafter changes the name in place, and the project keeps it at once.

#include "host/text/CString.h"
#include "host/ui/Dialog.h"

class CChangeNameDlg : public CDialog {
public:
    enum { IDD = 220 };
    static constexpr int kNameEdit = 221;

    // path: the member's catalogue path; mode: see ShowChangeNameDlgForOther.
    CChangeNameDlg(const CString& path, int mode, CWnd* pParent = nullptr);

    BOOL OnInitDialog() override;
    // Renames and saves; stays open with a message for a name that cannot be taken.
    void OnOK() override;
    // The name the member has when the dialog closes.
    const CString& GetName() const { return m_name; }

private:
    CString m_path;
    int m_mode;
    CString m_name;
};

// Opens the rename dialog over the catalogue member at path and answers its name afterwards:
// the new one after OK, the old one after Cancel (empty when the path names no member). mode
// says what kind of name the drafter edits, shown in the caption: 0 a line of the electrical
// speciality ("修改管线名称"), 3 a line of wiring and cabling ("修改线路名称"), any other a
// catalogue member ("修改名称").
CString ShowChangeNameDlgForOther(const CString& path, int mode);
