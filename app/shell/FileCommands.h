#pragma once

// The session's file commands: SAVE (the drawing as a .kdw file) and EXPORT (DXF, PNG, SVG or
// PDF by the file's suffix), and the saving and exporting that kelaz run does at its end.

#include <functional>
#include <string>

class AcDbDatabase;

namespace kelaz {

// Writes the session's files. A session passes its saves through its own writer, so that its
// journal records them; a session rebuilt from its journal writes nothing.
class FileWriter {
public:
    virtual ~FileWriter() = default;
    // False with the reason: for a save, the drawing file's whole report, which names the file;
    // for an export, what stopped it, for a message that names the file.
    virtual bool Save(AcDbDatabase& db, const std::string& path, std::string& error) = 0;
    virtual bool Export(AcDbDatabase& db, const std::string& path, std::string& error) = 0;
    // What look finds out from the files around the drawing (whether one is there to be
    // replaced ...): a session keeps it in its journal, and a replay answers what was found
    // then, so that it asks the same questions in the same order.
    virtual std::string Recall(const std::function<std::string()>& look) { return look(); }
};
// Null: the files are written directly.
void SetFileWriter(FileWriter* writer);

void RegisterFileCommands(const wchar_t* group);
// False with the reason, as FileWriter gives it.
bool SaveDrawing(AcDbDatabase* db, const std::string& path, std::string& error);
bool ExportDrawingTo(AcDbDatabase* db, const std::string& path, std::string& error);
// What the writers do in the end.
bool WriteDrawing(AcDbDatabase& db, const std::string& path, std::string& error);
bool WriteExport(AcDbDatabase& db, const std::string& path, std::string& error);
// Saves the drawing under its name, asking for one when it has none, and says on the command
// line what happened. False when nothing was saved.
bool SaveUnderItsName(AcDbDatabase* db);

}  // namespace kelaz
