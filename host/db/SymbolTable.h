#pragma once

// Named records kept in a table: layers, blocks. Names compare without regard to case, as the
// host's do. A table holds its records by id; records stay in it when erased and are skipped by
// lookups and iteration (unless erased ones are asked for).

#include <vector>

#include "host/db/Object.h"
#include "host/text/CString.h"

class AcDbSymbolTableIterator;

class AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);

    Acad::ErrorStatus getName(CString& name) const;
    Acad::ErrorStatus getName(const wchar_t*& name) const;
    // An empty name is refused with eInvalidSymbolTableName; the name of another record of the
    // same table with eDuplicateRecordName.
    Acad::ErrorStatus setName(const wchar_t* name);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    AcDbSymbolTableRecord() = default;

private:
    friend struct kelaz::ObjectAccess;
    CString m_name;
};

class AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);

    bool has(const wchar_t* name) const;
    bool has(AcDbObjectId id) const;
    Acad::ErrorStatus getAt(const wchar_t* entryName, AcDbObjectId& recordId,
                            bool getErasedRecord = false) const;
    Acad::ErrorStatus getAt(const wchar_t* entryName, AcDbSymbolTableRecord*& pRec,
                            AcDb::OpenMode openMode, bool openErasedRec = false) const;
    // Adds a record that is not in a database yet; the table must be open for write and owns the
    // record afterwards, which is left open for write until closed.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* pRecord);
    Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbSymbolTableRecord* pRecord);
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& pIterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    // The records' stubs in the order they were added (the database's structure, not filed).
    const std::vector<AcDbStub*>& recordStubs() const { return m_records; }

protected:
    AcDbSymbolTable() = default;
    // Whether a record of this class belongs in this table.
    virtual bool acceptsRecord(const AcDbSymbolTableRecord* pRecord) const;

private:
    friend struct kelaz::ObjectAccess;
    AcDbStub* find(const wchar_t* name, bool includeErased) const;
    std::vector<AcDbStub*> m_records;
};

class AcDbSymbolTableIterator {
public:
    virtual ~AcDbSymbolTableIterator() = default;

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& pRecord, AcDb::OpenMode openMode,
                                bool openErasedRec = false) const;

private:
    friend class AcDbSymbolTable;
    AcDbSymbolTableIterator(AcDbObjectId table, bool skipDeleted)
        : m_table(table), m_skipDeleted(skipDeleted) {}
    const std::vector<AcDbStub*>* records() const;
    void skip(bool forward);

    AcDbObjectId m_table;
    bool m_skipDeleted;
    long long m_index = 0;
};
