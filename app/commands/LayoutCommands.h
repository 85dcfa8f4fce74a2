#pragma once

// The drafting commands of the layout module at kelaz's command line: choosing what to place
// (ATT, SYS), where (FLOOR, SPEC), and placing it (PLACE).

namespace kelaz {

// Registers the commands with the command line; again does nothing.
void RegisterLayoutCommands();
void UnregisterLayoutCommands();

}  // namespace kelaz
