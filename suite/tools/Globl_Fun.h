#pragma once

// Text helpers of the common tools.

#include "host/text/Array.h"
#include "host/text/CString.h"

class CGlobl_Fun {
public:
    // Splits text at every separator into items (replacing what items held). Empty items between
    // two separators are kept, so positions in a stored list stay positions; an empty text gives
    // no item at all.
    static void StrToStrAry(const CString& text, CStringArray& items, wchar_t separator);
};
