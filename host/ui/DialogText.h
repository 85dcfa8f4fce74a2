#pragma once

// A dialog as the command line shows it: its title, then one line per visible control with the
// control's id (what the actions name), its kind, its label, its mnemonic key, its value or state
// and whether it can be used; list and tree items under their control. For example:
//   [标高]
//     207  复选  输入标高  选中
//     232  组合  标高      [2800]
//     204  按钮  拾取标高
//       1  按钮  确定
//       2  按钮  取消
// Each control says what it shows (CWnd::DescribeAsText); the layout is made here, so a control
// of another kind needs only its own description.

#include <vector>

#include "host/text/CString.h"

class CDialog;

namespace kelaz {

struct ControlText {
    // A short word for the kind of control (按钮, 编辑, ...); empty leaves the control out.
    CString kind;
    // A button's own text (without its mnemonic); the other controls take the text placed
    // before them.
    CString label;
    // The letter that works the control (a button's "&A").
    CString key;
    // State or contents.
    CString value;

    struct Item {
        CString text;
        int depth = 0;  // indentation under the item above it
        bool selected = false;
    };
    std::vector<Item> items;
    // Items shown with their position (lists), else only indented by depth (trees).
    bool numbered = false;
    // Texts labelling the control that follows them.
    bool isLabel = false;
};

// The title the dialog shows and its driver asks under.
CString DialogTitle(const CDialog& dialog);
// The text form of the dialog, lines joined by "\n", without a final line end.
CString DialogText(const CDialog& dialog);
// A text on one line of the form: line ends and tabs become blanks.
CString OneLine(CString text);
// Columns a text takes on a terminal: two for Chinese characters, one for others.
int DisplayWidth(const CString& text);

}  // namespace kelaz
