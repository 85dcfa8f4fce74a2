#include "app/export/Renderer.h"

#include <cairo-ft.h>
#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <vector>

#include "app/export/AciColor.h"
#include "app/export/ExportFormat.h"
#include "app/export/ExportPrimitives.h"
#include "host/ge/GeConstants.h"

namespace kelaz {
namespace {

// Chosen explicitly: the generic sans-serif face has no Chinese glyphs and draws boxes.
constexpr const char* kCjkFontPattern = "sans-serif:lang=zh-cn";
constexpr const char* kCjkLanguage = "zh-cn";

constexpr int kMaxPixels = 16384;
constexpr double kMaxPagePoints = 14400.0;  // the largest page a PDF reader accepts
constexpr double kMaxMargin = 0.45;
constexpr double kPngLineWidth = 1.5;     // pixels
constexpr double kVectorLineWidth = 0.5;  // points
// Curves that are not circular in plan view are drawn as chords of at most this angle.
constexpr double kMaxChordAngle = kTwoPi / 128.0;
// A normal this close to ±Z makes a curve circular in plan view.
constexpr double kPlanNormalTolerance = 1e-9;
// A bulge this small is a straight segment.
constexpr double kStraightBulge = 1e-12;
// Extents thinner than this (drawing units) have no size to fit.
constexpr double kNoSize = 1e-9;
// Text whose unit square shows less area than this in plan view is seen edge-on.
constexpr double kEdgeOnArea = 1e-9;
// On a white sheet, colours lighter than this (relative luminance) are darkened to it so that
// yellow and light greys stay visible.
constexpr double kMaxInkLuminance = 0.6;
constexpr int kDefaultColorIndex = 7;

constexpr RgbColor kWhite{1.0, 1.0, 1.0};
constexpr RgbColor kBlack{0.0, 0.0, 0.0};
constexpr RgbColor kDarkSheet{0.13, 0.16, 0.19};

// ----------------------------------------------------------------------------------------------
// Geometry in plan view

struct PlanBox {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();
    void add(const AcGePoint3d& p) {
        minX = std::min(minX, p.x);
        minY = std::min(minY, p.y);
        maxX = std::max(maxX, p.x);
        maxY = std::max(maxY, p.y);
    }
    bool empty() const { return minX > maxX; }
};

bool IsPlan(const AcGeVector3d& normal) {
    return std::abs(std::abs(normal.normal().z) - 1.0) <= kPlanNormalTolerance;
}

// The arc a bulge stands for between two vertices of a polyline with the given normal.
GiArc BulgeArc(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
               const AcGeVector3d& normal) {
    const AcGeVector3d chord = to - from;
    const double length = chord.length();
    const AcGeVector3d n = normal.normal();
    const AcGeVector3d left = n.crossProduct(chord / length);
    // The centre lies off the chord's midpoint by d (1 - b²) / 4b: to the left for a positive
    // bulge of less than a half turn.
    const AcGePoint3d center =
        from + chord * 0.5 + left * (length * (1.0 - bulge * bulge) / (4.0 * bulge));
    const double radius = length * (1.0 + bulge * bulge) / (4.0 * std::abs(bulge));
    return GiArc{center, radius, bulge > 0.0 ? n : -n, (from - center) / radius,
                 4.0 * std::atan(std::abs(bulge))};
}

// Points along the arc, start and end included, spaced by at most kMaxChordAngle.
std::vector<AcGePoint3d> ArcPoints(const GiArc& arc) {
    const AcGeVector3d n = arc.normal.normal();
    const AcGeVector3d u = arc.startVector.normal();
    const AcGeVector3d v = n.crossProduct(u);
    const int steps = std::max(1, static_cast<int>(std::ceil(arc.sweep / kMaxChordAngle)));
    std::vector<AcGePoint3d> points;
    points.reserve(steps + 1);
    for (int i = 0; i <= steps; ++i) {
        const double t = arc.sweep * i / steps;
        points.push_back(arc.center + (u * std::cos(t) + v * std::sin(t)) * arc.radius);
    }
    return points;
}

GiArc FullArc(const GiCircle& circle) {
    return GiArc{circle.center, circle.radius, circle.normal, circle.normal.perpVector().normal(),
                 kTwoPi};
}

// Where the drawing lands on the sheet: plan X to the right, plan Y up, fitted with a margin.
class Sheet {
public:
    Sheet(const PlanBox& box, double width, double height, double margin) {
        const double border = margin * std::min(width, height);
        const double spanX = box.empty() ? 0.0 : box.maxX - box.minX;
        const double spanY = box.empty() ? 0.0 : box.maxY - box.minY;
        const double fitX = spanX > kNoSize ? (width - 2 * border) / spanX : 0.0;
        const double fitY = spanY > kNoSize ? (height - 2 * border) / spanY : 0.0;
        // A drawing that is a single line (or point) is fitted by its one size (or drawn 1:1).
        if (fitX > 0.0 && fitY > 0.0)
            m_scale = std::min(fitX, fitY);
        else if (fitX > 0.0 || fitY > 0.0)
            m_scale = std::max(fitX, fitY);
        const double midX = box.empty() ? 0.0 : (box.minX + box.maxX) / 2;
        const double midY = box.empty() ? 0.0 : (box.minY + box.maxY) / 2;
        m_offsetX = width / 2 - midX * m_scale;
        m_offsetY = height / 2 + midY * m_scale;
    }
    double scale() const { return m_scale; }
    double x(const AcGePoint3d& p) const { return m_offsetX + p.x * m_scale; }
    double y(const AcGePoint3d& p) const { return m_offsetY - p.y * m_scale; }

private:
    double m_scale = 1.0;
    double m_offsetX = 0.0;
    double m_offsetY = 0.0;
};

// ----------------------------------------------------------------------------------------------
// Text

class TextFace {
public:
    TextFace() = default;
    ~TextFace() {
        if (m_face) cairo_font_face_destroy(m_face);
        if (m_config) FcConfigDestroy(m_config);
    }
    TextFace(const TextFace&) = delete;
    TextFace& operator=(const TextFace&) = delete;

    bool load(std::string& error) {
        // A configuration of our own, released with the face: fontconfig's process-wide one is
        // never released and shows up as a leak in every checked test run.
        m_config = FcInitLoadConfigAndFonts();
        FcPattern* pattern = FcNameParse(reinterpret_cast<const FcChar8*>(kCjkFontPattern));
        if (!m_config || !pattern) {
            if (pattern) FcPatternDestroy(pattern);
            error = "fontconfig 不能用";
            return false;
        }
        FcConfigSubstitute(m_config, pattern, FcMatchPattern);
        FcDefaultSubstitute(pattern);
        FcResult result = FcResultNoMatch;
        FcPattern* match = FcFontMatch(m_config, pattern, &result);
        FcPatternDestroy(pattern);
        FcLangSet* langs = nullptr;
        const bool chinese =
            match && FcPatternGetLangSet(match, FC_LANG, 0, &langs) == FcResultMatch &&
            FcLangSetHasLang(langs, reinterpret_cast<const FcChar8*>(kCjkLanguage)) == FcLangEqual;
        if (!chinese) {
            if (match) FcPatternDestroy(match);
            error = std::string("没有含中文字符的字体（fontconfig “") + kCjkFontPattern +
                    "”）；请安装 fonts-wqy-microhei";
            return false;
        }
        m_face = cairo_ft_font_face_create_for_pattern(match);  // holds its own reference
        FcPatternDestroy(match);
        if (cairo_font_face_status(m_face) != CAIRO_STATUS_SUCCESS) {
            error = "打不开中文文字用的字体";
            return false;
        }
        m_capHeight = measureCapHeight();
        return true;
    }

    // Selects the face so that capital letters stand textHeight drawing units tall: the height
    // of single-line text in the host.
    void use(cairo_t* cr, double textHeight) const {
        cairo_set_font_face(cr, m_face);
        cairo_set_font_size(cr, textHeight / m_capHeight);
        cairo_font_options_t* options = cairo_font_options_create();
        // Unhinted metrics scale linearly, so the text keeps its place at every sheet size.
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        cairo_set_font_options(cr, options);
        cairo_font_options_destroy(options);
    }

private:
    // Cap height as a fraction of the em, from the letter H.
    double measureCapHeight() const {
        constexpr double kProbeSize = 1000.0;
        constexpr double kTypicalCapHeight = 0.7;
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
        cairo_t* cr = cairo_create(surface);
        cairo_set_font_face(cr, m_face);
        cairo_set_font_size(cr, kProbeSize);
        cairo_text_extents_t ext{};
        cairo_text_extents(cr, "H", &ext);
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
        const double cap = -ext.y_bearing / kProbeSize;
        return cap > 0.0 ? cap : kTypicalCapHeight;
    }

    FcConfig* m_config = nullptr;
    cairo_font_face_t* m_face = nullptr;
    double m_capHeight = 1.0;
};

// The text's own frame: x along its direction, y down its glyphs (against "up"), in drawing
// units, as cairo lays out glyphs.
struct TextFrame {
    AcGeVector3d along;
    AcGeVector3d down;
};

TextFrame FrameOf(const GiText& text) {
    const AcGeVector3d n = text.normal.normal();
    AcGeVector3d along = text.direction.orthoProject(n).normal();
    if (!along.isUnitLength()) along = n.perpVector().normal();
    return {along, -n.crossProduct(along).normal()};
}

// ----------------------------------------------------------------------------------------------
// The drawing

class Painter {
public:
    Painter(const ExportDrawing& drawing, const TextFace* face, bool dark)
        : m_drawing(drawing), m_face(face), m_dark(dark) {
        for (const auto& layer : drawing.layers) m_layerColors[key(layer.name)] = layer.color;
    }

    // Every primitive that will be drawn, with its colour.
    void forEachVisible(
        const std::function<void(const ExportEntity&, const GiPrimitive&, RgbColor)>& fn) const {
        for (const auto& entity : m_drawing.entities) {
            for (const auto& primitive : entity.primitives) {
                if (!PrimitiveIsDrawable(primitive)) continue;
                const auto layer = m_layerColors.find(key(PrimitiveLayer(entity, primitive)));
                const int layerColor =
                    layer == m_layerColors.end() ? kDefaultColorIndex : layer->second;
                if (layerColor < 0) continue;  // the layer is off
                int index = PrimitiveColor(entity, primitive);
                if (index == kColorByLayer) index = layerColor;
                fn(entity, primitive, ink(index));
            }
        }
    }

    PlanBox extents(cairo_t* measure) const {
        PlanBox box;
        forEachVisible([&](const ExportEntity&, const GiPrimitive& p, RgbColor) {
            std::visit([&](const auto& shape) { addExtents(box, measure, shape); }, p.shape);
        });
        return box;
    }

    void paint(cairo_t* cr, const Sheet& sheet, double lineWidth) const {
        cairo_set_line_width(cr, lineWidth);
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
        forEachVisible([&](const ExportEntity&, const GiPrimitive& p, RgbColor color) {
            cairo_set_source_rgb(cr, color.red, color.green, color.blue);
            std::visit([&](const auto& shape) { draw(cr, sheet, shape); }, p.shape);
        });
    }

private:
    static std::wstring key(CString name) { return name.MakeLower().str(); }

    RgbColor ink(int index) const {
        if (index < 1 || index > 255 || index == kDefaultColorIndex)
            return m_dark ? kWhite : kBlack;
        RgbColor c = AciToRgb(index);
        const double luminance = 0.2126 * c.red + 0.7152 * c.green + 0.0722 * c.blue;
        if (!m_dark && luminance > kMaxInkLuminance) {
            const double f = kMaxInkLuminance / luminance;
            c = {c.red * f, c.green * f, c.blue * f};
        }
        return c;
    }

    // Extents

    void addExtents(PlanBox& box, cairo_t*, const GiPolyline& pl) const {
        forEachSegment(pl, [&](const AcGePoint3d& a, const AcGePoint3d& b, double bulge) {
            box.add(a);
            box.add(b);
            if (bulge != 0.0)
                for (const auto& p : ArcPoints(BulgeArc(a, b, bulge, pl.normal))) box.add(p);
        });
    }
    void addExtents(PlanBox& box, cairo_t*, const GiArc& arc) const {
        for (const auto& p : ArcPoints(arc)) box.add(p);
    }
    void addExtents(PlanBox& box, cairo_t*, const GiCircle& circle) const {
        for (const auto& p : ArcPoints(FullArc(circle))) box.add(p);
    }
    void addExtents(PlanBox& box, cairo_t* measure, const GiText& text) const {
        if (!m_face) return;
        m_face->use(measure, text.height);
        cairo_text_extents_t ext{};
        const std::string utf8 = ToUtf8(text.text);
        cairo_text_extents(measure, utf8.c_str(), &ext);
        const TextFrame frame = FrameOf(text);
        for (double u : {ext.x_bearing, ext.x_bearing + ext.width})
            for (double v : {ext.y_bearing, ext.y_bearing + ext.height})
                box.add(text.position + frame.along * u + frame.down * v);
    }

    // Drawing

    // Calls fn(from, to, bulge) for each segment, the closing one included.
    template <typename Fn>
    static void forEachSegment(const GiPolyline& pl, Fn fn) {
        const size_t n = pl.points.size();
        const size_t segments = pl.closed ? n : n - 1;
        for (size_t i = 0; i < segments; ++i) {
            const double bulge = std::abs(pl.bulges[i]) > kStraightBulge ? pl.bulges[i] : 0.0;
            const bool degenerate = pl.points[i].isEqualTo(pl.points[(i + 1) % n]);
            fn(pl.points[i], pl.points[(i + 1) % n], degenerate ? 0.0 : bulge);
        }
    }

    // Continues the current path along the arc: a true arc when it is circular in plan view.
    static void appendArc(cairo_t* cr, const Sheet& sheet, const GiArc& arc) {
        if (!IsPlan(arc.normal)) {
            for (const auto& p : ArcPoints(arc)) cairo_line_to(cr, sheet.x(p), sheet.y(p));
            return;
        }
        // The sheet's Y runs down, so angles change sign and counter-clockwise about +Z turns
        // the other way on the sheet.
        const double start = -std::atan2(arc.startVector.y, arc.startVector.x);
        const double cx = sheet.x(arc.center);
        const double cy = sheet.y(arc.center);
        const double r = arc.radius * sheet.scale();
        if (arc.normal.z > 0.0)
            cairo_arc_negative(cr, cx, cy, r, start, start - arc.sweep);
        else
            cairo_arc(cr, cx, cy, r, start, start + arc.sweep);
    }

    void draw(cairo_t* cr, const Sheet& sheet, const GiPolyline& pl) const {
        KELAZ_ASSERT(pl.bulges.size() == pl.points.size(), "one bulge per polyline vertex");
        cairo_new_path(cr);
        cairo_move_to(cr, sheet.x(pl.points.front()), sheet.y(pl.points.front()));
        forEachSegment(pl, [&](const AcGePoint3d& a, const AcGePoint3d& b, double bulge) {
            if (bulge == 0.0)
                cairo_line_to(cr, sheet.x(b), sheet.y(b));
            else
                appendArc(cr, sheet, BulgeArc(a, b, bulge, pl.normal));
        });
        if (pl.closed) cairo_close_path(cr);
        cairo_stroke(cr);
    }
    void draw(cairo_t* cr, const Sheet& sheet, const GiArc& arc) const {
        cairo_new_path(cr);
        appendArc(cr, sheet, arc);
        cairo_stroke(cr);
    }
    void draw(cairo_t* cr, const Sheet& sheet, const GiCircle& circle) const {
        cairo_new_path(cr);
        appendArc(cr, sheet, FullArc(circle));
        cairo_close_path(cr);
        cairo_stroke(cr);
    }
    void draw(cairo_t* cr, const Sheet& sheet, const GiText& text) const {
        if (!m_face) return;
        const TextFrame frame = FrameOf(text);
        const double s = sheet.scale();
        // Text seen edge-on from above has no area on the sheet, and no matrix to draw it with.
        if (std::abs(frame.along.x * frame.down.y - frame.along.y * frame.down.x) < kEdgeOnArea)
            return;
        cairo_matrix_t m;
        cairo_matrix_init(&m, frame.along.x * s, -frame.along.y * s, frame.down.x * s,
                          -frame.down.y * s, sheet.x(text.position), sheet.y(text.position));
        cairo_save(cr);
        cairo_transform(cr, &m);
        m_face->use(cr, text.height);
        cairo_new_path(cr);
        cairo_move_to(cr, 0.0, 0.0);
        cairo_show_text(cr, ToUtf8(text.text).c_str());
        cairo_restore(cr);
    }

    const ExportDrawing& m_drawing;
    const TextFace* m_face;
    bool m_dark;
    std::map<std::wstring, int> m_layerColors;
};

bool HasText(const ExportDrawing& drawing) {
    for (const auto& entity : drawing.entities)
        for (const auto& primitive : entity.primitives)
            if (std::holds_alternative<GiText>(primitive.shape) && PrimitiveIsDrawable(primitive))
                return true;
    return false;
}

bool CheckOptions(const RenderOptions& o, std::string& error) {
    const bool pixels = o.pixelWidth >= 1 && o.pixelWidth <= kMaxPixels && o.pixelHeight >= 1 &&
                        o.pixelHeight <= kMaxPixels;
    const bool page = o.pageWidth > 0.0 && o.pageWidth <= kMaxPagePoints && o.pageHeight > 0.0 &&
                      o.pageHeight <= kMaxPagePoints;
    if (!pixels || !page || !(o.margin >= 0.0 && o.margin <= kMaxMargin)) {
        error = "图片尺寸或边距超出范围";
        return false;
    }
    return true;
}

using SurfacePtr = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using ContextPtr = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

bool Failed(cairo_status_t status, std::string& error) {
    if (status == CAIRO_STATUS_SUCCESS) return false;
    error = std::string("写入失败（") + cairo_status_to_string(status) + "）";
    return true;
}

}  // namespace

bool RenderDrawing(const ExportDrawing& drawing, const std::string& path,
                   const RenderOptions& options, std::string& error) {
    const auto format = ExportFormatOf(path);
    if (!format || *format == ExportFormat::kDxf) {
        error = "看不出图片格式（请用 .png、.svg 或 .pdf 后缀）";
        return false;
    }
    if (!CheckOptions(options, error) || !CheckDrawingNumbers(drawing, error)) return false;

    TextFace face;
    const bool withText = HasText(drawing);
    if (withText && !face.load(error)) return false;
    const Painter painter(drawing, withText ? &face : nullptr, options.darkBackground);

    SurfacePtr measureSurface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1),
                              &cairo_surface_destroy);
    ContextPtr measure(cairo_create(measureSurface.get()), &cairo_destroy);
    const PlanBox box = painter.extents(measure.get());

    const bool raster = *format == ExportFormat::kPng;
    const double width = raster ? options.pixelWidth : options.pageWidth;
    const double height = raster ? options.pixelHeight : options.pageHeight;
    SurfacePtr surface(nullptr, &cairo_surface_destroy);
    switch (*format) {
        case ExportFormat::kPng:
            surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, options.pixelWidth,
                                                     options.pixelHeight));
            break;
        case ExportFormat::kSvg:
            surface.reset(cairo_svg_surface_create(path.c_str(), width, height));
            break;
        case ExportFormat::kPdf:
            surface.reset(cairo_pdf_surface_create(path.c_str(), width, height));
            break;
        case ExportFormat::kDxf:
            break;
    }
    if (Failed(cairo_surface_status(surface.get()), error)) return false;

    {
        ContextPtr cr(cairo_create(surface.get()), &cairo_destroy);
        const RgbColor sheetColor = options.darkBackground ? kDarkSheet : kWhite;
        cairo_set_source_rgb(cr.get(), sheetColor.red, sheetColor.green, sheetColor.blue);
        cairo_paint(cr.get());
        painter.paint(cr.get(), Sheet(box, width, height, options.margin),
                      raster ? kPngLineWidth : kVectorLineWidth);
        if (Failed(cairo_status(cr.get()), error)) return false;
    }
    if (raster) return !Failed(cairo_surface_write_to_png(surface.get(), path.c_str()), error);
    cairo_surface_finish(surface.get());
    return !Failed(cairo_surface_status(surface.get()), error);
}

}  // namespace kelaz
