#include "module/entry/LayoutClasses.h"

#include "host/app/RxClass.h"
#include "module/multipipe/MultiLine.h"

namespace kelaz {

void InitLayoutClasses() {
    CMultiLine::rxInit();
    acrxBuildClassHierarchy();
}

}  // namespace kelaz
