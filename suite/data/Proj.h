#pragma once

// The open project's own state: its file, the current speciality and the current floor, and
// the floor table.

#include "host/text/Array.h"
#include "host/text/CString.h"
#include "suite/data/FloorMng.h"

namespace KelAzDataMng {

class CProj {
public:
    // Full path of the project file; empty when no project is open or it lives in memory.
    static CString GetPrjPath();
    static CString GetPrjName();

    // The current speciality ("暖通", "电气", "1_5u" ...); empty when no project is open.
    static CString GetCurrentSpec();
    // False (and nothing changes) for a speciality the project does not have.
    static bool SetCurrentSpec(const CString& spec);
    static bool GetAllSpecs(CStringArray& specs);

    // The current floor's name as the floor table writes it ("1", "3/6", "5" ...).
    static CString GetCurFloorName();
    // False (and nothing changes) for a floor the table cannot resolve.
    static bool SetCurFloorName(const CString& floorName);

    // Every row of the floor table, in table order.
    static bool GetAllFloorData(CArray<FloorRecord>& floors);
};

}  // namespace KelAzDataMng
