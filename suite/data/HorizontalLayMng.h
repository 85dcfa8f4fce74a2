#pragma once

// Laying modes of horizontal lines, per floor. A laying mode's name is its code and its
// description joined by '-' ("WC-墙内暗敷").

#include "host/text/Array.h"
#include "host/text/CString.h"

namespace KelAzDataMng {

class CHorizontalLayMng {
public:
    // The laying modes of a floor (a floor table name, a floor of a comma list or of a slash
    // range), in table order; false when the floor is unknown.
    static bool GetLayModeName(const CString& floorName, CStringArray& names);
    // Takes a laying mode's name apart: its code and its description (empty when the name
    // has none). False for an empty name.
    static bool SeparateName(const CString& layModeName, CString& code, CString& description);
    // The code part alone ("WC" of "WC-墙内暗敷"; a name without '-' is all code).
    static CString SeparateName(const CString& layModeName);
};

}  // namespace KelAzDataMng
