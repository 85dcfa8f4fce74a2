#include <gtest/gtest.h>

#include <cmath>
#include <variant>

#include "host/db/MemoryDwgFiler.h"
#include "host/db/MemoryDxfFiler.h"
#include "host/db/UndoLog.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/GiCollector.h"
#include "module/multipipe/MultiLine.h"
#include "tests/support/DbCheckers.h"

namespace {

MultiLineSegmentArray TwoSegments() {
    MultiLineSegment straight{AcGePoint3d(0, 0, 3000), AcGePoint3d(500, 0, 3000),
                              AcGePoint3d(1000, 0, 3000)};
    MultiLineSegment arc{AcGePoint3d(1000, 0, 0),
                         AcGePoint3d(1500, 500, 0),
                         AcGePoint3d(1000, 1000, 0),
                         0.5,
                         0.25,
                         0.0};
    return {straight, arc};
}

// Counts the transforms an entity receives, so that an undo of a transform can be seen.
class SpyMultiLine : public CMultiLine {
public:
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override {
        received.push_back(xform);
        return CMultiLine::transformBy(xform);
    }
    static std::vector<AcGeMatrix3d> received;
};
std::vector<AcGeMatrix3d> SpyMultiLine::received;

}  // namespace

TEST(MultiLine, DrawsEachSegmentAsAFlatThreeVertexPolyline) {
    CMultiLine empty;
    kelaz::GiCollector none;
    EXPECT_TRUE(empty.worldDraw(&none.worldDraw()));
    EXPECT_TRUE(none.primitives().empty());

    CMultiLine line;
    line.SetSegments(TwoSegments());
    const kelaz::GiPrimitiveList drawn = kelaz::DrawEntity(line);
    ASSERT_EQ(drawn.size(), 2u);
    const auto& first = std::get<kelaz::GiPolyline>(drawn[0].shape);
    ASSERT_EQ(first.points.size(), 3u);
    // Vertices run pt2, pt1, pt0 and drop to elevation 0.
    EXPECT_EQ(first.points[0], AcGePoint3d(1000, 0, 0));
    EXPECT_EQ(first.points[2], AcGePoint3d(0, 0, 0));
    const auto& second = std::get<kelaz::GiPolyline>(drawn[1].shape);
    EXPECT_EQ(second.points[0], AcGePoint3d(1000, 1000, 0));
    EXPECT_EQ(second.bulges, (std::vector<double>{0.5, 0.25, 0.0}));

    // A new set replaces the old one entirely; an empty set empties it.
    line.SetSegments(MultiLineSegmentArray{TwoSegments()[0]});
    EXPECT_EQ(line.GetSegments().length(), 1);
    line.SetSegments({});
    EXPECT_TRUE(kelaz::DrawEntity(line).empty());
}

TEST(MultiLine, FilesVersionAndFlagButNotItsSegments) {
    CMultiLine source;
    source.SetFlag(Adesk::kTrue);
    source.SetSegments(TwoSegments());
    kelaz::MemoryDwgFiler out;
    ASSERT_EQ(source.dwgOutFields(&out), Acad::eOk);

    // Written: what an entity without segments writes (its entity fields, version and flag),
    // then three points per segment.
    CMultiLine bare;
    kelaz::MemoryDwgFiler baseOnly;
    ASSERT_EQ(bare.dwgOutFields(&baseOnly), Acad::eOk);
    kelaz::MemoryDwgFiler in(out.bytes(), AcDb::kFileFiler);
    CMultiLine fresh;
    ASSERT_EQ(fresh.dwgInFields(&in), Acad::eOk);
    EXPECT_EQ(fresh.GetFlag(), Adesk::kTrue);
    EXPECT_TRUE(fresh.GetSegments().isEmpty());
    // The fresh entity had no segments, so only version and flag were consumed: six points wait.
    const size_t afterFlag = in.tell();
    int pointsLeft = 0;
    AcGePoint3d p;
    while (in.readPoint3d(&p) == Acad::eOk) ++pointsLeft;
    EXPECT_EQ(pointsLeft, 6);
    EXPECT_EQ(afterFlag, baseOnly.bytes().size());

    // A reader that holds segments reads as many points again and drops them.
    kelaz::MemoryDwgFiler again(out.bytes(), AcDb::kFileFiler);
    CMultiLine holder;
    holder.SetSegments(TwoSegments());
    ASSERT_EQ(holder.dwgInFields(&again), Acad::eOk);
    EXPECT_TRUE(again.atEnd());
    EXPECT_EQ(holder.GetSegments(), TwoSegments());

    // A newer version is refused.
    kelaz::MemoryDwgFiler newer;
    bare.AcDbEntity::dwgOutFields(&newer);
    newer.writeUInt16(2);
    newer.writeBoolean(Adesk::kTrue);
    kelaz::MemoryDwgFiler newerIn(newer.bytes(), AcDb::kFileFiler);
    EXPECT_EQ(fresh.dwgInFields(&newerIn), Acad::eMakeMeProxy);
}

TEST(MultiLine, DxfCarriesTheMarkerAndVersionOnly) {
    CMultiLine source;
    source.SetSegments(TwoSegments());
    kelaz::MemoryDxfFiler out;
    ASSERT_EQ(source.dxfOutFields(&out), Acad::eOk);
    ASSERT_GE(out.items().size(), 2u);
    EXPECT_EQ(out.items()[out.items().size() - 2].code, 100);
    EXPECT_EQ(out.items()[out.items().size() - 2].text, L"CMultiLine");
    EXPECT_EQ(out.items().back().code, 70);
    EXPECT_EQ(out.items().back().integer, 1);
    out.rewindFiler();
    CMultiLine fresh;
    EXPECT_EQ(fresh.dxfInFields(&out), Acad::eOk);

    // 71 where the version belongs: the item is pushed back and the filer says what it wanted.
    CMultiLine bare;
    kelaz::MemoryDxfFiler wrong;
    bare.AcDbEntity::dxfOutFields(&wrong);
    wrong.writeItem(AcDb::kDxfSubclass, L"CMultiLine");
    wrong.writeInt16(static_cast<AcDb::DxfCode>(71), 1);
    wrong.rewindFiler();
    EXPECT_EQ(fresh.dxfInFields(&wrong), Acad::eInvalidDxfCode);
    EXPECT_EQ(CString(wrong.errorMessage()), L"Error: expected object version group code 70");
    resbuf next;
    wrong.resetFilerStatus();
    ASSERT_EQ(wrong.readItem(&next), Acad::eOk);
    // The 71 item was given back for whoever reads next.
    EXPECT_EQ(next.restype, 71);

    kelaz::MemoryDxfFiler newer;
    bare.AcDbEntity::dxfOutFields(&newer);
    newer.writeItem(AcDb::kDxfSubclass, L"CMultiLine");
    newer.writeInt16(AcDb::kDxfInt16, 2);
    newer.rewindFiler();
    EXPECT_EQ(fresh.dxfInFields(&newer), Acad::eMakeMeProxy);
}

TEST(MultiLine, TransformRecordsPartialUndoAndUndoAppliesTheInverse) {
    EXPECT_EQ(CMultiLine::desc(), CMultiLine::desc());
    EXPECT_EQ(CString(CMultiLine::desc()->name()), L"CMultiLine");

    AcDbDatabase db;
    auto* spy = new SpyMultiLine;
    spy->SetSegments(TwoSegments());
    const AcDbObjectId id = kelaz::test::Append(db, spy);

    const AcGeMatrix3d move = AcGeMatrix3d::translation(AcGeVector3d(100, 200, 0));
    SpyMultiLine::received.clear();
    db.undoLog().beginGroup();
    {
        kelaz::test::Opened<CMultiLine> line(id, AcDb::kForWrite);
        ASSERT_EQ(line->transformBy(move), Acad::eOk);
        EXPECT_EQ(line->GetSegments(), TwoSegments()) << "a transform moves no point";
    }
    db.undoLog().endGroup();
    ASSERT_EQ(SpyMultiLine::received.size(), 1u);

    ASSERT_EQ(db.undoLog().undoGroups(1), Acad::eOk);
    ASSERT_EQ(SpyMultiLine::received.size(), 2u);
    const AcGeMatrix3d& undone = SpyMultiLine::received[1];
    EXPECT_TRUE((undone * move).isEqualTo(AcGeMatrix3d::kIdentity));

    // Outside an undo group there is nothing to record and nothing happens.
    {
        kelaz::test::Opened<CMultiLine> line(id, AcDb::kForWrite);
        EXPECT_EQ(line->transformBy(move), Acad::eOk);
    }
    EXPECT_FALSE(db.undoLog().canUndo());
}
