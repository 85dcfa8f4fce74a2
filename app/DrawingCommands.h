#pragma once

#include <CLI/CLI.hpp>

namespace kelaz {

// kelaz dump DRAWING and kelaz export DRAWING -o FILE.
void AddDrawingCommands(CLI::App& app, int& exitStatus);

}  // namespace kelaz
