#pragma once

// SOFTPIPE: soft (flexible) ducts drawn point by point, with arcs through a middle point picked
// in the host's ARC command; Enter starts the next pipe, a cancel ends the command.

namespace kelaz {

void RegisterSoftPipeCommand(const wchar_t* group);

}  // namespace kelaz
