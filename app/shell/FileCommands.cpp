#include "app/shell/FileCommands.h"

#include "app/FilePaths.h"
#include "app/drawing/DrawingView.h"
#include "app/export/Export.h"
#include "app/export/ExportFormat.h"
#include "app/shell/CommandHelp.h"
#include "host/app/DocManager.h"
#include "host/db/Database.h"
#include "host/ed/EditorInput.h"
#include "host/ui/MessageBox.h"

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

// kelaz's own word inside a session: a box with the program's caption.
void Tell(const std::string& text) { AfxMessageBox(FromUtf8(text), MB_OK | MB_ICONWARNING); }

bool Confirm(const std::string& text) {
    return AfxMessageBox(FromUtf8(text), MB_YESNO | MB_ICONQUESTION) == IDYES;
}

bool ConfirmReplace(const std::string& path) {
    return Confirm("文件 " + path + " 已经存在。要替换它吗？");
}

// What the files around say of a save to path, as one word and a reason: "name" (not a drawing's
// name), "write" (cannot be written there), "new", "own" (the drawing's own file), "foreign"
// (a file that is no drawing), "replace" (another drawing).
std::string SaveVerdict(AcDbDatabase* db, const std::string& path) {
    if (std::string bad = CheckDrawingName(path); !bad.empty()) {
        if (ExportFormatOf(path)) bad += "要输出 DXF、PNG、SVG 或 PDF，请用 EXPORT。";
        return "name " + bad;
    }
    if (const std::string bad = CheckWritePath(path, "图形"); !bad.empty()) return "write " + bad;
    if (!FileExists(path)) return "new";
    if (IsForeignFile(path)) return "foreign";
    const wchar_t* own = nullptr;
    db->getFilename(own);
    if (own != nullptr && *own != L'\0' && SameFile(ToUtf8(std::wstring_view(own)), path)) {
        return "own";
    }
    return "replace";
}

std::string Recall(const std::function<std::string()>& look) {
    FileWriter* writer = TheWriter();
    return writer != nullptr ? writer->Recall(look) : look();
}

// Whether the drawing may go to path; refusals and the question are shown here. Only a drawing
// is ever replaced, and only the drawing's own file without asking.
bool SaveAllowed(AcDbDatabase* db, const std::string& path) {
    const std::string verdict = Recall([&] { return SaveVerdict(db, path); });
    const std::string word = verdict.substr(0, verdict.find(' '));
    const std::string why = verdict.size() > word.size() ? verdict.substr(word.size() + 1) : "";
    if (word == "name" || word == "write") {
        Tell(why);
        return false;
    }
    if (word == "foreign") {
        Tell("文件 " + path + " 不是 kelaz 图形，SAVE 不会覆盖它。");
        return false;
    }
    return word != "replace" || ConfirmReplace(path);
}

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
    // The drawing file's report names the file and says why.
    acutPrintf(L"\n%s", FromUtf8(error).GetString());
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
    if (!SaveAllowed(db, path)) {
        acutPrintf(L"\n没有保存。");
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
    // An unknown suffix is left to the exporter, which names the ones it knows.
    if (ExportFormatOf(path)) {
        const std::string verdict = Recall([&] {
            if (const std::string bad = CheckWritePath(path, "输出文件"); !bad.empty())
                return "write " + bad;
            return std::string(FileExists(path) ? "replace" : "new");
        });
        if (verdict.rfind("write ", 0) == 0) {
            Tell(verdict.substr(6));
            acutPrintf(L"\n没有输出。");
            return;
        }
        if (verdict == "replace" && !ConfirmReplace(path)) {
            acutPrintf(L"\n没有输出。");
            return;
        }
    }
    std::string error;
    if (ExportDrawingTo(db, path, error)) {
        acutPrintf(L"\n已输出 %s", FromUtf8(path).GetString());
    } else {
        acutPrintf(L"\n不能输出 %s：%s。", FromUtf8(path).GetString(), FromUtf8(error).GetString());
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
    if (!SaveAllowed(db, path)) {
        acutPrintf(L"\n没有保存。");
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
