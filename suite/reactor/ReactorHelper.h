#pragma once

// The reactor module's refresh of graphics that depend on changed entities (labels, joints).

#include "host/text/CString.h"

class KelAzReactorHelper {
public:
    // Redraws what depends on the entities changed since the last flush; an empty text means
    // everything pending. Counted so that callers' refreshes can be checked.
    static void FlushGraphic(const CString& text);
    static int FlushCount();
    static CString LastFlushText();
};
