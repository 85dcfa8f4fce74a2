#pragma once

// What the module keeps for each open document. Nothing is kept yet; the word is there so that
// per-document data can be added without changing the reactors that keep the map in step.

#include <cstdint>

#include "module/pipes/AsdkDataManager.h"

struct CDocData {
    std::uintptr_t m_word = 0;
};
static_assert(sizeof(CDocData) <= sizeof(void*), "a document's data stays one machine word");

using CDocDataManager = AsdkDataManager<CDocData>;
