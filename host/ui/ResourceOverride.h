#pragma once

#include "host/text/ResourceTable.h"

// Makes a module's string table current for the lifetime of the object, so that texts loaded by
// number come from the module and not from the host.
class CAcModuleResourceOverride {
public:
    explicit CAcModuleResourceOverride(const kelaz::ResourceTable& moduleTable) {
        kelaz::ResourceTable::Push(&moduleTable);
    }
    ~CAcModuleResourceOverride() { kelaz::ResourceTable::Pop(); }
    CAcModuleResourceOverride(const CAcModuleResourceOverride&) = delete;
    CAcModuleResourceOverride& operator=(const CAcModuleResourceOverride&) = delete;
};
