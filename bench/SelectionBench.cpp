// The layout commands' window selection of the suite's pipes at 10k, 100k and 1M entities:
// CKelAzSelectFun through the drawing's R-tree beside a scan that measures every entity of
// model space. The plan grows with the drawing so that a window holds about as many pipes at
// every size. Run with the release preset:
//   cmake --build --preset release --target SelectionBench && build/release/bench/SelectionBench

#include <benchmark/benchmark.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/OpenObject.h"
#include "host/db/Selection.h"
#include "module/queries/KelAzSelectFun.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/SuiteEntities.h"

namespace {

// A pipe every 10 square metres on average, 0.5 to 3 m long.
constexpr double kAreaPerPipe = 1e7;
constexpr double kMinLength = 500.0;
constexpr double kMaxLength = 3000.0;
// A room-sized window: 6 m square.
constexpr double kWindow = 6000.0;
constexpr int kWindows = 256;

double PlanSide(int pipes) { return std::sqrt(kAreaPerPipe * pipes); }

AcDbDatabase& Drawing(int pipes) {
    static std::map<int, std::unique_ptr<AcDbDatabase>> drawings;
    auto& db = drawings[pipes];
    if (db) return *db;
    kelaz::InitSuiteEntities();
    db = std::make_unique<AcDbDatabase>();
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> coord(0.0, PlanSide(pipes));
    std::uniform_real_distribution<double> length(kMinLength, kMaxLength);
    std::bernoulli_distribution alongX(0.5);
    AcDbBlockTableRecord* model = nullptr;
    acdbOpenObject(model, db->currentSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < pipes; ++i) {
        const AcGePoint3d start(coord(rng), coord(rng), 3000.0);
        const double l = length(rng);
        auto* pipe = new KelAzPipe;
        pipe->setStartPoint(start);
        pipe->setEndPoint(start + (alongX(rng) ? AcGeVector3d(l, 0, 0) : AcGeVector3d(0, l, 0)));
        model->appendAcDbEntity(pipe);
        pipe->close();
    }
    model->close();
    return *db;
}

std::vector<AcGePoint3d> Corners(int pipes) {
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> coord(0.0, PlanSide(pipes) - kWindow);
    std::vector<AcGePoint3d> corners;
    for (int i = 0; i < kWindows; ++i) corners.emplace_back(coord(rng), coord(rng), 0.0);
    return corners;
}

template <bool kIndexed>
void BM_PipeWindow(benchmark::State& state) {
    const int pipes = static_cast<int>(state.range(0));
    AcDbDatabase& db = Drawing(pipes);
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    const std::vector<AcGePoint3d> corners = Corners(pipes);
    const AcGeVector3d diagonal(kWindow, kWindow, 0.0);
    kelaz::SelectionFilter filter;
    filter.cls = KelAzPipe::desc();
    std::size_t next = 0;
    long hits = 0;
    for (auto _ : state) {
        const AcGePoint3d& c = corners[next++ % corners.size()];
        AcDbObjectIdArray ids;
        if constexpr (kIndexed) {
            CKelAzSelectFun::SelectEntity(ids, L"KelAzPipe", c, c + diagonal, false);
        } else {
            ids = kelaz::ScanWindow(&db, c, c + diagonal, filter);
        }
        hits += ids.length();
        benchmark::DoNotOptimize(ids.asArrayPtr());
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    state.counters["hits/query"] =
        benchmark::Counter(static_cast<double>(hits) / static_cast<double>(state.iterations()));
}

}  // namespace

BENCHMARK(BM_PipeWindow<true>)
    ->Name("PipeWindow/rtree")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PipeWindow<false>)
    ->Name("PipeWindow/scan")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);
