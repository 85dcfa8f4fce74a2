#pragma once

// The drawing file: our own binary format. A header (magic, format version, body length), a
// body written through a file filer (the handle seed, the tables' handles, every layer record,
// then every live entity of model space in drawing order as class name, handle and its own
// dwgOutFields record) and a CRC-32 over all of it. Erased objects and the undo history are not
// saved; handles are.

#include <memory>

#include "host/Adesk.h"
#include "host/db/AcadErrorStatus.h"
#include "host/text/CString.h"

class AcDbDatabase;

namespace kelaz {

class DatabaseImpl;

// The format this program writes, and the newest it reads.
inline constexpr Adesk::UInt32 kDrawingFormatVersion = 1;

// Writes db to path through a temporary file beside it, renamed into place at the end (see
// host/db/FileReplace.h: the file keeps its permissions, a symbolic link is followed, a
// read-only file is refused). On failure the report says why and no file is left behind.
Acad::ErrorStatus WriteDrawingFile(const AcDbDatabase& db, const wchar_t* path, CString& report);

// Reads and checks the whole file into new contents. On failure, contents stays empty and the
// report names the file and lists every problem found, numbered.
Acad::ErrorStatus ReadDrawingFile(const wchar_t* path, std::unique_ptr<DatabaseImpl>& contents,
                                  CString& report);

// Whether path is a regular file that begins as a drawing of this program does, intact or not.
bool IsDrawingFile(const wchar_t* path);

}  // namespace kelaz
