#include "suite/entities/SuiteEntities.h"

#include "host/app/RxClass.h"
#include "host/db/HostClasses.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzKdEnt.h"
#include "suite/entities/KelAzKelSectEnt.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/KelAzPipeValve.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/entities/KelAzSupport.h"

namespace kelaz {

void InitSuiteEntities() {
    static const bool done = [] {
        InitHostClasses();
        KelAzEntity::rxInit();
        KelAzCurveEntity::rxInit();
        KelAzLeadPrototype::rxInit();
        KelAzLead::rxInit();
        KelAzMainLead::rxInit();
        KelAzMainPipe::rxInit();
        KelAzPipe::rxInit();
        KelAzDuctPrototype::rxInit();
        KelAzDuct::rxInit();
        KelAzSupport::rxInit();
        KelAzNode::rxInit();
        KelAzEquipMent::rxInit();
        KelAzKelSectEnt::rxInit();
        KelAzPipeValve::rxInit();
        KelAzSoftLine::rxInit();
        KelAzKdEnt::rxInit();
        acrxBuildClassHierarchy();
        return true;
    }();
    (void)done;
}

}  // namespace kelaz
