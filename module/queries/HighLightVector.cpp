#include "module/queries/HighLightVector.h"

#include <algorithm>

#include "suite/tools/Highlight.h"

CHighLightVector::~CHighLightVector() {
    m_handles.clear();
    m_ids.clear();
}

bool CHighLightVector::HighLightId(const AcDbObjectId& id) {
    // A handle per call, even for an object already in the set.
    m_handles.push_back(boost::shared_ptr<CHighlight>(new CHighlight(id)));
    if (IsExist(id)) return false;
    m_ids.push_back(id);
    return true;
}

bool CHighLightVector::IsExist(const AcDbObjectId& id) const {
    return std::find(m_ids.begin(), m_ids.end(), id) != m_ids.end();
}

bool CHighLightVector::Remove(const AcDbObjectId& id) {
    const auto it = std::find(m_ids.begin(), m_ids.end(), id);
    if (it == m_ids.end()) return false;
    m_ids.erase(it);
    return true;
}

bool CHighLightVector::Append(const AcDbObjectId& id) { return HighLightId(id); }

bool CHighLightVector::Append(const AcDbObjectId& id, const AcDbObjectIdArray& others) {
    bool added = HighLightId(id);
    for (const AcDbObjectId& other : others) added = HighLightId(other) || added;
    return added;
}

bool CHighLightVector::UnHighLight(const AcDbObjectId& id, const bool& remove) {
    // A highlight made and dropped at once leaves the object unlit.
    { const CHighlight momentary(id); }
    return remove ? Remove(id) : true;
}

bool CHighLightVector::UnHighLight(const AcDbObjectIdArray& ids, const bool& remove) {
    for (int i = ids.length() - 1; i >= 0; --i) UnHighLight(ids[i], remove);
    return false;
}
