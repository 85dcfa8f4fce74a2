#include "suite/controls/CalcDialogPos.h"

#include <map>

namespace {

std::map<CString, CRect>& Places() {
    static std::map<CString, CRect> places;
    return places;
}

// The size a dialog takes when nothing else is known.
constexpr LONG kDefaultWidth = 240;
constexpr LONG kDefaultHeight = 120;

}  // namespace

void CCalcDialogPos::GetNewPos(CWnd* dialog, int marginX, int marginY) const {
    if (!dialog) return;
    CRect rect;
    if (!GetDialogPos(rect)) {
        CRect frame;
        acedGetAcadFrame()->GetWindowRect(&frame);
        CRect current;
        dialog->GetWindowRect(&current);
        const LONG width = current.Width() > 0 ? current.Width() : kDefaultWidth;
        const LONG height = current.Height() > 0 ? current.Height() : kDefaultHeight;
        rect = {frame.left + marginX, frame.top + marginY, frame.left + marginX + width,
                frame.top + marginY + height};
    }
    dialog->MoveWindow(rect);
}

void CCalcDialogPos::SetDialogPos(const CRect& rect) const { Places()[m_key] = rect; }

bool CCalcDialogPos::GetDialogPos(CRect& rect) const {
    const auto it = Places().find(m_key);
    if (it == Places().end()) return false;
    rect = it->second;
    return true;
}
