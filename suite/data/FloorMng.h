#pragma once

// Floor lookups. A floor table row is named by a single number ("5"), a slash range of
// standard floors sharing one height ("3/6"), or a comma list ("7,9") whose floors each have a
// record of their own.

#include <cstdint>

#include "host/text/CString.h"

namespace KelAzDataMng {

struct FloorRecord {
    CString strName;
    double dHeight = 0.0;     // storey height
    double dElevation = 0.0;  // elevation of the floor's bottom
};

class IFloorMng {
public:
    // The row of that name; failing that, the own record of a floor of a comma list; failing
    // that, a floor inside a slash range (named by its number, bottom raised by the storeys
    // below it in the range).
    static bool GetFloorRecordByFloorName(const CString& floorName, FloorRecord& record);
    // The record of one floor: the own record of a comma-list floor, or a row of a single
    // number; with searchRanges also a floor inside a slash range.
    static bool GetSeperateFloorRecordByFloorName(const CString& floorName, FloorRecord& record,
                                                  bool searchRanges);
};

}  // namespace KelAzDataMng

namespace kelaz {
class SqliteDb;
// The first and last floor a range row names ("3/6": 3 and 6); false for any other name.
bool FloorRangeEnds(const CString& rowName, long& first, long& last);
// The floor table row a floor name belongs to (its own row, the row of its comma list or of
// its slash range); false when none.
bool FindFloorRow(SqliteDb& db, const CString& floorName, std::int64_t& floorId);
}  // namespace kelaz
