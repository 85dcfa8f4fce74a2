#include "module/multipipe/MultiPipeRow.h"

namespace {

MultiPipeRowList& Electrical() {
    static MultiPipeRowList rows;
    return rows;
}

MultiPipeRowList& ElectricalCode() {
    static MultiPipeRowList rows;
    return rows;
}

}  // namespace

MultiPipeRowList* CMultiPipeRowStore::StoredRows(const CString& spec) {
    if (spec == L"电气") return &Electrical();
    if (spec == L"1_5u") return &ElectricalCode();
    return nullptr;
}

void CMultiPipeRowStore::ClearAll() {
    Electrical().clear();
    ElectricalCode().clear();
}

size_t CMultiPipeRowStore::Count() { return Electrical().size() + ElectricalCode().size(); }
