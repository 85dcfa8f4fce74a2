#include "app/shell/FileCommands.h"

#include "app/drawing/DrawingView.h"
#include "app/export/Export.h"
#include "app/shell/CommandHelp.h"
#include "host/app/DocManager.h"
#include "host/db/Database.h"
#include "host/ed/EditorInput.h"

namespace kelaz {

namespace {

// Longer than any path a person types.
constexpr size_t kPathBuffer = 4096;

FileWriter*& TheWriter() {
    static FileWriter* writer = nullptr;
    return writer;
}

AcDbDatabase* CurrentDatabase() {
    AcApDocument* doc = acDocManager->curDocument();
    return doc != nullptr ? doc->database() : nullptr;
}

// Asks for a file name; Enter gives the default. False when cancelled or nothing was given.
bool AskPath(const CString& prompt, const CString& fallback, std::string& path) {
    ACHAR text[kPathBuffer] = {};
    if (acedGetString(1, prompt, text, kPathBuffer) != RTNORM) return false;
    CString chosen(text);
    chosen.Trim();
    if (chosen.IsEmpty()) chosen = fallback;
    if (chosen.IsEmpty()) return false;
    path = ToUtf8(chosen);
    return true;
}

}  // namespace

bool WriteDrawing(AcDbDatabase& db, const std::string& path, std::string& error) {
    if (db.saveAs(FromUtf8(path)) == Acad::eOk) return true;
    error = ToUtf8(LastFileReport(db));
    return false;
}

bool WriteExport(AcDbDatabase& db, const std::string& path, std::string& error) {
    return ExportByName(BuildExportDrawing(db), path, error);
}

void SetFileWriter(FileWriter* writer) { TheWriter() = writer; }

bool SaveDrawing(AcDbDatabase* db, const std::string& path, std::string& error) {
    FileWriter* writer = TheWriter();
    return writer != nullptr ? writer->Save(*db, path, error) : WriteDrawing(*db, path, error);
}

bool ExportDrawingTo(AcDbDatabase* db, const std::string& path, std::string& error) {
    FileWriter* writer = TheWriter();
    return writer != nullptr ? writer->Export(*db, path, error) : WriteExport(*db, path, error);
}

namespace {

CString FileNameOf(AcDbDatabase* db) {
    const wchar_t* current = nullptr;
    db->getFilename(current);
    return current != nullptr ? CString(current) : CString();
}

bool SaveAndSay(AcDbDatabase* db, const std::string& path) {
    std::string error;
    if (SaveDrawing(db, path, error)) {
        acutPrintf(L"\n已保存 %s", FromUtf8(path).GetString());
        return true;
    }
    acutPrintf(L"\n不能保存：%s", FromUtf8(error).GetString());
    return false;
}

void SaveCommand() {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) return;
    const CString name = FileNameOf(db);
    const CString prompt = name.IsEmpty() ? CString(L"\n保存为文件: ")
                                          : FormatText(L"\n保存为文件 <%s>: ", name.GetString());
    std::string path;
    if (!AskPath(prompt, name, path)) {
        acutPrintf(L"\n没有保存：图形还没有文件名。");
        return;
    }
    SaveAndSay(db, path);
}

void ExportCommand() {
    AcDbDatabase* db = CurrentDatabase();
    if (db == nullptr) return;
    std::string path;
    if (!AskPath(L"\n输出到文件 (.dxf .png .svg .pdf): ", CString(), path)) {
        acutPrintf(L"\n没有输出。");
        return;
    }
    std::string error;
    if (ExportDrawingTo(db, path, error)) {
        acutPrintf(L"\n已输出 %s", FromUtf8(path).GetString());
    } else {
        acutPrintf(L"\n不能输出：%s", FromUtf8(error).GetString());
    }
}

}  // namespace

bool SaveUnderItsName(AcDbDatabase* db) {
    if (db == nullptr) return false;
    const CString name = FileNameOf(db);
    std::string path = ToUtf8(name);
    if (name.IsEmpty() && !AskPath(L"\n保存为文件: ", CString(), path)) {
        acutPrintf(L"\n没有保存：图形还没有文件名。");
        return false;
    }
    return SaveAndSay(db, path);
}

void RegisterFileCommands(const wchar_t* group) {
    const Adesk::Int32 quiet = ACRX_CMD_MODAL | ACRX_CMD_NOUNDOMARKER;
    RegisterCommand(group, L"SAVE", L"保存图形（默认存回当前文件）", quiet, SaveCommand);
    RegisterCommand(group, L"EXPORT", L"输出 DXF、PNG、SVG 或 PDF（按文件后缀）", quiet,
                    ExportCommand);
}

}  // namespace kelaz
