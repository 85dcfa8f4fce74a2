#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "host/ed/Answer.h"
#include "host/ed/Keywords.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::Answer;
using kelaz::ParseAnswer;
using Kind = kelaz::Answer::Kind;

TEST(AnswerGrammar, EveryFormOfAnswer) {
    Answer a = ParseAnswer(L"100,-20.5");
    EXPECT_EQ(a.kind, Kind::kPoint);
    EXPECT_FALSE(a.relative);
    EXPECT_POINT_NEAR(a.point, AcGePoint3d(100, -20.5, 0), 0);

    a = ParseAnswer(L"  1.5 , 2 , -3.  ");
    EXPECT_EQ(a.kind, Kind::kPoint);
    EXPECT_POINT_NEAR(a.point, AcGePoint3d(1.5, 2, -3), 0);

    a = ParseAnswer(L"@10,0");
    EXPECT_EQ(a.kind, Kind::kPoint);
    EXPECT_TRUE(a.relative);
    EXPECT_POINT_NEAR(a.point, AcGePoint3d(10, 0, 0), 0);

    a = ParseAnswer(L"@");  // the last point itself
    EXPECT_EQ(a.kind, Kind::kPoint);
    EXPECT_TRUE(a.relative);
    EXPECT_POINT_NEAR(a.point, AcGePoint3d::kOrigin, 0);

    a = ParseAnswer(L"drag 5,6,7");
    EXPECT_EQ(a.kind, Kind::kDrag);
    EXPECT_POINT_NEAR(a.point, AcGePoint3d(5, 6, 7), 0);
    a = ParseAnswer(L"DRAG @1,1");
    EXPECT_EQ(a.kind, Kind::kDrag);
    EXPECT_TRUE(a.relative);

    EXPECT_EQ(ParseAnswer(L"").kind, Kind::kEnter);
    EXPECT_EQ(ParseAnswer(L"   \t").kind, Kind::kEnter);
    EXPECT_EQ(ParseAnswer(L"^C").kind, Kind::kCancel);
    EXPECT_EQ(ParseAnswer(L"esc").kind, Kind::kCancel);
    EXPECT_EQ(ParseAnswer(L" ESC ").kind, Kind::kCancel);

    a = ParseAnswer(L"'PickHeight");
    EXPECT_EQ(a.kind, Kind::kTransparent);
    EXPECT_EQ(a.text, L"PickHeight");

    a = ParseAnswer(L" Arc ");
    EXPECT_EQ(a.kind, Kind::kWord);
    EXPECT_EQ(a.text, L"Arc");
    a = ParseAnswer(L"-12");  // a number without a comma is a word: a count, a height
    EXPECT_EQ(a.kind, Kind::kWord);
    EXPECT_EQ(a.text, L"-12");
    a = ParseAnswer(L"dragon");  // starts like drag, is a word
    EXPECT_EQ(a.kind, Kind::kWord);
}

TEST(AnswerGrammar, CommentsAreNoAnswer) {
    EXPECT_EQ(ParseAnswer(L"# the arc's start").kind, Kind::kComment);
    EXPECT_EQ(ParseAnswer(L"   # indented").kind, Kind::kComment);
    // A comment after an answer is dropped; a '#' inside a word is part of it.
    Answer a = ParseAnswer(L"0,0  # origin");
    EXPECT_EQ(a.kind, Kind::kPoint);
    a = ParseAnswer(L"A#1");
    EXPECT_EQ(a.kind, Kind::kWord);
    EXPECT_EQ(a.text, L"A#1");
    EXPECT_EQ(ParseAnswer(L" # ").kind, Kind::kComment);
    EXPECT_EQ(kelaz::StripComment(L"text # note"), L"text");
}

TEST(AnswerGrammar, GarbageIsMalformedWithAReason) {
    for (const wchar_t* bad :
         {L"1,", L",2", L"1,2,3,4", L"1,,2", L"1e3,2", L"0x10,2", L"1,2a", L"@1", L"@a,b", L"drag",
          L"drag 1", L"drag x,y", L"1.2.3,4", L"+,1", L"'", L"'two words", L"nan,1", L"inf,1"}) {
        const Answer a = ParseAnswer(bad);
        EXPECT_EQ(a.kind, Kind::kMalformed) << kelaz::ToUtf8(CString(bad));
        EXPECT_FALSE(a.text.IsEmpty()) << kelaz::ToUtf8(CString(bad));
    }
    double v = 0;
    EXPECT_TRUE(kelaz::ParseDecimal(L" -.5 ", v));
    EXPECT_DOUBLE_EQ(v, -0.5);
    EXPECT_FALSE(kelaz::ParseDecimal(L".", v));
    EXPECT_FALSE(kelaz::ParseDecimal(L"1 2", v));
}

TEST(AnswerGrammar, PointsBeyondTheDrawingExtentAreRefusedNamingTheLimit) {
    const Answer edge = ParseAnswer(L"1000000000,-1000000000,1000000000");
    EXPECT_EQ(edge.kind, Kind::kPoint);
    EXPECT_EQ(edge.point.y, -1e9);
    for (const wchar_t* far : {L"99999999999999999999999999999999,1", L"1,-1000000000.5",
                               L"0,0,2000000000", L"drag 3000000000,0"}) {
        const Answer a = ParseAnswer(far);
        EXPECT_EQ(a.kind, Kind::kMalformed) << kelaz::ToUtf8(CString(far));
        EXPECT_NE(a.text.Find(L"±1000000000 毫米"), -1) << kelaz::ToUtf8(a.text);
    }
    // Digits beyond a double's range are no number at all, never an infinity.
    const std::wstring overflow = std::wstring(400, L'9') + L",1";
    EXPECT_EQ(ParseAnswer(CString(overflow)).kind, Kind::kMalformed);
    // An offset is judged once it is added to the last point.
    EXPECT_EQ(ParseAnswer(L"@2000000000,0").kind, Kind::kPoint);
}

TEST(Keywords, MatchAsTheHostDoes) {
    using kelaz::KeywordMatches;
    // Capitals, or a longer prefix when the capitals lead; any case.
    EXPECT_TRUE(KeywordMatches(L"Arc", L"a"));
    EXPECT_TRUE(KeywordMatches(L"Arc", L"AR"));
    EXPECT_TRUE(KeywordMatches(L"Arc", L"arc"));
    EXPECT_FALSE(KeywordMatches(L"Arc", L"arcs"));
    EXPECT_FALSE(KeywordMatches(L"Arc", L"x"));
    EXPECT_TRUE(KeywordMatches(L"BEgin", L"be"));
    EXPECT_FALSE(KeywordMatches(L"BEgin", L"b"));
    EXPECT_TRUE(KeywordMatches(L"BEgin", L"BEG"));
    // Capitals inside the word: only they, or the whole word.
    EXPECT_TRUE(KeywordMatches(L"eXit", L"x"));
    EXPECT_TRUE(KeywordMatches(L"eXit", L"EXIT"));
    EXPECT_FALSE(KeywordMatches(L"eXit", L"e"));
    EXPECT_FALSE(KeywordMatches(L"eXit", L"ex"));
    // No capitals: the whole word.
    EXPECT_TRUE(KeywordMatches(L"arc", L"ARC"));
    EXPECT_FALSE(KeywordMatches(L"arc", L"a"));

    const kelaz::KeywordList undo(L"BEgin End Mark Back");
    EXPECT_EQ(undo.Match(L"b"), 3);  // Back: BEgin needs BE
    EXPECT_EQ(undo.Match(L"BE"), 0);
    EXPECT_EQ(undo.Match(L"m"), 2);
    EXPECT_EQ(undo.Match(L"z"), -1);

    const kelaz::KeywordList local(L"Hu Tui _ Arc Undo");
    EXPECT_EQ(local.Match(L"h"), 0);
    EXPECT_EQ(local.Match(L"_u"), 1);
    EXPECT_EQ(local.Match(L"u"), -1);
    EXPECT_EQ(local.GlobalWord(0), L"Arc");
    EXPECT_EQ(kelaz::KeywordList(L"A U").GlobalWord(1), L"U");
}

// Random lines, half of them built from the grammar's own pieces, must parse without a crash
// or a sanitizer report, and every point that parses must be finite.
TEST(AnswerGrammar, RandomLinesNeverBreakTheParser) {
    std::mt19937 rng(20240521);
    const wchar_t* pieces[] = {L"@",
                               L",",
                               L"-",
                               L"+",
                               L".",
                               L"#",
                               L"'",
                               L"drag ",
                               L"^C",
                               L"ESC",
                               L"1",
                               L"0",
                               L"99999999999999999999",
                               L" ",
                               L"\t",
                               L"e",
                               L"中",
                               L"\r",
                               L"\xFFFD",
                               L"A"};
    int points = 0;
    for (int i = 0; i < 100000; ++i) {
        std::wstring line;
        const int n = static_cast<int>(rng() % 12);
        for (int k = 0; k < n; ++k) {
            if (i % 2 == 0) {
                line += pieces[rng() % std::size(pieces)];
            } else {
                line += static_cast<wchar_t>(1 + rng() % 0x3000);
            }
        }
        const Answer a = ParseAnswer(CString(line));
        if (a.kind == Kind::kPoint || a.kind == Kind::kDrag) {
            ++points;
            ASSERT_TRUE(std::isfinite(a.point.x) && std::isfinite(a.point.y) &&
                        std::isfinite(a.point.z));
        }
        if (a.kind == Kind::kMalformed) {
            ASSERT_FALSE(a.text.IsEmpty());
        }
    }
    EXPECT_GT(points, 0);  // the generator does reach the point forms
}

}  // namespace
