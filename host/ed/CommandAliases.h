#pragma once

// Short names typed at the command prompt for commands, as the host's alias table keeps them
// (A for ARC, E for ERASE, PL for PLINE; the program adds its own). An alias never hides a
// command of the same name: a command is looked for first.

#include <utility>
#include <vector>

#include "host/text/CString.h"

namespace kelaz {

// Names compare without regard to case; adding an alias again replaces its command.
void AddCommandAlias(const CString& alias, const CString& command);
// The command an alias stands for; empty when the name is no alias.
CString CommandForAlias(const CString& alias);
// Every alias with its command, by alias.
std::vector<std::pair<CString, CString>> CommandAliases();

}  // namespace kelaz
