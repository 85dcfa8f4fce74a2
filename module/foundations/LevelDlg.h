#pragma once

// The small modeless elevation box the placement commands show beside the drawing: a switch
// for elevation input, the elevation (typed, chosen from the last ones, or picked from an object
// of the drawing) and a pick button. The elevation is the module's current one, shared with
// the multi-lead drawing.

#include "host/ui/Dialog.h"
#include "module/entry/LayoutApi.h"
#include "suite/controls/CalComboBox.h"
#include "suite/controls/CalcDialogPos.h"

namespace kelaz {
// The module-wide current elevation.
LAYOUT_API double& CurrentLevel();
}  // namespace kelaz

class LAYOUT_API CLevelDlg : public CDialog {
public:
    enum { IDD = 200 };
    static constexpr int kPickButton = 204;
    static constexpr int kCheckBox = 207;
    static constexpr int kLevelCombo = 232;
    static constexpr UINT kPickBitmap = 202;
    // Sent by the pick when it has written the elevation into the box: read the fields again.
    static constexpr UINT kRereadMessage = 7037;
    // The elevation offered when the box has no history yet.
    static constexpr const wchar_t* kDefaultLevel = L"2800";

    // name keys the box's history ("<name>_level").
    explicit CLevelDlg(const CString& name, CWnd* pParent = nullptr);
    ~CLevelDlg() override;

    // Opens the box as a child of the host's window, the document locked meanwhile.
    BOOL Create();
    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* msg) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Stores the place and the history before the box goes.
    BOOL DestroyWindow() override;

    int m_bCheck = 1;

protected:
    void DoDataExchange(CDataExchange* dx) override;
    void OnClicked(int id) override;
    void OnKillFocus(int id) override;

private:
    CString HistoryKey() const { return m_strName + L"_level"; }

    CString m_strName;
    CCalcDialogPos m_pos;
    bool m_saved = false;
};
