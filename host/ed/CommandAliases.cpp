#include "host/ed/CommandAliases.h"

#include <map>

namespace kelaz {

namespace {

std::map<CString, CString>& Table() {
    static std::map<CString, CString> table = {{L"A", L"ARC"}, {L"E", L"ERASE"}, {L"PL", L"PLINE"}};
    return table;
}

}  // namespace

void AddCommandAlias(const CString& alias, const CString& command) {
    CString key = alias;
    Table()[key.MakeUpper()] = command;
}

CString CommandForAlias(const CString& alias) {
    CString key = alias;
    const auto found = Table().find(key.MakeUpper());
    return found != Table().end() ? found->second : CString();
}

std::vector<std::pair<CString, CString>> CommandAliases() {
    return {Table().begin(), Table().end()};
}

}  // namespace kelaz
