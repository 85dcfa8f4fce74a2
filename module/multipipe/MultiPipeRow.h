#pragma once

// One line of a bundle of parallel lines (a conduit, a wire, a trunking, a cable) as the
// multi-pipe settings describe it, and the rows the settings remember between commands.

#include <memory>
#include <vector>

#include "host/text/CString.h"

struct MultiPipeRow {
    CString spec;      // speciality of the project when the row was stored ("电气", "1_5u")
    CString compType;  // component type: the category chosen, e.g. "照明导线"
    CString lineName;  // the attribute member under that category
    CString sysCode;   // system code
    CString layMode;   // laying mode name; "N/A" for cables and busbars
    double vertOffset = 0.0;  // mm
    double horzOffset = 0.0;  // mm
};

using MultiPipeRowList = std::vector<std::unique_ptr<MultiPipeRow>>;

// The last accepted rows, kept process-wide between commands: one list for each electrical
// speciality. They belong to the open project; a document of another project empties them.
class CMultiPipeRowStore {
public:
    // The list of "电气" or of "1_5u"; nullptr for any other speciality.
    static MultiPipeRowList* StoredRows(const CString& spec);
    // Deletes every record of both lists.
    static void ClearAll();
    // Records in both lists together.
    static size_t Count();
};
