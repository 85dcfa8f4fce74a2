#pragma once

// A set of drawing objects kept highlighted while a command runs (the objects picked so far);
// the highlight of all of them goes when the set goes. Copies share the highlights: an object
// stays lit until the last copy holding it is gone.

#include <boost/shared_ptr.hpp>
#include <deque>

#include "host/db/ObjectId.h"
#include "module/entry/LayoutApi.h"

class CHighlight;

class LAYOUT_API CHighLightVector {
public:
    CHighLightVector() = default;
    virtual ~CHighLightVector();
    CHighLightVector(const CHighLightVector&) = default;
    CHighLightVector& operator=(const CHighLightVector&) = default;

    // Lights the object up; false when it was in the set already (it is lit again all the same).
    bool Append(const AcDbObjectId& id);
    // The object and each of the others; true when any of them was new to the set.
    bool Append(const AcDbObjectId& id, const AcDbObjectIdArray& others);
    // Turns the object's light off now; with remove it also leaves the set (false when it was
    // not in it). The object's highlight handle is kept until the set goes.
    bool UnHighLight(const AcDbObjectId& id, const bool& remove);
    // The single form for each object, the last first. Always false: callers must not rely on it.
    bool UnHighLight(const AcDbObjectIdArray& ids, const bool& remove);

private:
    bool HighLightId(const AcDbObjectId& id);
    bool IsExist(const AcDbObjectId& id) const;
    bool Remove(const AcDbObjectId& id);

    std::deque<boost::shared_ptr<CHighlight>> m_handles;
    std::deque<AcDbObjectId> m_ids;
};
