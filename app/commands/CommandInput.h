#pragma once

// Answers the layout commands ask for at the command line: text, counts and lengths read with
// the module's strict number rules (a wrong number is named and asked again), and elevations in
// either form with the last ones typed offered first.

#include <functional>

#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

namespace kelaz {

// Prints why the drafter's answer was refused and counts it as refused (kelaz run reports
// refused answers at its end).
void TellRefused(const CString& message);
// A text answer, blanks at either end removed; false on a cancel. Enter gives the empty text.
// With spaces the answer is the whole line, else the line up to its first blank.
bool AskText(const CString& prompt, CString& answer, bool spaces = false);
// A count above 0, offered value for Enter ("<3>" is added to the prompt). false on a cancel.
// what names the count in the refusal of 0 or less ("行数").
bool AskCount(const CString& prompt, const CString& what, int& value);
// Any whole number, with value for Enter.
bool AskInteger(const CString& prompt, int& value);
// A length of 0 or more, with value for Enter.
bool AskLength(const CString& prompt, double& value);
// An elevation, absolute (2800) or floor-relative (3F+500), offered the last one typed under
// key (a typical ceiling the first time); the history under key is brought up to date.
bool AskLevel(const CString& key, double& level);
// The same, the prompt naming which elevation is asked ("起点标高": "\n输入起点标高(...)<...>:").
bool AskLevel(const CString& key, double& level, const CString& what);

// Picks an entity until one that accepts takes: a missed pick is asked again, a pick that
// accepts refuses is told with refusal and asked again. The picked point in picked. False on
// Enter or a cancel.
bool PickEntity(const CString& prompt, const std::function<bool(const AcDbObjectId&)>& accepts,
                const CString& refusal, AcDbObjectId& id, AcGePoint3d& picked);

}  // namespace kelaz
