#include "host/ui/DialogText.h"

#include <algorithm>
#include <array>

#include "host/ui/Dialog.h"
#include "host/ui/ListBox.h"
#include "host/ui/TreeCtrl.h"

namespace {

using kelaz::OneLine;

constexpr const wchar_t* kChecked = L"选中";
constexpr const wchar_t* kUnchecked = L"未选";
constexpr const wchar_t* kIndeterminate = L"不定";
constexpr const wchar_t* kDisabled = L"不可用";
constexpr const wchar_t* kSelected = L"选中";
constexpr int kIndent = 2;
constexpr int kGap = 2;

// "弧线(&A)" reads 弧线 with the key A, "&Save" reads Save with the key S, "&&" is one "&".
void SplitMnemonic(const CString& text, CString& label, CString& key) {
    label.Empty();
    key.Empty();
    const int length = text.GetLength();
    for (int i = 0; i < length; ++i) {
        const wchar_t ch = text[i];
        if (ch != L'&' || i + 1 >= length) {
            label.AppendChar(ch);
            continue;
        }
        const wchar_t next = text[i + 1];
        if (next == L'&') {
            label.AppendChar(L'&');
            ++i;
            continue;
        }
        const bool inParens = !label.IsEmpty() && label[label.GetLength() - 1] == L'(';
        if (inParens && next == L')') {  // "(&)": no key at all
            label.Delete(label.GetLength() - 1);
            ++i;
        } else if (inParens && i + 2 < length && text[i + 2] == L')') {
            key = CString(next);
            label.Delete(label.GetLength() - 1);
            i += 2;
        } else if (key.IsEmpty()) {
            key = CString(next);
        }
    }
    label = OneLine(label);
}

CString Padded(const CString& text, int width) {
    const int missing = width - kelaz::DisplayWidth(text);
    return missing > 0 ? text + CString(L' ', missing) : text;
}

CString Bracketed(const CWnd& control) {
    CString text;
    control.GetWindowText(text);
    return L"[" + OneLine(text) + L"]";
}

void AddItem(kelaz::ControlText& text, const CString& item, int depth, bool selected) {
    text.items.push_back({OneLine(item), depth, selected});
}

void DescribeTreeLevel(const CTreeCtrl& tree, HTREEITEM first, int depth,
                       kelaz::ControlText& text) {
    for (HTREEITEM item = first; item != nullptr; item = tree.GetNextSiblingItem(item)) {
        const bool expanded = tree.GetItemState(item, TVIS_EXPANDED) != 0;
        // The marker of the tree's button: + folded, - unfolded, none for a leaf.
        const wchar_t* marker = !tree.ItemHasChildren(item) ? L"  " : expanded ? L"- " : L"+ ";
        AddItem(text, marker + tree.GetItemText(item), depth,
                tree.GetItemState(item, TVIS_SELECTED) != 0);
        if (expanded) DescribeTreeLevel(tree, tree.GetChildItem(item), depth + 1, text);
    }
}

}  // namespace

void CWnd::DescribeAsText(kelaz::ControlText& /*text*/) const {}

void CButton::DescribeAsText(kelaz::ControlText& text) const {
    SplitMnemonic(m_text, text.label, text.key);
    const wchar_t* state = m_check == BST_CHECKED         ? kChecked
                           : m_check == BST_INDETERMINATE ? kIndeterminate
                                                          : kUnchecked;
    switch (m_style) {
        case Style::kPush:
            text.kind = L"按钮";
            break;
        case Style::kCheckBox:
            text.kind = L"复选";
            text.value = state;
            break;
        case Style::kRadio:
            text.kind = L"单选";
            text.value = state;
            break;
    }
}

void CEdit::DescribeAsText(kelaz::ControlText& text) const {
    text.kind = L"编辑";
    text.value = Bracketed(*this);
}

void CStatic::DescribeAsText(kelaz::ControlText& text) const {
    text.kind = L"文字";
    CString key;
    SplitMnemonic(m_text, text.label, key);
    text.isLabel = true;
}

void CComboBox::DescribeAsText(kelaz::ControlText& text) const {
    text.kind = L"组合";
    text.value = Bracketed(*this);
    text.numbered = true;
    for (int i = 0; i < GetCount(); ++i) AddItem(text, m_items[i], 0, i == m_selection);
}

void CListBox::DescribeAsText(kelaz::ControlText& text) const {
    text.kind = L"列表";
    text.numbered = true;
    for (int i = 0; i < GetCount(); ++i) AddItem(text, m_items[i], 0, i == m_selection);
}

void CTreeCtrl::DescribeAsText(kelaz::ControlText& text) const {
    text.kind = L"树形";
    DescribeTreeLevel(*this, GetRootItem(), 0, text);
}

namespace kelaz {

CString OneLine(CString text) {
    text.Replace(L'\r', L' ');
    text.Replace(L'\n', L' ');
    text.Replace(L'\t', L' ');
    return text;
}

int DisplayWidth(const CString& text) {
    int width = 0;
    for (const wchar_t ch : text.str()) {
        const auto c = static_cast<unsigned long>(ch);
        const bool wide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) ||
                          (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
                          (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
                          (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
        width += wide ? 2 : 1;
    }
    return width;
}

CString DialogTitle(const CDialog& dialog) {
    CString title;
    dialog.GetWindowText(title);
    return title.IsEmpty() ? FormatText(L"对话框 %u", dialog.GetTemplateId()) : OneLine(title);
}

CString DialogText(const CDialog& dialog) {
    const std::vector<const CWnd*> controls = dialog.Controls();
    std::vector<ControlText> described(controls.size());
    for (size_t i = 0; i < controls.size(); ++i) controls[i]->DescribeAsText(described[i]);

    // One row per control shown: id, kind, label, key, value, usable.
    enum { kId, kKind, kLabel, kKey, kValue, kUsable, kColumns };
    struct Row {
        std::array<CString, kColumns> cells;
        const ControlText* text = nullptr;
        bool closes = false;
    };
    std::vector<Row> rows;
    CString label;  // the text placed before the control, waiting for it
    for (size_t i = 0; i < controls.size(); ++i) {
        const CWnd& control = *controls[i];
        ControlText& text = described[i];
        if (!control.IsWindowVisible() || text.kind.IsEmpty()) {
            label.Empty();
            continue;
        }
        if (text.isLabel && i + 1 < controls.size()) {
            const ControlText& next = described[i + 1];
            // A text before a control that has no words of its own names it.
            if (controls[i + 1]->IsWindowVisible() && !next.kind.IsEmpty() && !next.isLabel &&
                next.label.IsEmpty()) {
                label = text.label;
                continue;
            }
        }
        if (text.label.IsEmpty()) text.label = label;
        label.Empty();
        Row row;
        const int id = control.GetDlgCtrlID();
        if (id != IDC_STATIC) row.cells[kId] = FormatText(L"%d", id);
        row.cells[kKind] = text.kind;
        row.cells[kLabel] = text.label;
        if (!text.key.IsEmpty()) row.cells[kKey] = L"键 " + text.key;
        row.cells[kValue] = text.value;
        if (!control.IsWindowEnabled()) row.cells[kUsable] = kDisabled;
        row.text = &text;
        row.closes = id == IDOK || id == IDCANCEL;
        rows.push_back(row);
    }
    // OK and Cancel stand at the foot of the dialog, whatever their place in the template.
    std::stable_partition(rows.begin(), rows.end(), [](const Row& row) { return !row.closes; });

    std::array<int, kColumns> widths{};
    for (const Row& row : rows) {
        for (int c = 0; c < kColumns; ++c)
            widths[c] = std::max(widths[c], DisplayWidth(row.cells[c]));
    }
    // Items start under the labels.
    int itemIndent = kIndent;
    for (int c = kId; c < kLabel; ++c) itemIndent += widths[c] > 0 ? widths[c] + kGap : 0;

    CString out = L"[" + DialogTitle(dialog) + L"]";
    for (const Row& row : rows) {
        CString line(L' ', kIndent);
        for (int c = 0; c < kColumns; ++c) {
            if (widths[c] == 0) continue;
            if (c == kId) {
                line += CString(L' ', widths[c] - DisplayWidth(row.cells[c])) + row.cells[c];
            } else {
                line += Padded(row.cells[c], widths[c]);
            }
            if (c + 1 < kColumns) line += CString(L' ', kGap);
        }
        out += L"\n" + line.TrimRight();

        const std::vector<ControlText::Item>& items = row.text->items;
        const int numberWidth =
            DisplayWidth(FormatText(L"%d", std::max<int>(0, static_cast<int>(items.size()) - 1)));
        std::vector<CString> shown;
        int itemWidth = 0;
        for (size_t i = 0; i < items.size(); ++i) {
            CString item = row.text->numbered
                               ? FormatText(L"%*d", numberWidth, static_cast<int>(i)) +
                                     CString(L' ', kGap) + items[i].text
                               : CString(L' ', kGap * items[i].depth) + items[i].text;
            itemWidth = std::max(itemWidth, DisplayWidth(item));
            shown.push_back(item);
        }
        for (size_t i = 0; i < items.size(); ++i) {
            CString item = CString(L' ', itemIndent) + shown[i];
            if (items[i].selected)
                item = CString(L' ', itemIndent) + Padded(shown[i], itemWidth) +
                       CString(L' ', kGap) + kSelected;
            out += L"\n" + item.TrimRight();
        }
    }
    return out;
}

}  // namespace kelaz
