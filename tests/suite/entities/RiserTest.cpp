#include <gtest/gtest.h>

#include <cwchar>
#include <memory>

#include "host/ge/GeConstants.h"
#include "host/ge/Plane.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "tests/support/EntityChecks.h"

namespace {

using namespace kelaz::test;
using kelaz::GiCircle;

constexpr double kTol = 1e-9;

MainPipeInfo Info(const wchar_t* floor, double x, double y, double z1, double z2) {
    MainPipeInfo info;
    EXPECT_TRUE(kelaz::SetMainPipeFloorName(info, floor));
    info.x = x;
    info.y = y;
    info.z1 = z1;
    info.z2 = z2;
    return info;
}

// Both riser classes behave alike; each check runs on both.
template <class Riser>
class RiserTest : public ::testing::Test {};
using RiserClasses = ::testing::Types<KelAzMainPipe, KelAzMainLead>;
TYPED_TEST_SUITE(RiserTest, RiserClasses);

TYPED_TEST(RiserTest, InfoDescribesTheEndsAndTheEndsKeepItVertical) {
    TypeParam riser;
    ASSERT_EQ(riser.SetMainPipeInfo(Info(L"二层", 1200, -300, 3000, 6000)), Acad::eOk);
    AcGePoint3d start;
    AcGePoint3d end;
    riser.getStartPoint(start);
    riser.getEndPoint(end);
    EXPECT_EQ(start, AcGePoint3d(1200, -300, 3000));
    EXPECT_EQ(end, AcGePoint3d(1200, -300, 6000));
    MainPipeInfo info = riser.GetMainPipeInfo();
    EXPECT_STREQ(info.floorName, L"二层");
    EXPECT_EQ(info.z2, 6000);

    // Moving one end in plan takes the other along.
    riser.setEndPoint({500, 800, 7000});
    info = riser.GetMainPipeInfo();
    EXPECT_EQ(info.x, 500);
    EXPECT_EQ(info.y, 800);
    EXPECT_EQ(info.z1, 3000);
    EXPECT_EQ(info.z2, 7000);

    // A buffer without terminator is refused, and the riser keeps what it had.
    MainPipeInfo bad = Info(L"", 0, 0, 0, 0);
    std::wmemset(bad.floorName, L'层', kMainPipeFloorNameSize);
    EXPECT_EQ(riser.SetMainPipeInfo(bad), Acad::eInvalidInput);
    EXPECT_STREQ(riser.GetMainPipeInfo().floorName, L"二层");
    EXPECT_FALSE(kelaz::SetMainPipeFloorName(bad, CString(L'x', kMainPipeFloorNameSize)));
    EXPECT_TRUE(kelaz::SetMainPipeFloorName(bad, CString(L'x', kMainPipeFloorNameSize - 1)));
}

TYPED_TEST(RiserTest, DrawsTheRiserSymbolAtItsFirstPointAndReachesBothEnds) {
    TypeParam riser;
    riser.SetMainPipeInfo(Info(L"一层", 1000, 2000, 0, 3000));
    const auto circles = Shapes<GiCircle>(kelaz::DrawEntity(riser));
    ASSERT_EQ(circles.size(), 2u);
    EXPECT_POINT_NEAR(circles[0].center, AcGePoint3d(1000, 2000, 0), kTol);
    EXPECT_EQ(circles[0].radius, kelaz::kRiserSymbolRadius);
    EXPECT_EQ(circles[1].radius, kelaz::kRiserDotRadius);
    ExpectExtentsNear(ExtentsOf(riser), {950, 1950, 0}, {1050, 2050, 3000}, kTol);
}

TYPED_TEST(RiserTest, OnlyMotionsThatKeepItVerticalApply) {
    TypeParam riser;
    riser.SetMainPipeInfo(Info(L"一层", 1000, 0, 0, 3000));
    const auto before = Filed(riser);
    EXPECT_EQ(riser.transformBy(AcGeMatrix3d::rotation(0.3, AcGeVector3d::kXAxis)),
              Acad::eNotApplicable);
    EXPECT_EQ(Filed(riser), before);

    // Turned over about a level plane it hangs down from the mirrored first point.
    ASSERT_EQ(riser.transformBy(
                  AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 0, 100), AcGeVector3d::kZAxis))),
              Acad::eOk);
    const MainPipeInfo info = riser.GetMainPipeInfo();
    EXPECT_NEAR(info.z1, 200, kTol);
    EXPECT_NEAR(info.z2, -2800, kTol);
    EXPECT_NEAR(info.x, 1000, kTol);
    ASSERT_EQ(riser.transformBy(AcGeMatrix3d::rotation(kelaz::kPi / 2, AcGeVector3d::kZAxis)),
              Acad::eOk);
    EXPECT_NEAR(riser.GetMainPipeInfo().y, 1000, kTol);
}

// Files a riser with its end point moved in plan, as damaged data would have it.
class SlopingFiler : public kelaz::MemoryDwgFiler {
public:
    SlopingFiler() : MemoryDwgFiler(AcDb::kFileFiler) {}
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override {
        // The first points a riser files are its start and its end.
        if (++m_points == 2) return MemoryDwgFiler::writePoint3d(value + AcGeVector3d(100, 0, 0));
        return MemoryDwgFiler::writePoint3d(value);
    }

private:
    int m_points = 0;
};

TYPED_TEST(RiserTest, ASlopingRecordIsDamagedData) {
    TypeParam riser;
    riser.SetMainPipeInfo(Info(L"一层", 0, 0, 0, 3000));
    SlopingFiler out;
    ASSERT_EQ(riser.dwgOutFields(&out), Acad::eOk);
    TypeParam back;
    kelaz::MemoryDwgFiler in(out.takeBytes(), AcDb::kFileFiler);
    EXPECT_EQ(back.dwgInFields(&in), Acad::eFilerError);
    EXPECT_EQ(in.filerStatus(), Acad::eFilerError);
}

TEST(KelAzMainLead, KeepsItsLayingTypeApartFromTheRiser) {
    KelAzMainLead lead;
    lead.SetLayingType(KelAzMainLead::kDashedLayingType);
    lead.SetMainPipeInfo(Info(L"一层", 0, 0, 0, 3000));
    EXPECT_EQ(lead.GetLayingType(), 1);
    EXPECT_EQ(Shapes<GiCircle>(kelaz::DrawEntity(lead)).size(), 2u)
        << "a riser shows its symbol whatever its laying type";
}

}  // namespace
