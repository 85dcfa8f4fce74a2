#include <gtest/gtest.h>

#include "app/PointText.h"
#include "tests/support/RunProgram.h"

using kelaz::test::RunKelaz;

TEST(AppCalcRect, PrintsThePointsInLayoutOrder) {
    const auto r = RunKelaz(
        "calc rect --corners \"0,0 3000,0 3000,2000 0,2000\" --rows 2 --per-row 3 --margin-along "
        "500 "
        "--margin-across 400");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "500,400,0\n1500,400,0\n2500,400,0\n500,1600,0\n1500,1600,0\n2500,1600,0\n");
}

TEST(AppCalcRect, RefusedMarginPrintsTheWarningAndNoPoints) {
    const auto r = RunKelaz(
        "calc rect --corners \"0,0 3000,0 3000,1800 0,1800\" --rows 2 --per-row 3 "
        "--margin-along 1000");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out.rfind("[Kelsoft] ", 0), 0u) << r.out;
    EXPECT_NE(r.out.find("边距过大"), std::string::npos);
    EXPECT_EQ(r.out.find(","), std::string::npos) << "no point may be printed";
}

TEST(AppCalcRect, BadInputIsNamedAndNothingIsPrinted) {
    struct Case {
        const char* args;
        const char* says;
    } cases[] = {
        {"--corners \"0,0 3000,0 3000,2000\"",
         "--corners：请按绘图顺序给出矩形的四个角点（给了 3 个点）"},
        {"--corners \"0,0 3000,x 3000,2000 0,2000\"", "--corners：“3000,x”中的“x”不是数值"},
        {"--corners \"0,0 1e3,0 3000,2000 0,2000\"", "--corners：“1e3,0”中的“1e3”不是数值"},
        {"--corners \"0,0 3000 3000,2000 0,2000\"", "--corners：“3000”不是点：点写作 x,y 或 x,y,z"},
        {"--corners \"0,0 3000,0 3000,2000 0,2000\" --rows 2.5", "--rows：“2.5”不是整数"},
        {"--corners \"0,0 3000,0 3000,2000 0,2000\" --margin-along .5",
         "--margin-along：“.5”不是数值"},
    };
    for (const Case& c : cases) {
        const auto r = RunKelaz(std::string("calc rect ") + c.args);
        EXPECT_EQ(r.status, 2) << c.args;
        EXPECT_EQ(r.out.rfind(std::string("[kelaz] ") + c.says, 0), 0u)
            << c.args << " -> " << r.out;
    }
    EXPECT_EQ(RunKelaz("calc rect --rows 2").status, 2);  // corners are required
    EXPECT_EQ(RunKelaz("calc nothing").status, 2);
}

TEST(AppCli, HelpAndVersion) {
    const auto version = RunKelaz("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("kelaz ", 0), 0u);
    const auto help = RunKelaz("calc rect --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--margin-across"), std::string::npos);
}

TEST(AppPointText, PointsAreParsedStrictly) {
    AcGePoint3dArray pts{AcGePoint3d(9, 9, 9)};
    std::string error;
    EXPECT_TRUE(kelaz::ParsePointList("  1,2 ;3,4,5\t-6.5,+7 ", pts, error));
    EXPECT_EQ(pts, (AcGePoint3dArray{AcGePoint3d(1, 2, 0), AcGePoint3d(3, 4, 5),
                                     AcGePoint3d(-6.5, 7, 0)}));
    EXPECT_FALSE(kelaz::ParsePointList("1,2 3,4,5,6", pts, error));
    EXPECT_NE(error.find("3,4,5,6"), std::string::npos);
    EXPECT_FALSE(kelaz::ParsePointList("1,,2", pts, error));
    EXPECT_FALSE(kelaz::ParsePointList("0,0 1000000001,0", pts, error));
    EXPECT_NE(error.find("±1000000000 毫米"), std::string::npos) << error;
    EXPECT_EQ(pts.length(), 3);  // untouched by a refusal
    EXPECT_TRUE(kelaz::ParsePointList("", pts, error));
    EXPECT_EQ(pts.length(), 0);
    EXPECT_EQ(kelaz::FormatPoint(AcGePoint3d(0.5, -1500, 1e-7)), "0.5,-1500,1e-07");
}
