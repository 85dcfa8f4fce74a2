#pragma once

// Picking an elevation from an object of the drawing for the elevation box: the box asks the
// host to run the transparent 'PickHeight, whose command picks the object and writes its
// elevation into the box.

#include "host/ui/Dialog.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CPickLevel {
public:
    // Starts a pick for the box edit of the owner dialog.
    static void GetLevel(CWnd* edit, CDialog* owner);
    // The pick itself: hides the box, asks for an object and takes its elevation. False (the
    // drafter told when the object has no single elevation) when there is none.
    static bool GetLevelOnDlg(double& level);

    static CWnd* m_pLevelEdit;
    static CDialog* m_pLevelParent;
};
