#pragma once

// What the layout module remembers for the project between commands, shown at the command line:
// REMEMBERED counts it, STOREYS lists the storeys of the model manager's instance (building it
// when there is none). Going to a drawing of another project empties it all.

#include "host/text/CString.h"

namespace kelaz {

// REMEMBERED, for the project the session names so.
void ListRemembered(const CString& projectShown);
// STOREYS.
void ListStoreys();

}  // namespace kelaz
