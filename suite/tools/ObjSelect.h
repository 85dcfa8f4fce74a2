#pragma once

// Selection of the drawing's components by where they are filed in the component library.

#include "host/db/ObjectId.h"
#include "host/text/CString.h"

class AcDbDatabase;

class CObjSelect {
public:
    CObjSelect() = default;
    // The drawing to search; the working database until set.
    void SetDataBase(AcDbDatabase* db) { m_db = db; }

    // The suite's entities of model space (of the class named, or any class when empty) whose
    // attribute path is the path given or, with subPaths, lies below it; with skipErased erased
    // entities are left out. False when none was found.
    bool SelectObjs(AcArray<AcDbObjectId>& ids, CString className, CString path, bool subPaths,
                    bool skipErased);

private:
    AcDbDatabase* m_db = nullptr;
};
