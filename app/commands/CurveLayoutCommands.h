#pragma once

// ARCLAYOUT and SECTORLAYOUT: components of the current type spread along a picked arc, and on
// concentric rings in a sector.

namespace kelaz {

// Registers the two commands in the command group.
void RegisterCurveLayoutCommands(const wchar_t* group);

}  // namespace kelaz
