#pragma once

// Draws a drawing as a picture: PNG, SVG or PDF, chosen by the file name's suffix. The plan
// view (world X to the right, Y up) is fitted to the sheet with a margin.

#include <string>

#include "app/export/ExportDrawing.h"

namespace kelaz {

struct RenderOptions {
    int pixelWidth = 1600;  // PNG
    int pixelHeight = 1200;
    double pageWidth = 1190.55;  // SVG and PDF, in points: A3 landscape
    double pageHeight = 841.89;
    double margin = 0.04;  // blank border around the drawing, as a fraction of the shorter side
    // A white sheet with dark lines reads best on paper and beside documents; a dark sheet shows
    // the drawing as it looks on the CAD screen.
    bool darkBackground = false;
};

// False with the reason in error (for a message that names the file) for a suffix that is not .png,
// .svg or .pdf, options out of range, a drawing with numbers that are not finite, no font for
// Chinese text when the drawing has text, or a file that cannot be written.
bool RenderDrawing(const ExportDrawing& drawing, const std::string& path,
                   const RenderOptions& options, std::string& error);

}  // namespace kelaz
