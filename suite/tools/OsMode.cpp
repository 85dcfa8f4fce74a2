#include "suite/tools/OsMode.h"

#include "host/db/AdsDef.h"
#include "host/ed/EditorInput.h"

namespace {

bool SetOsMode(int mode) {
    resbuf value;
    value.restype = RTSHORT;
    value.resval.rint = static_cast<short>(mode);
    return acedSetVar(L"OSMODE", &value) == RTNORM;
}

}  // namespace

COsMode::COsMode(int on) {
    resbuf value;
    if (acedGetVar(L"OSMODE", &value) != RTNORM) return;  // no editor: nothing to switch
    m_previous = value.resval.rint;
    int wanted = m_previous;
    if (on != 0) {
        wanted &= ~kSuspended;
        if (wanted == 0) wanted = kCommandSnaps;
    } else {
        wanted |= kSuspended;
    }
    m_changed = wanted != m_previous && SetOsMode(wanted);
}

COsMode::~COsMode() {
    if (m_changed) SetOsMode(m_previous);
}
