#include "app/shell/RememberedCommands.h"

#include "host/ed/EditorInput.h"
#include "module/multipipe/MultiPipeRow.h"
#include "module/pipes/VerPipeInf.h"
#include "suite/model/BimModel.h"

namespace kelaz {

namespace {

int Count(size_t n) { return static_cast<int>(n); }

int RowsOf(const wchar_t* spec) {
    const MultiPipeRowList* rows = CMultiPipeRowStore::StoredRows(spec);
    return rows != nullptr ? Count(rows->size()) : 0;
}

}  // namespace

void ListRemembered(const CString& projectShown) {
    acutPrintf(L"\n%s 记住的内容：", projectShown.GetString());
    acutPrintf(L"\n  多管设置的行：电气 %d 行，1_5u %d 行", RowsOf(L"电气"), RowsOf(L"1_5u"));
    acutPrintf(L"\n  立管拆分：选中的立管 %d 根，算出的分段 %d 段，已拆分的分段 %d 段",
               Count(CVerPipeLists::Risers().size()), Count(CVerPipeLists::Planned().size()),
               Count(CVerPipeLists::Made().size()));
    // Only looked at: listing it must not build it.
    if (!HasBimInstance()) {
        acutPrintf(L"\n  楼层模型：没有建立");
        return;
    }
    const KelAzBimModel* model = pGetBimInstance();
    acutPrintf(L"\n  楼层模型：第 %d 次建立，%d 层", model->Generation(),
               Count(model->Storeys().size()));
}

void ListStoreys() {
    const bool kept = HasBimInstance();
    const KelAzBimModel* model = pGetBimInstance();
    if (model == nullptr) {
        acutPrintf(L"\n项目的楼层表读不出来，没有楼层模型。");
        return;
    }
    acutPrintf(
        kept ? L"\n楼层模型（沿用第 %d 次建立的）：%d 层" : L"\n楼层模型（第 %d 次建立）：%d 层",
        model->Generation(), Count(model->Storeys().size()));
    for (const KelAzStorey& storey : model->Storeys()) {
        acutPrintf(L"\n  %-6s %g ~ %g", storey.strName.GetString(), storey.dBottom, storey.dTop);
    }
}

}  // namespace kelaz
