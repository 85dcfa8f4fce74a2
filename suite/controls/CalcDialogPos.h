#pragma once

// Where a dialog stands on screen: remembered per dialog from one showing to the next, and
// placed by default near the host window's top-left corner.

#include "host/text/CString.h"
#include "host/ui/Dialog.h"

class CCalcDialogPos {
public:
    // key: the dialog's name for its remembered place.
    explicit CCalcDialogPos(const CString& key = CString()) : m_key(key) {}
    void SetKey(const CString& key) { m_key = key; }

    // Moves the dialog where it stood last time, or margins away from the host window's corner.
    void GetNewPos(CWnd* dialog, int marginX, int marginY) const;
    // Remembers where the dialog stands now.
    void SetDialogPos(const CRect& rect) const;
    // The remembered place; false when the dialog was never shown.
    bool GetDialogPos(CRect& rect) const;

private:
    CString m_key;
};
