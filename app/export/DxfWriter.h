#pragma once

// Writes a drawing as an R2000 DXF file (AC1015) that other CAD programs open.

#include <string>

#include "app/export/ExportDrawing.h"

namespace kelaz {

// The registered application name under which each entity's identity and properties are kept.
inline constexpr const char* kDxfAppName = "KELAZ";

// False with the reason in error (for a message that names the file) when the drawing holds
// numbers or extended data that cannot be written, or the file cannot be written; a refused drawing
// opens no file at all. A failure while writing may leave a partial file: write to a temporary name
// when that matters (ExportByName does).
bool WriteDxf(const ExportDrawing& drawing, const std::string& path, std::string& error);

}  // namespace kelaz
