// Window selection in a drawing of a million entities: through the R-tree of model space
// against visiting every entity. Run with the release preset:
//   cmake --preset release && cmake --build --preset release --target SpatialIndexBench
//   build/release/bench/SpatialIndexBench

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/Line.h"
#include "host/db/OpenObject.h"
#include "host/db/Selection.h"

namespace {

constexpr int kEntities = 1'000'000;
// A plan of 100 m square in millimetres, with pieces of 5 to 30 cm.
constexpr double kPlanSize = 100'000.0;
constexpr double kMinLength = 50.0;
constexpr double kMaxLength = 300.0;
// Windows of half a metre: a handful of entities inside each, some dozens crossing.
constexpr double kWindowSize = 500.0;
constexpr int kWindows = 256;

void AppendLines(AcDbDatabase& db, int count, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> coord(0.0, kPlanSize);
    std::uniform_real_distribution<double> length(kMinLength, kMaxLength);
    std::uniform_real_distribution<double> direction(-1.0, 1.0);
    AcDbBlockTableRecord* model = nullptr;
    acdbOpenObject(model, db.currentSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d start(coord(rng), coord(rng), 0.0);
        const AcGeVector3d along = AcGeVector3d(direction(rng), direction(rng), 0.0).normal();
        auto* line = new AcDbLine(start, start + along * length(rng));
        model->appendAcDbEntity(line);
        line->close();
    }
    model->close();
}

AcDbDatabase& MillionEntityDrawing() {
    static AcDbDatabase* db = [] {
        auto* made = new AcDbDatabase();
        AppendLines(*made, kEntities, 1);
        return made;
    }();
    return *db;
}

std::vector<AcGePoint3d> WindowCorners() {
    std::mt19937 rng(2);
    std::uniform_real_distribution<double> coord(0.0, kPlanSize - kWindowSize);
    std::vector<AcGePoint3d> corners;
    for (int i = 0; i < kWindows; ++i) corners.emplace_back(coord(rng), coord(rng), 0.0);
    return corners;
}

template <AcDbObjectIdArray (*Select)(AcDbDatabase*, const AcGePoint3d&, const AcGePoint3d&,
                                      const kelaz::SelectionFilter&)>
void BM_Window(benchmark::State& state) {
    AcDbDatabase& db = MillionEntityDrawing();
    const std::vector<AcGePoint3d> corners = WindowCorners();
    const AcGeVector3d diagonal(kWindowSize, kWindowSize, 0.0);
    std::size_t next = 0;
    long hits = 0;
    for (auto _ : state) {
        const AcGePoint3d& c = corners[next++ % corners.size()];
        const AcDbObjectIdArray ids = Select(&db, c, c + diagonal, {});
        hits += ids.length();
        benchmark::DoNotOptimize(ids.asArrayPtr());
    }
    state.counters["hits/query"] =
        benchmark::Counter(static_cast<double>(hits) / static_cast<double>(state.iterations()));
}

void BM_AppendLines(benchmark::State& state) {
    for (auto _ : state) {
        AcDbDatabase db;
        AppendLines(db, static_cast<int>(state.range(0)), 3);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(BM_Window<kelaz::SelectWindow>)
    ->Name("SelectWindow/rtree")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Window<kelaz::ScanWindow>)->Name("SelectWindow/scan")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Window<kelaz::SelectCrossing>)
    ->Name("SelectCrossing/rtree")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Window<kelaz::ScanCrossing>)
    ->Name("SelectCrossing/scan")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AppendLines)->Arg(100'000)->Unit(benchmark::kMillisecond);
