#include "app/export/Export.h"

#include "app/export/DxfWriter.h"
#include "app/export/ExportFormat.h"
#include "app/export/Renderer.h"
#include "host/db/FileReplace.h"

namespace kelaz {

bool ExportByName(const ExportDrawing& drawing, const std::string& path, std::string& error) {
    const auto format = ExportFormatOf(path);
    if (!format) {
        error = "unknown export format for " + path + " (use .dxf, .png, .svg or .pdf)";
        return false;
    }
    std::string writerError;
    const FileStatus status = ReplaceFile(path, [&](const std::string& temporary) {
        const bool written = *format == ExportFormat::kDxf
                                 ? WriteDxf(drawing, temporary, writerError)
                                 : RenderDrawing(drawing, temporary, RenderOptions{}, writerError);
        // The writers name the file they were given; the user knows only the target.
        for (size_t at = writerError.find(temporary); at != std::string::npos;
             at = writerError.find(temporary, at + path.size())) {
            writerError.replace(at, temporary.size(), path);
        }
        return written;
    });
    if (status.ok()) return true;
    if (status.problem == FileProblem::kWriteFailed && status.error == 0) {
        error = writerError;
    } else {
        error = "cannot write to " + path + ": " + FileProblemText(status);
    }
    return false;
}

}  // namespace kelaz
