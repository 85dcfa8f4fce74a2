#include <gtest/gtest.h>

#include <climits>

#include "host/ge/LineSeg3d.h"
#include "module/entry/DispUtils.h"

TEST(DispUtils, ParseToDoubleAcceptsOnlyPlainDecimals) {
    double v = -1.0;
    EXPECT_TRUE(CDispUtils::ParseToDouble(L"  12.5 ", v));
    EXPECT_DOUBLE_EQ(v, 12.5);
    EXPECT_TRUE(CDispUtils::ParseToDouble(L"+3", v));
    EXPECT_DOUBLE_EQ(v, 3.0);
    EXPECT_TRUE(CDispUtils::ParseToDouble(L"-0.25", v));
    EXPECT_DOUBLE_EQ(v, -0.25);
    EXPECT_TRUE(CDispUtils::ParseToDouble(L"0.5", v));
    EXPECT_DOUBLE_EQ(v, 0.5);

    v = 42.0;
    for (const wchar_t* bad : {L"1.2.3", L".5", L"5.", L"-.5", L"+.5", L"1e3", L"1 000", L"+", L"-",
                               L"", L"   ", L"12a", L"3F", L"١٢"}) {
        EXPECT_FALSE(CDispUtils::ParseToDouble(bad, v)) << kelaz::ToUtf8(std::wstring_view(bad));
    }
    // Plain digits, but more than a double holds: refused, not read as infinity.
    EXPECT_FALSE(CDispUtils::ParseToDouble(CString(std::wstring(400, L'9')), v));
    EXPECT_DOUBLE_EQ(v, 42.0);  // untouched by every refusal
}

TEST(DispUtils, ParseToIntegerAcceptsOnlyPlainIntegers) {
    int v = -1;
    EXPECT_TRUE(CDispUtils::ParseToInteger(L"007", v));
    EXPECT_EQ(v, 7);
    EXPECT_TRUE(CDispUtils::ParseToInteger(L" -12\t", v));
    EXPECT_EQ(v, -12);
    EXPECT_TRUE(CDispUtils::ParseToInteger(L"-2147483648", v));
    EXPECT_EQ(v, INT_MIN);
    for (const wchar_t* bad : {L"1.0", L"12a", L"-", L"+", L"", L" ", L"1 2", L"a1", L"2147483648",
                               L"99999999999999999999999"}) {
        EXPECT_FALSE(CDispUtils::ParseToInteger(bad, v)) << kelaz::ToUtf8(std::wstring_view(bad));
    }
    EXPECT_EQ(v, INT_MIN);
}

TEST(DispUtils, FindSpecStringCountNeverOverlapsAndKeepsPositionsOnMiss) {
    CUIntArray positions;
    EXPECT_EQ(CDispUtils::FindSpecStringCount(L"aaaa", L"aa", positions), 2);
    ASSERT_EQ(positions.GetSize(), 2);
    EXPECT_EQ(positions[0], 0u);
    EXPECT_EQ(positions[1], 2u);
    EXPECT_EQ(CDispUtils::FindSpecStringCount(L"abc", L"x", positions), 0);
    EXPECT_EQ(positions.GetSize(), 2);  // a miss leaves the old positions
    EXPECT_EQ(CDispUtils::FindSpecStringCount(L"", L"a", positions), 0);
    EXPECT_EQ(CDispUtils::FindSpecStringCount(L"a", L"", positions), 0);
    EXPECT_EQ(CDispUtils::FindSpecStringCount(L"x\\\\y\\\\z", L"\\\\", positions), 2);
    EXPECT_EQ(positions[1], 4u);

    CStringArray names;
    EXPECT_EQ(CDispUtils::FindInCStringArray(L"A", names), -1);
    names.Add(L"a");
    names.Add(L"A");
    names.Add(L"A");
    EXPECT_EQ(CDispUtils::FindInCStringArray(L"A", names), 1);
    EXPECT_EQ(CDispUtils::FindInCStringArray(L"", names), -1);
}

// One row per case: function, text, separator, expected answer, expected text afterwards.
struct SegmentCase {
    bool (*fn)(CString&, const CString&);
    const wchar_t* name;
    const wchar_t* text;
    const wchar_t* sep;
    bool answer;
    const wchar_t* after;
};

TEST(DispUtils, SegmentFunctionsKeepTheirUnevenAnswers) {
    const wchar_t* path = L"暖通\\风部件\\风法兰";
    const SegmentCase cases[] = {
        {CDispUtils::CutFirstSegment, L"CutFirst", path, L"\\", true, L"风部件\\风法兰"},
        {CDispUtils::CutFirstSegment, L"CutFirst", path, L"", true, path},
        {CDispUtils::CutFirstSegment, L"CutFirst", L"", L"\\", false, L""},
        {CDispUtils::CutFirstSegment, L"CutFirst", L"暖通", L"\\", false, L"暖通"},
        {CDispUtils::GetFirstSegment, L"GetFirst", path, L"\\", true, L"暖通"},
        {CDispUtils::GetFirstSegment, L"GetFirst", path, L"", true, path},
        {CDispUtils::GetFirstSegment, L"GetFirst", L"", L"\\", true, L""},
        {CDispUtils::GetFirstSegment, L"GetFirst", L"暖通", L"\\", false, L"暖通"},
        {CDispUtils::CutLastSegment, L"CutLast", path, L"\\", true, L"暖通\\风部件"},
        {CDispUtils::CutLastSegment, L"CutLast", path, L"", true, path},
        {CDispUtils::CutLastSegment, L"CutLast", L"", L"\\", true, L""},
        {CDispUtils::CutLastSegment, L"CutLast", L"暖通", L"\\", false, L"暖通"},
        {CDispUtils::GetLastSegment, L"GetLast", path, L"\\", true, L"风法兰"},
        {CDispUtils::GetLastSegment, L"GetLast", path, L"", true, path},
        {CDispUtils::GetLastSegment, L"GetLast", L"", L"\\", false, L""},
        {CDispUtils::GetLastSegment, L"GetLast", L"暖通", L"\\", false, L"暖通"},
        // Separators longer than one character are skipped whole.
        {CDispUtils::CutFirstSegment, L"CutFirst", L"a::b::c", L"::", true, L"b::c"},
        {CDispUtils::GetLastSegment, L"GetLast", L"a::b::c", L"::", true, L"c"},
        {CDispUtils::CutLastSegment, L"CutLast", L"a::b::c", L"::", true, L"a::b"},
    };
    for (const SegmentCase& c : cases) {
        CString text = c.text;
        const std::string where =
            kelaz::ToUtf8(CString(c.name) + L"(" + c.text + L", " + c.sep + L")");
        EXPECT_EQ(c.fn(text, c.sep), c.answer) << where;
        EXPECT_EQ(text, c.after) << where;
    }
}

TEST(DispUtils, UnionStartsFromTheLongerArray) {
    const auto id = [](int n) { return AcDbObjectId().setFromOldId(n * 16); };
    AcDbObjectIdArray a{id(1), id(2), id(2)};
    AcDbObjectIdArray b{id(3), id(1)};
    EXPECT_EQ(CDispUtils::GetUnion(a, b), (AcDbObjectIdArray{id(1), id(2), id(2), id(3)}));
    EXPECT_EQ(CDispUtils::GetUnion(b, a), (AcDbObjectIdArray{id(1), id(2), id(2), id(3)}));
    // Equal lengths start from the second array.
    AcDbObjectIdArray c{id(4), id(3)};
    EXPECT_EQ(CDispUtils::GetUnion(b, c), (AcDbObjectIdArray{id(4), id(3), id(1)}));
    EXPECT_EQ(CDispUtils::GetUnion(AcDbObjectIdArray(), AcDbObjectIdArray()).length(), 0);
}

TEST(DispUtils, ToleranceAndSquareExtents) {
    const AcGeTol tol = CDispUtils::GetTolerance(0.5, 0.25);
    EXPECT_EQ(tol.equalPoint(), 0.5);
    EXPECT_EQ(tol.equalVector(), 0.25);
    const AcDbExtents box = CDispUtils::CalcSquareExtents(AcGePoint3d(10, 20, 30), 5);
    EXPECT_EQ(box.minPoint(), AcGePoint3d(5, 15, 25));
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(15, 25, 35));
}

TEST(DispUtils, LineCrossesTriangleAndQuadrilateral) {
    const AcGePoint3d p0(0, 0, 0), p1(100, 0, 0), p2(0, 100, 0), p3(100, 100, 0);
    const AcGeTol tol = CDispUtils::GetTolerance(1e-6, 1e-9);
    AcGePoint3d hit;
    // A vertical line through the triangle, through the quadrilateral only, and outside both.
    const AcGeLineSeg3d inside(AcGePoint3d(20, 20, -10), AcGePoint3d(20, 20, 10));
    const AcGeLineSeg3d farCorner(AcGePoint3d(80, 80, -10), AcGePoint3d(80, 80, 10));
    const AcGeLineSeg3d outside(AcGePoint3d(120, 50, -10), AcGePoint3d(120, 50, 10));
    const AcGeLineSeg3d short_(AcGePoint3d(20, 20, 1), AcGePoint3d(20, 20, 10));
    EXPECT_TRUE(CDispUtils::IsIntersectWith(p0, p1, p2, inside, hit, tol));
    EXPECT_TRUE(hit.isEqualTo(AcGePoint3d(20, 20, 0)));
    EXPECT_FALSE(CDispUtils::IsIntersectWith(p0, p1, p2, farCorner, hit, tol));
    EXPECT_FALSE(CDispUtils::IsIntersectWith(p0, p1, p2, short_, hit, tol));
    EXPECT_TRUE(CDispUtils::IsIntersectWith(p0, p1, p2, p3, farCorner, hit, tol));
    EXPECT_TRUE(hit.isEqualTo(AcGePoint3d(80, 80, 0)));
    EXPECT_FALSE(CDispUtils::IsIntersectWith(p0, p1, p2, p3, outside, hit, tol));

    EXPECT_TRUE(CDispUtils::IsIntersectWith(AcGePoint3dArray{p0, p1, p2, p3}, farCorner, tol));
    EXPECT_FALSE(CDispUtils::IsIntersectWith(AcGePoint3dArray{p0, p1, p2}, farCorner, tol));
    EXPECT_FALSE(CDispUtils::IsIntersectWith(AcGePoint3dArray{p0, p1}, inside, tol));
    EXPECT_FALSE(CDispUtils::IsIntersectWith(AcGePoint3dArray{p0, p1, p2, p3, p0}, inside, tol));
}
