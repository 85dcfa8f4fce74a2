#pragma once

// The suite's message box convention: warnings and questions carry the suite's caption, are
// owned by the active window, task-modal and brought to the front. A warning's text ends in "!",
// a question's in "?"; a question acts only on yes and defaults to no.

#include "host/text/CString.h"
#include "host/ui/MessageBox.h"

namespace kelaz {

inline constexpr const wchar_t* kSuiteCaption = L"Kelsoft";
inline constexpr UINT kWarningFlags = MB_OK | MB_ICONWARNING | MB_TASKMODAL | MB_SETFOREGROUND;
inline constexpr UINT kQuestionFlags =
    MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2 | MB_TASKMODAL | MB_SETFOREGROUND;
static_assert(kWarningFlags == 0x12030 && kQuestionFlags == 0x12134);

// Shows message + "!".
void ShowWarning(const CString& message);
// Shows question + "?"; true only when the user answers yes.
bool AskQuestion(const CString& question);
// Shows the text of a string resource of the current table + "!".
void ShowWarning(UINT resourceId);

}  // namespace kelaz
