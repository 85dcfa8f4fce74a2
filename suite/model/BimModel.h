#pragma once

// The model manager's view of the building: every storey of the open project with its name and
// its elevation range, worked out once from the floor table and kept until someone drops it.
// Commands that ask "which floor is this height on" many times (riser splitting) read it
// instead of querying the project for each height. It belongs to one project: whoever changes
// the project drops it with pDeleteBimInstance, and the next reader builds it anew.

#include <vector>

#include "host/text/CString.h"

struct KelAzStorey {
    CString strName;       // "3": one storey, also for the storeys of a range row "3/6"
    double dBottom = 0.0;  // elevation of its floor
    double dTop = 0.0;     // elevation of the next floor up
};

class KelAzBimModel {
public:
    // Storeys from bottom to top.
    const std::vector<KelAzStorey>& Storeys() const { return m_storeys; }
    // The storey whose range [bottom, top) holds the elevation; nullptr below or above all.
    const KelAzStorey* StoreyAt(double elevation) const;
    // Counts the builds in this process, so a caller can tell a kept instance from a new one.
    int Generation() const { return m_generation; }
    // The storeys of the project's floor table: a single-number row is one storey, a range row
    // "3/6" one storey per number of equal height, a comma row "7,9" one storey per listed
    // floor with its own record. A storey given a negative height spans from its top edge.
    static bool BuildStoreys(std::vector<KelAzStorey>& storeys);

private:
    friend KelAzBimModel* pGetBimInstance();
    std::vector<KelAzStorey> m_storeys;
    int m_generation = 0;
};

// The cached instance, built on first use from the current project; nullptr when no project is
// open or its floor table cannot be read.
KelAzBimModel* pGetBimInstance();
// Drops the cached instance (nothing happens when there is none).
void pDeleteBimInstance();
// Whether an instance is cached now.
bool HasBimInstance();
