#include "host/db/Database.h"

#include "host/app/RxClass.h"
#include "host/db/BlockTable.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/DrawingFile.h"
#include "host/db/Entity.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/HostClasses.h"
#include "host/db/LayerTable.h"
#include "host/db/OpenObject.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) {
    kelaz::InitHostClasses();
    m_impl = std::make_unique<kelaz::DatabaseImpl>(this);
    if (buildDefaultDrawing) m_impl->buildDefaultDrawing();
}

AcDbDatabase::~AcDbDatabase() {
    if (acdbHostApplicationServices()->workingDatabase() == this) {
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
}

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode) {
    pTable = nullptr;
    if (m_impl->blockTable == nullptr) return Acad::eMissingSymbolTable;
    return acdbOpenObject(pTable, blockTableId(), mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode) {
    pTable = nullptr;
    if (m_impl->layerTable == nullptr) return Acad::eMissingSymbolTable;
    return acdbOpenObject(pTable, layerTableId(), mode);
}

AcDbObjectId AcDbDatabase::blockTableId() const { return AcDbObjectId(m_impl->blockTable); }
AcDbObjectId AcDbDatabase::layerTableId() const { return AcDbObjectId(m_impl->layerTable); }
AcDbObjectId AcDbDatabase::currentSpaceId() const { return AcDbObjectId(m_impl->modelSpace); }
AcDbObjectId AcDbDatabase::clayer() const { return AcDbObjectId(m_impl->clayer); }

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layerId) {
    AcDbStub* stub = layerId.stub();
    if (stub == nullptr) return Acad::eNullObjectId;
    if (stub->database != this || stub->object == nullptr ||
        !stub->object->isKindOf(AcDbLayerTableRecord::desc())) {
        return Acad::eWrongObjectType;
    }
    if (stub->erased) return Acad::eWasErased;
    m_impl->clayer = stub;
    m_impl->dbmod |= kelaz::kDbmodVariables;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& objId, AcDbObject* pObj) {
    objId.setNull();
    if (pObj == nullptr) return Acad::eNullObjectPointer;
    if (pObj->database() != nullptr) return Acad::eAlreadyInDb;
    if (pObj->isKindOf(AcDbEntity::desc())) return Acad::eIsAnEntity;
    AcDbStub* stub = m_impl->newStub();
    m_impl->adopt(stub, pObj, AcDbObjectId());
    m_impl->undo.onAppend(stub);
    m_impl->dbmod |= kelaz::kDbmodObjects;
    objId = AcDbObjectId(stub);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* pObj) {
    AcDbObjectId id;
    return addAcDbObject(id, pObj);
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound,
                                                const AcDbHandle& objHandle, Adesk::UInt32) {
    retId.setNull();
    if (objHandle.isNull()) return Acad::eNullHandle;
    AcDbStub* stub = m_impl->findStub(objHandle);
    if (stub == nullptr) {
        if (!createIfNotFound) return Acad::eUnknownHandle;
        stub = m_impl->newStub(objHandle);
    }
    retId = AcDbObjectId(stub);
    return Acad::eOk;
}

AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(m_impl->handseed); }

Acad::ErrorStatus AcDbDatabase::saveAs(const wchar_t* fileName) {
    CString report;
    const Acad::ErrorStatus es = kelaz::WriteDrawingFile(*this, fileName, report);
    m_impl->lastFileReport = report;
    if (es == Acad::eOk) {
        m_impl->fileName = fileName;
        m_impl->dbmod = 0;
    }
    return es;
}

Acad::ErrorStatus AcDbDatabase::readDwgFile(const wchar_t* fileName) {
    if (m_impl->anyOpen()) {
        m_impl->lastFileReport =
            kelaz::FormatText(L"不能把 %s 读入这张图形：图形中有对象正打开着。",
                              fileName != nullptr ? fileName : L"");
        return Acad::eWasOpenedForWrite;
    }
    CString report;
    std::unique_ptr<kelaz::DatabaseImpl> contents;
    const Acad::ErrorStatus es = kelaz::ReadDrawingFile(fileName, contents, report);
    m_impl->lastFileReport = report;
    if (es != Acad::eOk) return es;
    contents->db = this;
    m_impl->replaceContents(std::move(contents));
    m_impl->fileName = fileName;
    m_impl->dbmod = 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getFilename(const wchar_t*& pOutput) const {
    pOutput = m_impl->fileName.GetString();
    return Acad::eOk;
}

AcDbDwgFiler* AcDbDatabase::undoFiler() { return m_impl->undo.currentFiler(); }

bool AcDbDatabase::undoRecording() const { return m_impl->undo.isEnabled(); }

void AcDbDatabase::disableUndoRecording(bool disable) { m_impl->undo.setEnabled(!disable); }

kelaz::UndoLog& AcDbDatabase::undoLog() { return m_impl->undo; }

Adesk::Int16 acdbSetDbmod(AcDbDatabase* pDb, Adesk::Int16 newVal) {
    if (pDb == nullptr) return 0;
    const Adesk::Int16 old = pDb->impl()->dbmod;
    pDb->impl()->dbmod = newVal;
    return old;
}

namespace kelaz {

CString LastFileReport(const AcDbDatabase& db) { return db.impl()->lastFileReport; }

Adesk::Int16 DbmodOf(const AcDbDatabase& db) { return db.impl()->dbmod; }

void SetDrawingFileName(AcDbDatabase& db, const CString& path) { db.impl()->fileName = path; }

}  // namespace kelaz
