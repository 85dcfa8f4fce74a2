#include "host/db/Entity.h"

#include "host/app/RxClass.h"
#include "host/db/Database.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/LayerTable.h"
#include "host/db/OpenObject.h"
#include "host/db/Stub.h"
#include "host/gi/GiCollector.h"
#include "host/gi/PrimitiveExtents.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject)

namespace {

// The database an entity's layer names are looked up in.
AcDbDatabase* LayerDatabase(const AcDbEntity& entity) {
    if (AcDbDatabase* db = entity.database()) return db;
    return acdbHostApplicationServices()->workingDatabase();
}

// The layer record's id and exact name; false when db has no such layer. Looked up in the
// database's structure directly, so that it works while the layer table is open.
bool FindLayer(AcDbDatabase* db, const wchar_t* name, AcDbObjectId& id, CString& exactName) {
    AcDbStub* stub = kelaz::DatabaseImpl::of(db).findLayer(name);
    if (stub == nullptr) return false;
    id = AcDbObjectId(stub);
    exactName = kelaz::DatabaseImpl::recordName(stub);
    return true;
}

}  // namespace

CString AcDbEntity::layer() const {
    assertReadEnabled();
    return m_layer;
}

AcDbObjectId AcDbEntity::layerId() const {
    assertReadEnabled();
    AcDbObjectId id;
    CString name;
    if (AcDbDatabase* db = LayerDatabase(*this)) FindLayer(db, m_layer, id, name);
    return id;
}

Acad::ErrorStatus AcDbEntity::setLayer(const wchar_t* newVal, bool, bool) {
    if (newVal == nullptr || *newVal == L'\0') return Acad::eInvalidInput;
    CString name = newVal;
    if (AcDbDatabase* db = LayerDatabase(*this)) {
        AcDbObjectId id;
        if (!FindLayer(db, newVal, id, name)) return Acad::eKeyNotFound;
    }
    assertWriteEnabled();
    m_layer = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId newVal, bool, bool) {
    AcDbLayerTableRecord* record = nullptr;
    const Acad::ErrorStatus es = acdbOpenObject(record, newVal, AcDb::kForRead);
    if (es != Acad::eOk) return es == Acad::eNotThatKindOfClass ? Acad::eWrongObjectType : es;
    CString name;
    record->getName(name);
    record->close();
    if (database() != nullptr && newVal.database() != database()) return Acad::eWrongDatabase;
    assertWriteEnabled();
    m_layer = name;
    return Acad::eOk;
}

Adesk::UInt16 AcDbEntity::colorIndex() const {
    assertReadEnabled();
    return m_color.colorIndex();
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 color, bool) {
    if (color > AcCmColor::kByLayer) return Acad::eOutOfRange;
    assertWriteEnabled();
    m_color.setColorIndex(color);
    return Acad::eOk;
}

AcCmColor AcDbEntity::color() const {
    assertReadEnabled();
    return m_color;
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool doSubents) {
    return setColorIndex(color.colorIndex(), doSubents);
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* pDb) {
    AcDbDatabase* db = pDb != nullptr ? pDb : LayerDatabase(*this);
    assertWriteEnabled();
    m_color.setByLayer();
    if (db == nullptr) return;
    if (AcDbStub* layer = kelaz::DatabaseImpl::of(db).clayer) {
        m_layer = kelaz::DatabaseImpl::recordName(layer);
    }
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    const AcDbExtents drawn = kelaz::PrimitiveListExtents(kelaz::DrawEntity(*this));
    if (kelaz::ExtentsIsEmpty(drawn)) return Acad::eInvalidExtents;
    extents = drawn;
    return Acad::eOk;
}

Adesk::Boolean AcDbEntity::worldDraw(AcGiWorldDraw*) {
    assertReadEnabled();
    return Adesk::kTrue;
}

void AcDbEntity::viewportDraw(AcGiViewportDraw*) { assertReadEnabled(); }

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::highlight() const {
    assertReadEnabled();
    if (AcDbStub* stub = objectId().stub()) stub->highlight = 1;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::unhighlight() const {
    assertReadEnabled();
    if (AcDbStub* stub = objectId().stub()) stub->highlight = 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::dwgInFields(AcDbDwgFiler* pFiler) {
    AcDbObject::dwgInFields(pFiler);
    CString layer;
    Adesk::UInt16 color = 0;
    pFiler->readString(layer);
    pFiler->readUInt16(&color);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    // Bad values come from damaged data, not from a program: refuse the record.
    if (layer.IsEmpty() || color > AcCmColor::kByLayer) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_layer = layer;
    m_color.setColorIndex(color);
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dwgOutFields(AcDbDwgFiler* pFiler) const {
    AcDbObject::dwgOutFields(pFiler);
    pFiler->writeString(m_layer);
    pFiler->writeUInt16(m_color.colorIndex());
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbObject::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    if (!pFiler->atSubclassData(L"AcDbEntity")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s",
                                L"AcDbEntity");
    }
    resbuf rb;
    while (!pFiler->atEOF() && pFiler->readItem(&rb) == Acad::eOk) {
        if (rb.restype == AcDb::kDxfLayerName) {
            if (rb.resval.rstring == nullptr || *rb.resval.rstring == L'\0') {
                return pFiler->setError(Acad::eInvalidDxfCode, L"Error: empty layer name");
            }
            m_layer = rb.resval.rstring;
        } else if (rb.restype == AcDb::kDxfColor) {
            if (rb.resval.rint < 0 || rb.resval.rint > AcCmColor::kByLayer) {
                return pFiler->setError(Acad::eInvalidDxfCode, L"Error: colour %d out of range",
                                        static_cast<int>(rb.resval.rint));
            }
            m_color.setColorIndex(static_cast<Adesk::UInt16>(rb.resval.rint));
        } else {
            pFiler->pushBackItem();
            break;
        }
    }
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* pFiler) const {
    AcDbObject::dxfOutFields(pFiler);
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbEntity");
    pFiler->writeItem(AcDb::kDxfLayerName, m_layer);
    pFiler->writeInt16(AcDb::kDxfColor, static_cast<Adesk::Int16>(m_color.colorIndex()));
    return pFiler->filerStatus();
}

namespace kelaz {

int HighlightLevel(AcDbObjectId id) { return id.stub() != nullptr ? id.stub()->highlight : 0; }

}  // namespace kelaz
