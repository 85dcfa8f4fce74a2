#include "host/db/Selection.h"

#include <algorithm>

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/Entity.h"

namespace kelaz {

namespace {

PlanBox WindowBox(const AcGePoint3d& c1, const AcGePoint3d& c2) {
    return {std::min(c1.x, c2.x), std::min(c1.y, c2.y), std::max(c1.x, c2.x), std::max(c1.y, c2.y)};
}

// Boundaries count as inside, in both tests, for the index and the scan alike.
bool Inside(const PlanBox& b, const PlanBox& w) {
    return b.minX >= w.minX && b.maxX <= w.maxX && b.minY >= w.minY && b.maxY <= w.maxY;
}

bool Meets(const PlanBox& b, const PlanBox& w) {
    return b.minX <= w.maxX && b.maxX >= w.minX && b.minY <= w.maxY && b.maxY >= w.minY;
}

bool Passes(const AcDbStub* stub, const SelectionFilter& filter) {
    const AcDbObject* obj = stub->object;
    if (filter.cls != nullptr && !obj->isKindOf(filter.cls)) return false;
    if (filter.layers.empty()) return true;
    DatabaseImpl::ReadScope readable(const_cast<AcDbStub*>(stub));
    const CString layer = static_cast<const AcDbEntity*>(obj)->layer();
    return std::any_of(filter.layers.begin(), filter.layers.end(),
                       [&](const CString& name) { return layer.CompareNoCase(name) == 0; });
}

AcDbObjectIdArray InDrawingOrder(std::vector<AcDbStub*>& stubs) {
    std::sort(stubs.begin(), stubs.end(),
              [](const AcDbStub* a, const AcDbStub* b) { return a->drawOrder < b->drawOrder; });
    AcDbObjectIdArray ids(static_cast<int>(stubs.size()));
    for (AcDbStub* stub : stubs) ids.append(AcDbObjectId(stub));
    return ids;
}

AcDbObjectIdArray Select(AcDbDatabase* db, const PlanBox& window, bool crossing,
                         const SelectionFilter& filter) {
    if (db == nullptr) return {};
    std::vector<AcDbStub*> hits;
    const DatabaseImpl& impl = DatabaseImpl::of(db);
    if (crossing) {
        impl.index.queryIntersects(window, hits);
    } else {
        impl.index.queryCoveredBy(window, hits);
    }
    std::erase_if(hits, [&](AcDbStub* stub) {
        const bool geometric =
            crossing ? Meets(stub->indexedBox, window) : Inside(stub->indexedBox, window);
        return !geometric || stub->erased || !Passes(stub, filter);
    });
    return InDrawingOrder(hits);
}

AcDbObjectIdArray Scan(AcDbDatabase* db, const PlanBox& window, bool crossing,
                       const SelectionFilter& filter) {
    if (db == nullptr) return {};
    const DatabaseImpl& impl = DatabaseImpl::of(db);
    if (impl.modelSpace == nullptr || impl.modelSpace->object == nullptr) return {};
    std::vector<AcDbStub*> hits;
    const auto* model = static_cast<const AcDbBlockTableRecord*>(impl.modelSpace->object);
    for (AcDbStub* stub : model->entityStubs()) {
        if (stub->erased || stub->object == nullptr) continue;
        AcDbExtents extents;
        {
            DatabaseImpl::ReadScope readable(stub);
            if (static_cast<const AcDbEntity*>(stub->object)->getGeomExtents(extents) !=
                    Acad::eOk ||
                ExtentsIsEmpty(extents)) {
                continue;
            }
        }
        const PlanBox box{extents.minPoint().x, extents.minPoint().y, extents.maxPoint().x,
                          extents.maxPoint().y};
        if (!(crossing ? Meets(box, window) : Inside(box, window))) continue;
        if (Passes(stub, filter)) hits.push_back(stub);
    }
    return InDrawingOrder(hits);
}

}  // namespace

AcDbObjectIdArray SelectWindow(AcDbDatabase* db, const AcGePoint3d& corner1,
                               const AcGePoint3d& corner2, const SelectionFilter& filter) {
    return Select(db, WindowBox(corner1, corner2), false, filter);
}

AcDbObjectIdArray SelectCrossing(AcDbDatabase* db, const AcGePoint3d& corner1,
                                 const AcGePoint3d& corner2, const SelectionFilter& filter) {
    return Select(db, WindowBox(corner1, corner2), true, filter);
}

AcDbObjectIdArray ModelSpaceIds(AcDbDatabase* db) {
    AcDbObjectIdArray ids;
    AcDbBlockTable* table = nullptr;
    if (db == nullptr || db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return ids;
    AcDbBlockTableRecord* model = nullptr;
    const Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead);
    table->close();
    if (es != Acad::eOk) return ids;
    AcDbBlockTableRecordIterator* it = nullptr;
    if (model->newIterator(it) == Acad::eOk) {
        for (; !it->done(); it->step()) {
            AcDbObjectId id;
            if (it->getEntityId(id) == Acad::eOk) ids.append(id);
        }
        delete it;
    }
    model->close();
    return ids;
}

AcDbObjectIdArray ScanWindow(AcDbDatabase* db, const AcGePoint3d& corner1,
                             const AcGePoint3d& corner2, const SelectionFilter& filter) {
    return Scan(db, WindowBox(corner1, corner2), false, filter);
}

AcDbObjectIdArray ScanCrossing(AcDbDatabase* db, const AcGePoint3d& corner1,
                               const AcGePoint3d& corner2, const SelectionFilter& filter) {
    return Scan(db, WindowBox(corner1, corner2), true, filter);
}

}  // namespace kelaz
