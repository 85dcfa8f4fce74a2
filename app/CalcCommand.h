#pragma once

#include <CLI/CLI.hpp>

namespace kelaz {

// kelaz calc rect: positions of components in a rectangle, one point per line.
void AddCalcCommands(CLI::App& app, int& exitStatus);

}  // namespace kelaz
