#include "app/export/ExportFormat.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace kelaz {

std::optional<ExportFormat> ExportFormatOf(const std::string& path) {
    std::string suffix = std::filesystem::path(path).extension().string();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (suffix == ".dxf") return ExportFormat::kDxf;
    if (suffix == ".png") return ExportFormat::kPng;
    if (suffix == ".svg") return ExportFormat::kSvg;
    if (suffix == ".pdf") return ExportFormat::kPdf;
    return std::nullopt;
}

}  // namespace kelaz
