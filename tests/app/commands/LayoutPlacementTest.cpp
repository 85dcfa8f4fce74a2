#include <gtest/gtest.h>

#include <sstream>

#include "app/commands/LayoutPlacement.h"
#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"
#include "module/queries/KelAzSelectFun.h"
#include "suite/data/Proj.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"

namespace {

class LayoutPlacement : public kelaz::test::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(KelAzDataMng::CProj::SetCurrentSpec(L"电气"));
        ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(L"电气\\灯具\\普通灯具\\吸顶灯"));
        ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L"WL"));
    }
    // Places at the points answering the occupied-points question with answer; how many
    // components the drawing then holds.
    int PlaceAnswering(const AcGePoint3dArray& points, const wchar_t* answer) {
        kelaz::ScriptedInput input({answer});
        kelaz::Editor editor(&db, &input, &out);
        kelaz::ScopedEditor scope(editor);
        kelaz::PlaceLaidOut(points);
        return Components();
    }
    int Components() {
        AcDbObjectIdArray ids;
        CKelAzSelectFun::SelectAllEntity(ids, L"KelAzNode");
        return ids.length();
    }
    std::ostringstream out;
};

}  // namespace

TEST_F(LayoutPlacement, PointsHoldingAComponentAreListedThenSkippedPlacedOrGivenUp) {
    const AcGePoint3dArray first{AcGePoint3d(0, 0, 2800), AcGePoint3d(1000, 0, 2800)};
    EXPECT_EQ(PlaceAnswering(first, L"never read"), 2);
    EXPECT_EQ(out.str().find("已有构件"), std::string::npos) << "nothing to ask about";

    // Same plan position and elevation: taken. Another elevation, or a hair aside: free.
    const AcGePoint3dArray second{AcGePoint3d(0, 0, 2800), AcGePoint3d(1000, 0, 3000),
                                  AcGePoint3d(1000.001, 0, 2800), AcGePoint3d(2000, 0, 2800)};
    EXPECT_EQ(kelaz::OccupiedPoints(second), std::vector<int>({0}));
    EXPECT_EQ(PlaceAnswering(second, L"X"), 2);
    EXPECT_NE(out.str().find("有 1 个位置已有构件:\n  0,0,2800\n"), std::string::npos) << out.str();
    EXPECT_EQ(PlaceAnswering(second, L""), 5) << "Enter skips the taken point";
    EXPECT_EQ(PlaceAnswering(second, L"p"), 9) << "placed everywhere all the same";
    EXPECT_EQ(PlaceAnswering(second, L"^C"), 9);
    EXPECT_TRUE(kelaz::OccupiedPoints(AcGePoint3dArray()).empty());
}
