#include <gtest/gtest.h>

#include "host/ui/MessageBox.h"
#include "module/layout/CalcPositionInRect.h"

namespace {

AcGePoint3dArray Rect(double along, double across) {
    return {AcGePoint3d(0, 0, 0), AcGePoint3d(along, 0, 0), AcGePoint3d(along, across, 0),
            AcGePoint3d(0, across, 0)};
}

void ExpectPoints(const AcGePoint3dArray& actual, const AcGePoint3dArray& expected) {
    ASSERT_EQ(actual.length(), expected.length());
    for (int i = 0; i < actual.length(); ++i) {
        EXPECT_TRUE(actual[i].isEqualTo(expected[i], AcGeTol()))
            << "point " << i << ": " << actual[i].x << "," << actual[i].y << "," << actual[i].z;
    }
}

class CalcPositionInRect : public ::testing::Test {
protected:
    kelaz::RecordingMessageSink sink;
    kelaz::ScopedMessageSink install{sink};
};

}  // namespace

TEST_F(CalcPositionInRect, RowsRunEdgeToEdgeFromTheFirstSide) {
    CCalcPositionInRect layout(Rect(3000, 2000), 2, 3, 0, 0);
    ExpectPoints(layout.GetPoints(),
                 {AcGePoint3d(0, 0, 0), AcGePoint3d(1500, 0, 0), AcGePoint3d(3000, 0, 0),
                  AcGePoint3d(0, 2000, 0), AcGePoint3d(1500, 2000, 0), AcGePoint3d(3000, 2000, 0)});
    // Every call rebuilds the result instead of adding to it.
    EXPECT_EQ(layout.GetPoints().length(), 6);
    EXPECT_TRUE(sink.Records().empty());
}

TEST_F(CalcPositionInRect, MarginsInsetRowEndsAndOuterRows) {
    CCalcPositionInRect layout(Rect(3000, 2000), 2, 3, 500, 400);
    ExpectPoints(layout.GetPoints(), {AcGePoint3d(500, 400, 0), AcGePoint3d(1500, 400, 0),
                                      AcGePoint3d(2500, 400, 0), AcGePoint3d(500, 1600, 0),
                                      AcGePoint3d(1500, 1600, 0), AcGePoint3d(2500, 1600, 0)});
    // A margin below the tolerance is no margin.
    CCalcPositionInRect tiny(Rect(3000, 2000), 1, 2, 5e-7, 5e-7);
    ExpectPoints(tiny.GetPoints(), {AcGePoint3d(0, 0, 0), AcGePoint3d(3000, 0, 0)});
}

TEST_F(CalcPositionInRect, EachMarginIsCheckedAgainstTheOtherSide) {
    // 1000 along is less than half of the 3000 side it insets, but not less than half of 1800.
    CCalcPositionInRect along(Rect(3000, 1800), 2, 3, 1000, 0);
    EXPECT_EQ(along.GetPoints().length(), 0);
    ASSERT_EQ(sink.Records().size(), 1u);
    EXPECT_EQ(sink.Records()[0].caption, L"Kelsoft");
    EXPECT_EQ(sink.Records()[0].flags, 0x12030u);
    EXPECT_TRUE(sink.Records()[0].text.Right(1) == L"!");
    EXPECT_NE(sink.Records()[0].text.Find(L"边距过大"), -1);

    // 899 along passes, and 1501 across is refused against half of the 3000 side...
    CCalcPositionInRect across(Rect(3000, 1800), 2, 3, 899, 1501);
    EXPECT_EQ(across.GetPoints().length(), 0);
    ASSERT_EQ(sink.Records().size(), 2u);
    EXPECT_NE(sink.Records()[1].text, sink.Records()[0].text);
    // ...while 1400 across, more than half of its own 1800 side, is accepted: the insets cross
    // and the rows step on past the far side.
    CCalcPositionInRect crossed(Rect(3000, 1800), 2, 1, 0, 1400);
    ExpectPoints(crossed.GetPoints(), {AcGePoint3d(0, 1400, 0), AcGePoint3d(0, 2400, 0)});
    EXPECT_EQ(sink.Records().size(), 2u);
    // Exactly half of the other side still fits; beyond it by the tolerance does not.
    CCalcPositionInRect half(Rect(3000, 1800), 1, 2, 900, 0);
    ExpectPoints(half.GetPoints(), {AcGePoint3d(900, 0, 0), AcGePoint3d(2100, 0, 0)});
    CCalcPositionInRect over(Rect(3000, 1800), 1, 2, 900.00001, 0);
    EXPECT_EQ(over.GetPoints().length(), 0);
    EXPECT_EQ(sink.Records().size(), 3u);
}

TEST_F(CalcPositionInRect, SingleRowsSinglePointsAndNothing) {
    CCalcPositionInRect oneRow(Rect(3000, 2000), 1, 3, 0, 400);
    ExpectPoints(oneRow.GetPoints(),
                 {AcGePoint3d(0, 400, 0), AcGePoint3d(1500, 400, 0), AcGePoint3d(3000, 400, 0)});
    // A single point stands at the row's corner-0 end, not in its middle.
    CCalcPositionInRect onePerRow(Rect(3000, 2000), 3, 1, 500, 0);
    ExpectPoints(onePerRow.GetPoints(),
                 {AcGePoint3d(500, 0, 0), AcGePoint3d(500, 1000, 0), AcGePoint3d(500, 2000, 0)});
    EXPECT_EQ(CCalcPositionInRect(Rect(3000, 2000), 0, 3, 0, 0).GetPoints().length(), 0);
    EXPECT_EQ(CCalcPositionInRect(Rect(3000, 2000), 2, 0, 0, 0).GetPoints().length(), 0);
    EXPECT_EQ(CCalcPositionInRect(AcGePoint3dArray{AcGePoint3d::kOrigin}, 2, 2, 0, 0)
                  .GetPoints()
                  .length(),
              0);
    EXPECT_TRUE(sink.Records().empty());
}

TEST_F(CalcPositionInRect, TiltedRectangleInSpaceIgnoresTheFarCorner) {
    // A rectangle standing in the XZ plane; the far corner is deliberately wrong.
    const AcGePoint3dArray corners{AcGePoint3d(100, 0, 0), AcGePoint3d(100, 0, 400),
                                   AcGePoint3d(999, 999, 999), AcGePoint3d(700, 0, 0)};
    CCalcPositionInRect layout(corners, 2, 2, 100, 50);
    ExpectPoints(layout.GetPoints(), {AcGePoint3d(150, 0, 100), AcGePoint3d(150, 0, 300),
                                      AcGePoint3d(650, 0, 100), AcGePoint3d(650, 0, 300)});
    // Copies carry the whole layout.
    CCalcPositionInRect copy = layout;
    EXPECT_EQ(copy.GetPoints(), layout.GetPoints());
}
