#include "host/db/BlockTable.h"

#include "host/app/RxClass.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/Entity.h"
#include "host/db/OpenObject.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT,
                        AcDb::kMReleaseCurrent, 0, BLOCK_RECORD, kelaz)
ACRX_DXF_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, TABLE, kelaz)

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& pOutputId,
                                                         AcDbEntity* pEntity) {
    if (database() == nullptr) return Acad::eNoDatabase;
    return kelaz::DatabaseImpl::of(database()).appendEntity(this, pOutputId, pEntity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* pEntity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, pEntity);
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& pIterator,
                                                    bool atBeginning, bool skipDeleted) const {
    assertReadEnabled();
    pIterator = new AcDbBlockTableRecordIterator(objectId(), skipDeleted);
    pIterator->start(atBeginning, skipDeleted);
    return Acad::eOk;
}

const std::vector<AcDbStub*>* AcDbBlockTableRecordIterator::entities() const {
    if (!m_block.isValid()) return nullptr;
    return &static_cast<AcDbBlockTableRecord*>(m_block.stub()->object)->entityStubs();
}

void AcDbBlockTableRecordIterator::skip(bool forward) {
    const std::vector<AcDbStub*>* list = entities();
    if (list == nullptr) return;
    const auto size = static_cast<long long>(list->size());
    while (m_index >= 0 && m_index < size && m_skipDeleted &&
           (*list)[static_cast<std::size_t>(m_index)]->erased) {
        m_index += forward ? 1 : -1;
    }
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    m_skipDeleted = skipDeleted;
    const std::vector<AcDbStub*>* list = entities();
    m_index = atBeginning || list == nullptr ? 0 : static_cast<long long>(list->size()) - 1;
    skip(atBeginning);
}

bool AcDbBlockTableRecordIterator::done() const {
    const std::vector<AcDbStub*>* list = entities();
    return list == nullptr || m_index < 0 || m_index >= static_cast<long long>(list->size());
}

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
    m_skipDeleted = skipDeleted;
    m_index += forward ? 1 : -1;
    skip(forward);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& entityId) const {
    if (done()) return Acad::eIteratorDone;
    entityId = AcDbObjectId((*entities())[static_cast<std::size_t>(m_index)]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& pEntity,
                                                          AcDb::OpenMode openMode,
                                                          bool openErasedEntity) const {
    pEntity = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getEntityId(id);
    if (es != Acad::eOk) return es;
    return acdbOpenAcDbEntity(pEntity, id, openMode, openErasedEntity);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
    const std::vector<AcDbStub*>* list = entities();
    if (list == nullptr) return Acad::eKeyNotFound;
    for (std::size_t i = 0; i < list->size(); ++i) {
        if ((*list)[i] == id.stub()) {
            m_index = static_cast<long long>(i);
            return Acad::eOk;
        }
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbBlockTable::getAt(const wchar_t* entryName, AcDbBlockTableRecord*& pRec,
                                        AcDb::OpenMode openMode, bool openErasedRec) const {
    pRec = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = AcDbSymbolTable::getAt(entryName, id, openErasedRec);
    if (es != Acad::eOk) return es;
    return acdbOpenObject(pRec, id, openMode, openErasedRec);
}

bool AcDbBlockTable::acceptsRecord(const AcDbSymbolTableRecord* pRecord) const {
    return pRecord->isKindOf(AcDbBlockTableRecord::desc());
}
