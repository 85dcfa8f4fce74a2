#include "host/db/SymbolTable.h"

#include "host/app/RxClass.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/OpenObject.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)

namespace {

// Characters the host does not allow in the name of a table record.
constexpr wchar_t kForbiddenNameChars[] = L"<>/\\\":;?*|,=`";

bool IsValidName(const wchar_t* name) {
    if (name == nullptr || *name == L'\0') return false;
    return CString(name).FindOneOf(kForbiddenNameChars) < 0;
}

}  // namespace

Acad::ErrorStatus AcDbSymbolTableRecord::getName(CString& name) const {
    assertReadEnabled();
    name = m_name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const wchar_t*& name) const {
    assertReadEnabled();
    name = m_name.GetString();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const wchar_t* name) {
    if (!IsValidName(name)) return Acad::eInvalidSymbolTableName;
    // A record in a table must keep its name unique there.
    AcDbSymbolTable* table = nullptr;
    if (ownerId().isValid()) table = AcDbSymbolTable::cast(ownerId().stub()->object);
    if (table != nullptr) {
        for (AcDbStub* other : table->recordStubs()) {
            if (other->object == this || other->erased || other->object == nullptr) continue;
            const auto* record = static_cast<const AcDbSymbolTableRecord*>(other->object);
            if (record->m_name.CompareNoCase(name) == 0) return Acad::eDuplicateRecordName;
        }
    }
    assertWriteEnabled();
    m_name = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
    if (AcDbObject::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    CString name;
    pFiler->readString(name);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!IsValidName(name)) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_name = name;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbObject::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeString(m_name);
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbObject::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    if (!pFiler->atSubclassData(L"AcDbSymbolTableRecord")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s",
                                L"AcDbSymbolTableRecord");
    }
    resbuf rb;
    if (pFiler->readItem(&rb) != Acad::eOk || rb.restype != AcDb::kDxfSymTableRecName ||
        !IsValidName(rb.resval.rstring)) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: expected a name under code %d",
                                static_cast<int>(AcDb::kDxfSymTableRecName));
    }
    m_name = rb.resval.rstring;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbObject::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbSymbolTableRecord");
    pFiler->writeItem(AcDb::kDxfSymTableRecName, m_name);
    return pFiler->filerStatus();
}

AcDbStub* AcDbSymbolTable::find(const wchar_t* name, bool includeErased) const {
    if (name == nullptr) return nullptr;
    for (AcDbStub* stub : m_records) {
        if (stub->object == nullptr || (stub->erased && !includeErased)) continue;
        const auto* record = static_cast<const AcDbSymbolTableRecord*>(stub->object);
        if (kelaz::ObjectAccess::name(record).CompareNoCase(name) == 0) return stub;
    }
    return nullptr;
}

bool AcDbSymbolTable::has(const wchar_t* name) const {
    assertReadEnabled();
    return find(name, false) != nullptr;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    assertReadEnabled();
    for (AcDbStub* stub : m_records) {
        if (stub == id.stub()) return !stub->erased;
    }
    return false;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const wchar_t* entryName, AcDbObjectId& recordId,
                                         bool getErasedRecord) const {
    assertReadEnabled();
    AcDbStub* stub = find(entryName, false);
    if (stub == nullptr && getErasedRecord) stub = find(entryName, true);
    if (stub == nullptr) return Acad::eKeyNotFound;
    recordId = AcDbObjectId(stub);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const wchar_t* entryName, AcDbSymbolTableRecord*& pRec,
                                         AcDb::OpenMode openMode, bool openErasedRec) const {
    pRec = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getAt(entryName, id, openErasedRec);
    if (es != Acad::eOk) return es;
    return acdbOpenObject(pRec, id, openMode, openErasedRec);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* pRecord) {
    AcDbObjectId id;
    return add(id, pRecord);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& recordId, AcDbSymbolTableRecord* pRecord) {
    if (database() == nullptr) return Acad::eNoDatabase;
    return kelaz::DatabaseImpl::of(database()).addRecord(this, recordId, pRecord);
}

bool AcDbSymbolTable::acceptsRecord(const AcDbSymbolTableRecord*) const { return true; }

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& pIterator,
                                               bool atBeginning, bool skipDeleted) const {
    assertReadEnabled();
    pIterator = new AcDbSymbolTableIterator(objectId(), skipDeleted);
    pIterator->start(atBeginning, skipDeleted);
    return Acad::eOk;
}

const std::vector<AcDbStub*>* AcDbSymbolTableIterator::records() const {
    if (!m_table.isValid()) return nullptr;
    return &static_cast<AcDbSymbolTable*>(m_table.stub()->object)->recordStubs();
}

void AcDbSymbolTableIterator::skip(bool forward) {
    const std::vector<AcDbStub*>* list = records();
    if (list == nullptr) return;
    const auto size = static_cast<long long>(list->size());
    while (m_index >= 0 && m_index < size && m_skipDeleted &&
           (*list)[static_cast<std::size_t>(m_index)]->erased) {
        m_index += forward ? 1 : -1;
    }
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    m_skipDeleted = skipDeleted;
    const std::vector<AcDbStub*>* list = records();
    m_index = atBeginning || list == nullptr ? 0 : static_cast<long long>(list->size()) - 1;
    skip(atBeginning);
}

bool AcDbSymbolTableIterator::done() const {
    const std::vector<AcDbStub*>* list = records();
    return list == nullptr || m_index < 0 || m_index >= static_cast<long long>(list->size());
}

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
    m_skipDeleted = skipDeleted;
    m_index += forward ? 1 : -1;
    skip(forward);
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eIteratorDone;
    id = AcDbObjectId((*records())[static_cast<std::size_t>(m_index)]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& pRecord,
                                                     AcDb::OpenMode openMode,
                                                     bool openErasedRec) const {
    pRecord = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getRecordId(id);
    if (es != Acad::eOk) return es;
    return acdbOpenObject(pRecord, id, openMode, openErasedRec);
}
