#include "host/db/OpenObject.h"

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/Entity.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/Stub.h"

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    pObj = nullptr;
    AcDbStub* stub = id.stub();
    if (stub == nullptr || stub->database == nullptr) return Acad::eNullObjectId;
    return kelaz::DatabaseImpl::of(stub->database).open(pObj, stub, mode, openErased);
}

Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcRxClass* pClass,
                                 AcDb::OpenMode mode, bool openErased) {
    const Acad::ErrorStatus es = acdbOpenAcDbObject(pObj, id, mode, openErased);
    if (es != Acad::eOk) return es;
    if (pClass != nullptr && !pObj->isKindOf(pClass)) {
        pObj->close();
        pObj = nullptr;
        return Acad::eNotThatKindOfClass;
    }
    return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    pEnt = nullptr;
    AcDbObject* obj = nullptr;
    const Acad::ErrorStatus es = acdbOpenObject(obj, id, AcDbEntity::desc(), mode, openErased);
    if (es == Acad::eNotThatKindOfClass) return Acad::eNotAnEntity;
    if (es == Acad::eOk) pEnt = static_cast<AcDbEntity*>(obj);
    return es;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId) {
    objName[0] = 0;
    objName[1] = 0;
    if (objId.isNull()) return Acad::eNullObjectId;
    objName[0] = objId.asOldId();
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName) {
    objId.setNull();
    if (objName == nullptr || objName[0] == 0) return Acad::eNullObjectId;
    objId.setFromOldId(objName[0]);
    return Acad::eOk;
}

int acdbEntLast(ads_name result) {
    result[0] = 0;
    result[1] = 0;
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return RTERROR;
    AcDbStub* model = kelaz::DatabaseImpl::of(db).modelSpace;
    if (model == nullptr || model->object == nullptr) return RTERROR;
    const auto& entities = static_cast<AcDbBlockTableRecord*>(model->object)->entityStubs();
    for (auto it = entities.rbegin(); it != entities.rend(); ++it) {
        if ((*it)->erased) continue;
        result[0] = AcDbObjectId(*it).asOldId();
        return RTNORM;
    }
    return RTERROR;
}
