#pragma once

#include <CLI/CLI.hpp>

namespace kelaz {

// kelaz project init FILE: writes the default project; kelaz project show [FILE]: prints a
// project (the default catalogue when no file is named).
void AddProjectCommands(CLI::App& app, int& exitStatus);

}  // namespace kelaz
