#pragma once

// The suite's grid as its dialogs use it: the grid control with a default cell type for the
// rows it adds, deletion of the selected rows and the options function that fills drop-downs.

#include "suite/grid/GridCtrl.h"

class CKELGrid1 : public CGridCtrl {
public:
    // Cell types: 0 plain text; 1 read-only text; 2 a drop-down list.
    static constexpr int kTextCell = 0;
    static constexpr int kReadOnlyCell = 1;
    static constexpr int kDropDownCell = 2;

    // The type new non-fixed cells take.
    void SetDefaultCellType(int type);
    int GetDefaultCellType() const { return m_defaultType; }
    // Deletes the rows of the selected range that are not fixed; the selection becomes none.
    // FALSE when nothing was selected.
    BOOL DelSelRow();
    // Registers the function that fills the drop-down of a cell.
    void SetOptionsFunName(GridOptionsFun fun) { SetOptionsFun(std::move(fun)); }

private:
    int m_defaultType = kTextCell;
};
