// The multi-pipe drawing at the sizes a drafter meets: a bundle of 50 lines (a busy cable route)
// traced over 20 pieces, with the cost of one cursor sample of the drag (offsets of every line,
// the join with each line's previous piece, the preview's update and its drawing) beside the
// laying of 50 lines over 200 pieces (10,000 leads) when the points are taken. Run with the
// release preset:
//   cmake --build --preset release --target MultiPipeBench && build/release/bench/MultiPipeBench

#include <benchmark/benchmark.h>

#include <filesystem>
#include <sstream>

#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"
#include "host/ui/DialogDriver.h"
#include "module/entry/LayoutClasses.h"
#include "module/foundations/LevelDlg.h"
#include "module/multipipe/DrawMlead.h"
#include "module/multipipe/MLineDlg.h"
#include "module/multipipe/MultiPipeJig.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjectDb.h"
#include "suite/entities/SuiteEntities.h"

namespace {

constexpr int kRows = 50;

// A default project with 50 stored rows 100 apart, opened once.
void Project() {
    static bool done = false;
    if (done) return;
    done = true;
    kelaz::InitSuiteEntities();
    kelaz::InitLayoutClasses();
    const auto dir = std::filesystem::temp_directory_path() / "kelaz-multipipe-bench";
    std::filesystem::create_directories(dir);
    const CString path = kelaz::FromUtf8((dir / "bench.kelaz").string());
    kelaz::ProjectOpenResult result;
    kelaz::ProjectDb::CreateDefaultFile(path, true, result);
    KelAzDataMng::OpenProject(path);
    KelAzDataMng::CProj::SetCurrentSpec(L"电气");
    MultiPipeRowList& rows = *CMultiPipeRowStore::StoredRows(L"电气");
    rows.clear();
    for (int i = 0; i < kRows; ++i) {
        auto row = std::make_unique<MultiPipeRow>();
        row->spec = L"电气";
        row->compType = L"导管";
        row->lineName = L"SC20";
        row->sysCode = L"WL";
        row->horzOffset = 100.0 * (i + 1);
        rows.push_back(std::move(row));
    }
}

// A zigzag of n pieces 3 m long, turning square at every point.
std::vector<CString> Zigzag(int pieces) {
    std::vector<CString> lines;
    for (int i = 0; i <= pieces; ++i)
        lines.push_back(kelaz::FormatText(L"%d,%d", (i + 1) / 2 * 3000, i / 2 * 3000));
    return lines;
}

void BM_DragSample(benchmark::State& state) {
    Project();
    constexpr int kPieces = 20;
    constexpr int kSamples = 2000;
    AcDbDatabase db;
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    kelaz::ScriptedDialogDriver dialog;
    dialog.Add(L"ok");
    kelaz::ScopedDialogDriver useDialog(dialog);
    CMLineDlg dlg;
    dlg.DoModal();
    for (auto _ : state) {
        state.PauseTiming();
        // The path's pieces are taken without a driver (nothing laid); then the cursor moves.
        std::vector<CString> lines = Zigzag(kPieces);
        for (int s = 0; s < kSamples; ++s)
            lines.push_back(kelaz::FormatText(L"drag %d,%d", 31000 + s % 500, 33000 + s % 700));
        lines.push_back(L"^C");
        kelaz::ScriptedInput input(lines);
        std::ostringstream out;
        kelaz::Editor editor(&db, &input, &out);
        kelaz::ScopedEditor scope(editor);
        CMultiPipeJig jig(&dlg, AcGeVector3d::kZAxis);
        state.ResumeTiming();
        benchmark::DoNotOptimize(jig.Run(AcGePoint3d(0, 0, 0), 5100, nullptr));
    }
    // Each run is 20 taken points and 2000 cursor samples: the time per sample.
    state.counters["sample"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kSamples,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_LayBundle(benchmark::State& state) {
    Project();
    const int pieces = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        AcDbDatabase db;
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        std::vector<CString> lines = Zigzag(pieces);
        lines.push_back(L"");
        lines.push_back(L"^C");
        kelaz::ScriptedInput input(lines);
        std::ostringstream out;
        kelaz::Editor editor(&db, &input, &out);
        kelaz::ScopedEditor scope(editor);
        kelaz::ScriptedDialogDriver dialog;
        dialog.Add(L"ok");
        kelaz::ScopedDialogDriver useDialog(dialog);
        kelaz::CurrentLevel() = 2800.0;
        state.ResumeTiming();
        pAddMlead();
        state.PauseTiming();
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        state.ResumeTiming();
    }
    state.counters["leads"] = static_cast<double>(kRows) * pieces;
}

}  // namespace

BENCHMARK(BM_DragSample)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LayBundle)->Arg(200)->Unit(benchmark::kMillisecond)->Iterations(3);
