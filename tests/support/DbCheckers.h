#pragma once

// Helpers for database tests: append entities, open objects for the length of a scope, and file
// objects to bytes so that states can be compared exactly.
//   AcDbObjectId id = kelaz::test::Append(db, new AcDbLine(a, b));
//   kelaz::test::Opened<AcDbLine> line(id, AcDb::kForRead);   // closed at the end of the scope
//   EXPECT_EQ(kelaz::test::Filed(id), before);                // byte for byte

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/Entity.h"
#include "host/db/LayerTable.h"
#include "host/db/MemoryDwgFiler.h"
#include "host/db/OpenObject.h"

namespace kelaz::test {

// Appends the entity to model space and closes it; fails the test if that does not work.
inline AcDbObjectId Append(AcDbDatabase& db, AcDbEntity* entity) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* model = nullptr;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite), Acad::eOk);
    table->close();
    AcDbObjectId id;
    EXPECT_EQ(model->appendAcDbEntity(id, entity), Acad::eOk);
    model->close();
    entity->close();
    return id;
}

// Adds a layer with a colour and answers its id.
inline AcDbObjectId AddLayer(AcDbDatabase& db, const wchar_t* name, Adesk::UInt16 color) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord();
    EXPECT_EQ(layer->setName(name), Acad::eOk);
    AcCmColor c;
    c.setColorIndex(color);
    EXPECT_EQ(layer->setColor(c), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, layer), Acad::eOk);
    layer->close();
    table->close();
    return id;
}

// An object opened for the length of a scope.
template <class T>
class Opened {
public:
    Opened(AcDbObjectId id, AcDb::OpenMode mode) { status = acdbOpenObject(m_obj, id, mode); }
    ~Opened() {
        if (m_obj != nullptr) m_obj->close();
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    T* operator->() const { return m_obj; }
    T* get() const { return m_obj; }
    explicit operator bool() const { return m_obj != nullptr; }

    Acad::ErrorStatus status = Acad::eOk;

private:
    T* m_obj = nullptr;
};

// The object's fields as dwgOutFields writes them.
inline std::vector<std::uint8_t> Filed(const AcDbObject& obj) {
    MemoryDwgFiler filer(AcDb::kCopyFiler);
    EXPECT_EQ(obj.dwgOutFields(&filer), Acad::eOk);
    return filer.takeBytes();
}

inline std::vector<std::uint8_t> Filed(AcDbObjectId id) {
    Opened<AcDbObject> obj(id, AcDb::kForRead);
    EXPECT_EQ(obj.status, Acad::eOk) << "opening " << id.handle().value();
    return obj ? Filed(*obj.get()) : std::vector<std::uint8_t>();
}

// Every live entity of model space in drawing order.
inline AcDbObjectIdArray ModelSpaceIds(AcDbDatabase& db) {
    AcDbObjectIdArray ids;
    Opened<AcDbBlockTableRecord> model(db.currentSpaceId(), AcDb::kForRead);
    AcDbBlockTableRecordIterator* it = nullptr;
    model->newIterator(it);
    for (; !it->done(); it->step()) {
        AcDbObjectId id;
        it->getEntityId(id);
        ids.append(id);
    }
    delete it;
    return ids;
}

}  // namespace kelaz::test
