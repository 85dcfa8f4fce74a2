#include <gtest/gtest.h>

#include <climits>

#include "host/text/CString.h"
#include "host/text/ResourceTable.h"
#include "host/ui/ResourceOverride.h"

TEST(TextCString, FormatUsesWideArgumentsAndTheSystemFormats) {
    CString s;
    s.Format(L"%s-%c-%d", L"暖通", L'风', 42);
    EXPECT_EQ(s, L"暖通-风-42");
    s.Format(L"%.fF%+.f", 3.0, 500.0);
    EXPECT_EQ(s, L"3F+500");
    s.Format(L"%.fF%+.f", 3.0, 0.0);
    EXPECT_EQ(s, L"3F+0");
    s.Format(L"%g|%10.4f|%%", 1500.0, 2.5);
    EXPECT_EQ(s, L"1500|    2.5000|%");
    s.AppendFormat(L"%ls", L"!");
    EXPECT_EQ(s, L"1500|    2.5000|%!");

    // Longer than any first guess of the buffer.
    const CString big(L'x', 5000);
    s.Format(L"[%s]", big.GetString());
    EXPECT_EQ(s.GetLength(), 5002);
}

TEST(TextCString, SearchAndExtractionClampAsTheFrameworkDoes) {
    const CString path = L"暖通\\风部件\\风法兰";
    EXPECT_EQ(path.Find(L'\\'), 2);
    EXPECT_EQ(path.Find(L"\\", 3), 6);
    EXPECT_EQ(path.ReverseFind(L'\\'), 6);
    EXPECT_EQ(path.Find(L"水"), -1);
    EXPECT_EQ(path.Find(L'x', 99), -1);
    EXPECT_EQ(path.Left(2), L"暖通");
    EXPECT_EQ(path.Right(3), L"风法兰");
    EXPECT_EQ(path.Mid(7), L"风法兰");
    EXPECT_EQ(path.Mid(3, 3), L"风部件");
    EXPECT_EQ(path.Left(-1), L"");
    EXPECT_EQ(path.Left(100), path);
    EXPECT_EQ(path.Mid(100), L"");
    EXPECT_THROW((void)path.GetAt(10), CInvalidArgException);
    EXPECT_THROW((void)path.GetAt(-1), CInvalidArgException);

    int start = 0;
    const CString list = L",1,,3,5";
    EXPECT_EQ(list.Tokenize(L",", start), L"1");
    EXPECT_EQ(list.Tokenize(L",", start), L"3");
    EXPECT_EQ(list.Tokenize(L",", start), L"5");
    EXPECT_EQ(list.Tokenize(L",", start), L"");
    EXPECT_EQ(start, -1);
}

TEST(TextCString, ModificationKeepsTheRestOfTheText) {
    CString s = L"  \t12.5 \n";
    s.Trim();
    EXPECT_EQ(s, L"12.5");
    s = L"xx3Fxx";
    s.Trim(L'x');
    EXPECT_EQ(s, L"3F");
    s.MakeLower();
    EXPECT_EQ(s, L"3f");
    s = L"a.b.c";
    EXPECT_EQ(s.Replace(L".", L"::"), 2);
    EXPECT_EQ(s, L"a::b::c");
    EXPECT_EQ(s.Remove(L':'), 4);
    EXPECT_EQ(s.Insert(1, L"-"), 4);
    EXPECT_EQ(s, L"a-bc");
    EXPECT_EQ(s.Delete(1, 10), 1);
    EXPECT_EQ(s, L"a");
    EXPECT_EQ(CString(L"abc").CompareNoCase(L"ABC"), 0);
    EXPECT_LT(CString(L"abc").Compare(L"abd"), 0);
}

TEST(TextCString, RuntimeConversionsReadTheLongestPrefix) {
    EXPECT_DOUBLE_EQ(_wtof(L" 12.5abc"), 12.5);
    EXPECT_DOUBLE_EQ(_wtof(L"abc"), 0.0);
    EXPECT_DOUBLE_EQ(_wtof(L"-0.25"), -0.25);
    EXPECT_DOUBLE_EQ(_wtof(L"1e3"), 1000.0);
    EXPECT_EQ(_wtoi(L"007"), 7);
    EXPECT_EQ(_wtoi(L"-12x"), -12);
    EXPECT_EQ(_wtoi(L"99999999999"), INT_MAX);
    EXPECT_EQ(_wtoi(nullptr), 0);
}

TEST(TextCString, Utf8AtTheEdges) {
    const CString text = L"风法兰 DN100 ≥ 𝄞";
    EXPECT_EQ(kelaz::FromUtf8(kelaz::ToUtf8(text)), text);
    EXPECT_EQ(kelaz::ToUtf8(CString(L"暖通")), "\xE6\x9A\x96\xE9\x80\x9A");
    // A stray continuation byte, a truncated sequence and an overlong '/' each become U+FFFD.
    EXPECT_EQ(kelaz::FromUtf8("a\x80"
                              "b"),
              L"a\xFFFD"
              L"b");
    EXPECT_EQ(kelaz::FromUtf8("\xE6\x9A"), L"\xFFFD");
    EXPECT_EQ(kelaz::FromUtf8("\xC0\xAF"
                              "x"),
              L"\xFFFD"
              L"x");
}

TEST(TextCString, LoadStringReadsTheInnermostOverride) {
    const kelaz::ResourceTable outer({{1, L"外"}, {2, L"二"}});
    const kelaz::ResourceTable inner({{1, L"内"}});
    CString s;
    EXPECT_FALSE(s.LoadString(1));  // the host's own table has none of the module's texts
    {
        CAcModuleResourceOverride a(outer);
        EXPECT_TRUE(s.LoadString(1));
        EXPECT_EQ(s, L"外");
        {
            CAcModuleResourceOverride b(inner);
            EXPECT_TRUE(s.LoadString(1));
            EXPECT_EQ(s, L"内");
            EXPECT_FALSE(s.LoadString(2));
            EXPECT_EQ(s, L"");
        }
        EXPECT_TRUE(s.LoadString(2));
        EXPECT_EQ(s, L"二");
    }
    EXPECT_FALSE(s.LoadString(2));
}
