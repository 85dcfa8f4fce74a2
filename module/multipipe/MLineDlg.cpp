#include "module/multipipe/MLineDlg.h"

#include <set>

#include "host/ui/MessageBox.h"
#include "host/ui/TreeCtrl.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/HorizontalLayMng.h"
#include "suite/data/Proj.h"
#include "suite/data/SysCode.h"
#include "suite/edit/ChangeNameDlg.h"
#include "suite/grid/KELGrid1.h"
#include "suite/tools/KelMessageBox.h"

namespace {

constexpr const wchar_t* kElectrical = L"电气";
constexpr const wchar_t* kWiring = L"1_5u";
constexpr const wchar_t* kCable = L"电缆";
constexpr const wchar_t* kBusbar = L"母线·馈线";
constexpr const wchar_t* kNotApplicable = L"N/A";

constexpr COLORREF kTextBackground = 0xE0FFFF;
constexpr COLORREF kYellow = 0x00FFFF;
constexpr UINT kCellFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;

enum Column {
    kNumber = 0,
    kCompType = 1,
    kLineName = 2,
    kSysCode = 3,
    kLayMode = 4,
    kVertOffset = 5,
    kHorzOffset = 6,
    kColumns = 7
};

struct ColumnLayout {
    const wchar_t* header;
    int width;
    UINT state;
};

// Component type and line name come from the tree, the system code and laying mode from
// lists; only the offsets are typed.
const ColumnLayout kLayout[kColumns] = {
    {L"序号", 35, 0},
    {L"构件类型", 65, GVIS_READONLY},
    {L"管线", 75, GVIS_READONLY},
    {L"系统编号", 60, GVIS_DROPDOWNLIST},
    {L"敷设方式", 60, GVIS_DROPDOWNLIST},
    {L"垂直偏移距离(mm)", 60, 0},
    {L"水平偏移距离(mm)", 60, 0},
};

bool HasNoLayMode(const CString& compType) { return compType == kCable || compType == kBusbar; }

// The yellow, read-only laying-mode cell of a cable or busbar row.
void MarkNoLayMode(CKELGrid1& grid, int row) {
    grid.SetItemBkColour(row, kLayMode, kYellow);
    grid.SetItemState(row, kLayMode, GVIS_READONLY);
}

// The suite's messages of this dialog: the "Kelsoft" box over the active window.
void ShowBox(const CString& text, UINT icon) {
    MessageBox(nullptr, text, kelaz::kSuiteCaption, MB_OK | icon | MB_TASKMODAL | MB_SETFOREGROUND);
}

CString OffsetText(double value) { return kelaz::FormatText(L"%g", value); }

bool& Initialising() {
    static bool initialising = false;
    return initialising;
}

}  // namespace

CString CMLineDlg::SmallCategoryPath(const CString& spec, const CString& compType) {
    CString folder;
    if (spec == kWiring) {
        folder = spec + (compType == kCable ? L"\\线槽桥架" : L"\\穿管引线");
    } else {
        folder = spec + (HasNoLayMode(compType) ? L"\\电缆桥架" : L"\\管线");
    }
    return folder + L"\\" + compType;
}

CString& CMLineDlg::DefaultLayMode() {
    static CString mode;
    return mode;
}

bool& CMLineDlg::LayModePrimed() {
    static bool primed = false;
    return primed;
}

CMLineDlg::CMLineDlg(CWnd* pParent) : CDialog(IDD, pParent) {
    SetWindowText(L"多管绘制");
    m_tree = &AddControl<CTreeCtrl>(kTree);
    // The grid lives as long as the dialog, so that the driver can refill and read it between
    // passes after the dialog has closed; it takes the placeholder's place when the dialog opens.
    AddStatic(L"", kGridPlaceholder);
    m_grid = &AddControl<CKELGrid1>(kGrid);
    AddButton(kDeleteButton, L"删除(&D)");
}

CMLineDlg::~CMLineDlg() = default;

BOOL CMLineDlg::OnInitDialog() {
    Initialising() = true;
    CDialog::OnInitDialog();

    if (CWnd* placeholder = GetDlgItem(kGridPlaceholder)) {
        CRect rect;
        placeholder->GetWindowRect(&rect);
        m_grid->MoveWindow(rect);
        placeholder->ShowWindow(SW_HIDE);
    }
    m_grid->SetOptionsFunName(
        [this](int row, int col, CStringArray& options) { FillOptions(row, col, options); });

    BuildTree();
    BuildGrid();
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    if (MultiPipeRowList* stored = CMultiPipeRowStore::StoredRows(spec)) FillGridFromRows(*stored);
    CheckSysCodes();
    Initialising() = false;
    for (int r = m_grid->GetFixedRowCount(); r < m_grid->GetRowCount(); ++r) {
        if (HasNoLayMode(m_grid->GetItemText(r, kCompType))) MarkNoLayMode(*m_grid, r);
    }
    return TRUE;
}

void CMLineDlg::BuildTree() {
    m_tree->DeleteAllItems();
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    std::vector<CString> items;
    if (spec == kWiring) {
        items = {L"配线", L"配管", L"配管配线", kCable};
    } else if (spec == kElectrical) {
        items = {L"照明导线", L"动力导线",  L"消防导线", L"其它导线", L"导管",
                 L"线槽",     L"导线·导管", kCable,      kBusbar};
    }
    for (const CString& item : items) {
        HTREEITEM parent = m_tree->InsertItem(item);
        const CString path = SmallCategoryPath(spec, item);
        KelAzDataMng::SAttDataIndex small;
        std::vector<KelAzDataMng::SAttDataIndex> members;
        if (!KelAzDataMng::SmallCategoryNameToId(path, small) ||
            !KelAzDataMng::CAtt::GetAllDetailMemIdsBySmallCategory(small, members))
            continue;
        for (const KelAzDataMng::SAttDataIndex& member : members)
            m_tree->InsertItem(KelAzDataMng::CAttDetailMem(member).GetName(), parent);
    }
}

void CMLineDlg::BuildGrid() {
    m_grid->DeleteNonFixedRows();
    m_grid->SetDefaultCellType(CKELGrid1::kTextCell);
    m_grid->SetFixedColumnSelection(TRUE);
    m_grid->SetFixedRowSelection(TRUE);
    m_grid->SetEditable(TRUE);
    m_grid->EnableDragAndDrop(FALSE);
    m_grid->SetTextBkColor(kTextBackground);
    m_grid->SetColumnCount(kColumns);
    m_grid->SetRowCount(1);
    m_grid->SetFixedRowCount(1);
    m_grid->SetFixedColumnCount(1);
    m_grid->SetRowHeight(0, m_grid->GetDefCellHeight() * 2 - 8);
    for (int c = 0; c < kColumns; ++c) {
        m_grid->SetItemText(0, c, kLayout[c].header);
        m_grid->SetColumnWidth(c, kLayout[c].width);
    }
}

int CMLineDlg::AppendGridRow(const CString& compType) {
    const int row = m_grid->InsertRow(kelaz::FormatText(L" %d ", m_grid->GetRowCount()));
    for (int c = kCompType; c < kColumns; ++c) {
        m_grid->SetItemState(row, c, kLayout[c].state);
        m_grid->SetItemFormat(row, c, kCellFormat);
    }
    if (HasNoLayMode(compType)) {
        m_grid->SetItemText(row, kLayMode, kNotApplicable);
        MarkNoLayMode(*m_grid, row);
    }
    return row;
}

void CMLineDlg::Renumber() {
    for (int r = m_grid->GetFixedRowCount(); r < m_grid->GetRowCount(); ++r)
        m_grid->SetItemText(r, kNumber, kelaz::FormatText(L" %d ", r));
}

void CMLineDlg::FillGridFromRows(const MultiPipeRowList& rows) {
    m_grid->DeleteNonFixedRows();
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    for (const std::unique_ptr<MultiPipeRow>& row : rows) {
        if (!row || row->spec != spec) continue;
        const int r = AppendGridRow(row->compType);
        m_grid->SetItemText(r, kCompType, row->compType);
        m_grid->SetItemText(r, kLineName, row->lineName);
        m_grid->SetItemText(r, kSysCode, row->sysCode);
        m_grid->SetItemText(r, kLayMode, row->layMode);
        m_grid->SetItemText(r, kVertOffset, OffsetText(row->vertOffset));
        m_grid->SetItemText(r, kHorzOffset, OffsetText(row->horzOffset));
    }
}

void CMLineDlg::StoreRows(MultiPipeRowList& target) const {
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    target.resize(m_rows.size());
    for (size_t i = 0; i < m_rows.size(); ++i) {
        target[i] = std::make_unique<MultiPipeRow>(*m_rows[i]);
        target[i]->spec = spec;
    }
}

void CMLineDlg::ReadRowsFromGrid() {
    m_rows.clear();
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    for (int r = m_grid->GetFixedRowCount(); r < m_grid->GetRowCount(); ++r) {
        auto row = std::make_unique<MultiPipeRow>();
        row->spec = spec;
        row->compType = m_grid->GetItemText(r, kCompType);
        row->lineName = m_grid->GetItemText(r, kLineName);
        row->sysCode = m_grid->GetItemText(r, kSysCode);
        row->layMode =
            KelAzDataMng::CHorizontalLayMng::SeparateName(m_grid->GetItemText(r, kLayMode));
        // Text that is no number reads as 0, as the plain conversion does.
        row->vertOffset = _wtof(m_grid->GetItemText(r, kVertOffset));
        row->horzOffset = _wtof(m_grid->GetItemText(r, kHorzOffset));
        m_rows.push_back(std::move(row));
    }
}

void CMLineDlg::AddRow(const CString& compType, const CString& lineName) {
    // Every new line gets a horizontal offset no other row has, compared as text.
    std::set<CString> taken;
    for (int r = m_grid->GetFixedRowCount(); r < m_grid->GetRowCount(); ++r)
        taken.insert(m_grid->GetItemText(r, kHorzOffset));

    const int row = AppendGridRow(compType);
    m_grid->SetItemText(row, kCompType, compType);
    m_grid->SetItemText(row, kLineName, lineName);
    m_grid->SetItemText(row, kSysCode, IFaceBarCtrl::CurSysCode());
    if (!HasNoLayMode(compType)) m_grid->SetItemText(row, kLayMode, DefaultLayMode());
    for (int step = 1;; ++step) {
        CString text = kelaz::FormatText(L"%5.0f", 100.0 * step);
        text.Remove(L' ');
        if (taken.count(text) == 0) {
            m_grid->SetItemText(row, kHorzOffset, text);
            break;
        }
    }
    m_grid->Refresh();
}

void CMLineDlg::RefreshLayModeCell(int row) {
    if (!HasNoLayMode(m_grid->GetItemText(row, kCompType))) {
        m_grid->SetItemText(row, kLayMode, DefaultLayMode());
        m_grid->SetItemBkColour(row, kLayMode, 0xFFFFFF);
        m_grid->SetItemState(row, kLayMode, GVIS_DROPDOWNLIST);
    } else {
        m_grid->SetItemText(row, kLayMode, kNotApplicable);
        MarkNoLayMode(*m_grid, row);
    }
}

void CMLineDlg::DeleteSelectedRow() {
    const CCellRange range = m_grid->GetSelectedCellRange();
    const bool wholeRow = range.IsValid() && range.GetMinCol() == m_grid->GetFixedColumnCount() &&
                          range.GetMaxCol() == m_grid->GetColumnCount() - 1 &&
                          range.GetMinRow() >= m_grid->GetFixedRowCount();
    if (!wholeRow) {
        ShowBox(L"请先选择要删除的行", MB_ICONWARNING);
        return;
    }
    m_grid->DelSelRow();
    Renumber();
}

void CMLineDlg::FillOptions(int /*row*/, int col, CStringArray& options) {
    options.RemoveAll();
    if (col == kSysCode) {
        std::vector<KelAzDataMng::CSysCodeData> codes;
        if (KelAzDataMng::CISysCode::GetSpecCodeInfos(KelAzDataMng::CProj::GetCurrentSpec(), codes))
            for (const KelAzDataMng::CSysCodeData& code : codes)
                code.GetStrTreeDataAry(L"", L"&", options);
    } else if (col == kLayMode) {
        // The list is primed by the first request of the process and filled from the next on.
        if (!LayModePrimed()) {
            LayModePrimed() = true;
            return;
        }
        CStringArray names;
        if (!KelAzDataMng::CHorizontalLayMng::GetLayModeName(KelAzDataMng::CProj::GetCurFloorName(),
                                                             names))
            return;
        for (INT_PTR i = names.GetSize() - 1; i >= 0; --i) options.Add(names[i]);
        if (names.GetSize() > 0) DefaultLayMode() = names[names.GetSize() - 1];
    }
}

void CMLineDlg::CheckSysCodes() {
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    std::vector<KelAzDataMng::CSysCodeData> codes;
    if (!KelAzDataMng::CISysCode::GetSpecCodeInfos(spec, codes) || codes.empty()) return;
    const CString first = codes.front().GetFullName();
    for (int r = m_grid->GetFixedRowCount(); r < m_grid->GetRowCount(); ++r) {
        const CString path =
            KelAzDataMng::CISysCode::GetIndexPath(spec + L"\\" + m_grid->GetItemText(r, kSysCode));
        if (path.IsEmpty()) m_grid->SetItemText(r, kSysCode, first);
    }
    m_grid->Refresh();
}

void CMLineDlg::RenameLine(int row) {
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    const CString compType = m_grid->GetItemText(row, kCompType);
    const CString folder = SmallCategoryPath(spec, compType);
    const CString name = ShowChangeNameDlgForOther(
        folder + L"\\" + m_grid->GetItemText(row, kLineName), spec == kElectrical ? 0 : 3);
    KelAzDataMng::SAttDataIndex index;
    if (!name.IsEmpty() && KelAzDataMng::AttNameToAttId(folder + L"\\" + name, index))
        m_grid->SetItemText(row, kLineName, KelAzDataMng::CAttDetailMem(index).GetName());
}

LRESULT CMLineDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY && lParam != 0) {
        const auto* note = reinterpret_cast<const NM_GRIDVIEW*>(lParam);
        if (note->hdr.idFrom == static_cast<UINT_PTR>(kGrid) && note->hdr.code == GVN_SELCHANGED &&
            !Initialising() && note->iColumn == kLineName &&
            note->iRow >= m_grid->GetFixedRowCount()) {
            RenameLine(note->iRow);
            return 0;
        }
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

void CMLineDlg::OnTreeSelChanged(int id, const NMTREEVIEW& change) {
    if (id != kTree || change.itemNew.hItem == nullptr) return;
    HTREEITEM parent = m_tree->GetParentItem(change.itemNew.hItem);
    if (parent == nullptr) return;  // a category, not a line
    AddRow(m_tree->GetItemText(parent), m_tree->GetItemText(change.itemNew.hItem));
    // Cleared again, so that choosing the same line once more adds another row.
    m_tree->SelectItem(nullptr);
}

void CMLineDlg::OnClicked(int id) {
    if (id == kDeleteButton) DeleteSelectedRow();
}

void CMLineDlg::OnOK() {
    ReadRowsFromGrid();
    if (m_rows.empty()) {
        ShowBox(L"请选择管线", MB_ICONINFORMATION);
        return;
    }
    for (size_t i = 0; i < m_rows.size(); ++i) {
        for (size_t j = i + 1; j < m_rows.size(); ++j) {
            if (m_rows[i]->horzOffset == m_rows[j]->horzOffset &&
                m_rows[i]->vertOffset == m_rows[j]->vertOffset) {
                ShowBox(L"管线重合请重新输入数据", MB_ICONINFORMATION);
                return;
            }
        }
    }
    if (MultiPipeRowList* stored =
            CMultiPipeRowStore::StoredRows(KelAzDataMng::CProj::GetCurrentSpec()))
        StoreRows(*stored);
    EndDialog(IDOK);
}

void CMLineDlg::OnCancel() {
    // What was typed survives a cancelled dialog; only OK draws.
    ReadRowsFromGrid();
    if (MultiPipeRowList* stored =
            CMultiPipeRowStore::StoredRows(KelAzDataMng::CProj::GetCurrentSpec()))
        StoreRows(*stored);
    EndDialog(IDCANCEL);
}
