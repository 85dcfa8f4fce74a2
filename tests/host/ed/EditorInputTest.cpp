#include <gtest/gtest.h>

#include "host/ed/CommandProcessor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::test::CommandLineHarness;

AcGePoint3d Pt(const ads_point p) { return {p[0], p[1], p[2]}; }

int Count(const std::string& text, const std::string& needle) {
    int n = 0;
    for (size_t at = text.find(needle); at != std::string::npos; at = text.find(needle, at + 1)) {
        ++n;
    }
    return n;
}

CString Input() {
    ACHAR buf[64] = {};
    EXPECT_EQ(acedGetInput(buf), RTNORM);
    return buf;
}

TEST(EditorInput, PointsRelativePointsAndTheLastPoint) {
    CommandLineHarness cl({L"100,200", L"@50,-25", L"@", L"7,8,9"});
    ads_point p;
    ASSERT_EQ(acedGetPoint(nullptr, L"\n指定第一点:", p), RTNORM);
    EXPECT_POINT_NEAR(Pt(p), AcGePoint3d(100, 200, 0), 0);
    const ads_point base = {100, 200, 0};
    ASSERT_EQ(acedGetPoint(base, L"\n指定下一点:", p), RTNORM);
    EXPECT_POINT_NEAR(Pt(p), AcGePoint3d(150, 175, 0), 0);
    ASSERT_EQ(acedGetPoint(nullptr, L"\n再一点:", p), RTNORM);
    EXPECT_POINT_NEAR(Pt(p), AcGePoint3d(150, 175, 0), 0);
    ASSERT_EQ(acedGetPoint(nullptr, L"\n三维:", p), RTNORM);
    resbuf rb;
    ASSERT_EQ(acedGetVar(L"LASTPOINT", &rb), RTNORM);
    EXPECT_EQ(rb.restype, RT3DPOINT);
    EXPECT_POINT_NEAR(Pt(rb.resval.rpoint), AcGePoint3d(7, 8, 9), 0);
    // Each line is echoed after its prompt; a prompt's leading line break starts a new line
    // only once.
    EXPECT_EQ(cl.Out(), "指定第一点:100,200\n指定下一点:@50,-25\n再一点:@\n三维:7,8,9\n");
}

TEST(EditorInput, KeywordsAndInitGetApplyToTheNextCallOnly) {
    CommandLineHarness cl({L"a", L"UNDO", L"u", L"a"});
    ads_point p;
    ASSERT_EQ(acedInitGet(0, L"Arc Undo _ Arc Undo"), RTNORM);
    ASSERT_EQ(acedGetPoint(nullptr, L"\n指定下一点[弧线(A)/退回(U)]:", p), RTKWORD);
    EXPECT_EQ(Input(), L"Arc");  // the full keyword, in its global form
    ASSERT_EQ(acedInitGet(0, L"A U"), RTNORM);
    // "UNDO" is longer than the keyword U: asked again.
    ASSERT_EQ(acedGetPoint(nullptr, L"\n下一点:", p), RTKWORD);
    EXPECT_EQ(Input(), L"U");
    // The keywords were used up: "a" is now a wrong answer, asked again; the input runs out.
    EXPECT_EQ(acedGetPoint(nullptr, L"\n下一点:", p), RTCAN);
    EXPECT_NE(cl.Out().find("需要点或选项关键字"), std::string::npos);
}

TEST(EditorInput, FlagsOfInitGet) {
    CommandLineHarness cl({L"", L"5,5", L"", L"free text", L"0", L"-2", L"3"});
    ads_point p;
    // Enter is refused with RSG_NONULL and answered RTNONE without it.
    acedInitGet(RSG_NONULL, nullptr);
    ASSERT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTNORM);
    EXPECT_POINT_NEAR(Pt(p), AcGePoint3d(5, 5, 0), 0);
    EXPECT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTNONE);
    // Arbitrary input comes back as a keyword.
    acedInitGet(RSG_OTHER, L"A");
    ASSERT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTKWORD);
    EXPECT_EQ(Input(), L"free text");
    // Zero and negative numbers are refused until a positive one comes.
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    int n = 0;
    ASSERT_EQ(acedGetInt(L"\n数目:", &n), RTNORM);
    EXPECT_EQ(n, 3);
    const std::string out = cl.Out();
    EXPECT_NE(out.find("值必须非零"), std::string::npos);
    EXPECT_NE(out.find("值必须为正"), std::string::npos);
}

TEST(EditorInput, NumbersAndText) {
    CommandLineHarness cl(
        {L"2.5", L"40000", L"x", L"-7", L"12.5", L"管径 DN25  # note", L"管径 DN25", L"abcdefgh"});
    int n = 0;
    double r = 0;
    EXPECT_EQ(acedGetInt(L"\n整数:", &n), RTNORM);  // 2.5 and 40000 and x are asked again
    EXPECT_EQ(n, -7);
    EXPECT_EQ(acedGetReal(L"\n数值:", &r), RTNORM);
    EXPECT_DOUBLE_EQ(r, 12.5);
    ACHAR text[64] = {};
    EXPECT_EQ(acedGetString(1, L"\n文字:", text, 64), RTNORM);
    EXPECT_EQ(CString(text), L"管径 DN25");
    EXPECT_EQ(acedGetString(0, L"\n文字:", text, 64), RTNORM);  // a blank ends it
    EXPECT_EQ(CString(text), L"管径");
    EXPECT_EQ(acedGetString(1, L"\n短:", text, 4), RTINPUTTRUNCATED);
    EXPECT_EQ(CString(text), L"abc");
    // 2.5, 40000 and x were each refused once.
    EXPECT_EQ(Count(cl.Out(), "需要介于 -32768 和 32767 之间的整数。"), 3);
}

TEST(EditorInput, CancelAtEveryInputFunction) {
    CommandLineHarness cl({L"^C", L"ESC", L"^C", L"esc", L"^C", L"^C"});
    ads_point p;
    ads_name name;
    int n = 0;
    double r = 0;
    ACHAR text[32] = {};
    EXPECT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTCAN);
    EXPECT_EQ(acedGetInt(L"\n整数:", &n), RTCAN);
    EXPECT_EQ(acedGetReal(L"\n数值:", &r), RTCAN);
    EXPECT_EQ(acedGetString(1, L"\n文字:", text, 32), RTCAN);
    EXPECT_EQ(acedGetKword(L"\n选项:", text, 32), RTCAN);
    EXPECT_EQ(acedEntSel(nullptr, name, p), RTCAN);
    EXPECT_FALSE(cl.editor.InputExhausted());
    EXPECT_EQ(cl.Out(),
              "点:^C\n*取消*\n整数:ESC\n*取消*\n数值:^C\n*取消*\n文字:esc\n*取消*\n"
              "选项:^C\n*取消*\n选择对象: ^C\n*取消*");
}

TEST(EditorInput, RunningOutOfInputCancelsAndSaysWhere) {
    CommandLineHarness cl({L"# a comment only", L"1,1", L"   # another"});
    ads_point p;
    ASSERT_EQ(acedGetPoint(nullptr, L"\n起点:", p), RTNORM);
    EXPECT_FALSE(cl.editor.InputExhausted());
    EXPECT_EQ(acedGetPoint(nullptr, L"\n指定圆弧的端点:", p), RTCAN);
    EXPECT_TRUE(cl.editor.InputExhausted());
    EXPECT_EQ(cl.editor.ExhaustedLine(), 3);
    EXPECT_EQ(cl.editor.ExhaustedPrompt(), L"指定圆弧的端点:");
    // Every later call is cancelled at once, and the first place is kept.
    int n = 0;
    EXPECT_EQ(acedGetInt(L"\n整数:", &n), RTCAN);
    double r = 0;
    EXPECT_EQ(acedGetReal(L"\n数值:", &r), RTCAN);
    ACHAR text[8];
    EXPECT_EQ(acedGetString(0, L"\n文字:", text, 8), RTCAN);
    EXPECT_EQ(cl.editor.ExhaustedPrompt(), L"指定圆弧的端点:");
    EXPECT_EQ(cl.Out(), "起点:1,1\n指定圆弧的端点:*取消*\n整数:*取消*\n数值:*取消*\n文字:*取消*");
}

TEST(EditorInput, WrongAnswersAreNamedAndAskedAgain) {
    CommandLineHarness cl({L"1,2,3,4", L"drag 1,1", L"hello", L"3,4"});
    ads_point p;
    ASSERT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTNORM);
    EXPECT_POINT_NEAR(Pt(p), AcGePoint3d(3, 4, 0), 0);
    EXPECT_EQ(cl.Out(),
              "点:1,2,3,4\n点无效：\"1,2,3,4\"。点的格式是 x,y、x,y,z 或 @dx,dy。\n"
              "点:drag 1,1\n光标采样 (drag) 只在拖动时有效。\n"
              "点:hello\n需要点或选项关键字。\n点:3,4\n");
}

TEST(EditorInput, PointsBeyondTheDrawingExtentAndOverflowingNumbersAreAskedAgain) {
    const std::wstring overflow(400, L'9');
    CommandLineHarness cl({L"999999999,0", L"@2,0", L"99999999999999999999999999999999,1", L"@-1,0",
                           overflow.c_str(), L"5"});
    ads_point p;
    ASSERT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTNORM);
    // Relative to the last point the first answer is outside too; it is checked once resolved.
    ASSERT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTNORM);
    EXPECT_POINT_NEAR(Pt(p), AcGePoint3d(999999998, 0, 0), 0);
    EXPECT_EQ(Count(cl.Out(), "点超出图形范围：坐标不能超过 ±1000000000 毫米。"), 2) << cl.Out();
    double r = 0;
    ASSERT_EQ(acedGetReal(L"\n数值:", &r), RTNORM);
    EXPECT_EQ(r, 5.0) << "a number too large for a double is no number";
}

TEST(EditorInput, PrintfAndSystemVariables) {
    CommandLineHarness cl;
    EXPECT_EQ(acutPrintf(L"\n连续两点不能重合，请重新指定点%s %d", L"!", 3), 19);
    EXPECT_EQ(cl.Out(), "连续两点不能重合，请重新指定点! 3");
    resbuf rb;
    rb.restype = RTSHORT;
    rb.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"CMDECHO", &rb), RTNORM);
    EXPECT_EQ(cl.editor.CmdEcho(), 0);
    rb.resval.rint = 5;
    EXPECT_EQ(acedSetVar(L"cmdecho", &rb), RTREJ);
    rb.restype = RTREAL;
    EXPECT_EQ(acedSetVar(L"CMDECHO", &rb), RTREJ);
    EXPECT_EQ(acedSetVar(L"NOSUCHVAR", &rb), RTERROR);
    resbuf out;
    ASSERT_EQ(acedGetVar(L"CMDECHO", &out), RTNORM);
    EXPECT_EQ(out.restype, RTSHORT);
    EXPECT_EQ(out.resval.rint, 0);
}

TEST(EditorInput, NoCommandLineAnswersError) {
    ads_point p;
    EXPECT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTERROR);
    EXPECT_EQ(acedInitGet(0, L"A"), RTERROR);
    EXPECT_EQ(acedCommand(RTSTR, L"_u", RTNONE), RTERROR);
}

}  // namespace
