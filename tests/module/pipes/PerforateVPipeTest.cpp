#include <gtest/gtest.h>

#include <algorithm>
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
using kelaz::test::ModelSpaceIds;
using kelaz::test::Opened;

// "floor:bottom-top" for each piece, "^" after a piece drawn downwards.
std::string Text(const CVerPipeInfList& pieces) {
    std::string text;
    for (const auto& p : pieces) {
        text += (text.empty() ? "" : " ") + kelaz::ToUtf8(p->strFloor) +
                kelaz::ToUtf8(kelaz::FormatText(L":%.15g-%.15g", p->dBottom, p->dTop)) +
                (p->bDownward ? "^" : "");
    }
    return text;
}

CVerPipeInf Riser(double z1, double z2) {
    CVerPipeInf r;
    r.dBottom = std::min(z1, z2);
    r.dTop = std::max(z1, z2);
    r.bDownward = z1 > z2;
    return r;
}

class PerforateVPipeTest : public kelaz::test::ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        // The cached building belongs to whichever project was open before.
        pDeleteBimInstance();
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
        EXPECT_TRUE(CDispGlobaFun::GetLevel(level, text));
        return level;
    }
    std::string Cut(double z1, double z2, double minPiece = kMinMainPipePiece) {
        return Text(CutVerPipe(Riser(z1, z2), pGetBimInstance()->Storeys(), minPiece));
    }
    template <class T>
    AcDbObjectId AddRiser(const wchar_t* floor, double z1, double z2) {
        auto* riser = new T;
        riser->SetAttName(L"给排水\\管道\\给水管\\PPR给水管");
        riser->SetSysCode(L"J");
        riser->setColorIndex(5);
        MainPipeInfo info;
        kelaz::SetMainPipeFloorName(info, floor);
        info.z1 = z1;
        info.z2 = z2;
        info.x = 1200;
        info.y = 800;
        EXPECT_EQ(riser->SetMainPipeInfo(info), Acad::eOk);
        return Append(cl.db, riser);
    }

    kelaz::test::CommandLineHarness cl;
};

}  // namespace

// The default floor table has a basement, single floors, the range "3/6", the comma row "7,9"
// with a record for each of its floors and the taller refuge floor 8 between them.
TEST_F(PerforateVPipeTest, CutsAtStoreyBoundariesInsideTheRiserAndNowhereElse) {
    EXPECT_EQ(Cut(Level(L"1F+0"), Level(L"7F+500")),
              "1:0-4500 2:4500-8700 3:8700-12300 4:12300-15900 5:15900-19500 6:19500-23100 "
              "7:23100-23600");
    EXPECT_EQ(Cut(Level(L"6F+1000"), Level(L"10F+1000")),
              "6:20500-23100 7:23100-26700 8:26700-31200 9:31200-34800 10:34800-35800");
    EXPECT_EQ(Cut(35800, 20500),
              "10:34800-35800^ 9:31200-34800^ 8:26700-31200^ 7:23100-26700^ 6:20500-23100^");
    // Ends on boundaries or within the tolerance of one: no sliver.
    EXPECT_EQ(Cut(4500, 8700), "2:4500-8700");
    EXPECT_EQ(Cut(4500 - 1e-7, 8700 + 1e-7), "2:4499.9999999-8700.0000001");
    EXPECT_EQ(Cut(4500 - 1e-5, 8700), "1:4499.99999-4500 2:4500-8700");
    EXPECT_EQ(Cut(4500 - 1e-5, 8700, kMinMainLeadPiece), "2:4499.99999-8700");
    EXPECT_EQ(Cut(5000, 5000), "2:5000-5000");
    // Below the basement and above the roof: no floor.
    EXPECT_EQ(Cut(-6000, -5000), ":-6000--5000");
    EXPECT_EQ(Cut(-6000, 1000), ":-6000--4500 -1:-4500-0 1:0-1000");
    EXPECT_EQ(Cut(37000, 39000), "10:37000-37800 :37800-39000");
    // A gap is a piece of no floor; an overlap goes to the lower storey, not cut in two.
    const std::vector<KelAzStorey> storeys = {
        {L"A", 0, 3000}, {L"B", 4000, 7000}, {L"C", 6500, 9000}};
    EXPECT_EQ(Text(CutVerPipe(Riser(0, 9000), storeys, kMinMainPipePiece)),
              "A:0-3000 :3000-4000 B:4000-7000 C:7000-9000");
}

TEST_F(PerforateVPipeTest, AppliesAsOneUndoStepKeepingEverythingButFloorAndEnds) {
    const AcDbObjectId tall = AddRiser<KelAzMainPipe>(L"1", 0, 17000);
    const AcDbObjectId down = AddRiser<KelAzMainLead>(L"3", 12300, 4500);
    const AcDbObjectId misnamed = AddRiser<KelAzMainLead>(L"1", 5000, 6000);
    const AcDbObjectId named = AddRiser<KelAzMainPipe>(L"2", 5000, 6000);
    const AcDbObjectId below = AddRiser<KelAzMainPipe>(L"-1", -6000, -5000);
    const AcDbObjectId line = Append(cl.db, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    Opened<KelAzMainLead>(down, AcDb::kForWrite)->SetLayName(L"竖向引线");
    const AcDbObjectIdArray before = ModelSpaceIds(cl.db);
    std::vector<std::vector<std::uint8_t>> images;
    std::vector<CString> layers;
    for (const AcDbObjectId& id : before) {
        images.push_back(Filed(id));
        layers.push_back(Opened<AcDbEntity>(id, AcDb::kForRead)->layer());
    }
    EXPECT_EQ(layers[before.find(down)], L"竖向引线");

    const AcDbObjectIdArray ids{line, tall, down, misnamed, named, below, tall};
    ASSERT_TRUE(PerforateVPipe(ids, false));
    EXPECT_EQ(ModelSpaceIds(cl.db), before) << "a plan changes nothing";
    ASSERT_EQ(CVerPipeLists::Risers().size(), 5u) << "the line passed over, tall taken once";
    EXPECT_EQ(CVerPipeLists::Risers()[0]->strHandle, tall.handle().text());
    EXPECT_EQ(Text(CVerPipeLists::Planned()),
              "1:0-4500 2:4500-8700 3:8700-12300 4:12300-15900 5:15900-17000 3:8700-12300^ "
              "2:4500-8700^ 2:5000-6000 2:5000-6000 :-6000--5000");
    const EVerPipeChange changes[] = {EVerPipeChange::kSplit, EVerPipeChange::kSplit,
                                      EVerPipeChange::kRename, EVerPipeChange::kKeep,
                                      EVerPipeChange::kOutside};
    for (size_t i = 0; i < std::size(changes); ++i)
        EXPECT_EQ(PlannedChange(*CVerPipeLists::Risers()[i]), changes[i]) << i;

    const int steps = cl.db.undoLog().numSteps();
    ASSERT_TRUE(PerforateVPipe(ids, true));
    EXPECT_EQ(cl.db.undoLog().numSteps(), steps + 1);
    EXPECT_TRUE(tall.isErased() && down.isErased());
    EXPECT_EQ(Filed(named), images[before.find(named)]);
    EXPECT_EQ(Filed(below), images[before.find(below)]);
    // The pieces of tall and down, then the renamed lead itself.
    const CVerPipeInfList& made = CVerPipeLists::Made();
    ASSERT_EQ(made.size(), 8u);
    EXPECT_EQ(made[7]->id, misnamed);
    for (size_t i = 0; i < made.size(); ++i) {
        const AcDbObjectId origin = i < 5 ? tall : (i < 7 ? down : misnamed);
        const bool lead = i >= 5;
        Opened<KelAzCurveEntity> piece(made[i]->id, AcDb::kForRead);
        ASSERT_TRUE(piece) << i;
        EXPECT_EQ(made[i]->strHandle, made[i]->id.handle().text());
        const MainPipeInfo info = lead ? KelAzMainLead::cast(piece.get())->GetMainPipeInfo()
                                       : KelAzMainPipe::cast(piece.get())->GetMainPipeInfo();
        EXPECT_EQ(CString(info.floorName), made[i]->strFloor) << i;
        EXPECT_EQ(std::min(info.z1, info.z2), made[i]->dBottom) << i;
        EXPECT_EQ(info.z1 > info.z2, made[i]->bDownward) << i;
        EXPECT_EQ(info.x, 1200);
        EXPECT_EQ(info.y, 800);
        EXPECT_EQ(piece->GetAttName(), L"给排水\\管道\\给水管\\PPR给水管");
        EXPECT_EQ(piece->colorIndex(), 5);
        EXPECT_EQ(piece->layer(), layers[before.find(origin)]) << i;
    }
    EXPECT_EQ(Text(made), Text(CVerPipeLists::Planned()).substr(0, Text(made).size()));

    // One step back: the originals byte for byte, the pieces gone.
    ASSERT_EQ(cl.db.undoLog().undoGroups(1), Acad::eOk);
    EXPECT_EQ(ModelSpaceIds(cl.db), before);
    for (int i = 0; i < before.length(); ++i) EXPECT_EQ(Filed(before[i]), images[i]) << i;
}

TEST_F(PerforateVPipeTest, RefusesWithoutStoreysOrRisersAndChangesNothingWhenAPieceCannotBe) {
    const AcDbObjectId line = Append(cl.db, new AcDbLine({0, 0, 0}, {100, 0, 0}));
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray{line}, true));
    EXPECT_TRUE(CVerPipeLists::Risers().empty());

    // A storey whose name no riser can hold: nothing is split, not even the other riser.
    const AcDbObjectId fine = AddRiser<KelAzMainPipe>(L"1", 0, 8000);
    const AcDbObjectId through = AddRiser<KelAzMainPipe>(L"1", 9000, 20000);
    const AcDbObjectIdArray before = ModelSpaceIds(cl.db);
    const auto fineImage = Filed(fine), throughImage = Filed(through);
    KelAzDataMng::CloseProject();
    kelaz::test::EditProjectFile(m_file, [](kelaz::SqliteDb& db) {
        const std::string name(kelaz::kMaxFloorNameLength + 1, 'F');
        ASSERT_TRUE(db.Exec(("UPDATE floor SET name = '" + name + "' WHERE name = '3/6'").c_str()));
    });
    Reopen();
    pDeleteBimInstance();
    const int steps = cl.db.undoLog().numSteps();
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray{fine, through}, true));
    EXPECT_EQ(ModelSpaceIds(cl.db), before);
    EXPECT_EQ(Filed(fine), fineImage);
    EXPECT_EQ(Filed(through), throughImage);
    EXPECT_EQ(cl.db.undoLog().numSteps(), steps);
    EXPECT_TRUE(CVerPipeLists::Made().empty());

    KelAzDataMng::CloseProject();
    pDeleteBimInstance();
    EXPECT_FALSE(PerforateVPipe(AcDbObjectIdArray{fine}, false)) << "no project, no storeys";
    EXPECT_TRUE(CVerPipeLists::Planned().empty());
}
