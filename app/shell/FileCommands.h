#pragma once

// The session's file commands: SAVE (the drawing as a .kdw file) and EXPORT (DXF, PNG, SVG or
// PDF by the file's suffix), and the saving and exporting that kelaz run does at its end.

#include <string>

class AcDbDatabase;

namespace kelaz {

void RegisterFileCommands(const wchar_t* group);
// False with the reason.
bool SaveDrawing(AcDbDatabase* db, const std::string& path, std::string& error);
bool ExportDrawingTo(AcDbDatabase* db, const std::string& path, std::string& error);

}  // namespace kelaz
