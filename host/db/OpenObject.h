#pragma once

// Opening database objects by id, entity names of the C API, and the last entity of the working
// database.

#include "host/db/AcDb.h"
#include "host/db/AcadErrorStatus.h"
#include "host/db/AdsDef.h"
#include "host/db/Object.h"
#include "host/db/ObjectId.h"

class AcDbEntity;
class AcRxClass;

// Opens the object for read (any number of readers, no writer), for write (alone) or for
// notification. eNullObjectId, eWasErased (an erased object unless openErased),
// eWasOpenedForWrite, eWasOpenedForRead (a writer while readers are there), eUnknownHandle
// (a handle that was referred to but never read).
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
// As acdbOpenAcDbObject, refusing an object that is not an entity with eNotAnEntity.
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
// As acdbOpenAcDbObject, refusing an object that is not of pClass (or below) with
// eNotThatKindOfClass; the object is left closed then.
Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcRxClass* pClass,
                                 AcDb::OpenMode mode, bool openErased = false);

template <class T>
Acad::ErrorStatus acdbOpenObject(T*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) {
    pObj = nullptr;
    AcDbObject* obj = nullptr;
    const Acad::ErrorStatus es = acdbOpenObject(obj, id, T::desc(), mode, openErased);
    if (es == Acad::eOk) pObj = static_cast<T*>(obj);
    return es;
}

// The entity name of an id and back: eNullObjectId for the null id or name.
Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId);
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName);
// The last entity of the working database's model space that is not erased: RTNORM, or RTERROR
// when there is none (or no working database).
int acdbEntLast(ads_name result);
