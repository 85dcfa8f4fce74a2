#pragma once

// The file kinds the exporters write, told apart by the file name's suffix.

#include <optional>
#include <string>

namespace kelaz {

enum class ExportFormat { kDxf, kPng, kSvg, kPdf };

// The format named by the path's suffix, in any letter case; none for another or no suffix.
std::optional<ExportFormat> ExportFormatOf(const std::string& path);

}  // namespace kelaz
