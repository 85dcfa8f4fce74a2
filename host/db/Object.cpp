#include "host/db/Object.h"

#include "host/Assert.h"
#include "host/app/RxClass.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/MemoryDwgFiler.h"
#include "host/db/Stub.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcRxObject)

AcDbObject::~AcDbObject() {
    KELAZ_ASSERT(m_stub == nullptr,
                 "a database-resident object is deleted by its database; close it instead");
}

AcDbObjectId AcDbObject::objectId() const { return AcDbObjectId(m_stub); }

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId objId) {
    assertWriteEnabled(false, false);
    m_ownerId = objId;
    return Acad::eOk;
}

AcDbDatabase* AcDbObject::database() const {
    return m_stub != nullptr ? m_stub->database : nullptr;
}

AcDbHandle AcDbObject::handle() const { return m_stub != nullptr ? m_stub->handle : AcDbHandle(); }

bool AcDbObject::isReadEnabled() const {
    return m_stub == nullptr || m_stub->readers > 0 || m_stub->writer;
}

bool AcDbObject::isWriteEnabled() const { return m_stub == nullptr || m_stub->writer; }

bool AcDbObject::isNotifyEnabled() const { return m_stub != nullptr && m_stub->notifiers > 0; }

bool AcDbObject::isNewObject() const { return m_stub != nullptr && m_stub->isNew; }

bool AcDbObject::isErased() const { return m_stub != nullptr && m_stub->erased; }

void AcDbObject::assertReadEnabled() const {
    KELAZ_ASSERT(isReadEnabled(), "object read while not open for read");
}

void AcDbObject::assertWriteEnabled(bool autoUndo, bool recordModified) {
    KELAZ_ASSERT(isWriteEnabled(), "object changed while not open for write");
    if (m_stub != nullptr && m_stub->database != nullptr) {
        kelaz::DatabaseImpl& db = kelaz::DatabaseImpl::of(m_stub->database);
        db.undo.onAssertWrite(m_stub, autoUndo, recordModified);
        db.dbmod |= kelaz::kDbmodObjects;
    }
}

void AcDbObject::assertNotifyEnabled() const {
    KELAZ_ASSERT(isNotifyEnabled() || isWriteEnabled(), "object notified while not open for it");
}

Acad::ErrorStatus AcDbObject::erase(bool eraseIt) {
    if (m_stub == nullptr || m_stub->database == nullptr) return Acad::eNotInDatabase;
    if (!m_stub->writer) return Acad::eNotOpenForWrite;
    if (m_stub->erased == eraseIt) return eraseIt ? Acad::eWasErased : Acad::eWasNotErased;
    kelaz::DatabaseImpl& db = kelaz::DatabaseImpl::of(m_stub->database);
    // The database's own structure cannot go: the tables, model space, layer 0, the current
    // layer.
    if (eraseIt && (m_stub == db.blockTable || m_stub == db.layerTable || m_stub == db.modelSpace ||
                    m_stub == db.clayer)) {
        return Acad::eCannotBeErasedByCaller;
    }
    const Acad::ErrorStatus veto = subErase(eraseIt);
    if (veto != Acad::eOk) return veto;
    db.undo.onErase(m_stub, m_stub->erased);
    m_stub->erased = eraseIt;
    db.dbmod |= kelaz::kDbmodObjects;
    db.syncIndex(m_stub);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::subErase(bool) { return Acad::eOk; }

Acad::ErrorStatus AcDbObject::close() {
    if (m_stub == nullptr || m_stub->database == nullptr) return Acad::eNotInDatabase;
    return kelaz::DatabaseImpl::of(m_stub->database).close(this);
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (m_stub == nullptr || m_stub->database == nullptr) return Acad::eNotInDatabase;
    return kelaz::DatabaseImpl::of(m_stub->database).upgradeOpen(this);
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (m_stub == nullptr || m_stub->database == nullptr) return Acad::eNotInDatabase;
    return kelaz::DatabaseImpl::of(m_stub->database).downgradeOpen(this);
}

AcRxObject* AcDbObject::clone() const {
    assertReadEnabled();
    AcDbObject* copy = AcDbObject::cast(isA()->create());
    if (copy == nullptr) return nullptr;
    kelaz::MemoryDwgFiler out(AcDb::kCopyFiler, database());
    if (dwgOutFields(&out) != Acad::eOk) {
        delete copy;
        return nullptr;
    }
    kelaz::MemoryDwgFiler in(out.takeBytes(), AcDb::kCopyFiler, database());
    if (copy->dwgInFields(&in) != Acad::eOk) {
        delete copy;
        return nullptr;
    }
    return copy;
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* pFiler) {
    assertWriteEnabled();
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* pFiler) const {
    assertReadEnabled();
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* pFiler) {
    assertWriteEnabled();
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* pFiler) const {
    assertReadEnabled();
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbObject::applyPartialUndo(AcDbDwgFiler*, AcRxClass*) {
    return Acad::eNotApplicable;
}

AcDbDwgFiler* AcDbObject::undoFiler() {
    if (m_stub == nullptr || m_stub->database == nullptr) return nullptr;
    return kelaz::DatabaseImpl::of(m_stub->database).undo.partialFiler(m_stub);
}
