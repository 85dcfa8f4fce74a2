#pragma once

// The host has one open project at a time; the data module's static calls read it.

#include "host/text/CString.h"

namespace kelaz {
class ProjectDb;
// The open project, null when none is.
ProjectDb* CurrentProject();
}  // namespace kelaz

namespace KelAzDataMng {

// Opens a project file and makes it current. On refusal the previous project stays current
// and error tells why (UTF-8 text converted to CString).
bool OpenProject(const CString& path, CString& error);
bool OpenProject(const CString& path);
// Makes current a project held in memory, filled with the default catalogue: used when the
// user names no project file.
bool OpenDefaultProject();
// Closes the current project; attribute edits not saved are dropped.
void CloseProject();
bool IsProjectOpen();

}  // namespace KelAzDataMng
