#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/db/HostApplicationServices.h"
#include "host/db/Line.h"
#include "host/db/UndoLog.h"
#include "module/entry/DispGlobaFun.h"
#include "module/pipes/PerforateVPipe.h"
#include "suite/data/CurrentProject.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/ProjectFixture.h"

namespace {

using kelaz::test::Append;
using kelaz::test::Filed;
using kelaz::test::Opened;

// A floor name, a bottom and a top.
struct Piece {
    std::wstring floor;
    double bottom;
    double top;
};

void ExpectPieces(const CVerPipeInfList& got, const std::vector<Piece>& expected) {
    ASSERT_EQ(got.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(got[i]->strFloor, expected[i].floor.c_str()) << i;
        EXPECT_DOUBLE_EQ(got[i]->dBottom, expected[i].bottom) << i;
        EXPECT_DOUBLE_EQ(got[i]->dTop, expected[i].top) << i;
    }
}

CVerPipeInf Riser(double z1, double z2) {
    CVerPipeInf r;
    r.strFloor = L"1";
    r.dBottom = std::min(z1, z2);
    r.dTop = std::max(z1, z2);
    r.bDownward = z1 > z2;
    r.dX = 400;
    r.dY = -250;
    return r;
}

class PerforateVPipeTest : public kelaz::test::ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        // The cached building belongs to whichever project was open before.
        pDeleteBimInstance();
        CVerPipeLists::ClearAll();
        acdbHostApplicationServices()->setWorkingDatabase(&cl.db);
    }
    void TearDown() override {
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        CVerPipeLists::ClearAll();
        pDeleteBimInstance();
        ProjectTest::TearDown();
    }
    double Level(const wchar_t* text) {
        double level = 0.0;
        EXPECT_TRUE(CDispGlobaFun::GetLevel(level, text)) << kelaz::ToUtf8(CString(text));
        return level;
    }
    CVerPipeInfList Cut(double z1, double z2, double minPiece = kMinMainPipePiece) {
        const KelAzBimModel* model = pGetBimInstance();
        EXPECT_NE(model, nullptr);
        return model ? CutVerPipe(Riser(z1, z2), model->Storeys(), minPiece) : CVerPipeInfList();
    }
    template <class T>
    AcDbObjectId AddRiser(const wchar_t* floor, double z1, double z2) {
        auto* riser = new T;
        riser->SetAttName(L"给排水\\管道\\给水管\\PPR给水管");
        riser->SetSysCode(L"J");
        riser->setColorIndex(5);
        MainPipeInfo info;
        EXPECT_TRUE(kelaz::SetMainPipeFloorName(info, floor));
        info.z1 = z1;
        info.z2 = z2;
        info.x = 1200;
        info.y = 800;
        EXPECT_EQ(riser->SetMainPipeInfo(info), Acad::eOk);
        return Append(cl.db, riser);
    }

    kelaz::test::CommandLineHarness cl;
};

MainPipeInfo InfoOf(AcDbObjectId id) {
    Opened<AcDbEntity> e(id, AcDb::kForRead);
    if (const auto* pipe = KelAzMainPipe::cast(e.get())) return pipe->GetMainPipeInfo();
    if (const auto* lead = KelAzMainLead::cast(e.get())) return lead->GetMainPipeInfo();
    ADD_FAILURE() << "not a riser";
    return MainPipeInfo();
}

}  // namespace

// The default floor table has a basement, single floors, the range "3/6", the comma row "7,9"
// with a record for each of its floors and the taller refuge floor 8 between them.
TEST_F(PerforateVPipeTest, CutsAtEveryStoreyBoundaryInsideTheRiser) {
    EXPECT_DOUBLE_EQ(Level(L"7F+500"), 23600);
    ExpectPieces(Cut(Level(L"1F+0"), Level(L"7F+500")), {{L"1", 0, 4500},
                                                         {L"2", 4500, 8700},
                                                         {L"3", 8700, 12300},
                                                         {L"4", 12300, 15900},
                                                         {L"5", 15900, 19500},
                                                         {L"6", 19500, 23100},
                                                         {L"7", 23100, 23600}});
    // Five floors through the comma row and the refuge floor.
    const CVerPipeInfList five = Cut(Level(L"6F+1000"), Level(L"10F+1000"));
    ExpectPieces(five, {{L"6", 20500, 23100},
                        {L"7", 23100, 26700},
                        {L"8", 26700, 31200},
                        {L"9", 31200, 34800},
                        {L"10", 34800, 35800}});
    for (const auto& p : five) {
        EXPECT_FALSE(p->bDownward);
        EXPECT_EQ(p->dX, 400);
        EXPECT_EQ(p->dY, -250);
    }
    // Drawn downwards: the same pieces from the top, each drawn downwards.
    const CVerPipeInfList down = Cut(35800, 20500);
    ExpectPieces(down, {{L"10", 34800, 35800},
                        {L"9", 31200, 34800},
                        {L"8", 26700, 31200},
                        {L"7", 23100, 26700},
                        {L"6", 20500, 23100}});
    for (const auto& p : down) EXPECT_TRUE(p->bDownward);
}

TEST_F(PerforateVPipeTest, EndsOnOrNearBoundariesMakeNoSliverAndPartsOutsideHaveNoFloor) {
    // Exactly one storey, from its floor to the next: one piece.
    ExpectPieces(Cut(4500, 8700), {{L"2", 4500, 8700}});
    // Within the tolerance of a boundary: no piece of a millionth of a millimetre.
    ExpectPieces(Cut(4500 - 1e-7, 8700 + 1e-7), {{L"2", 4500 - 1e-7, 8700 + 1e-7}});
    ExpectPieces(Cut(4500 - 1e-5, 8700), {{L"1", 4500 - 1e-5, 4500}, {L"2", 4500, 8700}});
    // A main lead's shortest piece is longer: the same end makes no piece of it.
    ExpectPieces(Cut(4500 - 1e-5, 8700, kMinMainLeadPiece), {{L"2", 4500 - 1e-5, 8700}});
    // Below the basement and above the roof.
    ExpectPieces(Cut(-6000, -5000), {{L"", -6000, -5000}});
    ExpectPieces(Cut(-6000, 1000), {{L"", -6000, -4500}, {L"-1", -4500, 0}, {L"1", 0, 1000}});
    ExpectPieces(Cut(37000, 39000), {{L"10", 37000, 37800}, {L"", 37800, 39000}});
    // A riser of no length lies in the storey of its height.
    ExpectPieces(Cut(5000, 5000), {{L"2", 5000, 5000}});

    // A table with a gap and an overlap: the gap is a piece of no floor, and the overlap goes
    // to the lower storey, whose piece is not cut in two.
    const std::vector<KelAzStorey> storeys = {
        {L"A", 0, 3000}, {L"B", 4000, 7000}, {L"C", 6500, 9000}};
    ExpectPieces(CutVerPipe(Riser(0, 9000), storeys, kMinMainPipePiece),
                 {{L"A", 0, 3000}, {L"", 3000, 4000}, {L"B", 4000, 7000}, {L"C", 7000, 9000}});
    ExpectPieces(CutVerPipe(Riser(0, 9000), {}, kMinMainPipePiece), {{L"", 0, 9000}});
}

TEST_F(PerforateVPipeTest, PlansAppliesAsOneStepAndUndoBringsBackTheOriginals) {
    const AcDbObjectId tall = AddRiser<KelAzMainPipe>(L"1", 0, 17000);
    const AcDbObjectId down = AddRiser<KelAzMainLead>(L"3", 12300, 4500);
    const AcDbObjectId misnamed = AddRiser<KelAzMainLead>(L"1", 5000, 6000);
    const AcDbObjectId named = AddRiser<KelAzMainPipe>(L"2", 5000, 6000);
    const AcDbObjectId below = AddRiser<KelAzMainPipe>(L"-1", -6000, -5000);
    const AcDbObjectId line = Append(cl.db, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    {
        Opened<KelAzMainLead> lead(down, AcDb::kForWrite);
        ASSERT_EQ(lead->SetLayName(L"竖向引线"), Acad::eOk);
    }
    CString tallLayer, downLayer;
    {
        Opened<AcDbEntity> a(tall, AcDb::kForRead), b(down, AcDb::kForRead);
        tallLayer = a->layer();
        downLayer = b->layer();
    }
    EXPECT_EQ(downLayer, L"竖向引线");
    const AcDbObjectIdArray ids{line, tall, down, misnamed, named, below, tall};
    const AcDbObjectIdArray before = kelaz::test::ModelSpaceIds(cl.db);
    std::vector<std::vector<std::uint8_t>> images;
    for (const AcDbObjectId& id : before) images.push_back(Filed(id));

    // The plan alone changes nothing.
    ASSERT_TRUE(PerforateVPipe(ids, false));
    EXPECT_EQ(kelaz::test::ModelSpaceIds(cl.db), before);
    ASSERT_EQ(CVerPipeLists::Risers().size(), 5u) << "the line is passed over, tall taken once";
    EXPECT_EQ(CVerPipeLists::Risers()[0]->id, tall);
    EXPECT_EQ(CVerPipeLists::Risers()[0]->strHandle, tall.handle().text());
    EXPECT_EQ(CVerPipeLists::Planned().size(), 5u + 2u + 1u + 1u + 1u);
    EXPECT_TRUE(CVerPipeLists::Made().empty());
    const EVerPipeChange changes[] = {EVerPipeChange::kSplit, EVerPipeChange::kSplit,
                                      EVerPipeChange::kRename, EVerPipeChange::kKeep,
                                      EVerPipeChange::kOutside};
    for (size_t i = 0; i < std::size(changes); ++i)
        EXPECT_EQ(PlannedChange(*CVerPipeLists::Risers()[i]), changes[i]) << i;

    const int steps = cl.db.undoLog().numSteps();
    ASSERT_TRUE(PerforateVPipe(ids, true));
    EXPECT_EQ(cl.db.undoLog().numSteps(), steps + 1);
    EXPECT_TRUE(tall.isErased());
    EXPECT_TRUE(down.isErased());
    EXPECT_EQ(InfoOf(misnamed).floorName, std::wstring(L"2"));
    EXPECT_EQ(Filed(named), images[before.find(named)]);
    EXPECT_EQ(Filed(below), images[before.find(below)]);

    // Made: the five pieces of tall, the two of down, and the renamed lead itself.
    const CVerPipeInfList& made = CVerPipeLists::Made();
    ASSERT_EQ(made.size(), 8u);
    EXPECT_EQ(made[7]->id, misnamed);
    const std::vector<Piece> expected = {
        {L"1", 0, 4500},      {L"2", 4500, 8700},  {L"3", 8700, 12300}, {L"4", 12300, 15900},
        {L"5", 15900, 17000}, {L"3", 8700, 12300}, {L"2", 4500, 8700}};
    for (size_t i = 0; i < expected.size(); ++i) {
        const AcDbObjectId id = made[i]->id;
        EXPECT_EQ(made[i]->strHandle, id.handle().text());
        EXPECT_FALSE(id.isErased());
        const MainPipeInfo info = InfoOf(id);
        const bool downward = i >= 5;
        EXPECT_EQ(info.floorName, expected[i].floor) << i;
        EXPECT_EQ(info.z1, downward ? expected[i].top : expected[i].bottom) << i;
        EXPECT_EQ(info.z2, downward ? expected[i].bottom : expected[i].top) << i;
        EXPECT_EQ(info.x, 1200);
        EXPECT_EQ(info.y, 800);
        // Everything but the floor and the ends is the original's.
        Opened<KelAzCurveEntity> piece(id, AcDb::kForRead);
        EXPECT_EQ(piece->isA(), downward ? KelAzMainLead::desc() : KelAzMainPipe::desc());
        EXPECT_EQ(piece->GetAttName(), L"给排水\\管道\\给水管\\PPR给水管");
        EXPECT_EQ(piece->GetSysCode(), L"J");
        EXPECT_EQ(piece->colorIndex(), 5);
        EXPECT_EQ(piece->GetLayName(), downward ? L"竖向引线" : L"");
        EXPECT_EQ(piece->layer(), downward ? downLayer : tallLayer);
    }

    // One step back: the originals exactly as they were, the pieces gone.
    ASSERT_EQ(cl.db.undoLog().undoGroups(1), Acad::eOk);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(cl.db), before);
    for (int i = 0; i < before.length(); ++i) EXPECT_EQ(Filed(before[i]), images[i]) << i;
    for (size_t i = 0; i < expected.size(); ++i) EXPECT_TRUE(made[i]->id.isErased());
}

TEST_F(PerforateVPipeTest, RefusesWithoutStoreysOrRisersAndChangesNothingWhenAPieceCannotBeMade) {
    const AcDbObjectId line = Append(cl.db, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray{line}, true));
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray(), false));
    EXPECT_TRUE(CVerPipeLists::Risers().empty());

    // A storey whose name no riser can hold: nothing is split, not even the other riser.
    const AcDbObjectId fine = AddRiser<KelAzMainPipe>(L"1", 0, 8000);
    const AcDbObjectId through = AddRiser<KelAzMainPipe>(L"1", 9000, 20000);
    const std::vector<std::uint8_t> fineImage = Filed(fine), throughImage = Filed(through);
    KelAzDataMng::CloseProject();
    kelaz::test::EditProjectFile(m_file, [](kelaz::SqliteDb& db) {
        const std::string name(kelaz::kMaxFloorNameLength + 1, 'F');
        ASSERT_TRUE(db.Exec(("UPDATE floor SET name = '" + name + "' WHERE name = '3/6'").c_str()))
            << db.LastError();
    });
    Reopen();
    pDeleteBimInstance();
    EXPECT_TRUE(PerforateVPipe(AcDbObjectIdArray{fine, through}, false));
    const int steps = cl.db.undoLog().numSteps();
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray{fine, through}, true));
    EXPECT_EQ(Filed(fine), fineImage);
    EXPECT_EQ(Filed(through), throughImage);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(cl.db), (AcDbObjectIdArray{line, fine, through}));
    EXPECT_EQ(cl.db.undoLog().numSteps(), steps);
    EXPECT_TRUE(CVerPipeLists::Made().empty());

    // No project: no storeys to cut at.
    KelAzDataMng::CloseProject();
    pDeleteBimInstance();
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray{fine}, false));
    EXPECT_TRUE(CVerPipeLists::Risers().empty());
    EXPECT_TRUE(CVerPipeLists::Planned().empty());
}
