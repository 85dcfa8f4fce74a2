#include "app/export/Export.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "app/export/DxfWriter.h"
#include "app/export/ExportFormat.h"
#include "app/export/Renderer.h"

namespace kelaz {
namespace {

// A new empty file beside path, named ".<name>.XXXXXX<suffix>": the same folder makes the
// final rename atomic, and the suffix tells the renderer the format. Empty with error set when
// the folder cannot take a file.
std::string CreateTemporaryBeside(const std::string& path, std::string& error) {
    const std::filesystem::path target(path);
    const std::string suffix = target.extension().string();
    std::filesystem::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    std::string name = (folder / ("." + target.stem().string() + ".XXXXXX" + suffix)).string();
    const int fd = mkstemps(name.data(), static_cast<int>(suffix.size()));
    if (fd < 0) {
        error = "cannot write to " + folder.string() + ": " + std::strerror(errno);
        return {};
    }
    // mkstemps makes the file private; an exported file gets the usual permissions.
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(fd, 0666 & ~mask);
    close(fd);
    return name;
}

}  // namespace

bool ExportByName(const ExportDrawing& drawing, const std::string& path, std::string& error) {
    const auto format = ExportFormatOf(path);
    if (!format) {
        error = "unknown export format for " + path + " (use .dxf, .png, .svg or .pdf)";
        return false;
    }
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) {
        error = path + " is a folder";
        return false;
    }
    const std::string temporary = CreateTemporaryBeside(path, error);
    if (temporary.empty()) return false;

    const bool written = *format == ExportFormat::kDxf
                             ? WriteDxf(drawing, temporary, error)
                             : RenderDrawing(drawing, temporary, RenderOptions{}, error);
    // The writers name the file they were given; the user knows only the target.
    if (!written) {
        std::remove(temporary.c_str());
        for (size_t at = error.find(temporary); at != std::string::npos;
             at = error.find(temporary, at + path.size()))
            error.replace(at, temporary.size(), path);
        return false;
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        error = "cannot write " + path + ": " + std::strerror(errno);
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace kelaz
