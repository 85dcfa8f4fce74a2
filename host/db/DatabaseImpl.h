#pragma once

// The inside of a drawing database, shared by the code of host/db only: the stubs of all
// objects, the handle map, the undo log and the spatial index, and the open/close rules.

#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/db/AcDb.h"
#include "host/db/AcadErrorStatus.h"
#include "host/db/Database.h"
#include "host/db/SpatialIndex.h"
#include "host/db/Stub.h"
#include "host/db/UndoLog.h"
#include "host/text/CString.h"

class AcDbBlockTableRecord;
class AcDbEntity;
class AcDbObject;
class AcDbSymbolTable;
class AcDbSymbolTableRecord;

namespace kelaz {

// Access to the private members of the object classes that the database maintains.
struct ObjectAccess {
    static AcDbStub* stub(const AcDbObject* obj);
    static void setStub(AcDbObject* obj, AcDbStub* stub);
    static void setOwner(AcDbObject* obj, AcDbObjectId owner);
    static std::vector<AcDbStub*>& records(AcDbSymbolTable* table);
    static std::vector<AcDbStub*>& entities(AcDbBlockTableRecord* block);
    static bool accepts(const AcDbSymbolTable* table, const AcDbSymbolTableRecord* record);
    static const CString& name(const AcDbSymbolTableRecord* record);
    static void setName(AcDbSymbolTableRecord* record, const wchar_t* name);
};

class DatabaseImpl {
public:
    explicit DatabaseImpl(AcDbDatabase* db);
    ~DatabaseImpl();
    DatabaseImpl(const DatabaseImpl&) = delete;
    DatabaseImpl& operator=(const DatabaseImpl&) = delete;

    static DatabaseImpl& of(const AcDbDatabase* db) { return *db->impl(); }
    // Takes the contents out of a database, which must not be used afterwards but to destroy it.
    static std::unique_ptr<DatabaseImpl> takeContents(AcDbDatabase& db) {
        return std::move(db.m_impl);
    }

    // Makes the tables, model space and layer "0".
    void buildDefaultDrawing();

    // A stub for a new object with the next handle, or with the given one (raising the seed past
    // it). The handle must be free.
    AcDbStub* newStub(AcDbHandle handle = AcDbHandle());
    AcDbStub* findStub(AcDbHandle handle) const;
    // Makes obj resident under stub, owned by owner, open for write and new.
    void adopt(AcDbStub* stub, AcDbObject* obj, AcDbObjectId owner);

    Acad::ErrorStatus open(AcDbObject*& obj, AcDbStub* stub, AcDb::OpenMode mode, bool openErased);
    Acad::ErrorStatus close(AcDbObject* obj);
    Acad::ErrorStatus upgradeOpen(AcDbObject* obj);
    Acad::ErrorStatus downgradeOpen(AcDbObject* obj);
    // What every end of a write does: index, undo, the new flag.
    void finishWrite(AcDbStub* stub);

    // Adds the entity to the block's drawing order and to the index.
    Acad::ErrorStatus appendEntity(AcDbBlockTableRecord* block, AcDbObjectId& id,
                                   AcDbEntity* entity);
    Acad::ErrorStatus addRecord(AcDbSymbolTable* table, AcDbObjectId& id,
                                AcDbSymbolTableRecord* record);

    // Brings the stub's box in the spatial index up to date (removes erased and non-model-space
    // objects and those without extents).
    void syncIndex(AcDbStub* stub);
    // Rebuilds the index from model space.
    void rebuildIndex();
    bool isModelSpaceEntity(const AcDbStub* stub) const;
    // The layer record of that name that is not erased, null if none.
    AcDbStub* findLayer(const wchar_t* name) const;
    // The name of a symbol table record, read without opening it.
    static CString recordName(const AcDbStub* stub);
    // The stub's object, readable for the database's own look at it (extents, saving) whatever
    // its open state.
    class ReadScope {
    public:
        explicit ReadScope(AcDbStub* stub) : m_stub(stub) { ++m_stub->readers; }
        ~ReadScope() { --m_stub->readers; }
        ReadScope(const ReadScope&) = delete;
        ReadScope& operator=(const ReadScope&) = delete;

    private:
        AcDbStub* m_stub;
    };
    // The stub's object, temporarily write-enabled for the database's own changes (undo).
    class WriteScope {
    public:
        explicit WriteScope(AcDbStub* stub);
        ~WriteScope();
        WriteScope(const WriteScope&) = delete;
        WriteScope& operator=(const WriteScope&) = delete;

    private:
        AcDbStub* m_stub;
        bool m_wasWriter;
    };

    // Takes over the contents of other (freshly read): other's stubs become this database's, and
    // the present contents are retired (objects deleted, stubs kept erased so ids stay valid).
    void replaceContents(std::unique_ptr<DatabaseImpl> other);
    // True when any object is open.
    bool anyOpen() const;

    AcDbDatabase* db;
    std::deque<AcDbStub> stubs;
    std::unordered_map<Adesk::UInt64, AcDbStub*> byHandle;
    Adesk::UInt64 handseed = 1;
    AcDbStub* blockTable = nullptr;
    AcDbStub* layerTable = nullptr;
    AcDbStub* modelSpace = nullptr;
    AcDbStub* clayer = nullptr;
    std::uint64_t nextDrawOrder = 1;
    UndoLog undo;
    SpatialIndex index;
    CString fileName;
    CString lastFileReport;
    // DBMOD: what changed since the drawing was made, read or saved (kDbmod* bits).
    Adesk::Int16 dbmod = 0;
    // Contents replaced by readDwgFile, kept for their stubs.
    std::vector<std::unique_ptr<DatabaseImpl>> retired;

private:
    void deleteObjects();
};

}  // namespace kelaz
