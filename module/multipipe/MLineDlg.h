#pragma once

// The multi-pipe settings: the drafter chooses, in a tree of line kinds of the electrical
// speciality, the lines one pass lays side by side (conduits, wires, trunking, cables), one grid
// row each, with its system code, laying mode and offsets from the traced path. OK checks the
// rows and keeps them for the next command; Cancel keeps what was typed too, and only OK starts
// drawing.

#include "host/text/CString.h"
#include "host/ui/Dialog.h"
#include "module/entry/LayoutApi.h"
#include "module/multipipe/MultiPipeRow.h"

class CTreeCtrl;
class CKELGrid1;

class LAYOUT_API CMLineDlg : public CDialog {
public:
    enum { IDD = 210 };
    // The placeholder the grid is created over, the grid itself and the tree of line kinds.
    static constexpr int kGridPlaceholder = 203;
    static constexpr int kGrid = 10001;
    static constexpr int kTree = 211;
    // Deletes the selected grid row.
    static constexpr int kDeleteButton = 212;

    explicit CMLineDlg(CWnd* pParent = nullptr);
    ~CMLineDlg() override;

    BOOL OnInitDialog() override;
    // Reads and checks the rows; stays open on "请选择管线" or "管线重合请重新输入数据".
    void OnOK() override;
    // Keeps the rows typed so far, unchecked.
    void OnCancel() override;

    // Empties the grid's rows and adds, in order, every row of the list that belongs to the
    // current speciality (the others stay in the list, unseen).
    void FillGridFromRows(const MultiPipeRowList& rows);
    // Replaces the target by copies of the working rows, stamped with the current speciality.
    void StoreRows(MultiPipeRowList& target) const;
    // Reads the grid's rows into the working array (offsets that are no number read as 0).
    void ReadRowsFromGrid();
    // The working rows, as last read from the grid.
    const MultiPipeRowList& Rows() const { return m_rows; }

    // Adds a row for line name lineName of category compType (the tree's choice).
    void AddRow(const CString& compType, const CString& lineName);
    // Deletes the selected row; "请先选择要删除的行" unless a whole row is selected.
    void DeleteSelectedRow();

    // A row whose component type changed: its laying mode returns to the default, or to the
    // yellow, read-only "N/A" of cables and busbars.
    void RefreshLayModeCell(int row);
    // What the drop-down of a cell offers: the speciality's system codes (column 3), the
    // current floor's laying modes, last first (column 4).
    void FillOptions(int row, int col, CStringArray& options);

    CKELGrid1* Grid() const { return m_grid; }
    CTreeCtrl* Tree() const { return m_tree; }

    // The small category that holds a component type's line names in the speciality
    // ("电气\\管线\\照明导线", "电气\\电缆桥架\\电缆", "1_5u\\穿管引线\\配线" ...).
    static CString SmallCategoryPath(const CString& spec, const CString& compType);

    // The process-wide default laying mode (the last of the current floor's names once the
    // laying-mode list has been asked for), and whether that list was primed.
    static CString& DefaultLayMode();
    static bool& LayModePrimed();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    void OnTreeSelChanged(int id, const NMTREEVIEW& change) override;
    void OnClicked(int id) override;

private:
    void BuildTree();
    void BuildGrid();
    // A new grid row numbered " %d ", with the states of its columns.
    int AppendGridRow(const CString& compType);
    void Renumber();
    // Codes the speciality does not know are replaced by its first one.
    void CheckSysCodes();
    // The rename dialog over the row's line kind; the row takes the name it answers.
    void RenameLine(int row);

    CKELGrid1* m_grid = nullptr;  // a child control of the dialog
    CTreeCtrl* m_tree = nullptr;
    MultiPipeRowList m_rows;
};
