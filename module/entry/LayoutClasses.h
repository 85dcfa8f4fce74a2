#pragma once

// Registers the module's own entity classes (the multi-pipe preview) with the class registry,
// so that drawings holding them can be read; calling it again does nothing.

namespace kelaz {
void InitLayoutClasses();
}
