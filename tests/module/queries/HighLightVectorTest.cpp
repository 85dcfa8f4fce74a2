#include <gtest/gtest.h>

#include "host/db/Line.h"
#include "module/queries/HighLightVector.h"
#include "suite/tools/Highlight.h"
#include "tests/support/DbCheckers.h"

namespace {

class HighLightVector : public ::testing::Test {
protected:
    AcDbObjectId Add(double y) {
        return kelaz::test::Append(db, new AcDbLine(AcGePoint3d(0, y, 0), AcGePoint3d(10, y, 0)));
    }
    AcDbDatabase db;
};

}  // namespace

TEST_F(HighLightVector, AnObjectIsListedOnceButHeldPerAppend) {
    const AcDbObjectId a = Add(0);
    CHighLightVector set;
    EXPECT_TRUE(set.Append(a));
    EXPECT_FALSE(set.Append(a));
    EXPECT_EQ(CHighlight::Count(a), 2);
    EXPECT_EQ(kelaz::HighlightLevel(a), 1);
    // Listed once: the first removal finds it, the second does not.
    EXPECT_TRUE(set.UnHighLight(a, true));
    EXPECT_FALSE(set.UnHighLight(a, true));
    // Unlit at once, while both handles stay until the set goes.
    EXPECT_EQ(kelaz::HighlightLevel(a), 0);
    EXPECT_EQ(CHighlight::Count(a), 2);
}

TEST_F(HighLightVector, UnHighlightWithoutRemovingKeepsTheObjectListed) {
    const AcDbObjectId a = Add(0), b = Add(1), c = Add(2);
    CHighLightVector set;
    EXPECT_TRUE(set.Append(a, AcDbObjectIdArray{b, c}));
    EXPECT_FALSE(set.Append(b, AcDbObjectIdArray{c}));
    EXPECT_TRUE(set.UnHighLight(b, false));
    EXPECT_EQ(kelaz::HighlightLevel(b), 0);
    EXPECT_FALSE(set.Append(b)) << "b is still in the set";
    EXPECT_FALSE(set.UnHighLight(Add(3), true));

    // The array form answers false whatever it did, even for nothing at all.
    EXPECT_FALSE(set.UnHighLight(AcDbObjectIdArray{}, true));
    EXPECT_FALSE(set.UnHighLight(AcDbObjectIdArray{a, c}, true));
    EXPECT_EQ(kelaz::HighlightLevel(a), 0);
    EXPECT_TRUE(set.Append(a)) << "a left the set";
}

TEST_F(HighLightVector, CopiesShareTheHighlightsUntilTheLastGoes) {
    const AcDbObjectId a = Add(0);
    auto original = std::make_unique<CHighLightVector>();
    original->Append(a);
    CHighLightVector copy = *original;
    original.reset();
    EXPECT_EQ(CHighlight::Count(a), 1);
    {
        CHighLightVector assigned;
        assigned = copy;
        copy = CHighLightVector();
        EXPECT_EQ(CHighlight::Count(a), 1);
    }
    EXPECT_EQ(CHighlight::Count(a), 0);
    EXPECT_EQ(kelaz::HighlightLevel(a), 0);
}
