#include "app/export/Export.h"

#include "app/export/DxfWriter.h"
#include "app/export/ExportFormat.h"
#include "app/export/Renderer.h"
#include "host/db/FileReplace.h"

namespace kelaz {

bool ExportByName(const ExportDrawing& drawing, const std::string& path, std::string& error) {
    const auto format = ExportFormatOf(path);
    if (!format) {
        error = "不认识这种文件后缀（请用 .dxf、.png、.svg 或 .pdf）";
        return false;
    }
    std::string writerError;
    const FileStatus status = ReplaceFile(path, [&](const std::string& temporary) {
        return *format == ExportFormat::kDxf
                   ? WriteDxf(drawing, temporary, writerError)
                   : RenderDrawing(drawing, temporary, RenderOptions{}, writerError);
    });
    if (status.ok()) return true;
    if (status.problem == FileProblem::kWriteFailed && status.error == 0) {
        error = writerError;
    } else {
        error = FileProblemText(status);
    }
    return false;
}

}  // namespace kelaz
