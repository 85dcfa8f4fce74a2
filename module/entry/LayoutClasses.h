#pragma once

// Registers the module's own classes with the class registry: the multi-pipe preview entity, so
// that drawings holding it can be read, and the document reactor. Calling it again does nothing.

namespace kelaz {
void InitLayoutClasses();
}
