#pragma once

// A drawing database: the block table with model space, the layer table with layer "0", every
// object by id and handle, the undo log and the spatial index of model space. Objects are
// reached by id and opened with acdbOpenAcDbObject (host/db/OpenObject.h).

#include <memory>

#include "host/app/RxObject.h"
#include "host/db/AcDb.h"
#include "host/db/AcadErrorStatus.h"
#include "host/db/Handle.h"
#include "host/db/ObjectId.h"

class AcDbBlockTable;
class AcDbDwgFiler;
class AcDbLayerTable;
class AcDbObject;

namespace kelaz {
class DatabaseImpl;
class UndoLog;
}  // namespace kelaz

class AcDbDatabase : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDatabase);

    // With buildDefaultDrawing, the tables, model space and layer "0" (the current layer);
    // without, an empty database for readDwgFile to fill.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode) {
        return getBlockTable(pTable, mode);
    }
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode) {
        return getLayerTable(pTable, mode);
    }
    AcDbObjectId blockTableId() const;
    AcDbObjectId layerTableId() const;
    // Model space: there is no paper space here.
    AcDbObjectId currentSpaceId() const;
    AcDbObjectId clayer() const;
    // eWrongObjectType unless the id is a layer of this database.
    Acad::ErrorStatus setClayer(AcDbObjectId layerId);

    // Adds an object that is in no database (not an entity: those go into a block). The database
    // owns it from then on; it stays open for write until closed.
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& objId, AcDbObject* pObj);
    Acad::ErrorStatus addAcDbObject(AcDbObject* pObj);

    // The id of the object with that handle. With createIfNotFound, an unknown handle gets a stub
    // of its own, filled when an object with that handle is read; otherwise eUnknownHandle.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound,
                                      const AcDbHandle& objHandle, Adesk::UInt32 xRefId = 0);
    // The handle the next new object gets.
    AcDbHandle handseed() const;

    // Writes the drawing to a temporary file beside fileName and renames it into place, so a
    // failed save never leaves half a drawing. eFileAccessErr when it cannot be written.
    Acad::ErrorStatus saveAs(const wchar_t* fileName);
    // Replaces the contents with the drawing in the file, checked completely first: a file that
    // is not a drawing, of a newer format, damaged or truncated, or with objects that do not read
    // back exactly, is refused and the database keeps its contents. kelaz::LastFileReport()
    // tells what was wrong. Ids of the old contents stay valid but refer to erased objects.
    Acad::ErrorStatus readDwgFile(const wchar_t* fileName);
    // The file last saved to or read from; empty before.
    Acad::ErrorStatus getFilename(const wchar_t*& pOutput) const;

    // The filer of the current undo group while one is recording, null otherwise.
    AcDbDwgFiler* undoFiler();
    bool undoRecording() const;
    // While disabled, changes are not recorded (nothing can be undone past them).
    void disableUndoRecording(bool disable);
    // Groups, marks and the undo steps a command processor drives.
    kelaz::UndoLog& undoLog();

    // The database's internals, for the code of host/db.
    kelaz::DatabaseImpl* impl() const { return m_impl.get(); }

private:
    friend class kelaz::DatabaseImpl;
    std::unique_ptr<kelaz::DatabaseImpl> m_impl;
};

// Sets DBMOD, the record of what changed in the drawing since it was made, read or saved, and
// answers the value it had. Every change to an object, a symbol table or a database variable
// sets its bit, undo included; saveAs and readDwgFile clear it.
Adesk::Int16 acdbSetDbmod(AcDbDatabase* pDb, Adesk::Int16 newVal);

namespace kelaz {

// The bits of DBMOD.
inline constexpr Adesk::Int16 kDbmodObjects = 0x1;
inline constexpr Adesk::Int16 kDbmodSymbolTables = 0x2;
inline constexpr Adesk::Int16 kDbmodVariables = 0x4;

// What the last readDwgFile or saveAs of db found wrong: the file, then numbered problems, one
// per line. Empty after a success.
CString LastFileReport(const AcDbDatabase& db);
// DBMOD of db (what acedGetVar answers for the working drawing).
Adesk::Int16 DbmodOf(const AcDbDatabase& db);
// Gives the drawing the file name a save would give it, without writing: for a new drawing that
// is to be saved under a name chosen beforehand, and for a drawing rebuilt from a session's
// journal, which takes the names its saves gave it.
void SetDrawingFileName(AcDbDatabase& db, const CString& path);

}  // namespace kelaz
