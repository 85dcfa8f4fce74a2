#pragma once

// The database's record of one object: what an AcDbObjectId points to. A stub outlives the
// opening and closing of its object and its erasure, so ids stay valid for the life of the
// database. Only the database code in host/db writes its fields.

#include <cstdint>

#include "host/db/Handle.h"

class AcDbDatabase;
class AcDbObject;

namespace kelaz {
// An entity's box in plan, as the spatial index holds it.
struct PlanBox {
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
};
}  // namespace kelaz

class AcDbStub {
public:
    AcDbDatabase* database = nullptr;
    AcDbHandle handle;
    // Owned by the database. Null for a stub made for a handle that a file refers to before the
    // object is read, and for the objects of contents that were replaced.
    AcDbObject* object = nullptr;
    bool erased = false;

    // Open state: any number of readers, or one writer alone; notifiers do not count.
    int readers = 0;
    bool writer = false;
    int notifiers = 0;
    // Appended and not yet closed for the first time.
    bool isNew = false;

    // Transient: not filed, not undone.
    int highlight = 0;

    // Position in its block's drawing order.
    std::uint64_t drawOrder = 0;
    // The box the spatial index holds for it, when it holds one.
    bool indexed = false;
    kelaz::PlanBox indexedBox;
    // Write opens of the current undo group (see kelaz::UndoLog).
    std::uint64_t undoGroupSerial = 0;
};
