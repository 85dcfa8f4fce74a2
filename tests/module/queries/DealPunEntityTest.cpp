#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "host/db/Line.h"
#include "module/queries/DealPunEntity.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzPipe.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/DirectQueries.h"

namespace {

using kelaz::test::Append;

class DealPunEntity : public ::testing::Test {
protected:
    AcDbObjectId Node(const AcGePoint3d& p) {
        auto* node = new KelAzEquipMent;
        node->SetInsertPoint(p);
        return Append(cl.db, node);
    }
    static std::vector<AcGePoint3d> Vec(const AcGePoint3dArray& a) {
        return std::vector<AcGePoint3d>(a.begin(), a.end());
    }
    kelaz::test::CommandLineHarness cl;
};

// Coordinates from a few values, nudged by amounts on both sides of the 1e-6 equality, so that
// many points are equal, nearly equal or ordered only by a later coordinate.
double Near(std::mt19937& rng, double base) {
    static const double kNudges[] = {0, 0, 0, 4e-7, -4e-7, 9.9e-7, 1e-6, 1.5e-6, -2e-6, 1e-4};
    return base + kNudges[rng() % std::size(kNudges)];
}

}  // namespace

TEST_F(DealPunEntity, FilesComponentsByHeightBandAndLooksThemUpWithAnAllowance) {
    CDealPunEntity none;
    EXPECT_FALSE(none.Deal(false)) << "no ids";

    const AcGePoint3d low(10, 20, 250), top(5, 5, 1000), justOver(7, 7, 1000.0000005),
        mid(1, 2, 2000), high(3, 4, 2600);
    const AcDbObjectId erased = Node(AcGePoint3d(0, 0, 0));
    {
        kelaz::test::Opened<AcDbEntity> e(erased, AcDb::kForWrite);
        ASSERT_EQ(e->erase(), Acad::eOk);
    }
    auto* pipe = new KelAzPipe;
    pipe->setStartPoint(AcGePoint3d(10, 20, 250));
    const AcDbObjectIdArray ids{Node(high), Node(low),      Append(cl.db, pipe),
                                Node(top),  Node(justOver), Append(cl.db, new AcDbLine(low, high)),
                                erased,     Node(mid),      Node(low)};
    CDealPunEntity deal(ids);
    ASSERT_TRUE(deal.Deal(false));
    // Only components count; a component standing twice is kept twice.
    EXPECT_EQ(Vec(deal.GetBandPoints(CDealPunEntity::kUpTo1000)),
              (std::vector<AcGePoint3d>{top, low, low}));
    EXPECT_EQ(Vec(deal.GetBandPoints(CDealPunEntity::kUpTo2000)),
              (std::vector<AcGePoint3d>{mid, justOver}));
    EXPECT_TRUE(deal.GetBandPoints(CDealPunEntity::kUpTo300).isEmpty()) << "never filled";
    EXPECT_EQ(Vec(deal.GetBandPoints(CDealPunEntity::kAbove)), std::vector<AcGePoint3d>{high});
    EXPECT_TRUE(deal.GetAllPoints().isEmpty());

    EXPECT_TRUE(deal.HasEntity(low));
    EXPECT_TRUE(deal.HasEntity(AcGePoint3d(10 + 9e-7, 20 - 9e-7, 250 + 9e-7)));
    EXPECT_FALSE(deal.HasEntity(AcGePoint3d(10 + 2e-6, 20, 250)));
    EXPECT_TRUE(deal.HasEntity(mid));
    EXPECT_TRUE(deal.HasEntity(high));
    EXPECT_FALSE(deal.HasEntity(AcGePoint3d(3, 4, 2600.1)));
    // Filed up to 2000, but looked for up to 1000 where the lookup's allowance takes it.
    EXPECT_FALSE(deal.HasEntity(justOver));
    EXPECT_TRUE(deal.HasEntity(AcGePoint3d(5, 5, 1000.0000009))) << "top, found up to 1000";

    // The diagnostic puts its points above whatever their height, and lists the empty band.
    CDealPunEntity copy = deal;
    ASSERT_TRUE(copy.TestFunction(AcGePoint3dArray{AcGePoint3d(0, 0, 3000), AcGePoint3d(9, 9, 0)}));
    EXPECT_EQ(cl.Out(), "");
    EXPECT_TRUE(copy.HasEntity(AcGePoint3d(0, 0, 3000)));
    EXPECT_FALSE(copy.HasEntity(AcGePoint3d(9, 9, 0))) << "looked for up to 1000";
    EXPECT_EQ(copy.GetBandPoints(CDealPunEntity::kAbove).length(), 3);
    EXPECT_FALSE(deal.HasEntity(AcGePoint3d(0, 0, 3000))) << "copies are independent";

    copy.ClearInfo();
    EXPECT_FALSE(copy.HasEntity(low));
    EXPECT_TRUE(copy.Deal(false)) << "the ids stay";
    EXPECT_TRUE(copy.HasEntity(low));
}

TEST_F(DealPunEntity, FlatPointsAlongASegmentAndDeletion) {
    const AcGePoint3d a(0, 0, 0), b(1000, 0, 0);
    const AcGePoint3d beside9(500, 9, 3000), beside11(500, 11, 0), pastEnd(1009, 0, 0),
        onLine(200, 0, 5);
    const AcDbObjectIdArray ids{Node(beside9), Node(beside11), Node(pastEnd), Node(onLine),
                                Node(beside9)};
    CDealPunEntity deal;
    deal.SetIdArray(ids);
    ASSERT_TRUE(deal.Deal(true));
    EXPECT_EQ(Vec(deal.GetAllPoints()),
              (std::vector<AcGePoint3d>{beside9, beside11, pastEnd, onLine, beside9}));
    EXPECT_FALSE(deal.HasEntity(onLine)) << "flat points are not banded";

    AcGePoint3dArray out{AcGePoint3d(-1, -1, -1)};
    ASSERT_TRUE(deal.HasEntity(out, a, b));
    // Appended after what out held, in list order, heights as they are.
    EXPECT_EQ(Vec(out), (std::vector<AcGePoint3d>{AcGePoint3d(-1, -1, -1), beside9, pastEnd, onLine,
                                                  beside9}));

    const CDealPunEntity before = deal;
    EXPECT_TRUE(deal.DeletePoint(beside9, false));
    EXPECT_EQ(deal.GetAllPoints().length(), 5) << "without the flag nothing goes";
    EXPECT_TRUE(deal.DeletePoint(AcGePoint3d(500, 9, 3000 + 1e-11), true));
    EXPECT_TRUE(deal.DeletePoint(AcGePoint3d(1, 2, 3), true)) << "nothing equal: still true";
    EXPECT_EQ(Vec(deal.GetAllPoints()),
              (std::vector<AcGePoint3d>{beside11, pastEnd, onLine, beside9}));
    AcGePoint3dArray after;
    deal.HasEntity(after, b, a);
    EXPECT_EQ(Vec(after), (std::vector<AcGePoint3d>{pastEnd, onLine, beside9}));
    AcGePoint3dArray kept;
    CDealPunEntity(before).HasEntity(kept, a, b);
    EXPECT_EQ(kept.length(), 4) << "the copy made before the deletion keeps its points";
}

// The bands and the flat list against the array form, on components whose coordinates are
// equal, nearly equal and ordered by a later coordinate, and lookups of the same kind.
TEST_F(DealPunEntity, MatchesTheArrayFormOnCrowdedNearlyEqualPoints) {
    std::mt19937 rng(11);
    const double heights[] = {0, 999.9999995, 1000, 1000.0000005, 1500, 2000, 2000.0000005, 4000};
    const auto randomPoint = [&] {
        return AcGePoint3d(Near(rng, 100.0 * static_cast<double>(rng() % 6)),
                           Near(rng, 50.0 * static_cast<double>(rng() % 4)),
                           Near(rng, heights[rng() % std::size(heights)]));
    };
    AcDbObjectIdArray ids;
    for (int i = 0; i < 2500; ++i) ids.append(Node(randomPoint()));

    CDealPunEntity deal(ids);
    kelaz::test::DirectPunEntity direct;
    ASSERT_TRUE(deal.Deal(false));
    direct.Deal(ids, false);
    ASSERT_EQ(Vec(deal.GetBandPoints(CDealPunEntity::kUpTo1000)), direct.upTo1000);
    ASSERT_EQ(Vec(deal.GetBandPoints(CDealPunEntity::kUpTo2000)), direct.upTo2000);
    ASSERT_EQ(Vec(deal.GetBandPoints(CDealPunEntity::kAbove)), direct.above);
    int found = 0;
    for (int q = 0; q < 3000; ++q) {
        const AcGePoint3d p = randomPoint();
        ASSERT_EQ(deal.HasEntity(p), direct.HasEntity(p)) << p.x << "," << p.y << "," << p.z;
        found += direct.HasEntity(p) ? 1 : 0;
    }
    EXPECT_GT(found, 200) << "the lookups should find points as well as miss them";

    // Flat: segments of all lengths and directions, with deletions in between.
    ASSERT_TRUE(deal.Deal(true));
    direct.Deal(ids, true);
    for (int q = 0; q < 400; ++q) {
        const AcGePoint3d a = randomPoint();
        const AcGePoint3d b = q % 3 == 0 ? a : randomPoint() + AcGeVector3d(Near(rng, 3), 0, 0);
        AcGePoint3dArray out;
        deal.HasEntity(out, a, b);
        ASSERT_EQ(Vec(out), direct.OnSegment(a, b)) << "segment " << q;
        if (q % 2 == 0) {
            const AcGePoint3d gone = randomPoint();
            deal.DeletePoint(gone, true);
            direct.DeletePoint(gone);
        }
    }
    EXPECT_EQ(Vec(deal.GetAllPoints()), direct.all);
    EXPECT_LT(deal.GetAllPoints().length(), ids.length()) << "some deletions should have hit";
}
