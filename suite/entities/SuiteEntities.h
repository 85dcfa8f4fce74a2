#pragma once

// Registration of the suite's entity classes with the class registry, so that drawings holding
// them can be read back. The suite calls it once at start; calling it again does nothing.

namespace kelaz {

void InitSuiteEntities();

}  // namespace kelaz
