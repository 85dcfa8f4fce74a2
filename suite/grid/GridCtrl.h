#pragma once

// The grid control: a table of text cells under fixed header rows and beside fixed header
// columns, each cell with its own state (read-only, drop-down list), colours and text format.
// The drafter selects a range of cells, types into a cell or picks a cell's drop-down item; the
// grid tells its parent (WM_NOTIFY) when the selected cell changed and when an edit ended, so
// that the dialog can react. A drop-down list is filled by the options function the owner
// registers, asked each time the list opens.

#include <functional>
#include <vector>

#include "host/text/Array.h"
#include "host/text/CString.h"
#include "host/ui/Dialog.h"

using COLORREF = DWORD;
// 0x00BBGGRR, as the framework writes colours.
constexpr COLORREF RGB(unsigned r, unsigned g, unsigned b) {
    return static_cast<COLORREF>((r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16));
}

// Cell states.
inline constexpr UINT GVIS_FOCUSED = 0x0001;
inline constexpr UINT GVIS_SELECTED = 0x0002;
inline constexpr UINT GVIS_READONLY = 0x0008;
inline constexpr UINT GVIS_FIXED = 0x0010;
inline constexpr UINT GVIS_MODIFIED = 0x0080;
// The cell offers a drop-down list of the options function's items instead of free typing.
inline constexpr UINT GVIS_DROPDOWNLIST = 0x0100;

// Text formats of a cell.
inline constexpr UINT DT_LEFT = 0x0000;
inline constexpr UINT DT_CENTER = 0x0001;
inline constexpr UINT DT_RIGHT = 0x0002;
inline constexpr UINT DT_VCENTER = 0x0004;
inline constexpr UINT DT_SINGLELINE = 0x0020;
inline constexpr UINT DT_NOPREFIX = 0x0800;

// Notifications to the parent: the selected cell changed; an edit of a cell ended.
inline constexpr UINT GVN_SELCHANGED = 0U - 300U - 2U;
inline constexpr UINT GVN_ENDLABELEDIT = 0U - 300U - 6U;

struct NM_GRIDVIEW {
    NMHDR hdr;
    int iRow = -1;
    int iColumn = -1;
};

// A rectangle of cells, corners included; -1 everywhere when nothing is selected.
class CCellRange {
public:
    CCellRange() = default;
    CCellRange(int minRow, int minCol, int maxRow, int maxCol)
        : m_minRow(minRow), m_minCol(minCol), m_maxRow(maxRow), m_maxCol(maxCol) {}
    bool IsValid() const {
        return m_minRow >= 0 && m_minCol >= 0 && m_maxRow >= m_minRow && m_maxCol >= m_minCol;
    }
    int GetMinRow() const { return m_minRow; }
    int GetMinCol() const { return m_minCol; }
    int GetMaxRow() const { return m_maxRow; }
    int GetMaxCol() const { return m_maxCol; }
    bool InRange(int row, int col) const {
        return IsValid() && row >= m_minRow && row <= m_maxRow && col >= m_minCol &&
               col <= m_maxCol;
    }
    friend bool operator==(const CCellRange&, const CCellRange&) = default;

private:
    int m_minRow = -1;
    int m_minCol = -1;
    int m_maxRow = -1;
    int m_maxCol = -1;
};

// Fills the items a cell's drop-down list shows.
using GridOptionsFun = std::function<void(int row, int col, CStringArray& options)>;

class CGridCtrl : public CWnd {
public:
    static constexpr int kDefaultRowHeight = 20;
    static constexpr int kDefaultColumnWidth = 64;
    static constexpr COLORREF kWhite = 0xFFFFFF;

    CGridCtrl() = default;

    // Sizes. Rows and columns added by a count take the default height, width and cell type.
    BOOL SetRowCount(int rows);
    BOOL SetColumnCount(int cols);
    BOOL SetFixedRowCount(int rows);
    BOOL SetFixedColumnCount(int cols);
    int GetRowCount() const { return static_cast<int>(m_rows.size()); }
    int GetColumnCount() const { return m_columnCount; }
    int GetFixedRowCount() const { return m_fixedRows; }
    int GetFixedColumnCount() const { return m_fixedCols; }
    // Appends a row (or inserts it before row), its first cell holding heading; its index, -1
    // when row is out of range.
    int InsertRow(LPCTSTR heading, int row = -1);
    BOOL DeleteRow(int row);
    // Removes every row below the fixed ones.
    void DeleteNonFixedRows();

    BOOL SetItemText(int row, int col, LPCTSTR text);
    CString GetItemText(int row, int col) const;
    BOOL SetItemState(int row, int col, UINT state);
    UINT GetItemState(int row, int col) const;
    BOOL SetItemFormat(int row, int col, UINT format);
    UINT GetItemFormat(int row, int col) const;
    // A cell's own background; cells without one show the grid's text background.
    BOOL SetItemBkColour(int row, int col, COLORREF colour);
    COLORREF GetItemBkColour(int row, int col) const;
    BOOL SetItemFgColour(int row, int col, COLORREF colour);
    COLORREF GetItemFgColour(int row, int col) const;
    bool IsCellFixed(int row, int col) const { return row < m_fixedRows || col < m_fixedCols; }
    bool IsValid(int row, int col) const {
        return row >= 0 && row < GetRowCount() && col >= 0 && col < m_columnCount;
    }

    BOOL SetRowHeight(int row, int height);
    int GetRowHeight(int row) const;
    BOOL SetColumnWidth(int col, int width);
    int GetColumnWidth(int col) const;
    int GetDefCellHeight() const { return m_defaultHeight; }
    void SetDefCellHeight(int height) { m_defaultHeight = height; }

    void SetTextBkColor(COLORREF colour) { m_textBk = colour; }
    COLORREF GetTextBkColor() const { return m_textBk; }
    void SetEditable(BOOL editable = TRUE) { m_editable = editable != FALSE; }
    BOOL IsEditable() const { return m_editable ? TRUE : FALSE; }
    void EnableDragAndDrop(BOOL enable = TRUE) { m_dragAndDrop = enable != FALSE; }
    BOOL GetDragAndDrop() const { return m_dragAndDrop ? TRUE : FALSE; }
    // Clicking a fixed column selects its whole row; clicking a fixed row its whole column.
    void SetFixedColumnSelection(BOOL on) { m_fixedColumnSelection = on != FALSE; }
    void SetFixedRowSelection(BOOL on) { m_fixedRowSelection = on != FALSE; }
    BOOL GetFixedColumnSelection() const { return m_fixedColumnSelection ? TRUE : FALSE; }
    BOOL GetFixedRowSelection() const { return m_fixedRowSelection ? TRUE : FALSE; }

    CCellRange GetSelectedCellRange() const { return m_selection; }
    // Selects the range (an invalid range: none) and tells the parent which cell was clicked.
    void SetSelectedRange(const CCellRange& range, bool notify = true);
    void SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool notify = true) {
        SetSelectedRange(CCellRange(minRow, minCol, maxRow, maxCol), notify);
    }

    void SetOptionsFun(GridOptionsFun fun) { m_options = std::move(fun); }
    // The items the drop-down of the cell offers now.
    CStringArray GetOptions(int row, int col) const;

    // Repaints; the model draws from its cells whenever it is shown, so nothing to do.
    void Refresh() {}
    void Invalidate() {}

    // The drafter's typing into a cell (refused for fixed, read-only and drop-down cells and
    // when the grid is not editable) and choice of a drop-down item; why says what refused.
    bool TypeIntoCell(int row, int col, const CString& text, CString& why);
    bool ChooseInCell(int row, int col, const CString& item, CString& why);

    bool TakeAction(const kelaz::DialogAction& action, CString& why) override;
    void DescribeAsText(kelaz::ControlText& text) const override;

protected:
    struct Cell {
        CString text;
        UINT state = 0;
        UINT format = DT_LEFT;
        bool hasBk = false;
        COLORREF bk = 0;
        bool hasFg = false;
        COLORREF fg = 0;
    };
    struct Row {
        std::vector<Cell> cells;
        int height = kDefaultRowHeight;
    };
    // The state a new non-fixed cell starts with.
    UINT m_defaultCellState = 0;

private:
    Cell* At(int row, int col);
    const Cell* At(int row, int col) const;
    Row NewRow() const;
    void Notify(UINT code, int row, int col);

    std::vector<Row> m_rows;
    std::vector<int> m_widths;
    int m_columnCount = 0;
    int m_fixedRows = 0;
    int m_fixedCols = 0;
    int m_defaultHeight = kDefaultRowHeight;
    COLORREF m_textBk = kWhite;
    bool m_editable = true;
    bool m_dragAndDrop = true;
    bool m_fixedColumnSelection = false;
    bool m_fixedRowSelection = false;
    CCellRange m_selection;
    GridOptionsFun m_options;
};
