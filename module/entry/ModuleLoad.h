#pragma once

// Loading and unloading the layout module in this program.
//
// Inside the CAD host the module is a library the host maps when it loads it: the loader builds
// the module's static objects (its two document reactors), then the host sends kInitAppMsg to
// acrxEntryPoint; at unload the host sends kUnloadAppMsg and the loader destroys those objects.
// Here the module is linked into the program. Objects at namespace scope would be built before
// main in every program and test that links the module, listening to every document any of them
// makes, and could never be unloaded and loaded again. So these functions do what the loader
// does, when the caller says: a drafting session loads the module before its first document and
// unloads it after its last. Loaded, the module's objects are the process's only ones.

#include "module/entry/LayoutApi.h"

class CDocReactor;
struct CDocData;
template <class T>
class AsdkDataManager;

namespace kelaz {

// Registers the module's classes, builds its objects (they start listening to the document
// manager) and sends the init message. False, doing nothing, when it is loaded already.
LAYOUT_API bool LoadLayoutModule();
// Sends the unload message and destroys the objects (they stop listening). False, doing nothing,
// when the module is not loaded or has not unlocked itself.
LAYOUT_API bool UnloadLayoutModule();
LAYOUT_API bool IsLayoutModuleLoaded();
// The packet the module is given with its messages: it names the module to the host.
LAYOUT_API void* LayoutModuleId();
// The module's objects while it is loaded, null otherwise.
LAYOUT_API CDocReactor* LoadedDocReactor();
LAYOUT_API AsdkDataManager<CDocData>* LoadedDocDataManager();

}  // namespace kelaz
