#pragma once

// Window and crossing selection of model space in plan. A window selects the entities whose
// extents lie entirely inside it, a crossing those whose extents meet it; boundaries count as
// inside. Erased entities and entities without extents are never selected. Results are in
// drawing order.

#include <vector>

#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

class AcDbDatabase;
class AcRxClass;

namespace kelaz {

struct SelectionFilter {
    // Only entities of this class or below; null for any class.
    AcRxClass* cls = nullptr;
    // Only entities on one of these layers (compared without regard to case); empty for any.
    std::vector<CString> layers;
};

// Every live entity of model space, in drawing order.
AcDbObjectIdArray ModelSpaceIds(AcDbDatabase* db);

// Through the spatial index.
AcDbObjectIdArray SelectWindow(AcDbDatabase* db, const AcGePoint3d& corner1,
                               const AcGePoint3d& corner2, const SelectionFilter& filter = {});
AcDbObjectIdArray SelectCrossing(AcDbDatabase* db, const AcGePoint3d& corner1,
                                 const AcGePoint3d& corner2, const SelectionFilter& filter = {});

// The same selections by visiting every entity of model space and measuring it afresh: the
// reference the index is checked against, and the baseline it is measured against.
AcDbObjectIdArray ScanWindow(AcDbDatabase* db, const AcGePoint3d& corner1,
                             const AcGePoint3d& corner2, const SelectionFilter& filter = {});
AcDbObjectIdArray ScanCrossing(AcDbDatabase* db, const AcGePoint3d& corner1,
                               const AcGePoint3d& corner2, const SelectionFilter& filter = {});

}  // namespace kelaz
