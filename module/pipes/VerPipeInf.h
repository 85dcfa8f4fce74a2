#pragma once

// Records of riser splitting at floor boundaries, and the three lists the splitting keeps
// between commands: the risers last looked at, the pieces worked out for them, and the pieces
// made. They belong to the open project (its floor table decided the pieces); a document of
// another project empties them.

#include <vector>

#include <boost/shared_ptr.hpp>

#include "host/db/ObjectId.h"
#include "host/text/CString.h"

struct CVerPipeInf {
    AcDbObjectId id;    // the riser (or, for a piece made, the new entity)
    CString strHandle;  // its handle as the drafter sees it in a listing
    CString strFloor;   // floor name of the piece; the riser's own floor name for a riser
    double dBottom = 0.0;
    double dTop = 0.0;
    bool bDownward = false;  // drawn from its top to its bottom
    double dX = 0.0;         // plan position
    double dY = 0.0;
};

using CVerPipeInfList = std::vector<boost::shared_ptr<CVerPipeInf>>;

class CVerPipeLists {
public:
    static CVerPipeInfList& Risers();   // the risers selected
    static CVerPipeInfList& Planned();  // the pieces worked out, riser by riser
    static CVerPipeInfList& Made();     // the pieces created by the last split applied
    // Empties the three lists, releasing their records.
    static void ClearAll();
};
