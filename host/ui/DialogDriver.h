#pragma once

// The seam between a modal dialog and whoever drives it. A dialog's DoModal hands itself to the
// current dialog driver and applies the actions it answers, one at a time, until ok or cancel:
// tests give the actions up front, the command line shows the dialog as text when it opens and
// after each action, and reads the actions from its input source, one per line:
//   ok                    closes the dialog with IDOK (after its own checks)
//   cancel                closes it with IDCANCEL (also ^C, ESC, or input that runs out)
//   set ID TEXT           puts the text into control ID (an edit or combo box)
//   check ID 0|1|2        sets the state of check box ID
//   click ID              presses button ID
//   select ID ITEM        selects the item of list, combo or tree ID, by position (from 0) or
//                         by its text
//   key C                 types the character C (key space: a blank, key enter: Enter)
//   cell ID R C TEXT      types TEXT into cell (R, C) of grid ID (rows and columns counted
//                         from 0, the fixed ones included)
//   range ID R1 C1 R2 C2  selects the cells from (R1, C1) to (R2, C2) of grid ID; with R1 C1
//                         alone, that one cell (as a click on it)
//   row ID R              selects the whole row R of grid ID (a click on its row number)
//   choose ID R C ITEM    picks ITEM, by its text or position, of the drop-down of cell (R, C)
//   (empty line)          Enter, as key enter
// Control ids are the dialog's resource numbers. A tree item is selected by its text or by the
// backslash path of texts that leads to it from the top.

#include <deque>

#include "host/text/CString.h"

class CDialog;

namespace kelaz {

struct DialogAction {
    enum class Kind { kOk, kCancel, kSet, kCheck, kClick, kSelect, kKey, kCell, kRange, kChoose };
    Kind kind = Kind::kCancel;
    int control = 0;
    CString value;  // kSet, kCell: the text; kCheck: "0", "1" or "2"; kSelect, kChoose: the
                    // item; kKey: the key
    // kCell, kChoose: the cell; kRange: the corners (a whole row: column -1).
    int row = -1;
    int column = -1;
    int row2 = -1;
    int column2 = -1;
};

// False with the reason in error when the line is no action.
bool ParseDialogAction(const CString& line, DialogAction& action, CString& error);

class DialogDriver {
public:
    virtual ~DialogDriver() = default;
    // The dialog has opened, or has taken an action and is still open.
    virtual void Show(const CDialog& dialog) = 0;
    // The next action for the dialog. False when there is none left: the dialog is then
    // cancelled.
    virtual bool NextAction(const CDialog& dialog, DialogAction& action) = 0;
    // Tells the driver that the dialog could not apply its last action, and why.
    virtual void Refuse(const CString& message) = 0;
};

// Prints the dialog's text form on the current command line and reads the actions from it; a
// line that is no action is refused with a message and the next one read.
class CommandLineDialogDriver : public DialogDriver {
public:
    void Show(const CDialog& dialog) override;
    bool NextAction(const CDialog& dialog, DialogAction& action) override;
    void Refuse(const CString& message) override;
};

// Actions given up front, for tests; refusals and the text forms the command line would have
// printed are kept.
class ScriptedDialogDriver : public DialogDriver {
public:
    void Add(const DialogAction& action) { m_actions.push_back(action); }
    // Adds the action a line describes; false when it is none.
    bool Add(const CString& line);
    void Show(const CDialog& dialog) override;
    bool NextAction(const CDialog& dialog, DialogAction& action) override;
    void Refuse(const CString& message) override { m_refusals.push_back(message); }
    const std::deque<CString>& Refusals() const { return m_refusals; }
    const std::deque<CString>& Shown() const { return m_shown; }

private:
    std::deque<DialogAction> m_actions;
    std::deque<CString> m_refusals;
    std::deque<CString> m_shown;
};

// The command line's driver unless a test installs another.
DialogDriver& CurrentDialogDriver();

class ScopedDialogDriver {
public:
    explicit ScopedDialogDriver(DialogDriver& driver);
    ~ScopedDialogDriver();
    ScopedDialogDriver(const ScopedDialogDriver&) = delete;
    ScopedDialogDriver& operator=(const ScopedDialogDriver&) = delete;

private:
    DialogDriver* m_previous;
};

}  // namespace kelaz
