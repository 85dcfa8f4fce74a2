#include <gtest/gtest.h>

#include "tests/support/RunProgram.h"

using kelaz::test::RunKelaz;

TEST(AppCalcArc, EvenlyAlongTheArcWithMarginsAndTheRefusal) {
    auto r = RunKelaz("calc arc --radius 1000 --count 3");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "1000,0,0\n707.107,707.107,0\n0,1000,0\n");
    // 500 off each end of radius 1000 is 30 degrees; a centre elsewhere moves the points.
    r = RunKelaz("calc arc --center 100,200 --radius 1000 --count 2 --margin 500");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "966.025,700,0\n600,1066.03,0\n");
    // Counter-clockwise from --from to --to, through 180 degrees here.
    r = RunKelaz("calc arc --radius 10 --from 90 --to -90 --count 3");
    EXPECT_EQ(r.out, "0,10,0\n-10,0,0\n0,-10,0\n");

    r = RunKelaz("calc arc --radius 1000 --count 3 --margin 1000.5");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "[Kelsoft] 您输入的偏移距离过大，无法布置!\n");
    const std::pair<const char*, const char*> refused[] = {
        {"--radius 0", "--radius：圆弧的半径必须大于 0。\n"},
        {"--radius 1e3", "--radius：“1e3”不是数值。\n"},
        {"--radius 10 --count x", "--count：“x”不是整数。\n"},
        {"--radius 10 --center 1", "--center：“1”不是点：点写作 x,y 或 x,y,z。\n"},
    };
    for (const auto& [bad, says] : refused) {
        r = RunKelaz(std::string("calc arc ") + bad);
        EXPECT_EQ(r.status, 2) << bad;
        EXPECT_EQ(r.out, std::string("[kelaz] ") + says) << bad;
    }
    EXPECT_EQ(RunKelaz("calc arc --count 3").status, 2);  // --radius is required
}

TEST(AppCalcSector, RingsOuterFirstAndTheRefusedDecrement) {
    auto r = RunKelaz(
        "calc sector --points \"2000,0 1414.2135623730951,1414.2135623730951 0,2000 "
        "707.1067811865476,707.1067811865476\" "
        "--rings 2 --count 3 --decrement 1");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "2000,0,0\n1414.21,1414.21,0\n0,2000,0\n1000,0,0\n0,1000,0\n");
    r = RunKelaz(
        "calc sector --points \"2000,0 1414.2136,1414.2136 0,2000 1000,0\" --rings 4 --count 4 "
        "--decrement 2");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "[Kelsoft] 输入数据错误!\n");
    r = RunKelaz("calc sector --points \"0,0 1,1 2,0\"");
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out,
              "[kelaz] --points：请给出外弧的起点、弧上一点和终点，再给出内半径上的一点（给了 3 "
              "个点）。\n");
    EXPECT_EQ(RunKelaz("calc sector --points \"2000,0 0,2000 -2000,0 0,0\" --rings two").status, 2);
}
