#pragma once

// CONNECTED: which lines (leads, pipes, ducts) end at a picked point, or pass through it when
// they run obliquely or vertically; they are listed and kept highlighted until the next point
// or Enter.

namespace kelaz {

void RegisterConnectedCommand(const wchar_t* group);

}  // namespace kelaz
