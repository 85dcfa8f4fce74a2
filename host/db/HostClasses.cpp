#include "host/db/HostClasses.h"

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/db/Arc.h"
#include "host/db/BlockTable.h"
#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/LayerTable.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"

namespace kelaz {

void InitHostClasses() {
    static const bool done = [] {
        AcRxObject::desc();
        AcRxClass::rxInit();
        AcRxDictionary::rxInit();
        AcDbDatabase::rxInit();
        AcDbObject::rxInit();
        AcDbSymbolTable::rxInit();
        AcDbSymbolTableRecord::rxInit();
        AcDbBlockTable::rxInit();
        AcDbBlockTableRecord::rxInit();
        AcDbLayerTable::rxInit();
        AcDbLayerTableRecord::rxInit();
        AcDbEntity::rxInit();
        AcDbCurve::rxInit();
        AcDbLine::rxInit();
        AcDbArc::rxInit();
        AcDbCircle::rxInit();
        AcDbPolyline::rxInit();
        acrxBuildClassHierarchy();
        return true;
    }();
    (void)done;
}

}  // namespace kelaz
