#include "host/text/ResourceTable.h"

#include "host/Assert.h"

namespace kelaz {

namespace {
std::vector<const ResourceTable*>& Stack() {
    static std::vector<const ResourceTable*> stack;
    return stack;
}
}  // namespace

ResourceTable::ResourceTable(const std::vector<ResourceString>& strings) {
    for (const ResourceString& s : strings) {
        KELAZ_ASSERT(m_strings.emplace(s.id, s.text).second, "resource id defined twice");
    }
}

const wchar_t* ResourceTable::Find(UINT id) const {
    const auto it = m_strings.find(id);
    return it == m_strings.end() ? nullptr : it->second;
}

const ResourceTable& ResourceTable::Current() {
    static const ResourceTable host;  // the host's own texts are never looked up by the module
    return Stack().empty() ? host : *Stack().back();
}

void ResourceTable::Push(const ResourceTable* table) { Stack().push_back(table); }

void ResourceTable::Pop() {
    KELAZ_ASSERT(!Stack().empty(), "resource override released twice");
    Stack().pop_back();
}

}  // namespace kelaz
