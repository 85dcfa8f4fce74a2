#include "suite/tools/Highlight.h"

#include <map>

#include "host/db/Entity.h"
#include "host/db/OpenObject.h"

namespace {

std::map<AcDbObjectId, int>& Counts() {
    static std::map<AcDbObjectId, int> counts;
    return counts;
}

// Entities that are open elsewhere or erased simply keep their display state.
void SetLight(const AcDbObjectId& id, bool on) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return;
    if (on) {
        entity->highlight();
    } else {
        entity->unhighlight();
    }
    entity->close();
}

}  // namespace

CHighlight::CHighlight(const AcDbObjectId& id) : m_id(id) {
    ++Counts()[m_id];
    SetLight(m_id, true);
}

CHighlight::~CHighlight() {
    auto it = Counts().find(m_id);
    if (it != Counts().end() && --it->second == 0) Counts().erase(it);
    SetLight(m_id, false);
}

int CHighlight::Count(const AcDbObjectId& id) {
    const auto it = Counts().find(id);
    return it == Counts().end() ? 0 : it->second;
}
