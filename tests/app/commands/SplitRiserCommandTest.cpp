#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "app/commands/LayoutCommands.h"
#include "host/db/Line.h"
#include "host/ed/CommandLine.h"
#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"
#include "module/pipes/VerPipeInf.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/model/BimModel.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"

namespace {

using kelaz::test::Append;
using kelaz::test::Filed;

class SplitRiserCommand : public kelaz::test::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        pDeleteBimInstance();
        kelaz::RegisterLayoutCommands();
    }
    void TearDown() override {
        kelaz::UnregisterLayoutCommands();
        CVerPipeLists::ClearAll();
        pDeleteBimInstance();
        CommandTest::TearDown();
    }
    template <class T>
    AcDbObjectId AddRiser(const wchar_t* floor, double x, double z1, double z2) {
        auto* riser = new T;
        riser->SetAttName(L"电气\\管线\\照明导线");
        riser->SetSysCode(L"WL");
        MainPipeInfo info;
        EXPECT_TRUE(kelaz::SetMainPipeFloorName(info, floor));
        info.x = x;
        info.z1 = z1;
        info.z2 = z2;
        EXPECT_EQ(riser->SetMainPipeInfo(info), Acad::eOk);
        return Append(db, riser);
    }
    // Runs the command lines one after another; what the command line printed.
    std::string Run(std::initializer_list<const wchar_t*> lines) {
        kelaz::ScriptedInput input(lines);
        std::ostringstream out;
        kelaz::Editor editor(&db, &input, &out);
        kelaz::ScopedEditor scope(editor);
        kelaz::CommandLine commandLine(editor);
        while (commandLine.RunOne()) {
        }
        return out.str();
    }
    static std::string Handle(const AcDbObjectId& id) {
        std::string text = kelaz::ToUtf8(id.handle().text());
        return text + std::string(8 - text.size(), ' ');
    }
};

}  // namespace

TEST_F(SplitRiserCommand, ListsEveryKindOfRiserAndAsksOnlyWhenThereIsSomethingToDo) {
    const AcDbObjectId down = AddRiser<KelAzMainLead>(L"3", 0, 12300, 4500);
    const AcDbObjectId misnamed = AddRiser<KelAzMainPipe>(L"1", 1000, 5000, 6000);
    const AcDbObjectId named = AddRiser<KelAzMainPipe>(L"2", 2000, 5000, 6000);
    const AcDbObjectId below = AddRiser<KelAzMainPipe>(L"-1", 3000, -6000, -5000);
    Append(db, new AcDbLine({0, -1000, 0}, {3000, -1000, 0}));
    const AcDbObjectIdArray before = kelaz::test::ModelSpaceIds(db);
    const auto misnamedImage = Filed(misnamed);

    // Risers that need nothing: told so, and no question asked.
    std::string out = Run({L"SPLITRISER", L"2050,0", L"3050,0", L"", L"SPLITRISER", L"^C"});
    EXPECT_NE(out.find("没有要拆分或改楼层名的立管。\n命令: SPLITRISER"), std::string::npos) << out;
    EXPECT_EQ(out.find("吗？"), std::string::npos) << out;
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db), before);

    out = Run({L"SPLITRISER", L"W", L"-10000,-10000", L"10000,10000", L"", L"y"});
    const std::string table =
        "1 个对象不是立管，已忽略。\n"
        "立管    楼层        底标高    顶标高\n" +
        Handle(down) + "3             4500     12300  向下绘制，拆为 2 段\n" +
        "          3           8700     12300\n"
        "          2           4500      8700\n" +
        Handle(misnamed) + "1             5000      6000  楼层名改为 2\n" + Handle(named) +
        "2             5000      6000  不变\n" + Handle(below) +
        "-1           -6000     -5000  在楼层表外，不变\n" +
        "按上表拆分立管吗？[是(Y)/否(N)]<否>:y\n"
        "完成：拆分 1 根立管为 2 段，1 根立管改了楼层名。";
    EXPECT_NE(out.find(table), std::string::npos) << out;
    EXPECT_TRUE(down.isErased());
    EXPECT_NE(Filed(misnamed), misnamedImage);
}
