#include "module/entry/ModuleLoad.h"

#include <memory>

#include "module/entry/EntryPoint.h"
#include "module/entry/LayoutClasses.h"
#include "module/pipes/DocData.h"
#include "module/pipes/DocReactor.h"

namespace kelaz {

namespace {

// What a loaded library holds as its static objects, in the order it would build them.
struct ModuleObjects {
    CDocReactor docReactor;
    CDocDataManager docDataManager;
};

std::unique_ptr<ModuleObjects>& Loaded() {
    static std::unique_ptr<ModuleObjects> objects;
    return objects;
}

char g_moduleId = 0;

}  // namespace

bool LoadLayoutModule() {
    if (Loaded()) return false;
    InitLayoutClasses();
    Loaded() = std::make_unique<ModuleObjects>();
    acrxEntryPoint(AcRx::kInitAppMsg, LayoutModuleId());
    return true;
}

bool UnloadLayoutModule() {
    if (!Loaded() || ApplicationIsLocked(LayoutModuleId())) return false;
    acrxEntryPoint(AcRx::kUnloadAppMsg, LayoutModuleId());
    Loaded().reset();
    return true;
}

bool IsLayoutModuleLoaded() { return Loaded() != nullptr; }

void* LayoutModuleId() { return &g_moduleId; }

CDocReactor* LoadedDocReactor() { return Loaded() ? &Loaded()->docReactor : nullptr; }

AsdkDataManager<CDocData>* LoadedDocDataManager() {
    return Loaded() ? &Loaded()->docDataManager : nullptr;
}

}  // namespace kelaz
