#pragma once

#include <CLI/CLI.hpp>

namespace kelaz {

// kelaz shell: the command line typed at a terminal (or piped in).
void AddShellCommand(CLI::App& app, int& exitStatus);
// kelaz run SCRIPT: the same command line read from a file.
void AddRunCommand(CLI::App& app, int& exitStatus);
// kelaz recover DRAWING: the drawing rebuilt from the journal a session left behind.
void AddRecoverCommand(CLI::App& app, int& exitStatus);
// kelaz help input: the grammar of both.
void AddHelpCommand(CLI::App& app, int& exitStatus);

}  // namespace kelaz
