#pragma once

// A small plant-room plan holding one of every entity class the drawing knows: the drawing a
// new user exports and dumps to see what kelaz writes.

class AcDbDatabase;

namespace kelaz {

// Adds the sample to model space of db. False when an entity could not be added.
bool BuildSampleDrawing(AcDbDatabase& db);

}  // namespace kelaz
