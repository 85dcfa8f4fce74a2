#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "app/commands/PipeCommands.h"

namespace {

using kelaz::BulgeThroughPoints;

TEST(PipeCommands, TheBulgeOfThreePointsHasTheArcsSenseAndSize) {
    double bulge = 0.0;
    // A half circle over the top from left to right turns clockwise.
    ASSERT_TRUE(BulgeThroughPoints({0, 0, 0}, {1000, 1000, 0}, {2000, 0, 0}, bulge));
    EXPECT_NEAR(bulge, -1.0, 1e-12);
    ASSERT_TRUE(BulgeThroughPoints({2000, 0, 0}, {1000, 1000, 0}, {0, 0, 0}, bulge));
    EXPECT_NEAR(bulge, 1.0, 1e-12);
    // A quarter circle: tan(90° / 4).
    const double r = 1000.0, h = r / std::numbers::sqrt2;
    ASSERT_TRUE(BulgeThroughPoints({r, 0, 0}, {h, h, 0}, {0, r, 0}, bulge));
    EXPECT_NEAR(bulge, std::tan(std::numbers::pi / 8), 1e-12);
    // Three quarters through the far side: more than 1.
    ASSERT_TRUE(BulgeThroughPoints({r, 0, 0}, {-r, 0, 0}, {0, -r, 0}, bulge));
    EXPECT_NEAR(bulge, std::tan(3 * std::numbers::pi / 8), 1e-12);
    // The elevation does not matter.
    ASSERT_TRUE(BulgeThroughPoints({r, 0, 500}, {h, h, 500}, {0, r, 500}, bulge));
    EXPECT_NEAR(bulge, std::tan(std::numbers::pi / 8), 1e-12);
}

TEST(PipeCommands, NoArcPassesThroughPointsOnOneLine) {
    double bulge = 7.0;
    EXPECT_FALSE(BulgeThroughPoints({0, 0, 0}, {500, 0, 0}, {1000, 0, 0}, bulge));
    EXPECT_FALSE(BulgeThroughPoints({0, 0, 0}, {1500, 0, 0}, {1000, 0, 0}, bulge));
    EXPECT_FALSE(BulgeThroughPoints({0, 0, 0}, {0, 0, 0}, {1000, 0, 0}, bulge));
    EXPECT_FALSE(BulgeThroughPoints({0, 0, 0}, {500, 500, 0}, {0, 0, 0}, bulge));
    EXPECT_EQ(bulge, 7.0) << "untouched";
}

}  // namespace
