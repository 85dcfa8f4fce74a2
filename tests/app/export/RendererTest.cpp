#include <gtest/gtest.h>

#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

#include "app/export/AciColor.h"
#include "app/export/Renderer.h"
#include "tests/app/export/ExportTestSupport.h"
#include "tests/app/export/SampleDrawing.h"

namespace kelaz::test {
namespace {

// With no margin, a frame of 800 x 600 drawing units fills an 800 x 600 picture exactly: world
// (x, y) is pixel (x, 600 - y).
constexpr int kWidth = 800;
constexpr int kHeight = 600;
const double kDiagonal = 80.0 / std::sqrt(2.0);  // 45° along the arc of radius 80

ExportDrawing PixelDrawing(const wchar_t* text) {
    ExportDrawing d;
    d.layers = {{L"FRAME", 8}, {L"PIPE", 5}, {L"GREEN", 3}, {L"HIDDEN", -1}};
    ExportEntity e;
    e.handle = "10";
    e.className = "KelAzTest";
    e.layer = L"PIPE";
    e.primitives = {
        Primitive(
            GiPolyline{{{0, 0, 0}, {800, 0, 0}, {800, 600, 0}, {0, 600, 0}}, {0, 0, 0, 0}, true},
            kColorByLayer, L"FRAME"),
        Primitive(GiPolyline{{{100, 500, 0}, {300, 500, 0}}, {0, 0}}, 1),
        // A half circle below its chord: counter-clockwise from left to right.
        Primitive(GiPolyline{{{450, 450, 0}, {650, 450, 0}}, {1.0, 0}}),
        // A quarter turn clockwise in plan, seen from above.
        Primitive(GiArc{{150, 250, 0}, 80, -AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, kPi / 2}),
        Primitive(GiCircle{{400, 250, 0}, 50}, kColorByLayer, L"GREEN"),
        Primitive(GiCircle{{650, 250, 0}, 50}, kColorByLayer, L"HIDDEN"),
    };
    if (*text) e.primitives.push_back(Primitive(Text({450, 60, 0}, 40, text)));
    d.entities.push_back(e);
    return d;
}

class Picture {
public:
    explicit Picture(const std::string& path)
        : m_surface(cairo_image_surface_create_from_png(path.c_str()), &cairo_surface_destroy) {}
    bool ok() const { return cairo_surface_status(m_surface.get()) == CAIRO_STATUS_SUCCESS; }
    int width() const { return cairo_image_surface_get_width(m_surface.get()); }
    int height() const { return cairo_image_surface_get_height(m_surface.get()); }

    // Outside the picture reads as blank paper.
    RgbColor at(int x, int y) const {
        if (x < 0 || y < 0 || x >= width() || y >= height()) return {1.0, 1.0, 1.0};
        const unsigned char* row =
            cairo_image_surface_get_data(m_surface.get()) +
            static_cast<ptrdiff_t>(y) * cairo_image_surface_get_stride(m_surface.get());
        uint32_t px = 0;
        std::memcpy(&px, row + static_cast<ptrdiff_t>(4) * x, sizeof(px));  // native 0x??RRGGBB
        return {((px >> 16) & 0xFF) / 255.0, ((px >> 8) & 0xFF) / 255.0, (px & 0xFF) / 255.0};
    }
    static double Darkness(const RgbColor& c) { return 1.0 - std::min({c.red, c.green, c.blue}); }
    bool inked(int x, int y) const { return Darkness(at(x, y)) > 0.15; }

    // The most inked pixel within reach of the drawing point (x, y); none when all are blank.
    std::optional<RgbColor> inkNear(double x, double y, int reach = 2) const {
        std::optional<RgbColor> best;
        const int px = static_cast<int>(std::lround(x));
        const int py = static_cast<int>(std::lround(kHeight - y));
        for (int dy = -reach; dy <= reach; ++dy)
            for (int dx = -reach; dx <= reach; ++dx)
                if (inked(px + dx, py + dy) &&
                    (!best || Darkness(at(px + dx, py + dy)) > Darkness(*best)))
                    best = at(px + dx, py + dy);
        return best;
    }
    // Inked pixels of the box given in pixels.
    std::vector<bool> mask(int x0, int y0, int x1, int y1) const {
        std::vector<bool> m;
        for (int y = y0; y < y1; ++y)
            for (int x = x0; x < x1; ++x) m.push_back(inked(x, y));
        return m;
    }

private:
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> m_surface;
};

RenderOptions Exact() {
    RenderOptions o;
    o.pixelWidth = kWidth;
    o.pixelHeight = kHeight;
    o.margin = 0.0;
    return o;
}

Picture Render(const ScratchDir& dir, const std::string& name, const ExportDrawing& drawing,
               const RenderOptions& options = Exact()) {
    std::string error;
    EXPECT_TRUE(RenderDrawing(drawing, dir.file(name), options, error)) << error;
    return Picture(dir.file(name));
}

size_t Count(const std::vector<bool>& mask) { return std::count(mask.begin(), mask.end(), true); }

TEST(Renderer, PngHasLinesArcsAndColoursWhereThePlanViewPutsThem) {
    ScratchDir dir("kelaz-render");
    const Picture pic = Render(dir, "lines.png", PixelDrawing(L""));
    ASSERT_TRUE(pic.ok());
    ASSERT_EQ(pic.width(), kWidth);
    ASSERT_EQ(pic.height(), kHeight);

    // Y up: the red line at y = 500 is near the top of the picture.
    const auto red = pic.inkNear(200, 500);
    ASSERT_TRUE(red);
    EXPECT_GT(red->red, 0.8);
    EXPECT_LT(red->green, 0.3);
    EXPECT_FALSE(pic.inkNear(200, 100, 3));

    // The bulge is a real arc on the correct side of its chord, in the layer's blue.
    const auto apex = pic.inkNear(550, 350);
    ASSERT_TRUE(apex);
    EXPECT_GT(apex->blue, 0.8);
    EXPECT_LT(apex->red, 0.3);
    EXPECT_TRUE(pic.inkNear(550 - 100 * std::cos(kPi / 4), 450 - 100 * std::sin(kPi / 4)));
    EXPECT_FALSE(pic.inkNear(550, 450, 3)) << "no chord";
    EXPECT_FALSE(pic.inkNear(550, 550, 3)) << "not the mirrored arc";

    // The arc about -Z turns clockwise in plan: it passes below its centre, not above.
    EXPECT_TRUE(pic.inkNear(150 + kDiagonal, 250 - kDiagonal));
    EXPECT_FALSE(pic.inkNear(150 + kDiagonal, 250 + kDiagonal, 3));
    EXPECT_FALSE(pic.inkNear(150 - 80, 250, 3));

    // A circle by layer takes the layer's green; nothing of a layer that is off shows.
    const auto green = pic.inkNear(450, 250);
    ASSERT_TRUE(green);
    EXPECT_GT(green->green, green->red + 0.3);
    EXPECT_GT(green->green, green->blue + 0.3);
    EXPECT_FALSE(pic.inkNear(400, 250, 3));
    EXPECT_FALSE(pic.inkNear(700, 250, 3)) << "layer HIDDEN is off";
}

TEST(Renderer, ChineseTextIsDrawnAsItsOwnGlyphsNotAsBoxes) {
    ScratchDir dir("kelaz-render");
    // The text's line: from x = 450, cap height 40 above y = 60; pixels with room for descenders.
    const int x0 = 445, x1 = 640, y0 = kHeight - 110, y1 = kHeight - 45;
    const auto none = Render(dir, "none.png", PixelDrawing(L"")).mask(x0, y0, x1, y1);
    const auto wind = Render(dir, "wind.png", PixelDrawing(L"风")).mask(x0, y0, x1, y1);
    const auto orchid = Render(dir, "orchid.png", PixelDrawing(L"兰")).mask(x0, y0, x1, y1);
    const auto all = Render(dir, "all.png", PixelDrawing(L"风法兰")).mask(x0, y0, x1, y1);

    EXPECT_EQ(Count(none), 0u);
    EXPECT_GT(Count(wind), 100u);
    EXPECT_GT(Count(orchid), 100u);
    EXPECT_GT(Count(all), Count(wind) + Count(orchid));
    // A face without these characters draws the same empty box for both.
    size_t differ = 0;
    for (size_t i = 0; i < wind.size(); ++i) differ += wind[i] != orchid[i];
    EXPECT_GT(differ, 100u);
}

TEST(Renderer, FitsTheDrawingWithItsMarginOnEitherSheet) {
    ScratchDir dir("kelaz-render");
    const Picture pic = Render(dir, "sample.png", SampleDrawing(), RenderOptions{});
    ASSERT_TRUE(pic.ok());
    ASSERT_EQ(pic.width(), 1600);
    ASSERT_EQ(pic.height(), 1200);
    int minX = pic.width(), minY = pic.height(), maxX = -1, maxY = -1;
    for (int y = 0; y < pic.height(); ++y) {
        for (int x = 0; x < pic.width(); ++x) {
            if (!pic.inked(x, y)) continue;
            minX = std::min(minX, x), maxX = std::max(maxX, x);
            minY = std::min(minY, y), maxY = std::max(maxY, y);
        }
    }
    // 4 % of 1200 pixels: 48 blank on every side, reached on the tighter axis, centred on both.
    const int border = 48, slack = 3;
    EXPECT_GE(minX, border - slack);
    EXPECT_GE(minY, border - slack);
    EXPECT_LE(maxX, 1600 - border + slack);
    EXPECT_LE(maxY, 1200 - border + slack);
    EXPECT_TRUE(minY <= border + slack || minX <= border + slack);
    EXPECT_NEAR(minX, 1600 - 1 - maxX, 2 * slack);
    EXPECT_NEAR(minY, 1200 - 1 - maxY, 2 * slack);

    // A drawing that is a single line is fitted by its length, inside the margin (60 pixels).
    ExportDrawing line;
    line.entities.push_back({"20", "KelAzTest", L"0", 7, {}, {}});
    line.entities[0].primitives.push_back(Primitive(GiPolyline{{{0, 0, 0}, {1e5, 0, 0}}, {0, 0}}));
    RenderOptions bordered = Exact();
    bordered.margin = 0.1;
    const Picture wide = Render(dir, "line.png", line, bordered);
    EXPECT_TRUE(wide.inked(65, kHeight / 2) && wide.inked(kWidth - 65, kHeight / 2));
    EXPECT_FALSE(wide.inked(55, kHeight / 2) || wide.inked(kWidth - 55, kHeight / 2));

    RenderOptions dark = Exact();
    dark.darkBackground = true;
    ExportDrawing white = PixelDrawing(L"");
    white.entities[0].primitives[1].traits.color = 7;
    const Picture night = Render(dir, "dark.png", white, dark);
    EXPECT_LT(night.at(200, 300).red, 0.3) << "dark sheet";
    double lightest = 0.0;
    for (int y = 98; y <= 101; ++y) lightest = std::max(lightest, night.at(200, y).red);
    EXPECT_GT(lightest, 0.7) << "colour 7 is light on a dark sheet";
}

size_t Occurrences(const std::string& text, const std::string& what) {
    size_t n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

TEST(Renderer, SvgAndPdfAreCompleteVectorFiles) {
    ScratchDir dir("kelaz-render");
    std::string error;
    const ExportDrawing drawing = PixelDrawing(L"风法兰");

    ASSERT_TRUE(RenderDrawing(drawing, dir.file("d.svg"), RenderOptions{}, error)) << error;
    const auto [status, root] = RunCommand(
        "/usr/bin/python3 -c 'import sys, xml.dom.minidom as m; "
        "print(m.parse(sys.argv[1]).documentElement.tagName)' " +
        dir.file("d.svg"));
    EXPECT_EQ(root, "svg\n") << "well-formed";
    const std::string svg = ReadFile(dir.file("d.svg"));
    // Five stroked outlines (the one on an off layer is left out) and three glyphs placed.
    EXPECT_EQ(Occurrences(svg, "<path style=\"fill:none;"), 5u);
    EXPECT_EQ(Occurrences(svg, "<use xlink:href=\"#glyph"), 3u);

    ASSERT_TRUE(RenderDrawing(drawing, dir.file("d.PDF"), RenderOptions{}, error)) << error;
    const std::string pdf = ReadFile(dir.file("d.PDF"));
    EXPECT_EQ(pdf.rfind("%PDF-", 0), 0u);
    EXPECT_EQ(Occurrences(pdf, "/Type /Page") - Occurrences(pdf, "/Type /Pages"), 1u);
    EXPECT_NE(pdf.find("%%EOF", pdf.size() - 8), std::string::npos);
}

TEST(Renderer, RefusesWhatItCannotDraw) {
    ScratchDir dir("kelaz-render");
    std::string error;
    EXPECT_FALSE(RenderDrawing(SampleDrawing(), dir.file("x.dxf"), RenderOptions{}, error));
    EXPECT_NE(error.find(".png"), std::string::npos) << error;

    RenderOptions tiny;
    tiny.pixelWidth = 0;
    EXPECT_FALSE(RenderDrawing(SampleDrawing(), dir.file("x.png"), tiny, error));
    EXPECT_FALSE(std::filesystem::exists(dir.file("x.png")));

    error.clear();
    EXPECT_FALSE(RenderDrawing(SampleDrawing(), dir.file("none/x.pdf"), RenderOptions{}, error));
    EXPECT_EQ(error.rfind("写入失败（", 0), 0u) << error;
}

TEST(AciColor, WheelRunsThroughTheHuesAndShades) {
    auto rgb = [](int index) {
        const RgbColor c = AciToRgb(index);
        return std::vector<double>{c.red, c.green, c.blue};
    };
    EXPECT_EQ(rgb(50), (std::vector<double>{1, 1, 0}));
    EXPECT_EQ(rgb(130), (std::vector<double>{0, 1, 1}));
    EXPECT_EQ(rgb(11), (std::vector<double>{1, 0.5, 0.5})) << "odd: paler";
    EXPECT_EQ(rgb(18), (std::vector<double>{0.3, 0, 0})) << "darkest red";
    EXPECT_EQ(rgb(250), (std::vector<double>{0.2, 0.2, 0.2}));
}

}  // namespace
}  // namespace kelaz::test
