#pragma once

// MULTIPIPE: a bundle of parallel conduits, wires, trunking and cables drawn in one pass: the
// settings dialog chooses the lines and their offsets, then the centre path is traced with a
// live preview (A arcs, U back, Enter a new pass, a cancel at the first point ends).

namespace kelaz {

void RegisterMultiPipeCommand(const wchar_t* group);

}  // namespace kelaz
