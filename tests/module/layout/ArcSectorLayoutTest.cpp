#include <gtest/gtest.h>

#include <cmath>

#include "host/db/Arc.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "module/layout/DisposeOnCurve.h"
#include "module/layout/DisposeOnSector.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzLead.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTol = 1e-9;

AcGePoint3d Polar(double radius, double degrees, const AcGePoint3d& centre = {}) {
    const double a = degrees * kPi / 180.0;
    return centre + AcGeVector3d(radius * std::cos(a), radius * std::sin(a), 0.0);
}

void ExpectRing(const AcGePoint3dArray& points, int from, double radius,
                std::initializer_list<double> degrees) {
    int i = from;
    for (const double d : degrees) {
        ASSERT_LT(i, points.length());
        EXPECT_POINT_NEAR(points[i], Polar(radius, d), 1e-6) << "point " << i;
        ++i;
    }
}

class ArcLayout : public kelaz::test::CommandTest {
protected:
    AcDbObjectId Polyline(const AcGePoint2d& a, const AcGePoint2d& b, double bulge) {
        auto* pline = new AcDbPolyline;
        pline->addVertexAt(0, a, bulge);
        pline->addVertexAt(1, b);
        return kelaz::test::Append(db, pline);
    }
};

}  // namespace

TEST_F(ArcLayout, SpreadsEvenlyCounterClockwiseFromArcsAndArcPolylinesWithMargins) {
    CDisposeOnCurve layout;
    AcGePoint3dArray out;
    const AcDbObjectId arc = kelaz::test::Append(db, new AcDbArc(AcGePoint3d(), 1000, 0, kPi / 2));
    ASSERT_TRUE(layout.DisposalOnArc(out, arc, 0.0, 3));
    ASSERT_EQ(out.length(), 3);
    ExpectRing(out, 0, 1000, {0, 45, 90});

    // Drawn clockwise from (0,1000) to (1000,0): walked from its other end.
    const AcDbObjectId cw =
        Polyline(AcGePoint2d(0, 1000), AcGePoint2d(1000, 0), -std::tan(kPi / 8));
    out.append(AcGePoint3d(9, 9, 9));  // a stale point the call must clear
    ASSERT_TRUE(layout.DisposalOnArc(out, cw, 0.0, 3));
    ASSERT_EQ(out.length(), 3);
    ExpectRing(out, 0, 1000, {0, 45, 90});

    // asin(500 / 1000) is 30 degrees off each end.
    ASSERT_TRUE(layout.DisposalOnArc(out, arc, 500.0, 3));
    ExpectRing(out, 0, 1000, {30, 45, 60});
    // A margin within a millionth is none.
    ASSERT_TRUE(layout.DisposalOnArc(out, arc, 1e-7, 2));
    ExpectRing(out, 0, 1000, {0, 90});
    ASSERT_TRUE(layout.DisposalOnArc(out, arc, 0.0, 1));
    ExpectRing(out, 0, 1000, {0});
    EXPECT_TRUE(sink.Records().empty());
    EXPECT_EQ(layout.GetAmountOfSame(), 0);

    // The point form takes the arc as given, counter-clockwise from start to end.
    ASSERT_TRUE(layout.DisposalOnArc(out, Polar(1000, 90), Polar(1000, 0), AcGePoint3d(), 1000, 4));
    ExpectRing(out, 0, 1000, {90, 180, 270, 360});
}

TEST_F(ArcLayout, RefusesMarginsThatLeaveNoArcAndCurvesWithoutOne) {
    CDisposeOnCurve layout;
    AcGePoint3dArray out{AcGePoint3d(1, 1, 1)};
    const AcDbObjectId arc = kelaz::test::Append(db, new AcDbArc(AcGePoint3d(), 1000, 0, kPi / 2));
    for (const double margin : {1000.0, 1000.5}) {
        sink.Clear();
        EXPECT_FALSE(layout.DisposalOnArc(out, arc, margin, 3)) << margin;
        EXPECT_TRUE(out.isEmpty());
        ASSERT_EQ(sink.Records().size(), 1u);
        EXPECT_EQ(sink.Records()[0].text, L"您输入的偏移距离过大，无法布置!");
        EXPECT_EQ(sink.Records()[0].flags, 0x12030u);
    }
    sink.Clear();
    // Only the first segment of a two-vertex polyline is an arc to lay out on.
    auto* three = new AcDbPolyline;
    three->addVertexAt(0, AcGePoint2d(0, 0), 0.5);
    three->addVertexAt(1, AcGePoint2d(100, 0));
    three->addVertexAt(2, AcGePoint2d(200, 0));
    EXPECT_FALSE(layout.DisposalOnArc(out, kelaz::test::Append(db, three), 0.0, 3));
    ASSERT_EQ(sink.Records().size(), 1u);
    EXPECT_EQ(sink.Records()[0].text, L"此功能只能布置多义线的第一段!");
    sink.Clear();
    // Silently refused: a straight segment, a line, any lead (no lead kind is accepted).
    EXPECT_FALSE(
        layout.DisposalOnArc(out, Polyline(AcGePoint2d(0, 0), AcGePoint2d(100, 0), 1e-7), 0.0, 3));
    EXPECT_FALSE(layout.DisposalOnArc(
        out, kelaz::test::Append(db, new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0))), 0.0, 3));
    auto* lead = new KelAzLead;
    lead->setStartPoint(AcGePoint3d(1000, 0, 0));
    lead->setEndPoint(AcGePoint3d(0, 1000, 0));
    lead->SetBulge(std::tan(kPi / 8));
    lead->SetTypeText(L"3\\1\\1");
    EXPECT_FALSE(layout.DisposalOnArc(out, kelaz::test::Append(db, lead), 0.0, 3));
    EXPECT_FALSE(layout.DisposalOnArc(out, AcDbObjectId::kNull, 0.0, 3));
    EXPECT_TRUE(out.isEmpty());
    EXPECT_TRUE(sink.Records().empty());
}

TEST_F(ArcLayout, EquipmentAlreadyOnTheArcLeavesNoPointOut) {
    auto* lamp = new KelAzEquipMent;
    lamp->SetInsertPoint(Polar(1000, 45) + AcGeVector3d(0, 0, 2800));
    lamp->SetTypeNamePath(L"电气\\灯具\\普通灯具");
    kelaz::test::Append(db, lamp);
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(L"电气\\灯具\\普通灯具\\荧光灯"));
    CDisposeOnCurve layout;
    layout.SetLevel(2800);
    AcGePoint3dArray out;
    ASSERT_TRUE(layout.DisposalOnArc(out, Polar(1000, 0), Polar(1000, 90), AcGePoint3d(), 1000, 3));
    EXPECT_EQ(out.length(), 3);
    EXPECT_EQ(layout.GetAmountOfSame(), 0);
}

TEST(SectorLayout, RingsFromTheOuterArcInwardsWhicheverWayTheArcIsPicked) {
    for (const bool reversed : {false, true}) {
        CDisposeOnSector sector;
        ASSERT_TRUE(sector.SetDisposalInfo(3, 5, 1, 0.0, 0.0, 0.0));
        const AcGePoint3d a = Polar(3000, 0), b = Polar(3000, 30), c = Polar(3000, 90);
        ASSERT_TRUE(sector.Dispose(reversed ? c : a, b, reversed ? a : c, Polar(1000, 45)));
        AcGePoint3dArray out{AcGePoint3d(7, 7, 7)};
        sector.GetDisPointArray(out);
        ASSERT_EQ(out.length(), 1 + 5 + 4 + 3) << "appended after what the caller had";
        ExpectRing(out, 1, 3000, {0, 22.5, 45, 67.5, 90});
        ExpectRing(out, 6, 2000, {0, 30, 60, 90});
        ExpectRing(out, 10, 1000, {0, 45, 90});
        EXPECT_EQ(sector.GetAmountOfSame(), 0);
    }
    // An arc through 180 degrees runs through the origin of the angles measured here.
    for (const bool reversed : {false, true}) {
        CDisposeOnSector sector;
        ASSERT_TRUE(sector.SetDisposalInfo(2, 3, 0, 0.0, 0.0, 0.0));
        const AcGePoint3d a = Polar(2000, 90), b = Polar(2000, 180), c = Polar(2000, 270);
        sector.Dispose(reversed ? c : a, b, reversed ? a : c, Polar(1000, 200));
        AcGePoint3dArray out;
        sector.GetDisPointArray(out);
        ASSERT_EQ(out.length(), 6);
        ExpectRing(out, 0, 2000, {90, 180, 270});
        ExpectRing(out, 3, 1000, {90, 180, 270});
    }
}

TEST(SectorLayout, InnerPointOutsideTheSectorOrOuterArcReachesTheCentre) {
    const AcGePoint3d a = Polar(3000, 0), b = Polar(3000, 45), c = Polar(3000, 90);
    // Farther out than the outer arc; then inside the radius but beyond the sector's sides.
    for (const AcGePoint3d& inner : {Polar(4000, 45), Polar(1000, 180)}) {
        CDisposeOnSector sector;
        ASSERT_TRUE(sector.SetDisposalInfo(3, 2, 0, 0.0, 0.0, 0.0));
        sector.Dispose(a, b, c, inner);
        AcGePoint3dArray out;
        sector.GetDisPointArray(out);
        ASSERT_EQ(out.length(), 6);
        ExpectRing(out, 0, 3000, {0, 90});
        ExpectRing(out, 2, 1500, {0, 90});
        EXPECT_POINT_NEAR(out[4], AcGePoint3d(), 1e-6);
        EXPECT_POINT_NEAR(out[5], AcGePoint3d(), 1e-6);
    }
    CDisposeOnSector single;
    ASSERT_TRUE(single.SetDisposalInfo(1, 3, 5, 0.0, 0.0, 0.0));
    single.Dispose(a, b, c, Polar(1000, 45));
    AcGePoint3dArray out;
    single.GetDisPointArray(out);
    ExpectRing(out, 0, 3000, {0, 45, 90});
    EXPECT_EQ(out.length(), 3);
}

TEST_F(ArcLayout, SectorCountsRefusalsAndTheCountLeftLowered) {
    CDisposeOnSector sector;
    EXPECT_FALSE(sector.SetDisposalInfo(4, 4, 2, 0.0, 0.0, 0.0));
    ASSERT_EQ(sink.Records().size(), 1u);
    EXPECT_EQ(sink.Records()[0].text, L"输入数据错误!");
    // Nothing was stored: the object still lays no ring.
    sector.Dispose(Polar(3000, 0), Polar(3000, 45), Polar(3000, 90), Polar(1000, 45));
    AcGePoint3dArray out;
    sector.GetDisPointArray(out);
    EXPECT_TRUE(out.isEmpty());

    // The innermost ring may come out at zero: accepted, it lays nothing.
    ASSERT_TRUE(sector.SetDisposalInfo(3, 4, 2, 0.0, 0.0, 0.0));
    sector.Dispose(Polar(3000, 0), Polar(3000, 45), Polar(3000, 90), Polar(1000, 45));
    sector.GetDisPointArray(out);
    EXPECT_EQ(out.length(), 4 + 2 + 0);
    // A second run starts from the count the first one left: 4 - 3 * 2 = -2, no ring lays.
    sector.Dispose(Polar(3000, 0), Polar(3000, 45), Polar(3000, 90), Polar(1000, 45));
    out.removeAll();
    sector.GetDisPointArray(out);
    EXPECT_TRUE(out.isEmpty());

    // Only the decrement's sign and the truncating division decide.
    EXPECT_TRUE(CDisposeOnSector().SetDisposalInfo(4, 4, 0, 0.0, 0.0, 0.0));
    EXPECT_TRUE(CDisposeOnSector().SetDisposalInfo(5, 7, 1, 0.0, 0.0, 0.0));    // -2 / 1
    EXPECT_FALSE(CDisposeOnSector().SetDisposalInfo(3, 5, -1, 0.0, 0.0, 0.0));  // -8 / -1
    EXPECT_TRUE(CDisposeOnSector().SetDisposalInfo(5, 7, 2, 0.0, 0.0, 0.0));    // 3 / 2 = 1
    EXPECT_TRUE(CDisposeOnSector().SetDisposalInfo(0x40000000, 1, 4, 0.0, 0.0, 0.0))
        << "the product wraps in 32 bits";
}
