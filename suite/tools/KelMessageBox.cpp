#include "suite/tools/KelMessageBox.h"

namespace kelaz {

void ShowWarning(const CString& message) {
    MessageBox(GetActiveWindow(), message + L"!", kSuiteCaption, kWarningFlags);
}

bool AskQuestion(const CString& question) {
    return MessageBox(GetActiveWindow(), question + L"?", kSuiteCaption, kQuestionFlags) == IDYES;
}

void ShowWarning(UINT resourceId) {
    CString text;
    text.LoadString(resourceId);
    ShowWarning(text);
}

}  // namespace kelaz
