#pragma once

// Handing new entities to the drawing.

#include "host/db/AcadErrorStatus.h"
#include "host/db/ObjectId.h"
#include "host/text/CString.h"

class AcDbDatabase;
class AcDbEntity;

// Appends the entity to model space of the database (the working one by default), creating its
// layer when the drawing does not have it yet, and closes it: the database owns it from then on
// and id names it. On failure the entity still belongs to the caller and id is untouched.
Acad::ErrorStatus addToModelSpace(AcDbObjectId& id, AcDbEntity* entity, AcDbDatabase* db = nullptr);

namespace kelaz {
// Makes sure the layer exists in the database. A new layer gets the colour index given, or
// with none (-1) the colour the open project's layer table gives it, else white.
Acad::ErrorStatus EnsureLayer(AcDbDatabase* db, const CString& name, short colorIndex = -1);
}  // namespace kelaz
