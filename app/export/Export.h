#pragma once

// Exports a drawing to the file kind its name says: .dxf, .png, .svg or .pdf, in any letter case.

#include <string>

#include "app/export/ExportDrawing.h"

namespace kelaz {

// Writes a temporary file beside the target and renames it over the target only once it is
// complete, so a failure leaves whatever was there before and no partial file; the file keeps
// its permissions and a symbolic link is followed (host/db/FileReplace.h). False with the reason
// in error (for a message that names the file) for an unknown suffix, a target that cannot be
// written, or any refusal of the writers (WriteDxf, RenderDrawing with its default options).
bool ExportByName(const ExportDrawing& drawing, const std::string& path, std::string& error);

}  // namespace kelaz
