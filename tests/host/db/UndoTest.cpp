#include <gtest/gtest.h>

#include <vector>

#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/DwgFiler.h"
#include "host/db/Line.h"
#include "host/db/UndoLog.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/WorldDraw.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

// An entity that records its own undo when moved: the class descriptor, a code and where it
// was. It notes every partial undo it is asked to apply.
class Mover : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(Mover);
    static constexpr Adesk::Int16 kMoveCode = 555;

    AcGePoint3d at;
    // Transient, like a display cache: not filed.
    std::vector<Adesk::Int16> undone;
    // When set, the record claims to be another class's, which Mover must not apply.
    bool foreignRecord = false;

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override {
        assertWriteEnabled(false, true);
        if (AcDbDwgFiler* filer = undoFiler()) {
            filer->writeAddress(foreignRecord ? AcDbLine::desc() : Mover::desc());
            filer->writeInt16(kMoveCode);
            filer->writePoint3d(at);
        }
        at.transformBy(xform);
        return Acad::eOk;
    }
    Acad::ErrorStatus applyPartialUndo(AcDbDwgFiler* filer, AcRxClass* cls) override {
        if (cls != Mover::desc()) return AcDbEntity::applyPartialUndo(filer, cls);
        Adesk::Int16 code = 0;
        filer->readInt16(&code);
        undone.push_back(code);
        if (code != kMoveCode) return AcDbEntity::applyPartialUndo(filer, cls);
        AcGePoint3d was;
        filer->readPoint3d(&was);
        assertWriteEnabled(false, false);
        at = was;
        return filer->filerStatus();
    }
    // Changes the point behind the undo machinery's back, as careless code might.
    void sneakTo(const AcGePoint3d& p) { at = p; }

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        AcDbEntity::dwgOutFields(filer);
        filer->writePoint3d(at);
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        AcDbEntity::dwgInFields(filer);
        filer->readPoint3d(&at);
        return filer->filerStatus();
    }
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override {
        mode->geometry().circle(at, 1, AcGeVector3d::kZAxis);
        return Adesk::kTrue;
    }
};

}  // namespace

ACRX_DXF_DEFINE_MEMBERS(Mover, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, MOVER,
                        KelazTest)

namespace {

using kelaz::test::Append;
using kelaz::test::Filed;
using kelaz::test::Opened;

TEST(Undo, AGroupComesBackByteForByte) {
    AcDbDatabase db;
    kelaz::UndoLog& log = db.undoLog();
    kelaz::test::AddLayer(db, L"PIPE", 2);
    const AcDbObjectId kept = Append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(5, 0, 0)));
    const AcDbObjectId gone =
        Append(db, new AcDbCircle(AcGePoint3d(9, 9, 0), AcGeVector3d::kZAxis, 1));
    EXPECT_FALSE(log.canUndo()) << "nothing is recorded outside a group";
    const auto keptBefore = Filed(kept);
    const auto goneBefore = Filed(gone);

    log.beginGroup();
    {
        Opened<AcDbLine> line(kept, AcDb::kForWrite);
        line->setStartPoint(AcGePoint3d(1, 1, 1));
        line->setLayer(L"PIPE");
    }
    {
        Opened<AcDbLine> line(kept, AcDb::kForWrite);  // a second open in the same group
        line->setColorIndex(6);
        line->setEndPoint(AcGePoint3d(7, 7, 7));
    }
    {
        Opened<AcDbCircle> circle(gone, AcDb::kForWrite);
        circle->setRadius(4);
        circle->erase();
    }
    const AcDbObjectId added = Append(db, new AcDbLine());
    const AcDbObjectId layer = kelaz::test::AddLayer(db, L"NEW", 5);
    log.endGroup();

    EXPECT_NE(Filed(kept), keptBefore);
    EXPECT_TRUE(gone.isErased());
    EXPECT_TRUE(log.canUndo());
    EXPECT_EQ(log.numSteps(), 1);
    int steps = 0;
    ASSERT_EQ(log.undoGroups(1, &steps), Acad::eOk);
    EXPECT_EQ(steps, 1);
    EXPECT_EQ(Filed(kept), keptBefore);
    EXPECT_FALSE(gone.isErased());
    EXPECT_EQ(Filed(gone), goneBefore);
    EXPECT_TRUE(added.isErased()) << "appended objects are erased by undo";
    EXPECT_TRUE(added.isValid());
    EXPECT_TRUE(layer.isErased());
    {
        Opened<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForRead);
        EXPECT_FALSE(layers->has(L"NEW"));
    }
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db), (AcDbObjectIdArray{kept, gone}));
    EXPECT_FALSE(log.canUndo());
    EXPECT_EQ(log.undoGroups(1, &steps), Acad::eNothingToUndo);
    EXPECT_EQ(steps, 0);
}

TEST(Undo, NestedGroupsAreOneStepAndMarksBoundUndoBack) {
    AcDbDatabase db;
    kelaz::UndoLog& log = db.undoLog();
    const AcDbObjectId id = Append(db, new AcDbLine());
    auto step = [&](double x) {
        log.beginGroup();
        log.beginGroup();  // a command inside a command
        Opened<AcDbLine> line(id, AcDb::kForWrite);
        line->setEndPoint(AcGePoint3d(x, 0, 0));
        log.endGroup();
        EXPECT_EQ(log.groupDepth(), 1);
        log.endGroup();
    };
    auto endX = [&] {
        Opened<AcDbLine> line(id, AcDb::kForRead);
        return line->endPoint().x;
    };
    step(1);
    log.addMark();
    step(2);
    step(3);
    EXPECT_EQ(log.numSteps(), 4);
    bool markFound = false;
    ASSERT_EQ(log.undoToMark(&markFound), Acad::eOk);
    EXPECT_TRUE(markFound);
    EXPECT_EQ(endX(), 1.0) << "back to the mark, the mark taken away";
    EXPECT_EQ(log.numSteps(), 1);

    // A mark inside a running command splits it: the part after the mark goes back alone.
    log.beginGroup();
    {
        Opened<AcDbLine> line(id, AcDb::kForWrite);
        line->setEndPoint(AcGePoint3d(4, 0, 0));
    }
    log.addMark();
    {
        Opened<AcDbLine> line(id, AcDb::kForWrite);
        line->setEndPoint(AcGePoint3d(5, 0, 0));
    }
    // Two single steps from inside the command: the part after the mark, then the mark.
    int steps = 0;
    ASSERT_EQ(log.undoGroups(1, &steps), Acad::eOk);
    EXPECT_EQ(endX(), 4.0);
    ASSERT_EQ(log.undoGroups(1, &steps), Acad::eOk);
    EXPECT_EQ(endX(), 4.0) << "taking away a mark changes nothing";
    {
        Opened<AcDbLine> line(id, AcDb::kForWrite);  // the command goes on recording
        line->setEndPoint(AcGePoint3d(6, 0, 0));
    }
    log.endGroup();
    ASSERT_EQ(log.undoGroups(2, &steps), Acad::eOk);
    EXPECT_EQ(steps, 2);
    EXPECT_EQ(endX(), 1.0);
    // With no mark left, undo back goes to the beginning.
    ASSERT_EQ(log.undoToMark(&markFound), Acad::eOk);
    EXPECT_FALSE(markFound);
    EXPECT_EQ(endX(), 0.0);

    // An empty command still counts as a step.
    log.beginGroup();
    log.endGroup();
    EXPECT_EQ(log.numSteps(), 1);
}

TEST(Undo, PartialRecordsReachTheObjectAfterItsClass) {
    AcDbDatabase db;
    kelaz::UndoLog& log = db.undoLog();
    auto* mover = new Mover();
    mover->at = AcGePoint3d(1, 2, 3);
    const AcDbObjectId id = Append(db, mover);
    const auto before = Filed(id);

    {
        Opened<Mover> m(id, AcDb::kForWrite);
        EXPECT_EQ(m->undoFiler(), nullptr) << "no group, no undo filer";
        EXPECT_EQ(db.undoFiler(), nullptr);
    }
    log.beginGroup();
    {
        Opened<Mover> m(id, AcDb::kForWrite);
        m->transformBy(AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0)));
        EXPECT_EQ(db.undoFiler(), m->undoFiler()) << "the database's filer is the record's";
        m->transformBy(AcGeMatrix3d::translation(AcGeVector3d(0, 10, 0)));
    }
    log.endGroup();
    {
        Opened<Mover> m(id, AcDb::kForRead);
        EXPECT_EQ(m->at, AcGePoint3d(11, 12, 3));
    }
    ASSERT_EQ(log.undoGroups(1), Acad::eOk);
    Opened<Mover> m(id, AcDb::kForRead);
    // Each record was applied, the last first, each read from just after the class descriptor.
    EXPECT_EQ(m->undone, (std::vector<Adesk::Int16>{Mover::kMoveCode, Mover::kMoveCode}));
    EXPECT_EQ(m->at, AcGePoint3d(1, 2, 3));
    EXPECT_EQ(Filed(*m.get()), before) << "no full image was kept: the partial records did it";
}

TEST(Undo, RecordsNobodyKnowsAreSkippedAndCarelessChangesStillUndone) {
    AcDbDatabase db;
    kelaz::UndoLog& log = db.undoLog();
    auto* mover = new Mover();
    const AcDbObjectId id = Append(db, mover);
    const auto before = Filed(id);

    log.beginGroup();
    {
        Opened<Mover> m(id, AcDb::kForWrite);
        m->foreignRecord = true;
        m->transformBy(AcGeMatrix3d::translation(AcGeVector3d(3, 0, 0)));
        m->foreignRecord = false;
    }
    {
        // Changed without assertWriteEnabled: the image taken at the open restores it.
        Opened<Mover> m(id, AcDb::kForWrite);
        m->sneakTo(AcGePoint3d(-5, -5, -5));
    }
    log.endGroup();
    ASSERT_EQ(log.undoGroups(1), Acad::eOk);
    Opened<Mover> m(id, AcDb::kForRead);
    EXPECT_TRUE(m->undone.empty()) << "a record of another class is not Mover's to apply";
    // The careless change is undone; the foreign-record move is not (nobody could undo it).
    EXPECT_EQ(m->at, AcGePoint3d(3, 0, 0));
    EXPECT_NE(Filed(*m.get()), before);
}

TEST(Undo, RefusedWhileObjectsAreOpenAndSilentWhenDisabled) {
    AcDbDatabase db;
    kelaz::UndoLog& log = db.undoLog();
    const AcDbObjectId id = Append(db, new AcDbLine());
    log.beginGroup();
    Opened<AcDbLine>(id, AcDb::kForWrite)->setEndPoint(AcGePoint3d(1, 0, 0));
    log.endGroup();
    {
        Opened<AcDbLine> open(id, AcDb::kForWrite);
        EXPECT_EQ(log.undoGroups(1), Acad::eWasOpenedForWrite);
    }
    {
        Opened<AcDbLine> open(id, AcDb::kForRead);
        EXPECT_EQ(log.undoGroups(1), Acad::eWasOpenedForRead);
        EXPECT_EQ(open->endPoint(), AcGePoint3d(1, 0, 0)) << "nothing was undone";
    }
    ASSERT_EQ(log.undoGroups(1), Acad::eOk);
    EXPECT_EQ(Opened<AcDbLine>(id, AcDb::kForRead)->endPoint(), AcGePoint3d::kOrigin);

    db.disableUndoRecording(true);
    EXPECT_FALSE(db.undoRecording());
    log.beginGroup();
    Opened<AcDbLine>(id, AcDb::kForWrite)->setEndPoint(AcGePoint3d(2, 0, 0));
    log.endGroup();
    db.disableUndoRecording(false);
    ASSERT_EQ(log.undoGroups(1), Acad::eOk) << "the empty group of the unrecorded change";
    EXPECT_EQ(Opened<AcDbLine>(id, AcDb::kForRead)->endPoint(), AcGePoint3d(2, 0, 0));
}

}  // namespace
