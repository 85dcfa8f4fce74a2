#pragma once

// Registration of the host's own runtime classes. A new class of host/db is added here with one
// line; the suite registers its classes the same way in an init function of its own.

namespace kelaz {

// Registers every class of the host (objects, tables, entities) in the class dictionary, once;
// later calls do nothing. The database constructor calls it.
void InitHostClasses();

}  // namespace kelaz
