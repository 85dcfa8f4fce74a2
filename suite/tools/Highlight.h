#pragma once

// A highlight held for as long as the object lives: constructing it lights the entity up,
// destroying it turns the light off. The tools count the live highlights of each entity so that
// callers can see how many hold it.

#include "host/db/ObjectId.h"

class CHighlight {
public:
    explicit CHighlight(const AcDbObjectId& id);
    ~CHighlight();
    CHighlight(const CHighlight&) = delete;
    CHighlight& operator=(const CHighlight&) = delete;

    // Live CHighlight objects of the entity.
    static int Count(const AcDbObjectId& id);

private:
    AcDbObjectId m_id;
};
