#include <gtest/gtest.h>

#include "host/db/ObjectId.h"
#include "host/text/Array.h"

TEST(TextArray, FrameworkArraysThrowOutsideTheirBounds) {
    CStringArray a;
    EXPECT_EQ(a.Add(L"一"), 0);
    EXPECT_EQ(a.Add(L"三"), 1);
    a.InsertAt(1, L"二");
    ASSERT_EQ(a.GetSize(), 3);
    EXPECT_EQ(a[1], L"二");
    a.RemoveAt(0, 2);
    EXPECT_EQ(a.GetSize(), 1);
    EXPECT_EQ(a[0], L"三");
    EXPECT_THROW((void)a.GetAt(1), CInvalidArgException);
    EXPECT_THROW(a.RemoveAt(0, 2), CInvalidArgException);
    a.SetAtGrow(3, L"四");
    EXPECT_EQ(a.GetSize(), 4);
    EXPECT_EQ(a[2], L"");

    CUIntArray u;
    CUIntArray v;
    v.Add(7);
    v.Add(9);
    EXPECT_EQ(u.Append(v), 0);
    EXPECT_EQ(u.Append(v), 2);
    EXPECT_EQ(u.GetUpperBound(), 3);
}

TEST(TextArray, AcArrayFindsRemovesAndInserts) {
    AcArray<int> a{1, 2, 3, 2};
    EXPECT_EQ(a.append(5), 4);
    EXPECT_EQ(a.find(2), 1);
    int at = -1;
    EXPECT_TRUE(a.find(2, at, 2));
    EXPECT_EQ(at, 3);
    EXPECT_FALSE(a.find(9, at));
    EXPECT_EQ(at, 3);  // untouched when absent
    EXPECT_TRUE(a.contains(3));
    EXPECT_FALSE(a.contains(1, 1));
    EXPECT_TRUE(a.remove(2));
    EXPECT_EQ(a, (AcArray<int>{1, 3, 2, 5}));
    a.insertAt(4, 6).insertAt(0, 0);
    EXPECT_EQ(a, (AcArray<int>{0, 1, 3, 2, 5, 6}));
    a.removeSubArray(1, 3);
    EXPECT_EQ(a, (AcArray<int>{0, 5, 6}));
    a.reverse().swap(0, 2);
    EXPECT_EQ(a, (AcArray<int>{0, 5, 6}));
    EXPECT_EQ(a.first(), 0);
    EXPECT_EQ(a.last(), 6);
}

TEST(TextArrayDeathTest, AcArrayIndexPastTheEndIsAProgrammingError) {
    AcArray<int> a{1};
    EXPECT_DEATH((void)a.at(1), "AcArray index out of range");
}

TEST(TextArray, ObjectIdsCompareByTheirStub) {
    AcDbObjectId a;
    AcDbObjectId b;
    EXPECT_TRUE(a.isNull());
    EXPECT_EQ(a, AcDbObjectId::kNull);
    a.setFromOldId(16);
    b.setFromOldId(32);
    EXPECT_FALSE(a.isNull());
    EXPECT_NE(a, b);
    EXPECT_LT(a, b);
    EXPECT_EQ(a.asOldId(), 16);
    AcDbObjectIdArray ids;
    ids.append(a);
    EXPECT_TRUE(ids.contains(AcDbObjectId().setFromOldId(16)));
}
