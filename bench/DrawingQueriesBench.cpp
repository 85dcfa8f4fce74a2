// The drawing queries at building scale: point components by height band (CDealPunEntity) and
// lines by direction (CDealLineEntity), in drawings of 10 thousand to a million components or
// lines. Each is timed beside the array form of the same rules (insertion moves the rest of the
// array; up to 100 thousand, past which it takes minutes) and beside a scan that answers the
// same question by visiting everything. Run with the release preset:
//   cmake --preset release && cmake --build build/release -j2 --target DrawingQueriesBench
//   build/release/bench/DrawingQueriesBench

#include <benchmark/benchmark.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/OpenObject.h"
#include "host/ge/LineSeg2d.h"
#include "module/queries/DealLineEntity.h"
#include "module/queries/DealPunEntity.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzPipe.h"
#include "tests/support/DirectQueries.h"

namespace {

// A plan of 200 m square in millimetres, ten floors of 3 m.
constexpr double kPlanSize = 200'000.0;
constexpr int kFloors = 10;
constexpr double kFloorHeight = 3000.0;
constexpr int kQueries = 1024;
constexpr long kArrayLimit = 100'000;

AcDbBlockTableRecord* OpenModel(AcDbDatabase& db) {
    AcDbBlockTableRecord* model = nullptr;
    acdbOpenObject(model, db.currentSpaceId(), AcDb::kForWrite);
    return model;
}

AcDbObjectId AddToModel(AcDbBlockTableRecord* model, AcDbEntity* entity) {
    AcDbObjectId id;
    model->appendAcDbEntity(id, entity);
    entity->close();
    return id;
}

// Components on a 1 mm grid at their mounting heights (floor, ceiling and in between), many
// standing at the same height.
struct PointDrawing {
    AcDbDatabase db;
    AcDbObjectIdArray ids;
    std::vector<AcGePoint3d> points;

    explicit PointDrawing(long n) {
        std::mt19937 rng(1);
        std::uniform_int_distribution<int> coord(0, static_cast<int>(kPlanSize));
        const double mountings[] = {0, 300, 800, 1000, 1400, 2000, 2600, 2800};
        AcDbBlockTableRecord* model = OpenModel(db);
        for (long i = 0; i < n; ++i) {
            const double z = static_cast<double>(rng() % kFloors) * kFloorHeight +
                             mountings[rng() % std::size(mountings)];
            const AcGePoint3d p(coord(rng), coord(rng), z);
            auto* node = new KelAzEquipMent;
            node->SetInsertPoint(p);
            ids.append(AddToModel(model, node));
            points.push_back(p);
        }
        model->close();
    }
};

// Pipes and leads of a building: most of them along the axes on a 1 mm grid, some risers and
// some oblique lines and arcs.
struct LineDrawing {
    AcDbDatabase db;
    AcDbObjectIdArray ids;
    std::vector<AcGePoint3d> ends;

    explicit LineDrawing(long n) {
        std::mt19937 rng(2);
        std::uniform_int_distribution<int> coord(0, static_cast<int>(kPlanSize));
        std::uniform_int_distribution<int> length(500, 6000);
        AcDbBlockTableRecord* model = OpenModel(db);
        for (long i = 0; i < n; ++i) {
            const double z = static_cast<double>(rng() % kFloors) * kFloorHeight + 2800;
            const AcGePoint3d s(coord(rng), coord(rng), z);
            AcGePoint3d e;
            const unsigned kind = rng() % 20;
            if (kind < 9) {
                e = s + AcGeVector3d(0, length(rng), 0);
            } else if (kind < 18) {
                e = s + AcGeVector3d(length(rng), 0, 0);
            } else if (kind == 18) {
                e = AcGePoint3d(s.x, s.y, s.z - kFloorHeight);
            } else {
                e = s + AcGeVector3d(length(rng), length(rng), 0);
            }
            if (kind == 19 && rng() % 2 == 0) {
                auto* lead = new KelAzLead;
                lead->setStartPoint(s);
                lead->setEndPoint(e);
                lead->SetBulge(0.3);
                ids.append(AddToModel(model, lead));
            } else {
                auto* pipe = new KelAzPipe;
                pipe->setStartPoint(s);
                pipe->setEndPoint(e);
                ids.append(AddToModel(model, pipe));
            }
            ends.push_back(s);
            ends.push_back(e);
        }
        model->close();
    }
};

template <class Drawing>
Drawing& Cached(long n) {
    static std::map<long, std::unique_ptr<Drawing>> drawings;
    auto& slot = drawings[n];
    if (!slot) slot = std::make_unique<Drawing>(n);
    return *slot;
}

// Half the queries at existing points, half anywhere.
std::vector<AcGePoint3d> Queries(const std::vector<AcGePoint3d>& existing, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> coord(0, kPlanSize);
    std::vector<AcGePoint3d> out;
    for (int i = 0; i < kQueries; ++i) {
        if (i % 2 == 0) {
            out.push_back(existing[rng() % existing.size()]);
        } else {
            out.emplace_back(coord(rng), coord(rng), 2800);
        }
    }
    return out;
}

// --- point components ---

void BM_PunDeal(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    for (auto _ : state) {
        CDealPunEntity deal(d.ids);
        deal.Deal(false);
        benchmark::DoNotOptimize(deal);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_PunDealArray(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    for (auto _ : state) {
        kelaz::test::DirectPunEntity direct;
        direct.Deal(d.ids, false);
        benchmark::DoNotOptimize(direct);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Reading every insertion point into the flat list: what any form pays before sorting.
void BM_PunDealReadOnly(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    for (auto _ : state) {
        CDealPunEntity deal(d.ids);
        deal.Deal(true);
        benchmark::DoNotOptimize(deal);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_PunHasEntity(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    CDealPunEntity deal(d.ids);
    deal.Deal(false);
    const std::vector<AcGePoint3d> queries = Queries(d.points, 3);
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) found += deal.HasEntity(queries[next++ % queries.size()]) ? 1 : 0;
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

void BM_PunHasEntityArray(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    kelaz::test::DirectPunEntity direct;
    direct.Deal(d.ids, false);
    const std::vector<AcGePoint3d> queries = Queries(d.points, 3);
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) found += direct.HasEntity(queries[next++ % queries.size()]) ? 1 : 0;
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

// Is a component at the point: every point compared.
void BM_PunHasEntityScan(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    const std::vector<AcGePoint3d> queries = Queries(d.points, 3);
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) {
        const AcGePoint3d& q = queries[next++ % queries.size()];
        bool hit = false;
        for (const AcGePoint3d& p : d.points) {
            hit = hit || (std::fabs(p.x - q.x) < 1e-6 && std::fabs(p.y - q.y) < 1e-6 &&
                          std::fabs(p.z - q.z) < 1e-6);
        }
        found += hit ? 1 : 0;
    }
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

// The flat points along a segment of a few metres: through the plan index, and by testing
// every point.
void BM_PunOnSegment(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    CDealPunEntity deal(d.ids);
    deal.Deal(true);
    const std::vector<AcGePoint3d> starts = Queries(d.points, 4);
    AcGePoint3dArray first;
    deal.HasEntity(first, starts[0], starts[0]);  // builds the plan index outside the timing
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) {
        const AcGePoint3d& a = starts[next++ % starts.size()];
        AcGePoint3dArray out;
        deal.HasEntity(out, a, a + AcGeVector3d(3000, 1000, 0));
        found += out.length();
    }
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

void BM_PunOnSegmentScan(benchmark::State& state) {
    PointDrawing& d = Cached<PointDrawing>(state.range(0));
    kelaz::test::DirectPunEntity direct;
    direct.Deal(d.ids, true);
    const std::vector<AcGePoint3d> starts = Queries(d.points, 4);
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) {
        const AcGePoint3d& a = starts[next++ % starts.size()];
        found += static_cast<long>(direct.OnSegment(a, a + AcGeVector3d(3000, 1000, 0)).size());
    }
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

// --- lines ---

void BM_LineClassify(benchmark::State& state) {
    LineDrawing& d = Cached<LineDrawing>(state.range(0));
    for (auto _ : state) {
        CDealLineEntity lines;
        lines.SetAllId(d.ids);
        lines.Classify();
        benchmark::DoNotOptimize(lines);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_LineClassifyArray(benchmark::State& state) {
    LineDrawing& d = Cached<LineDrawing>(state.range(0));
    for (auto _ : state) {
        kelaz::test::DirectLineEntity direct;
        direct.Classify(d.ids);
        benchmark::DoNotOptimize(direct);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Reading and classing every line without keeping any order: what any form pays.
void BM_LineClassifyReadOnly(benchmark::State& state) {
    LineDrawing& d = Cached<LineDrawing>(state.range(0));
    for (auto _ : state) {
        std::vector<StandardData> lists[4];
        for (const AcDbObjectId& id : d.ids) {
            StandardData rec;
            const int cls = kelaz::test::DirectLineEntity::LineState(rec, id);
            if (cls >= 0) lists[cls].push_back(rec);
        }
        benchmark::DoNotOptimize(lists);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_LineFind(benchmark::State& state) {
    LineDrawing& d = Cached<LineDrawing>(state.range(0));
    CDealLineEntity lines;
    lines.SetAllId(d.ids);
    lines.Classify();
    const std::vector<AcGePoint3d> queries = Queries(d.ends, 5);
    lines.FindEntity(queries[0]);  // builds the plan index outside the timing
    if (state.range(0) <= kArrayLimit) {
        kelaz::test::DirectLineEntity direct;
        direct.Classify(d.ids);
        for (const AcGePoint3d& q : queries) {
            if (!(lines.FindEntity(q) == direct.FindEntity(q))) {
                state.SkipWithError("the two forms answer differently");
                return;
            }
        }
    }
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) found += lines.FindEntity(queries[next++ % queries.size()]).length();
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

void BM_LineFindArray(benchmark::State& state) {
    LineDrawing& d = Cached<LineDrawing>(state.range(0));
    kelaz::test::DirectLineEntity direct;
    direct.Classify(d.ids);
    const std::vector<AcGePoint3d> queries = Queries(d.ends, 5);
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) found += direct.FindEntity(queries[next++ % queries.size()]).length();
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

// The lines at a point by visiting every line: ends of axis lines, anywhere along the others.
void BM_LineFindScan(benchmark::State& state) {
    LineDrawing& d = Cached<LineDrawing>(state.range(0));
    std::vector<std::pair<int, StandardData>> all;
    for (const AcDbObjectId& id : d.ids) {
        StandardData rec;
        const int cls = kelaz::test::DirectLineEntity::LineState(rec, id);
        if (cls >= 0) all.emplace_back(cls, rec);
    }
    AcGeTol endTol;
    endTol.setEqualPoint(0.0001);
    const std::vector<AcGePoint3d> queries = Queries(d.ends, 5);
    std::size_t next = 0;
    long found = 0;
    for (auto _ : state) {
        const AcGePoint3d& q = queries[next++ % queries.size()];
        const AcGePoint2d p(q.x, q.y);
        AcDbObjectIdArray out;
        for (const auto& [cls, rec] : all) {
            const AcGePoint2d s(rec.start.x, rec.start.y), e(rec.end.x, rec.end.y);
            const bool hit = cls < 2 ? p.isEqualTo(s, endTol) || p.isEqualTo(e, endTol)
                                     : AcGeLineSeg2d(e, s).isOn(p);
            if (hit) out.append(rec.id);
        }
        found += out.length();
    }
    state.counters["found"] =
        benchmark::Counter(static_cast<double>(found) / static_cast<double>(state.iterations()));
}

void AllSizes(benchmark::internal::Benchmark* b) {
    for (const long n : {10'000L, 100'000L, 1'000'000L}) b->Arg(n);
}
void ArraySizes(benchmark::internal::Benchmark* b) {
    for (const long n : {10'000L, 100'000L}) b->Arg(n);
}

}  // namespace

BENCHMARK(BM_PunDeal)->Apply(AllSizes)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_PunDealArray)->Apply(ArraySizes)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_PunDealReadOnly)->Apply(AllSizes)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_PunHasEntity)->Apply(AllSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PunHasEntityArray)->Apply(ArraySizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PunHasEntityScan)->Apply(AllSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PunOnSegment)->Apply(AllSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PunOnSegmentScan)->Apply(AllSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LineClassify)->Apply(AllSizes)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_LineClassifyArray)->Apply(ArraySizes)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_LineClassifyReadOnly)->Apply(AllSizes)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_LineFind)->Apply(AllSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LineFindArray)->Apply(ArraySizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LineFindScan)->Apply(AllSizes)->Unit(benchmark::kMicrosecond);
