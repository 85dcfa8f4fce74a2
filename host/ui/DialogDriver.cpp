#include "host/ui/DialogDriver.h"

#include "host/ed/Answer.h"
#include "host/ed/Editor.h"
#include "host/ui/DialogText.h"

namespace kelaz {

namespace {

DialogDriver*& Current() {
    static CommandLineDialogDriver commandLine;
    static DialogDriver* current = &commandLine;
    return current;
}

// The next blank-separated word of text from start; start moves past it.
CString NextWord(const CString& text, int& start) {
    while (start < text.GetLength() && (text[start] == L' ' || text[start] == L'\t')) ++start;
    const int begin = start;
    while (start < text.GetLength() && text[start] != L' ' && text[start] != L'\t') ++start;
    return text.Mid(begin, start - begin);
}

// A row or column number of a grid action.
bool ReadIndex(const CString& word, int& value) {
    double number = 0.0;
    if (!ParseDecimal(word, number) || word.Find(L'.') >= 0 || number < 0.0 || number > 1e6)
        return false;
    value = static_cast<int>(number);
    return true;
}

// The cell numbers after a grid action's control: cell and choose take a row and a column,
// row one row, range one or two corners.
bool ParseCellNumbers(const CString& verb, const CString& text, int& pos, DialogAction& action,
                      CString& error) {
    using Kind = DialogAction::Kind;
    if (action.kind != Kind::kCell && action.kind != Kind::kRange && action.kind != Kind::kChoose)
        return true;
    const bool wholeRow = verb.CompareNoCase(L"row") == 0;
    if (!ReadIndex(NextWord(text, pos), action.row) ||
        (!wholeRow && !ReadIndex(NextWord(text, pos), action.column))) {
        error = wholeRow ? CString(L"row 后面应是控件编号和行号。")
                         : FormatText(L"%s 后面应是控件编号、行号和列号。", verb.GetString());
        return false;
    }
    if (action.kind != Kind::kRange) return true;
    if (wholeRow) {
        action.row2 = action.row;
    } else {
        const CString second = NextWord(text, pos);
        if (second.IsEmpty()) {
            action.row2 = action.row;
            action.column2 = action.column;
        } else if (!ReadIndex(second, action.row2) ||
                   !ReadIndex(NextWord(text, pos), action.column2)) {
            error = L"range 的第二个角应是行号和列号。";
            return false;
        }
    }
    if (!NextWord(text, pos).IsEmpty()) {
        error = FormatText(L"%s 的参数太多。", verb.GetString());
        return false;
    }
    return true;
}

}  // namespace

bool ParseDialogAction(const CString& line, DialogAction& action, CString& error) {
    const CString text = StripComment(line);
    const Answer answer = ParseAnswer(line);
    if (answer.kind == Answer::Kind::kCancel) {
        action = {DialogAction::Kind::kCancel, 0, CString()};
        return true;
    }
    // An empty line is the Enter key, which the dialog's own key handling gives its meaning.
    if (answer.kind == Answer::Kind::kEnter) {
        action = {DialogAction::Kind::kKey, 0, CString(L"enter")};
        return true;
    }
    int pos = 0;
    const CString verb = NextWord(text, pos);
    if (verb.CompareNoCase(L"ok") == 0 || verb.CompareNoCase(L"cancel") == 0) {
        if (!NextWord(text, pos).IsEmpty()) {
            error = FormatText(L"%s 后面不带参数。", verb.GetString());
            return false;
        }
        action = {
            verb.CompareNoCase(L"ok") == 0 ? DialogAction::Kind::kOk : DialogAction::Kind::kCancel,
            0, CString()};
        return true;
    }
    DialogAction parsed;
    if (verb.CompareNoCase(L"key") == 0) {
        CString key = text.Mid(pos);
        key.Trim();
        if (key.CompareNoCase(L"space") == 0 || key.CompareNoCase(L"enter") == 0) key.MakeLower();
        if (key.GetLength() != 1 && key != L"space" && key != L"enter") {
            error = L"key 后面是一个字符、space 或 enter。";
            return false;
        }
        action = {DialogAction::Kind::kKey, 0, key};
        return true;
    }
    if (verb.CompareNoCase(L"set") == 0) {
        parsed.kind = DialogAction::Kind::kSet;
    } else if (verb.CompareNoCase(L"check") == 0) {
        parsed.kind = DialogAction::Kind::kCheck;
    } else if (verb.CompareNoCase(L"click") == 0) {
        parsed.kind = DialogAction::Kind::kClick;
    } else if (verb.CompareNoCase(L"select") == 0) {
        parsed.kind = DialogAction::Kind::kSelect;
    } else if (verb.CompareNoCase(L"cell") == 0) {
        parsed.kind = DialogAction::Kind::kCell;
    } else if (verb.CompareNoCase(L"range") == 0 || verb.CompareNoCase(L"row") == 0) {
        parsed.kind = DialogAction::Kind::kRange;
    } else if (verb.CompareNoCase(L"choose") == 0) {
        parsed.kind = DialogAction::Kind::kChoose;
    } else {
        error =
            L"对话框操作是 ok、cancel、set ID 文字、check ID 0|1|2、click ID、select ID 项、"
            L"cell ID 行 列 文字、range ID 行 列 [行 列]、row ID 行、choose ID 行 列 项或 key "
            L"字符。";
        return false;
    }
    double id = 0.0;
    const CString idText = NextWord(text, pos);
    if (!ParseDecimal(idText, id) || idText.Find(L'.') >= 0 || id < 0.0) {
        error = FormatText(L"%s 后面应是控件编号。", verb.GetString());
        return false;
    }
    parsed.control = static_cast<int>(id);
    if (!ParseCellNumbers(verb, text, pos, parsed, error)) return false;
    CString rest = text.Mid(pos);
    rest.Trim();
    parsed.value = rest;
    if (parsed.kind == DialogAction::Kind::kClick && !rest.IsEmpty()) {
        error = L"click 只带控件编号。";
        return false;
    }
    if (parsed.kind == DialogAction::Kind::kCheck && rest != L"0" && rest != L"1" && rest != L"2") {
        error = L"check 的状态是 0、1 或 2。";
        return false;
    }
    if (parsed.kind == DialogAction::Kind::kChoose && rest.IsEmpty()) {
        error = L"choose 后面应是下拉项的位置或文字。";
        return false;
    }
    if (parsed.kind == DialogAction::Kind::kSelect && rest.IsEmpty()) {
        error = L"select 后面应是项的位置或文字。";
        return false;
    }
    action = parsed;
    return true;
}

void CommandLineDialogDriver::Show(const CDialog& dialog) {
    if (Editor* ed = CurrentEditor()) ed->Print(L"\n" + DialogText(dialog));
}

bool CommandLineDialogDriver::NextAction(const CDialog& dialog, DialogAction& action) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return false;
    const CString prompt = FormatText(L"\n[%s] 对话框操作:", DialogTitle(dialog).GetString());
    while (true) {
        CString line;
        // As at a command's prompt, a transparent command may run between two actions; what it
        // did to the dialog (a picked elevation in a field) is shown before the prompt again.
        if (!ed->ReadLine(prompt, Editor::LineKind::kAnswer, line,
                          [&dialog] { return L"\n" + DialogText(dialog); })) {
            ed->ShowCancel();
            return false;
        }
        CString error;
        if (ParseDialogAction(line, action, error)) return true;
        ed->NoteRefusal();
        ed->Print(L"\n" + error);
    }
}

void CommandLineDialogDriver::Refuse(const CString& message) {
    if (Editor* ed = CurrentEditor()) {
        ed->NoteRefusal();
        ed->Print(L"\n" + message);
    }
}

bool ScriptedDialogDriver::Add(const CString& line) {
    DialogAction action;
    CString error;
    if (!ParseDialogAction(line, action, error)) return false;
    m_actions.push_back(action);
    return true;
}

void ScriptedDialogDriver::Show(const CDialog& dialog) { m_shown.push_back(DialogText(dialog)); }

bool ScriptedDialogDriver::NextAction(const CDialog& /*dialog*/, DialogAction& action) {
    if (m_actions.empty()) return false;
    action = m_actions.front();
    m_actions.pop_front();
    return true;
}

DialogDriver& CurrentDialogDriver() { return *Current(); }

ScopedDialogDriver::ScopedDialogDriver(DialogDriver& driver) : m_previous(Current()) {
    Current() = &driver;
}

ScopedDialogDriver::~ScopedDialogDriver() { Current() = m_previous; }

}  // namespace kelaz
