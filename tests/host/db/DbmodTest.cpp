#include <gtest/gtest.h>

#include <filesystem>

#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/UndoLog.h"
#include "host/ed/EditorInput.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/DbCheckers.h"

namespace {

namespace fs = std::filesystem;
using kelaz::DbmodOf;
using kelaz::test::Append;
using kelaz::test::Opened;

TEST(Dbmod, EveryChangeSetsItAndOnlySavingOrReadingClearsIt) {
    AcDbDatabase db;
    EXPECT_EQ(DbmodOf(db), 0) << "a new drawing has no changes";

    db.undoLog().beginGroup();
    const AcDbObjectId id =
        Append(db, new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 5));
    db.undoLog().endGroup();
    EXPECT_EQ(DbmodOf(db), kelaz::kDbmodObjects);

    const fs::path dir = fs::path(::testing::TempDir()) / "dbmod";
    fs::create_directories(dir);
    const CString file = kelaz::FromUtf8((dir / "d.kdw").string());
    ASSERT_EQ(db.saveAs(file), Acad::eOk);
    EXPECT_EQ(DbmodOf(db), 0);

    // Looking, even through a write open, is no change.
    { Opened<AcDbCircle> circle(id, AcDb::kForRead); }
    { Opened<AcDbCircle> circle(id, AcDb::kForWrite); }
    EXPECT_EQ(DbmodOf(db), 0);

    // Undoing back to the saved contents is a change all the same, as it is in the host.
    db.undoLog().undoGroups(1);
    EXPECT_EQ(DbmodOf(db), kelaz::kDbmodObjects);
    ASSERT_EQ(db.readDwgFile(file), Acad::eOk);
    EXPECT_EQ(DbmodOf(db), 0);

    const AcDbObjectIdArray ids = kelaz::test::ModelSpaceIds(db);
    ASSERT_EQ(ids.length(), 1);
    {
        Opened<AcDbCircle> circle(ids[0], AcDb::kForWrite);
        circle->setRadius(7);
    }
    EXPECT_EQ(DbmodOf(db), kelaz::kDbmodObjects);
    EXPECT_EQ(acdbSetDbmod(&db, 0), kelaz::kDbmodObjects);
    {
        Opened<AcDbCircle> circle(ids[0], AcDb::kForWrite);
        circle->erase();
    }
    EXPECT_EQ(DbmodOf(db), kelaz::kDbmodObjects);

    acdbSetDbmod(&db, 0);
    const AcDbObjectId layer = kelaz::test::AddLayer(db, L"管道", 3);
    EXPECT_EQ(DbmodOf(db), kelaz::kDbmodSymbolTables);
    ASSERT_EQ(db.setClayer(layer), Acad::eOk);
    EXPECT_EQ(DbmodOf(db), kelaz::kDbmodSymbolTables | kelaz::kDbmodVariables);
}

TEST(Dbmod, ReadThroughTheEditorAndNotSetThere) {
    kelaz::test::CommandLineHarness cl;
    resbuf rb;
    ASSERT_EQ(acedGetVar(L"DBMOD", &rb), RTNORM);
    EXPECT_EQ(rb.restype, RTSHORT);
    EXPECT_EQ(rb.resval.rint, 0);
    Append(cl.db, new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 1));
    ASSERT_EQ(acedGetVar(L"dbmod", &rb), RTNORM);
    EXPECT_EQ(rb.resval.rint, kelaz::kDbmodObjects);
    rb.restype = RTSHORT;
    rb.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"DBMOD", &rb), RTREJ);
    EXPECT_EQ(DbmodOf(cl.db), kelaz::kDbmodObjects);
}

}  // namespace
