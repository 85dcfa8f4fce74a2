#include "host/db/DatabaseImpl.h"

#include <algorithm>

#include "host/Assert.h"
#include "host/db/BlockTable.h"
#include "host/db/Entity.h"
#include "host/db/LayerTable.h"
#include "host/db/Object.h"
#include "host/db/SymbolTable.h"

namespace kelaz {

namespace {

// The box in plan of an entity, if it has extents.
bool PlanBoxOf(const AcDbEntity* entity, PlanBox& box) {
    AcDbExtents extents;
    if (entity->getGeomExtents(extents) != Acad::eOk || ExtentsIsEmpty(extents)) return false;
    box = {extents.minPoint().x, extents.minPoint().y, extents.maxPoint().x, extents.maxPoint().y};
    return true;
}

}  // namespace

AcDbStub* ObjectAccess::stub(const AcDbObject* obj) { return obj->m_stub; }
void ObjectAccess::setStub(AcDbObject* obj, AcDbStub* stub) { obj->m_stub = stub; }
void ObjectAccess::setOwner(AcDbObject* obj, AcDbObjectId owner) { obj->m_ownerId = owner; }
std::vector<AcDbStub*>& ObjectAccess::records(AcDbSymbolTable* table) { return table->m_records; }
std::vector<AcDbStub*>& ObjectAccess::entities(AcDbBlockTableRecord* block) {
    return block->m_entities;
}
bool ObjectAccess::accepts(const AcDbSymbolTable* table, const AcDbSymbolTableRecord* record) {
    return table->acceptsRecord(record);
}
const CString& ObjectAccess::name(const AcDbSymbolTableRecord* record) { return record->m_name; }
void ObjectAccess::setName(AcDbSymbolTableRecord* record, const wchar_t* name) {
    record->m_name = name;
}

DatabaseImpl::DatabaseImpl(AcDbDatabase* database) : db(database), undo(*this) {}

DatabaseImpl::~DatabaseImpl() { deleteObjects(); }

void DatabaseImpl::deleteObjects() {
    for (AcDbStub& stub : stubs) {
        if (stub.object == nullptr) continue;
        undo.forget(&stub);
        ObjectAccess::setStub(stub.object, nullptr);
        delete stub.object;
        stub.object = nullptr;
    }
}

void DatabaseImpl::buildDefaultDrawing() {
    auto closeNew = [](AcDbStub* stub) {
        stub->writer = false;
        stub->isNew = false;
    };
    blockTable = newStub();
    adopt(blockTable, new AcDbBlockTable(), AcDbObjectId());
    layerTable = newStub();
    adopt(layerTable, new AcDbLayerTable(), AcDbObjectId());

    auto* model = new AcDbBlockTableRecord();
    ObjectAccess::setName(model, ACDB_MODEL_SPACE);
    modelSpace = newStub();
    adopt(modelSpace, model, AcDbObjectId(blockTable));
    ObjectAccess::records(static_cast<AcDbSymbolTable*>(blockTable->object)).push_back(modelSpace);

    auto* zero = new AcDbLayerTableRecord();
    ObjectAccess::setName(zero, L"0");
    clayer = newStub();
    adopt(clayer, zero, AcDbObjectId(layerTable));
    ObjectAccess::records(static_cast<AcDbSymbolTable*>(layerTable->object)).push_back(clayer);

    for (AcDbStub* stub : {blockTable, layerTable, modelSpace, clayer}) closeNew(stub);
}

AcDbStub* DatabaseImpl::newStub(AcDbHandle handle) {
    if (handle.isNull()) handle = AcDbHandle(handseed);
    KELAZ_ASSERT(byHandle.find(handle.value()) == byHandle.end(), "handle already in use");
    AcDbStub& stub = stubs.emplace_back();
    stub.database = db;
    stub.handle = handle;
    byHandle.emplace(handle.value(), &stub);
    handseed = std::max(handseed, handle.value() + 1);
    return &stub;
}

AcDbStub* DatabaseImpl::findStub(AcDbHandle handle) const {
    const auto it = byHandle.find(handle.value());
    return it == byHandle.end() ? nullptr : it->second;
}

void DatabaseImpl::adopt(AcDbStub* stub, AcDbObject* obj, AcDbObjectId owner) {
    KELAZ_ASSERT(stub->object == nullptr, "a stub holds one object");
    stub->object = obj;
    ObjectAccess::setStub(obj, stub);
    ObjectAccess::setOwner(obj, owner);
    stub->writer = true;
    stub->isNew = true;
}

Acad::ErrorStatus DatabaseImpl::open(AcDbObject*& obj, AcDbStub* stub, AcDb::OpenMode mode,
                                     bool openErased) {
    obj = nullptr;
    if (stub->object == nullptr) return stub->erased ? Acad::eWasErased : Acad::eUnknownHandle;
    if (stub->erased && !openErased) return Acad::eWasErased;
    switch (mode) {
        case AcDb::kForRead:
            if (stub->writer) return Acad::eWasOpenedForWrite;
            ++stub->readers;
            break;
        case AcDb::kForWrite:
            if (stub->writer) return Acad::eWasOpenedForWrite;
            if (stub->readers > 0) return Acad::eWasOpenedForRead;
            stub->writer = true;
            undo.onWriteOpen(stub);
            break;
        case AcDb::kForNotify:
            ++stub->notifiers;
            break;
        default:
            return Acad::eInvalidOpenState;
    }
    obj = stub->object;
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseImpl::close(AcDbObject* obj) {
    AcDbStub* stub = ObjectAccess::stub(obj);
    if (stub->writer) {
        finishWrite(stub);
        stub->writer = false;
    } else if (stub->readers > 0) {
        --stub->readers;
    } else if (stub->notifiers > 0) {
        --stub->notifiers;
    } else {
        KELAZ_ASSERT(false, "closing an object that is not open");
    }
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseImpl::upgradeOpen(AcDbObject* obj) {
    AcDbStub* stub = ObjectAccess::stub(obj);
    if (stub->writer) return Acad::eWasOpenedForWrite;
    if (stub->readers == 0) return Acad::eNotOpenForRead;
    if (stub->readers > 1) return Acad::eHadMultipleReaders;
    stub->readers = 0;
    stub->writer = true;
    undo.onWriteOpen(stub);
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseImpl::downgradeOpen(AcDbObject* obj) {
    AcDbStub* stub = ObjectAccess::stub(obj);
    if (!stub->writer) return Acad::eNotOpenForWrite;
    finishWrite(stub);
    stub->writer = false;
    stub->readers = 1;
    return Acad::eOk;
}

void DatabaseImpl::finishWrite(AcDbStub* stub) {
    undo.onWriteClose(stub);
    stub->isNew = false;
    syncIndex(stub);
}

Acad::ErrorStatus DatabaseImpl::appendEntity(AcDbBlockTableRecord* block, AcDbObjectId& id,
                                             AcDbEntity* entity) {
    id.setNull();
    if (!block->isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (entity == nullptr) return Acad::eNullEntityPointer;
    if (entity->database() != nullptr) return Acad::eAlreadyInDb;
    if (findLayer(entity->layer()) == nullptr) return Acad::eKeyNotFound;
    AcDbStub* stub = newStub();
    adopt(stub, entity, block->objectId());
    stub->drawOrder = nextDrawOrder++;
    ObjectAccess::entities(block).push_back(stub);
    undo.onAppend(stub);
    dbmod |= kDbmodObjects;
    syncIndex(stub);
    id = AcDbObjectId(stub);
    return Acad::eOk;
}

Acad::ErrorStatus DatabaseImpl::addRecord(AcDbSymbolTable* table, AcDbObjectId& id,
                                          AcDbSymbolTableRecord* record) {
    id.setNull();
    if (!table->isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (record == nullptr) return Acad::eNullObjectPointer;
    if (record->database() != nullptr) return Acad::eAlreadyInDb;
    if (!table->isKindOf(AcDbSymbolTable::desc())) return Acad::eWrongObjectType;
    // A layer table takes layers only, a block table blocks.
    if (!ObjectAccess::accepts(table, record)) return Acad::eWrongObjectType;
    const CString& name = ObjectAccess::name(record);
    if (name.IsEmpty()) return Acad::eInvalidSymbolTableName;
    if (table->has(name)) return Acad::eDuplicateRecordName;
    AcDbStub* stub = newStub();
    adopt(stub, record, table->objectId());
    ObjectAccess::records(table).push_back(stub);
    undo.onAppend(stub);
    dbmod |= kDbmodSymbolTables;
    id = AcDbObjectId(stub);
    return Acad::eOk;
}

bool DatabaseImpl::isModelSpaceEntity(const AcDbStub* stub) const {
    return stub->object != nullptr && modelSpace != nullptr &&
           stub->object->ownerId().stub() == modelSpace &&
           stub->object->isKindOf(AcDbEntity::desc());
}

void DatabaseImpl::syncIndex(AcDbStub* stub) {
    PlanBox box;
    if (!stub->erased && isModelSpaceEntity(stub)) {
        DatabaseImpl::ReadScope readable(stub);
        if (PlanBoxOf(static_cast<AcDbEntity*>(stub->object), box)) {
            index.update(stub, box);
            return;
        }
    }
    index.remove(stub);
}

void DatabaseImpl::rebuildIndex() {
    index.clear();
    if (modelSpace == nullptr || modelSpace->object == nullptr) return;
    std::vector<AcDbStub*> live;
    for (AcDbStub* stub :
         ObjectAccess::entities(static_cast<AcDbBlockTableRecord*>(modelSpace->object))) {
        if (stub->erased || stub->object == nullptr) continue;
        DatabaseImpl::ReadScope readable(stub);
        PlanBox box;
        stub->indexed = PlanBoxOf(static_cast<AcDbEntity*>(stub->object), box);
        if (stub->indexed) {
            stub->indexedBox = box;
            live.push_back(stub);
        }
    }
    index.rebuild(live);
}

AcDbStub* DatabaseImpl::findLayer(const wchar_t* name) const {
    if (layerTable == nullptr || layerTable->object == nullptr || name == nullptr) return nullptr;
    for (AcDbStub* stub :
         ObjectAccess::records(static_cast<AcDbSymbolTable*>(layerTable->object))) {
        if (stub->erased || stub->object == nullptr) continue;
        const auto* record = static_cast<const AcDbSymbolTableRecord*>(stub->object);
        if (ObjectAccess::name(record).CompareNoCase(name) == 0) return stub;
    }
    return nullptr;
}

CString DatabaseImpl::recordName(const AcDbStub* stub) {
    if (stub == nullptr || stub->object == nullptr) return CString();
    return ObjectAccess::name(static_cast<const AcDbSymbolTableRecord*>(stub->object));
}

DatabaseImpl::WriteScope::WriteScope(AcDbStub* stub) : m_stub(stub), m_wasWriter(stub->writer) {
    m_stub->writer = true;
}

DatabaseImpl::WriteScope::~WriteScope() { m_stub->writer = m_wasWriter; }

bool DatabaseImpl::anyOpen() const {
    return std::any_of(stubs.begin(), stubs.end(), [](const AcDbStub& s) {
        return s.readers > 0 || s.writer || s.notifiers > 0;
    });
}

void DatabaseImpl::replaceContents(std::unique_ptr<DatabaseImpl> other) {
    undo.clear();
    index.clear();
    other->undo.clear();
    other->index.clear();
    std::swap(stubs, other->stubs);
    std::swap(byHandle, other->byHandle);
    std::swap(handseed, other->handseed);
    std::swap(blockTable, other->blockTable);
    std::swap(layerTable, other->layerTable);
    std::swap(modelSpace, other->modelSpace);
    std::swap(clayer, other->clayer);
    std::swap(nextDrawOrder, other->nextDrawOrder);
    for (AcDbStub& stub : stubs) stub.database = db;
    // The old contents: objects gone, stubs kept erased so that old ids answer "erased".
    other->deleteObjects();
    for (AcDbStub& stub : other->stubs) {
        stub.erased = true;
        stub.indexed = false;
        stub.database = db;
    }
    other->db = db;
    retired.push_back(std::move(other));
    rebuildIndex();
}

}  // namespace kelaz
