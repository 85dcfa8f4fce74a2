#pragma once

// String resources. The host loads a text by its number from the resource table that is current;
// a module makes its own table current for a while with CAcModuleResourceOverride, so that
// CString::LoadString finds the module's texts instead of the host's.

#include <map>
#include <vector>

#include "host/text/WinTypes.h"

namespace kelaz {

struct ResourceString {
    UINT id;
    const wchar_t* text;
};

class ResourceTable {
public:
    ResourceTable() = default;
    explicit ResourceTable(const std::vector<ResourceString>& strings);

    // nullptr when the id is unknown.
    const wchar_t* Find(UINT id) const;
    bool Contains(UINT id) const { return Find(id) != nullptr; }

    // The table CString::LoadString reads: the innermost override, else the host's own table.
    static const ResourceTable& Current();
    static void Push(const ResourceTable* table);
    static void Pop();

private:
    std::map<UINT, const wchar_t*> m_strings;
};

}  // namespace kelaz
