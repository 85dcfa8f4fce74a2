#pragma once

// A drawing database object. An object is either database-resident (appended, reached through
// its id and opened with acdbOpenAcDbObject) or not yet added, in which case it belongs to
// whoever made it and is always readable and writable. A resident object is opened for read by
// any number of readers or for write by one writer alone, and every open ends with close().
// The database owns resident objects: they are never deleted by their users.

#include "host/app/RxClass.h"
#include "host/db/AcDb.h"
#include "host/db/AcadErrorStatus.h"
#include "host/db/Handle.h"
#include "host/db/ObjectId.h"

class AcDbDatabase;
class AcDbDwgFiler;
class AcDbDxfFiler;
class AcDbStub;

namespace kelaz {
struct ObjectAccess;
}

class AcDbObject : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject);

    ~AcDbObject() override;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    // Null, and no database, until the object is added to a database.
    AcDbObjectId objectId() const;
    AcDbObjectId ownerId() const { return m_ownerId; }
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId objId);
    AcDbDatabase* database() const;
    AcDbHandle handle() const;
    void getAcDbHandle(AcDbHandle& handle) const { handle = this->handle(); }

    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    bool isNotifyEnabled() const;
    // Appended to the database and not closed since.
    bool isNewObject() const;
    bool isErased() const;

    // Reading a field of an object not open for read, or changing one not open for write, is a
    // programming error: these stop the program. With autoUndo, the first change in an undo group
    // keeps the object's before-image; without it and with recordModified, the object records its
    // own partial undo through undoFiler().
    void assertReadEnabled() const;
    void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);
    void assertNotifyEnabled() const;

    // Erases (or with false, brings back) the object; it must be open for write (erased objects
    // are opened with openErased). The object stays in the database, skipped by iteration and
    // selection, until undo brings it back or the drawing is saved without it.
    Acad::ErrorStatus erase(bool eraseIt = true);
    // Ends this open. Closing after a write updates the spatial index and the undo record.
    Acad::ErrorStatus close();
    // From read to write: only the sole reader may upgrade.
    Acad::ErrorStatus upgradeOpen();
    // From write to read; the write is closed as by close().
    Acad::ErrorStatus downgradeOpen();

    // A copy through a copy filer: a new object of the same class with every filed field, in no
    // database (no id, no owner). The object must be open for read. Null when the class has no
    // constructor or the fields do not read back.
    AcRxObject* clone() const override;

    // Filing: write the fields in a fixed order, read them back in the same order; answer the
    // filer's status. Subclasses call their parent's version first.
    virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler);
    virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const;
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const;

    // Undo of a partial record this object wrote to undoFiler(): the filer stands just after the
    // class descriptor the object wrote first, and objectClass is that descriptor. A class that
    // does not know the record defers to its parent; this base knows none and answers
    // eNotApplicable, which the database takes as "nothing undone" and goes on.
    virtual Acad::ErrorStatus applyPartialUndo(AcDbDwgFiler* undoFiler, AcRxClass* objectClass);
    // The filer of this object's partial undo record while an undo group is recording, null
    // otherwise. A record starts at assertWriteEnabled(false, true) and holds what the object
    // writes: its class descriptor (writeAddress(desc())), then its own code and data.
    AcDbDwgFiler* undoFiler();

protected:
    AcDbObject() = default;
    // Called before erase (true) or unerase (false); anything but eOk refuses it.
    virtual Acad::ErrorStatus subErase(bool erasing);

private:
    friend struct kelaz::ObjectAccess;
    AcDbStub* m_stub = nullptr;
    AcDbObjectId m_ownerId;
};
