#include "module/entry/LayoutClasses.h"

#include "host/app/RxClass.h"
#include "module/multipipe/MultiLine.h"
#include "module/pipes/DocReactor.h"

namespace kelaz {

void InitLayoutClasses() {
    CMultiLine::rxInit();
    CDocReactor::rxInit();
    acrxBuildClassHierarchy();
}

}  // namespace kelaz
