#pragma once

// The drawing as the program shows it to the outside: opening a drawing file, the JSON lines of
// `kelaz dump`, and the exporters' view of the drawing.

#include <memory>
#include <ostream>
#include <string>

#include "app/export/ExportDrawing.h"

class AcDbDatabase;
class AcDbEntity;

namespace kelaz {

// Registers every class a drawing can hold (host, suite, layout module); once is enough.
void InitDrawingClasses();

// Reads a drawing file into a new database; null with the reader's report on failure.
std::unique_ptr<AcDbDatabase> OpenDrawing(const std::string& path, std::string& report);

// One JSON object for the entity (open for read): handle, class, layer, color, attName,
// sysCode, then its geometry and the suite's properties.
std::string EntityJson(const AcDbEntity& entity);
// One line of EntityJson per live entity of model space, in drawing order.
void DumpDrawing(AcDbDatabase& db, std::ostream& out);

// Layers and entities with what they draw and the suite's properties as extended data.
ExportDrawing BuildExportDrawing(AcDbDatabase& db);

}  // namespace kelaz
