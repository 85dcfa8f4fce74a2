#pragma once

// A small plant-room plan holding one of every entity class the drawing knows: the drawing a
// new user exports and dumps to see what kelaz writes.

class AcDbDatabase;

namespace kelaz {

// Adds the sample to model space of db. False when an entity could not be added.
bool BuildSampleDrawing(AcDbDatabase& db);

// A pipe shaft of the default project's building, for splitting risers by floor: the shaft's
// outline, a water supply riser from the ground floor up into the fifth and a drainage stack
// drawn downwards from the roof into the basement, each named after the floor it starts on.
bool BuildRiserSampleDrawing(AcDbDatabase& db);

}  // namespace kelaz
