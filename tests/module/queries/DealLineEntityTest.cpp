#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "host/db/Database.h"
#include "host/db/Line.h"
#include "host/ge/Tol.h"
#include "module/queries/DealLineEntity.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzPipe.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/DirectQueries.h"

namespace {

using kelaz::test::Append;
using P = AcGePoint3d;

class DealLineEntity : public ::testing::Test {
protected:
    AcDbObjectId Pipe(const P& s, const P& e) {
        auto* pipe = new KelAzPipe;
        pipe->setStartPoint(s);
        pipe->setEndPoint(e);
        return Append(db, pipe);
    }
    AcDbObjectId Duct(const P& s, const P& e) {
        auto* duct = new KelAzDuct;
        duct->setStartPoint(s);
        duct->setEndPoint(e);
        return Append(db, duct);
    }
    AcDbObjectId Lead(const P& s, const P& e, double bulge) {
        auto* lead = new KelAzLead;
        lead->setStartPoint(s);
        lead->setEndPoint(e);
        lead->SetBulge(bulge);
        return Append(db, lead);
    }
    AcDbObjectId Node(const P& p) {
        auto* node = new KelAzEquipMent;
        node->SetInsertPoint(p);
        return Append(db, node);
    }
    void Move(const AcDbObjectId& id, const P& s, const P& e) {
        kelaz::test::Opened<KelAzCurveEntity> curve(id, AcDb::kForWrite);
        curve->setStartPoint(s);
        curve->setEndPoint(e);
    }
    static std::vector<double> Keys(const CDealLineEntity& lines, int cls) {
        std::vector<double> keys;
        for (const StandardData& rec : lines.GetRecords(cls)) keys.push_back(rec.key);
        return keys;
    }

    AcDbDatabase db;
};

// The whole of every list, record by record, against the array form.
void ExpectSameLists(const CDealLineEntity& lines, const kelaz::test::DirectLineEntity& direct,
                     const char* when) {
    for (int cls = 0; cls < 4; ++cls) {
        const AcArray<StandardData> got = lines.GetRecords(cls);
        const std::vector<StandardData>& want = direct.lists[cls];
        ASSERT_EQ(got.length(), static_cast<int>(want.size())) << when << ", class " << cls;
        for (int i = 0; i < got.length(); ++i) {
            const StandardData& w = want[static_cast<std::size_t>(i)];
            ASSERT_TRUE(got[i].id == w.id && got[i].key == w.key && got[i].start == w.start &&
                        got[i].end == w.end)
                << when << ", class " << cls << ", index " << i;
        }
        ASSERT_EQ(lines.GetIds(cls).length(), got.length());
    }
}

// Restores the host's tolerance however a test leaves.
struct GlobalTolerance {
    explicit GlobalTolerance(double equalPoint) : saved(AcGeContext::gTol) {
        AcGeContext::gTol.setEqualPoint(equalPoint);
    }
    ~GlobalTolerance() { AcGeContext::gTol = saved; }
    AcGeTol saved;
};

}  // namespace

TEST_F(DealLineEntity, ClassifiesByDirectionAndKeepsKeysRoughlyOrdered) {
    const AcDbObjectId alongY = Pipe(P(5, 0, 0), P(5, 100, 0));
    const AcDbObjectId alongX = Duct(P(0, 7, 0), P(100, 7, 0));
    const AcDbObjectId riser = Pipe(P(0, 0, 0), P(0, 0, 3000));
    const AcDbObjectId oblique = Lead(P(0, 0, 0), P(100, 100, 0), 0);
    const AcDbObjectId arc = Lead(P(5, 0, 0), P(5, 100, 0), 0.5);
    const AcDbObjectId sloped = Pipe(P(5, 0, 0), P(5, 100, 300));
    const AcDbObjectId node = Node(P(300, 400, 500));
    const AcDbObjectId line = Append(db, new AcDbLine(P(0, 0, 0), P(0, 10, 0)));

    CDealLineEntity lines;
    lines.SetAllId({alongY, alongX, riser, oblique, arc, sloped, node, line});
    ASSERT_TRUE(lines.Classify());
    // Anything that is no lead, pipe or duct ends in class 0 with key 0; keys 5 then 0 land as
    // 0, 5 since the second one is smaller.
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kAlongY), (AcDbObjectIdArray{node, alongY}));
    EXPECT_EQ(Keys(lines, CDealLineEntity::kAlongY), (std::vector<double>{0, 5}));
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kAlongX), AcDbObjectIdArray{alongX});
    EXPECT_EQ(Keys(lines, CDealLineEntity::kAlongX), std::vector<double>{7});
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kRiser), AcDbObjectIdArray{riser});
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kOther), (AcDbObjectIdArray{oblique, arc, sloped}));
    EXPECT_EQ(lines.GetRecords(CDealLineEntity::kOther)[2].end, P(5, 100, 300));

    // Larger keys inserted one after the other land before the last one.
    const AcDbObjectId at10 = Pipe(P(10, 0, 0), P(10, 50, 0));
    const AcDbObjectId at20 = Pipe(P(20, 0, 0), P(20.00005, 50, 0));
    CDealLineEntity sorted;
    sorted.SetAllId({at10, at20});
    sorted.Classify();
    EXPECT_EQ(Keys(sorted, CDealLineEntity::kAlongY), (std::vector<double>{20, 10}));
    EXPECT_EQ(sorted.GetIds(CDealLineEntity::kAlongY), (AcDbObjectIdArray{at20, at10}));
    sorted.Classify();
    EXPECT_EQ(Keys(sorted, CDealLineEntity::kAlongY), (std::vector<double>{10, 20, 20, 10}))
        << "classifying again adds the lines again";

    CDealLineEntity noAxes;
    noAxes.SetStyle(false, true, false);
    noAxes.SetAllId({alongY, alongX, riser, oblique, node});
    noAxes.Classify();
    EXPECT_TRUE(noAxes.GetIds(CDealLineEntity::kAlongY).isEmpty());
    EXPECT_TRUE(noAxes.GetIds(CDealLineEntity::kAlongX).isEmpty());
    EXPECT_TRUE(noAxes.GetIds(CDealLineEntity::kOther).isEmpty());
    EXPECT_EQ(noAxes.GetIds(CDealLineEntity::kRiser), AcDbObjectIdArray{riser});
}

TEST_F(DealLineEntity, FindsLinesEndingAtOrPassingThePointAndDeletesByCurrentClass) {
    const AcDbObjectId up = Pipe(P(0, 0, 0), P(0, 1000, 0));
    const AcDbObjectId across = Pipe(P(1000, 0, 3000), P(0, 0, 3000));
    const AcDbObjectId riser = Pipe(P(0, 0, 0), P(0, 0, -3000));
    const AcDbObjectId diagonal = Lead(P(-500, -500, 0), P(500, 500, 0), 0);
    const AcDbObjectId elsewhere = Pipe(P(0, 2000, 0), P(0, 3000, 0));
    CDealLineEntity lines;
    lines.SetAllId({diagonal, riser, across, up, elsewhere});
    lines.Classify();

    // The shared end: class 0, class 1, risers, others; heights play no part.
    EXPECT_EQ(lines.FindEntity(P(0, 0, 77)), (AcDbObjectIdArray{up, across, riser, diagonal}));
    EXPECT_EQ(lines.FindEntity(P(0.00007, -0.00007, 0)), (AcDbObjectIdArray{up, across}))
        << "ends within 0.0001; the riser and the diagonal under the host's tolerance";
    // Axis lines count at their ends only; oblique lines anywhere along them.
    EXPECT_TRUE(lines.FindEntity(P(0, 500, 0)).isEmpty());
    EXPECT_EQ(lines.FindEntity(P(250, 250, 0)), AcDbObjectIdArray{diagonal});
    EXPECT_EQ(lines.FindEntity(P(0, 1000, 0)), AcDbObjectIdArray{up});
    {
        const GlobalTolerance loose(1.0);
        EXPECT_EQ(lines.FindEntity(P(0.5, 0.5, 0)), (AcDbObjectIdArray{riser, diagonal}));
    }
    EXPECT_EQ(lines.FindEntity(P(0.5, 0.5, 0)), AcDbObjectIdArray{diagonal});
    EXPECT_EQ(lines.FindEntity(P(0.5, 0.6, 0)), AcDbObjectIdArray{});

    // A line is looked for in the class it falls in now.
    Move(up, P(0, 0, 0), P(1000, 0, 0));
    EXPECT_TRUE(lines.DeleteEntity(up)) << "not in class 1: true, nothing changes";
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kAlongY), (AcDbObjectIdArray{elsewhere, up}));
    Move(up, P(0, 0, 0), P(0, 5, 0));
    EXPECT_TRUE(lines.DeleteEntity(up));
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kAlongY), AcDbObjectIdArray{elsewhere});
    EXPECT_TRUE(lines.DeleteEntity(riser));
    EXPECT_TRUE(lines.DeleteEntity(riser)) << "already gone";
    EXPECT_EQ(lines.FindEntity(P(0, 0, 0)), (AcDbObjectIdArray{across, diagonal}));
    const AcDbObjectId line = Append(db, new AcDbLine(P(0, 0, 0), P(1, 0, 0)));
    EXPECT_FALSE(lines.DeleteEntity(line)) << "no suite entity";
    {
        kelaz::test::Opened<AcDbEntity> e(diagonal, AcDb::kForWrite);
        ASSERT_EQ(e->erase(), Acad::eOk);
    }
    EXPECT_FALSE(lines.DeleteEntity(diagonal)) << "cannot be opened";
    EXPECT_EQ(lines.FindEntity(P(100, 100, 0)), AcDbObjectIdArray{diagonal})
        << "the lists keep what was read";

    CDealLineEntity copy = lines;
    lines.ClearInfo();
    EXPECT_TRUE(lines.FindEntity(P(0, 0, 0)).isEmpty());
    EXPECT_EQ(copy.FindEntity(P(0, 0, 0)), (AcDbObjectIdArray{across, diagonal}));
    lines.Classify();
    EXPECT_EQ(lines.GetIds(CDealLineEntity::kOther), AcDbObjectIdArray{})
        << "the erased diagonal is not read again";
}

// Lists, searches and deletions against the array form, on lines whose keys are equal, a
// little apart around the 0.0001 limit, and repeated many times, with ids listed twice.
TEST_F(DealLineEntity, MatchesTheArrayFormOnCrowdedNearlyEqualLines) {
    std::mt19937 rng(5);
    const double keys[] = {0, 100, 100.00005, 100.0001, 100.00011, 200, 200.000001, 300, 300};
    const double nudges[] = {0, 0, 0, 5e-5, -9e-5, 1e-4, 1e-6, 3e-4};
    const auto pick = [&](const auto& values) { return values[rng() % std::size(values)]; };
    const auto coord = [&] { return 100.0 * static_cast<double>(rng() % 5) + pick(nudges); };
    const auto level = [&] { return rng() % 3 == 0 ? 3000.0 : 0.0; };

    AcDbObjectIdArray ids;
    std::vector<P> probes;
    for (int i = 0; i < 2000; ++i) {
        const int kind = static_cast<int>(rng() % 10);
        const double z = level();
        P s, e;
        if (kind < 4) {  // along Y, or along X, mostly pipes
            const double k = pick(keys), a = coord(), b = coord() + 1;
            const double drift = pick(nudges) * 0.5;
            s = kind < 2 ? P(k, a, z) : P(a, k, z);
            e = kind < 2 ? P(k + drift, b, z) : P(b, k + drift, z);
        } else if (kind < 6) {  // risers
            s = P(coord(), coord(), 0);
            e = P(s.x + pick(nudges) * 0.5, s.y, 3000);
        } else {  // oblique lines and arcs
            s = P(coord(), coord(), z);
            e = P(coord(), coord(), z + (kind == 9 ? 300 : 0));
        }
        if (kind == 6) {
            ids.append(Lead(s, e, rng() % 2 == 0 ? 0.0 : 0.25));
        } else if (kind == 7) {
            ids.append(Duct(s, e));
        } else {
            ids.append(Pipe(s, e));
        }
        probes.push_back(s);
        probes.push_back(e);
        probes.emplace_back((s.x + e.x) / 2, (s.y + e.y) / 2, 0);
        if (i % 50 == 0) ids.append(ids[static_cast<int>(rng() % ids.length())]);
        if (i % 300 == 0) ids.append(Node(P(coord(), coord(), 0)));
    }
    ids.append(Append(db, new AcDbLine(P(0, 0, 0), P(0, 100, 0))));

    CDealLineEntity lines;
    kelaz::test::DirectLineEntity direct;
    lines.SetAllId(ids);
    lines.Classify();
    direct.Classify(ids);
    ExpectSameLists(lines, direct, "classified");

    const auto probe = [&] {
        P p = probes[rng() % probes.size()];
        p.x += pick(nudges);
        p.y += pick(nudges);
        return p;
    };
    int hits = 0;
    const auto compareFinds = [&](int count, const char* when) {
        for (int q = 0; q < count; ++q) {
            const P p = probe();
            const AcDbObjectIdArray want = direct.FindEntity(p);
            ASSERT_EQ(lines.FindEntity(p), want) << when << " at " << p.x << "," << p.y;
            hits += want.length();
        }
    };
    compareFinds(1000, "first searches");
    EXPECT_GT(hits, 1000) << "the probes should find lines";

    // Deletions between searches, of lines in the lists, listed twice, moved or not lines.
    for (int round = 0; round < 400; ++round) {
        const AcDbObjectId id = ids[static_cast<int>(rng() % ids.length())];
        if (round % 40 == 0) {
            kelaz::test::Opened<KelAzCurveEntity> curve(id, AcDb::kForWrite);
            if (curve) curve->setEndPoint(P(12345, 0, 0));
        }
        ASSERT_EQ(lines.DeleteEntity(id), direct.DeleteEntity(id));
        if (round % 20 == 0) compareFinds(40, "after deletions");
    }
    ExpectSameLists(lines, direct, "after deletions");

    // Lines read again after they moved within their class: an id then has two different
    // records in one list, and a deletion must take the one that comes first.
    AcDbObjectIdArray more;
    for (int i = 0; i < 300; ++i) {
        const AcDbObjectId id = ids[static_cast<int>(rng() % ids.length())];
        more.append(id);
        kelaz::test::Opened<KelAzCurveEntity> curve(id, AcDb::kForWrite);
        if (!curve) continue;
        P s, e;
        curve->getStartPoint(s);
        curve->getEndPoint(e);
        const AcGeVector3d shift(0.00003, -7, 0);
        curve->setStartPoint(s + shift);
        curve->setEndPoint(e + shift);
    }
    lines.SetAllId(more);
    lines.Classify();
    direct.Classify(more);
    ExpectSameLists(lines, direct, "classified again");
    compareFinds(300, "classified again");
    for (int round = 0; round < 200; ++round) {
        const AcDbObjectId id = more[static_cast<int>(rng() % more.length())];
        ASSERT_EQ(lines.DeleteEntity(id), direct.DeleteEntity(id));
    }
    ExpectSameLists(lines, direct, "deleted again");
    {
        const GlobalTolerance loose(0.05);
        compareFinds(300, "loose tolerance");
    }
}
