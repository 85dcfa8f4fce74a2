#include <gtest/gtest.h>

#include "host/db/AdsDef.h"
#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/Line.h"
#include "host/db/OpenObject.h"
#include "tests/support/DbCheckers.h"

namespace {

using kelaz::test::Append;

TEST(OpenClose, ReadersShareAndAWriterIsAlone) {
    AcDbDatabase db;
    const AcDbObjectId id = Append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));

    AcDbObject* r1 = nullptr;
    AcDbObject* r2 = nullptr;
    AcDbObject* w = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(r1, id, AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenAcDbObject(r2, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(r1, r2);
    EXPECT_TRUE(r1->isReadEnabled());
    EXPECT_FALSE(r1->isWriteEnabled());
    EXPECT_EQ(acdbOpenAcDbObject(w, id, AcDb::kForWrite), Acad::eWasOpenedForRead);
    EXPECT_EQ(w, nullptr);
    EXPECT_EQ(r1->upgradeOpen(), Acad::eHadMultipleReaders);
    r2->close();
    // The sole reader may become the writer; then nobody else gets in.
    ASSERT_EQ(r1->upgradeOpen(), Acad::eOk);
    EXPECT_TRUE(r1->isWriteEnabled());
    EXPECT_EQ(acdbOpenAcDbObject(w, id, AcDb::kForWrite), Acad::eWasOpenedForWrite);
    EXPECT_EQ(acdbOpenAcDbObject(r2, id, AcDb::kForRead), Acad::eWasOpenedForWrite);
    // Notification does not count as reading or writing.
    AcDbObject* n = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(n, id, AcDb::kForNotify), Acad::eOk);
    EXPECT_TRUE(n->isNotifyEnabled());
    EXPECT_EQ(r1->downgradeOpen(), Acad::eOk);
    EXPECT_FALSE(r1->isWriteEnabled());
    EXPECT_TRUE(r1->isReadEnabled());
    r1->close();
    EXPECT_FALSE(r1->isReadEnabled()) << "closed: neither readable nor writable";
    n->close();
    EXPECT_FALSE(n->isNotifyEnabled());
    // After all closes the object opens for write again.
    ASSERT_EQ(acdbOpenAcDbObject(w, id, AcDb::kForWrite), Acad::eOk);
    w->close();
}

TEST(OpenClose, AppendedObjectsStayOpenForWriteUntilClosed) {
    AcDbDatabase db;
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(2, 0, 0));
    EXPECT_TRUE(line->isWriteEnabled()) << "an object in no database belongs to its maker";
    EXPECT_TRUE(line->objectId().isNull());
    EXPECT_EQ(line->close(), Acad::eNotInDatabase);

    kelaz::test::Opened<AcDbBlockTableRecord> model(db.currentSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    ASSERT_EQ(model->appendAcDbEntity(id, line), Acad::eOk);
    EXPECT_EQ(line->objectId(), id);
    EXPECT_EQ(line->database(), &db);
    EXPECT_EQ(line->ownerId(), db.currentSpaceId());
    EXPECT_TRUE(line->isNewObject());
    EXPECT_TRUE(line->isWriteEnabled());
    EXPECT_EQ(model->appendAcDbEntity(line), Acad::eAlreadyInDb);
    AcDbObject* other = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForRead), Acad::eWasOpenedForWrite);
    line->close();
    EXPECT_FALSE(line->isNewObject());
    ASSERT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(other, line);
    other->close();
}

TEST(OpenClose, ErasedObjectsOpenOnlyWhenAskedAndComeBack) {
    AcDbDatabase db;
    const AcDbObjectId id =
        Append(db, new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2));
    AcDbObject* obj = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(obj, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(obj->erase(), Acad::eNotOpenForWrite);
    obj->close();

    ASSERT_EQ(acdbOpenAcDbObject(obj, id, AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(obj->erase(), Acad::eOk);
    EXPECT_EQ(obj->erase(), Acad::eWasErased);
    obj->close();
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(id.isValid()) << "erased objects keep their ids";
    EXPECT_EQ(acdbOpenAcDbObject(obj, id, AcDb::kForRead), Acad::eWasErased);
    EXPECT_EQ(obj, nullptr);
    EXPECT_TRUE(kelaz::test::ModelSpaceIds(db).isEmpty()) << "iteration skips erased entities";

    ASSERT_EQ(acdbOpenAcDbObject(obj, id, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_TRUE(obj->isErased());
    ASSERT_EQ(obj->erase(false), Acad::eOk);
    EXPECT_EQ(obj->erase(false), Acad::eWasNotErased);
    obj->close();
    EXPECT_FALSE(id.isErased());
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 1);
}

TEST(OpenClose, OpeningByClassRefusesOtherClasses) {
    AcDbDatabase db;
    const AcDbObjectId lineId = Append(db, new AcDbLine());
    AcDbCircle* circle = nullptr;
    EXPECT_EQ(acdbOpenObject(circle, lineId, AcDb::kForWrite), Acad::eNotThatKindOfClass);
    EXPECT_EQ(circle, nullptr);
    // The refused open left nothing open behind it.
    AcDbCurve* curve = nullptr;
    ASSERT_EQ(acdbOpenObject(curve, lineId, AcDb::kForWrite), Acad::eOk);
    curve->close();

    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenAcDbEntity(entity, db.layerTableId(), AcDb::kForRead), Acad::eNotAnEntity);
    EXPECT_EQ(acdbOpenAcDbEntity(entity, AcDbObjectId::kNull, AcDb::kForRead), Acad::eNullObjectId);
    ASSERT_EQ(acdbOpenAcDbEntity(entity, lineId, AcDb::kForRead), Acad::eOk);
    entity->close();
}

TEST(OpenClose, EntityNamesAndTheLastEntityOfTheWorkingDatabase) {
    ads_name name;
    {
        AcDbDatabase db;
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        EXPECT_EQ(acdbEntLast(name), RTERROR) << "an empty drawing has no last entity";
        const AcDbObjectId first = Append(db, new AcDbLine());
        const AcDbObjectId second = Append(db, new AcDbCircle());
        ASSERT_EQ(acdbEntLast(name), RTNORM);
        AcDbObjectId id;
        ASSERT_EQ(acdbGetObjectId(id, name), Acad::eOk);
        EXPECT_EQ(id, second);
        {
            kelaz::test::Opened<AcDbCircle> circle(second, AcDb::kForWrite);
            circle->erase();
        }
        ASSERT_EQ(acdbEntLast(name), RTNORM);
        ASSERT_EQ(acdbGetObjectId(id, name), Acad::eOk);
        EXPECT_EQ(id, first) << "erased entities are not the last one";

        ads_name again;
        ASSERT_EQ(acdbGetAdsName(again, first), Acad::eOk);
        EXPECT_EQ(again[0], name[0]);
        EXPECT_EQ(acdbGetAdsName(again, AcDbObjectId::kNull), Acad::eNullObjectId);
    }
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr)
        << "a destroyed database stops being the working one";
    EXPECT_EQ(acdbEntLast(name), RTERROR);
}

TEST(Database, TablesLayersAndHandles) {
    AcDbDatabase db;
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db.getLayerTable(layers, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(layers->has(L"0"));
    EXPECT_FALSE(layers->has(L"PIPE"));
    layers->close();

    const AcDbObjectId pipe = kelaz::test::AddLayer(db, L"Pipe", 3);
    ASSERT_EQ(db.getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    EXPECT_TRUE(layers->has(L"PIPE")) << "layer names compare without case";
    auto* twin = new AcDbLayerTableRecord();
    twin->setName(L"pipe");
    EXPECT_EQ(layers->add(twin), Acad::eDuplicateRecordName);
    EXPECT_EQ(twin->setName(L"bad|name"), Acad::eInvalidSymbolTableName);
    delete twin;
    AcDbBlockTableRecord block;
    EXPECT_EQ(layers->add(&block), Acad::eWrongObjectType);
    AcDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(layers->getAt(L"PIPE", record, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(record->objectId(), pipe);
    EXPECT_EQ(record->color().colorIndex(), 3);
    record->close();
    layers->close();

    // Entities take layers the database has, by their exact name.
    auto* line = new AcDbLine();
    EXPECT_EQ(line->layer(), L"0");
    const AcDbObjectId lineId = Append(db, line);
    {
        kelaz::test::Opened<AcDbLine> open(lineId, AcDb::kForWrite);
        EXPECT_EQ(open->setLayer(L"pIPe"), Acad::eOk);
        EXPECT_EQ(open->layer(), L"Pipe");
        EXPECT_EQ(open->layerId(), pipe);
        EXPECT_EQ(open->setLayer(L"missing"), Acad::eKeyNotFound);
        EXPECT_EQ(open->layer(), L"Pipe");
        EXPECT_EQ(open->setColorIndex(257), Acad::eOutOfRange);
        EXPECT_EQ(open->setColorIndex(1), Acad::eOk);
    }
    auto* stray = new AcDbLine();
    EXPECT_EQ(stray->setLayer(L"NOWHERE"), Acad::eOk) << "no database to check against";
    {
        kelaz::test::Opened<AcDbBlockTableRecord> model(db.currentSpaceId(), AcDb::kForWrite);
        EXPECT_EQ(model->appendAcDbEntity(stray), Acad::eKeyNotFound);
    }
    delete stray;

    // Handles are unique, rise, and find their objects again.
    const AcDbHandle h = lineId.handle();
    EXPECT_FALSE(h.isNull());
    EXPECT_GT(db.handseed(), h);
    EXPECT_GT(h, pipe.handle());
    AcDbObjectId found;
    ASSERT_EQ(db.getAcDbObjectId(found, false, h), Acad::eOk);
    EXPECT_EQ(found, lineId);
    EXPECT_EQ(db.getAcDbObjectId(found, false, db.handseed()), Acad::eUnknownHandle);
    EXPECT_EQ(AcDbHandle(L"1f").value(), 0x1Fu);
    EXPECT_EQ(AcDbHandle(0x2AB).text(), L"2AB");
    EXPECT_TRUE(AcDbHandle(L"xyz").isNull());

    // The structure of the drawing cannot be erased.
    kelaz::test::Opened<AcDbObject> model(db.currentSpaceId(), AcDb::kForWrite);
    EXPECT_EQ(model->erase(), Acad::eCannotBeErasedByCaller);
}

TEST(Database, HighlightIsAStateNotACount) {
    AcDbDatabase db;
    const AcDbObjectId id = Append(db, new AcDbLine());
    EXPECT_EQ(kelaz::HighlightLevel(id), 0);
    {
        kelaz::test::Opened<AcDbEntity> e(id, AcDb::kForRead);
        e->highlight();
        e->highlight();
    }
    EXPECT_EQ(kelaz::HighlightLevel(id), 1);
    const auto before = kelaz::test::Filed(id);
    {
        kelaz::test::Opened<AcDbEntity> e(id, AcDb::kForRead);
        e->unhighlight();
    }
    EXPECT_EQ(kelaz::HighlightLevel(id), 0);
    EXPECT_EQ(kelaz::test::Filed(id), before) << "highlighting is not filed";
    EXPECT_EQ(kelaz::HighlightLevel(AcDbObjectId::kNull), 0);
}

}  // namespace
