#include "suite/tools/ModelSpace.h"

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/Entity.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/LayerTable.h"
#include "suite/entities/KelAzEntity.h"
#include "suite/tools/KELAzLayer.h"

namespace kelaz {

Acad::ErrorStatus EnsureLayer(AcDbDatabase* db, const CString& name, short colorIndex) {
    if (!db || name.IsEmpty()) return Acad::eInvalidInput;
    AcDbLayerTable* layers = nullptr;
    Acad::ErrorStatus es = db->getLayerTable(layers, AcDb::kForRead);
    if (es != Acad::eOk) return es;
    if (layers->has(name)) {
        layers->close();
        return Acad::eOk;
    }
    es = layers->upgradeOpen();
    if (es != Acad::eOk) {
        layers->close();
        return es;
    }
    if (colorIndex < 0) {
        KelAzLayerRecord stored;
        colorIndex = CKELAzLayer::GetLayer(name, stored) ? stored.nColor : 7;
    }
    auto* record = new AcDbLayerTableRecord;
    record->setName(name);
    AcCmColor color;
    color.setColorIndex(static_cast<Adesk::UInt16>(colorIndex));
    record->setColor(color);
    es = layers->add(record);
    if (es == Acad::eOk) {
        record->close();
    } else {
        delete record;
    }
    layers->close();
    return es;
}

}  // namespace kelaz

Acad::ErrorStatus addToModelSpace(AcDbObjectId& id, AcDbEntity* entity, AcDbDatabase* db) {
    if (!entity) return Acad::eNullEntityPointer;
    if (!db) db = acdbHostApplicationServices()->workingDatabase();
    if (!db) return Acad::eNoDatabase;
    if (KelAzEntity* suiteEntity = KelAzEntity::cast(entity)) {
        const Acad::ErrorStatus layered = suiteEntity->TakeOwnLayerIfDefault();
        if (layered != Acad::eOk) return layered;
    }
    Acad::ErrorStatus es = kelaz::EnsureLayer(db, entity->layer());
    if (es != Acad::eOk) return es;

    AcDbBlockTable* table = nullptr;
    es = db->getBlockTable(table, AcDb::kForRead);
    if (es != Acad::eOk) return es;
    AcDbBlockTableRecord* modelSpace = nullptr;
    es = table->getAt(ACDB_MODEL_SPACE, modelSpace, AcDb::kForWrite);
    table->close();
    if (es != Acad::eOk) return es;
    AcDbObjectId newId;
    es = modelSpace->appendAcDbEntity(newId, entity);
    modelSpace->close();
    if (es != Acad::eOk) return es;
    entity->close();
    id = newId;
    return Acad::eOk;
}
