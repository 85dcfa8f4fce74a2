#include "suite/grid/GridCtrl.h"

#include <algorithm>

#include "host/ui/DialogDriver.h"
#include "host/ui/DialogText.h"
#include "suite/grid/KELGrid1.h"

BOOL CGridCtrl::SetRowCount(int rows) {
    if (rows < 0) return FALSE;
    m_rows.resize(static_cast<size_t>(rows), NewRow());
    if (m_fixedRows > rows) m_fixedRows = rows;
    if (!m_selection.IsValid() || m_selection.GetMaxRow() >= rows) m_selection = CCellRange();
    return TRUE;
}

BOOL CGridCtrl::SetColumnCount(int cols) {
    if (cols < 0) return FALSE;
    m_columnCount = cols;
    m_widths.resize(static_cast<size_t>(cols), kDefaultColumnWidth);
    for (size_t r = 0; r < m_rows.size(); ++r) {
        std::vector<Cell>& cells = m_rows[r].cells;
        const size_t old = cells.size();
        cells.resize(static_cast<size_t>(cols));
        for (size_t c = old; c < cells.size(); ++c)
            if (!IsCellFixed(static_cast<int>(r), static_cast<int>(c)))
                cells[c].state = m_defaultCellState;
    }
    if (m_fixedCols > cols) m_fixedCols = cols;
    if (m_selection.IsValid() && m_selection.GetMaxCol() >= cols) m_selection = CCellRange();
    return TRUE;
}

BOOL CGridCtrl::SetFixedRowCount(int rows) {
    if (rows < 0) return FALSE;
    if (rows > GetRowCount()) SetRowCount(rows);
    m_fixedRows = rows;
    return TRUE;
}

BOOL CGridCtrl::SetFixedColumnCount(int cols) {
    if (cols < 0) return FALSE;
    if (cols > m_columnCount) SetColumnCount(cols);
    m_fixedCols = cols;
    return TRUE;
}

CGridCtrl::Row CGridCtrl::NewRow() const {
    Row row;
    row.height = m_defaultHeight;
    row.cells.resize(static_cast<size_t>(m_columnCount));
    for (int c = m_fixedCols; c < m_columnCount; ++c) row.cells[c].state = m_defaultCellState;
    return row;
}

int CGridCtrl::InsertRow(LPCTSTR heading, int row) {
    if (row < -1 || row > GetRowCount()) return -1;
    const int at = row < 0 ? GetRowCount() : row;
    m_rows.insert(m_rows.begin() + at, NewRow());
    if (m_columnCount > 0) m_rows[at].cells[0].text = heading;
    if (m_selection.IsValid() && m_selection.GetMaxRow() >= at) m_selection = CCellRange();
    return at;
}

BOOL CGridCtrl::DeleteRow(int row) {
    if (row < 0 || row >= GetRowCount()) return FALSE;
    m_rows.erase(m_rows.begin() + row);
    if (row < m_fixedRows) --m_fixedRows;
    if (m_selection.IsValid() && m_selection.GetMaxRow() >= row) m_selection = CCellRange();
    return TRUE;
}

void CGridCtrl::DeleteNonFixedRows() {
    m_rows.resize(static_cast<size_t>(m_fixedRows));
    m_selection = CCellRange();
}

CGridCtrl::Cell* CGridCtrl::At(int row, int col) {
    return IsValid(row, col) ? &m_rows[row].cells[col] : nullptr;
}

const CGridCtrl::Cell* CGridCtrl::At(int row, int col) const {
    return IsValid(row, col) ? &m_rows[row].cells[col] : nullptr;
}

BOOL CGridCtrl::SetItemText(int row, int col, LPCTSTR text) {
    Cell* cell = At(row, col);
    if (!cell) return FALSE;
    cell->text = text;
    return TRUE;
}

CString CGridCtrl::GetItemText(int row, int col) const {
    const Cell* cell = At(row, col);
    return cell ? cell->text : CString();
}

BOOL CGridCtrl::SetItemState(int row, int col, UINT state) {
    Cell* cell = At(row, col);
    if (!cell) return FALSE;
    cell->state = state;
    return TRUE;
}

UINT CGridCtrl::GetItemState(int row, int col) const {
    const Cell* cell = At(row, col);
    if (!cell) return 0;
    UINT state = cell->state;
    if (IsCellFixed(row, col)) state |= GVIS_FIXED;
    if (m_selection.InRange(row, col)) state |= GVIS_SELECTED;
    return state;
}

BOOL CGridCtrl::SetItemFormat(int row, int col, UINT format) {
    Cell* cell = At(row, col);
    if (!cell) return FALSE;
    cell->format = format;
    return TRUE;
}

UINT CGridCtrl::GetItemFormat(int row, int col) const {
    const Cell* cell = At(row, col);
    return cell ? cell->format : DT_LEFT;
}

BOOL CGridCtrl::SetItemBkColour(int row, int col, COLORREF colour) {
    Cell* cell = At(row, col);
    if (!cell) return FALSE;
    cell->hasBk = true;
    cell->bk = colour;
    return TRUE;
}

COLORREF CGridCtrl::GetItemBkColour(int row, int col) const {
    const Cell* cell = At(row, col);
    if (cell && cell->hasBk) return cell->bk;
    return IsCellFixed(row, col) ? kWhite : m_textBk;
}

BOOL CGridCtrl::SetItemFgColour(int row, int col, COLORREF colour) {
    Cell* cell = At(row, col);
    if (!cell) return FALSE;
    cell->hasFg = true;
    cell->fg = colour;
    return TRUE;
}

COLORREF CGridCtrl::GetItemFgColour(int row, int col) const {
    const Cell* cell = At(row, col);
    return cell && cell->hasFg ? cell->fg : 0;
}

BOOL CGridCtrl::SetRowHeight(int row, int height) {
    if (row < 0 || row >= GetRowCount() || height < 0) return FALSE;
    m_rows[row].height = height;
    return TRUE;
}

int CGridCtrl::GetRowHeight(int row) const {
    return row >= 0 && row < GetRowCount() ? m_rows[row].height : 0;
}

BOOL CGridCtrl::SetColumnWidth(int col, int width) {
    if (col < 0 || col >= m_columnCount || width < 0) return FALSE;
    m_widths[col] = width;
    return TRUE;
}

int CGridCtrl::GetColumnWidth(int col) const {
    return col >= 0 && col < m_columnCount ? m_widths[col] : 0;
}

void CGridCtrl::Notify(UINT code, int row, int col) {
    CWnd* parent = GetParent();
    if (!parent) return;
    NM_GRIDVIEW note;
    note.hdr.hwndFrom = GetSafeHwnd();
    note.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    note.hdr.code = code;
    note.iRow = row;
    note.iColumn = col;
    parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(GetDlgCtrlID()),
                        reinterpret_cast<LPARAM>(&note));
}

void CGridCtrl::SetSelectedRange(const CCellRange& range, bool notify) {
    m_selection =
        range.IsValid() && IsValid(range.GetMaxRow(), range.GetMaxCol()) ? range : CCellRange();
    // The cell clicked is the range's first corner.
    if (notify && m_selection.IsValid())
        Notify(GVN_SELCHANGED, m_selection.GetMinRow(), m_selection.GetMinCol());
}

CStringArray CGridCtrl::GetOptions(int row, int col) const {
    CStringArray options;
    if (m_options && IsValid(row, col)) m_options(row, col, options);
    return options;
}

bool CGridCtrl::TypeIntoCell(int row, int col, const CString& text, CString& why) {
    if (!IsValid(row, col)) {
        why = kelaz::FormatText(L"表格没有单元格 (%d, %d)。", row, col);
        return false;
    }
    const UINT state = GetItemState(row, col);
    if (!m_editable || (state & (GVIS_FIXED | GVIS_READONLY)) != 0) {
        why = kelaz::FormatText(L"单元格 (%d, %d) 不能编辑。", row, col);
        return false;
    }
    if ((state & GVIS_DROPDOWNLIST) != 0) {
        why = kelaz::FormatText(L"单元格 (%d, %d) 只能从下拉列表选择 (choose)。", row, col);
        return false;
    }
    SetSelectedRange(row, col, row, col);
    m_rows[row].cells[col].text = text;
    m_rows[row].cells[col].state |= GVIS_MODIFIED;
    Notify(GVN_ENDLABELEDIT, row, col);
    return true;
}

bool CGridCtrl::ChooseInCell(int row, int col, const CString& item, CString& why) {
    if (!IsValid(row, col)) {
        why = kelaz::FormatText(L"表格没有单元格 (%d, %d)。", row, col);
        return false;
    }
    const UINT state = GetItemState(row, col);
    if (!m_editable || (state & (GVIS_FIXED | GVIS_READONLY)) != 0 ||
        (state & GVIS_DROPDOWNLIST) == 0) {
        why = kelaz::FormatText(L"单元格 (%d, %d) 没有下拉列表。", row, col);
        return false;
    }
    SetSelectedRange(row, col, row, col);
    // The list is filled when it opens, so it shows what the options are now.
    const CStringArray options = GetOptions(row, col);
    INT_PTR at = -1;
    for (INT_PTR i = 0; i < options.GetSize(); ++i)
        if (options[i] == item) at = i;
    if (at < 0 && !item.IsEmpty() && item.SpanIncluding(L"0123456789") == item &&
        _wtoi(item) < options.GetSize())
        at = _wtoi(item);
    if (at < 0) {
        why = options.GetSize() == 0
                  ? kelaz::FormatText(L"单元格 (%d, %d) 的下拉列表是空的。", row, col)
                  : kelaz::FormatText(L"单元格 (%d, %d) 的下拉列表没有这一项: %s", row, col,
                                      item.GetString());
        return false;
    }
    m_rows[row].cells[col].text = options[at];
    m_rows[row].cells[col].state |= GVIS_MODIFIED;
    Notify(GVN_ENDLABELEDIT, row, col);
    return true;
}

bool CGridCtrl::TakeAction(const kelaz::DialogAction& action, CString& why) {
    using Kind = kelaz::DialogAction::Kind;
    switch (action.kind) {
        case Kind::kCell:
            return TypeIntoCell(action.row, action.column, action.value, why);
        case Kind::kChoose:
            return ChooseInCell(action.row, action.column, action.value, why);
        case Kind::kRange: {
            // A whole row: from the first column after the fixed ones to the last.
            const bool wholeRow = action.column < 0;
            const int c1 = wholeRow ? m_fixedCols : action.column;
            const int c2 = wholeRow ? m_columnCount - 1 : action.column2;
            if (!IsValid(action.row, c1) || !IsValid(action.row2, c2) || action.row2 < action.row ||
                c2 < c1) {
                why = L"表格没有这些单元格。";
                return false;
            }
            SetSelectedRange(action.row, c1, action.row2, c2);
            return true;
        }
        default:
            return CWnd::TakeAction(action, why);
    }
}

namespace {

// How the text form names a background: the two the dialogs use by name, others by value.
CString ColourName(COLORREF colour) {
    if (colour == RGB(255, 255, 0) || colour == 0x00FFFF) return L"黄";
    if (colour == 0xFFFFFF) return L"白";
    return kelaz::FormatText(L"#%06X", static_cast<unsigned>(colour));
}

}  // namespace

void CGridCtrl::DescribeAsText(kelaz::ControlText& text) const {
    text.kind = L"表格";
    if (m_selection.IsValid()) {
        text.value = kelaz::FormatText(L"选中 行 %d-%d 列 %d-%d", m_selection.GetMinRow(),
                                       m_selection.GetMaxRow(), m_selection.GetMinCol(),
                                       m_selection.GetMaxCol());
    }
    // Each cell as the drafter reads it: its text, then what it allows and its colour when
    // that is not the grid's own.
    std::vector<std::vector<CString>> shown(m_rows.size());
    std::vector<int> widths(static_cast<size_t>(m_columnCount), 0);
    for (int r = 0; r < GetRowCount(); ++r) {
        for (int c = 0; c < m_columnCount; ++c) {
            const Cell& cell = m_rows[r].cells[c];
            CString s = cell.text.IsEmpty() ? CString(L"·") : kelaz::OneLine(cell.text);
            if (!IsCellFixed(r, c)) {
                CString marks;
                if ((cell.state & GVIS_READONLY) != 0 || !m_editable) marks += L"只读";
                if ((cell.state & GVIS_DROPDOWNLIST) != 0 && (cell.state & GVIS_READONLY) == 0)
                    marks += marks.IsEmpty() ? L"下拉" : L",下拉";
                const COLORREF bk = GetItemBkColour(r, c);
                if (bk != m_textBk) marks += (marks.IsEmpty() ? L"" : L",") + ColourName(bk);
                if (!marks.IsEmpty()) s += L"[" + marks + L"]";
            }
            shown[r].push_back(s);
            widths[c] = std::max(widths[c], kelaz::DisplayWidth(s));
        }
    }
    for (int r = 0; r < GetRowCount(); ++r) {
        CString line;
        for (int c = 0; c < m_columnCount; ++c) {
            const CString& s = shown[r][c];
            line += s;
            if (c + 1 < m_columnCount)
                line += CString(L' ', widths[c] - kelaz::DisplayWidth(s) + 2);
        }
        const bool selected =
            m_selection.IsValid() && r >= m_selection.GetMinRow() && r <= m_selection.GetMaxRow();
        text.items.push_back({line.TrimRight(), 0, selected});
    }
}

void CKELGrid1::SetDefaultCellType(int type) {
    m_defaultType = type;
    m_defaultCellState = type == kReadOnlyCell   ? GVIS_READONLY
                         : type == kDropDownCell ? GVIS_DROPDOWNLIST
                                                 : 0;
}

BOOL CKELGrid1::DelSelRow() {
    const CCellRange range = GetSelectedCellRange();
    if (!range.IsValid()) return FALSE;
    for (int r = range.GetMaxRow(); r >= range.GetMinRow(); --r)
        if (r >= GetFixedRowCount()) DeleteRow(r);
    SetSelectedRange(CCellRange(), false);
    // Row numbers in the fixed column follow the rows.
    return TRUE;
}
