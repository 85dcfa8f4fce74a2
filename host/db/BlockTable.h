#pragma once

// The block table and its records. Model space (ACDB_MODEL_SPACE) is the record the drawing's
// entities are appended to; its entities keep their drawing order, the order of appending.

#include <vector>

#include "host/db/SymbolTable.h"

class AcDbEntity;
class AcDbBlockTableRecordIterator;

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);

    AcDbBlockTableRecord() = default;

    // The record must be open for write and in a database; the entity must not be in one yet.
    // The record takes the entity, which stays open for write until closed. eKeyNotFound when the
    // entity's layer is not in the database.
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& pOutputId, AcDbEntity* pEntity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* pEntity);
    // Over the entities in drawing order, without the erased ones unless asked.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& pIterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    // The entities' stubs in drawing order, erased ones included (the database's structure, not
    // filed).
    const std::vector<AcDbStub*>& entityStubs() const { return m_entities; }

private:
    friend struct kelaz::ObjectAccess;
    std::vector<AcDbStub*> m_entities;
};

class AcDbBlockTableRecordIterator {
public:
    virtual ~AcDbBlockTableRecordIterator() = default;

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getEntityId(AcDbObjectId& entityId) const;
    Acad::ErrorStatus getEntity(AcDbEntity*& pEntity, AcDb::OpenMode openMode,
                                bool openErasedEntity = false) const;
    // Moves to the entity; eKeyNotFound when it is not in the block.
    Acad::ErrorStatus seek(AcDbObjectId id);

private:
    friend class AcDbBlockTableRecord;
    AcDbBlockTableRecordIterator(AcDbObjectId block, bool skipDeleted)
        : m_block(block), m_skipDeleted(skipDeleted) {}
    const std::vector<AcDbStub*>* entities() const;
    void skip(bool forward);

    AcDbObjectId m_block;
    bool m_skipDeleted;
    long long m_index = 0;
};

class AcDbBlockTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable);

    AcDbBlockTable() = default;

    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const wchar_t* entryName, AcDbBlockTableRecord*& pRec,
                            AcDb::OpenMode openMode, bool openErasedRec = false) const;
    using AcDbSymbolTable::add;
    Acad::ErrorStatus add(AcDbBlockTableRecord* pRecord) { return AcDbSymbolTable::add(pRecord); }
    Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbBlockTableRecord* pRecord) {
        return AcDbSymbolTable::add(recordId, pRecord);
    }

protected:
    bool acceptsRecord(const AcDbSymbolTableRecord* pRecord) const override;
};
