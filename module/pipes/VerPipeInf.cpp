#include "module/pipes/VerPipeInf.h"

CVerPipeInfList& CVerPipeLists::Risers() {
    static CVerPipeInfList list;
    return list;
}

CVerPipeInfList& CVerPipeLists::Planned() {
    static CVerPipeInfList list;
    return list;
}

CVerPipeInfList& CVerPipeLists::Made() {
    static CVerPipeInfList list;
    return list;
}

void CVerPipeLists::ClearAll() {
    Risers().clear();
    Planned().clear();
    Made().clear();
}
