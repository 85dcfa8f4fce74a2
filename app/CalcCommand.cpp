#include "app/CalcCommand.h"

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "app/PointText.h"
#include "host/db/Arc.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/ui/MessageBox.h"
#include "module/entry/DispUtils.h"
#include "module/layout/CalcPositionInRect.h"
#include "module/layout/DisposeOnCurve.h"
#include "module/layout/DisposeOnSector.h"
#include "suite/tools/ModelSpace.h"

namespace kelaz {

namespace {

struct RectOptions {
    std::string corners;
    std::string rows = "1";
    std::string perRow = "1";
    std::string marginAlong = "0";
    std::string marginAcross = "0";
};

bool ReadInteger(const std::string& option, const std::string& text, int& value) {
    if (CDispUtils::ParseToInteger(FromUtf8(text), value)) return true;
    std::fprintf(stderr, "[kelaz] %s：“%s”不是整数。\n", option.c_str(), text.c_str());
    return false;
}

bool ReadNumber(const std::string& option, const std::string& text, double& value) {
    if (CDispUtils::ParseToDouble(FromUtf8(text), value)) return true;
    std::fprintf(stderr, "[kelaz] %s：“%s”不是数值。\n", option.c_str(), text.c_str());
    return false;
}

// Passes boxes on to the console and remembers whether any was shown.
class CountingSink : public MessageSink {
public:
    explicit CountingSink(MessageSink& next) : m_next(next) {}
    int Show(const MessageBoxRecord& box) override {
        ++m_count;
        return m_next.Show(box);
    }
    int Count() const { return m_count; }

private:
    MessageSink& m_next;
    int m_count = 0;
};

struct ArcOptions {
    std::string center = "0,0";
    std::string radius;
    std::string from = "0";
    std::string to = "90";
    std::string count = "2";
    std::string margin = "0";
};

struct SectorOptions {
    std::string points;
    std::string rings = "1";
    std::string count = "1";
    std::string decrement = "0";
};

constexpr double kDegree = 3.14159265358979323846 / 180.0;

// Rounding left by the arc's sines and cosines (6.12323e-14 for 0) is shown as the 0 it is.
double Shown(double v) { return std::abs(v) < 1e-9 ? 0.0 : v; }

void PrintPoints(const AcGePoint3dArray& points) {
    for (const AcGePoint3d& p : points) {
        const AcGePoint3d shown(Shown(p.x), Shown(p.y), Shown(p.z));
        std::printf("%s\n", FormatPoint(shown).c_str());
    }
}

int RunArc(const ArcOptions& opt) {
    AcGePoint3d center;
    std::string error;
    if (!ParsePoint(opt.center, center, error)) {
        std::fprintf(stderr, "[kelaz] --center：%s\n", error.c_str());
        return 2;
    }
    double radius = 0.0, from = 0.0, to = 0.0, margin = 0.0;
    int count = 0;
    if (!ReadNumber("--radius", opt.radius, radius) || !ReadNumber("--from", opt.from, from) ||
        !ReadNumber("--to", opt.to, to) || !ReadInteger("--count", opt.count, count) ||
        !ReadNumber("--margin", opt.margin, margin)) {
        return 2;
    }
    if (radius <= 0.0) {
        std::fprintf(stderr, "[kelaz] --radius：圆弧的半径必须大于 0。\n");
        return 2;
    }
    // The arc goes into a drawing of its own, where the layout picks it as a drafter would.
    AcDbDatabase db;
    AcDbDatabase* previous = acdbHostApplicationServices()->workingDatabase();
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    AcDbObjectId id;
    auto* arc = new AcDbArc(center, radius, from * kDegree, to * kDegree);
    if (addToModelSpace(id, arc, &db) != Acad::eOk) delete arc;
    CountingSink sink(CurrentMessageSink());
    ScopedMessageSink install(sink);
    AcGePoint3dArray points;
    const bool laid = CDisposeOnCurve().DisposalOnArc(points, id, margin, count);
    acdbHostApplicationServices()->setWorkingDatabase(previous);
    PrintPoints(points);
    return laid && sink.Count() == 0 ? 0 : 1;
}

int RunSector(const SectorOptions& opt) {
    AcGePoint3dArray corners;
    std::string error;
    if (!ParsePointList(opt.points, corners, error)) {
        std::fprintf(stderr, "[kelaz] --points：%s\n", error.c_str());
        return 2;
    }
    if (corners.length() != 4) {
        std::fprintf(stderr,
                     "[kelaz] --points：请给出外弧的起点、弧上一点和终点，再给出内半径上的一点"
                     "（给了 %d 个点）。\n",
                     corners.length());
        return 2;
    }
    int rings = 0, count = 0, decrement = 0;
    if (!ReadInteger("--rings", opt.rings, rings) || !ReadInteger("--count", opt.count, count) ||
        !ReadInteger("--decrement", opt.decrement, decrement)) {
        return 2;
    }
    CountingSink sink(CurrentMessageSink());
    ScopedMessageSink install(sink);
    CDisposeOnSector sector;
    if (!sector.SetDisposalInfo(rings, count, decrement, 0.0, 0.0, 0.0)) return 1;
    sector.Dispose(corners[0], corners[1], corners[2], corners[3]);
    AcGePoint3dArray points;
    sector.GetDisPointArray(points);
    PrintPoints(points);
    return 0;
}

int RunRect(const RectOptions& opt) {
    AcGePoint3dArray corners;
    std::string error;
    if (!ParsePointList(opt.corners, corners, error)) {
        std::fprintf(stderr, "[kelaz] --corners：%s\n", error.c_str());
        return 2;
    }
    if (corners.length() != 4) {
        std::fprintf(stderr,
                     "[kelaz] --corners：请按绘图顺序给出矩形的四个角点（给了 %d 个点）。\n",
                     corners.length());
        return 2;
    }
    int rows = 0;
    int perRow = 0;
    double along = 0.0;
    double across = 0.0;
    if (!ReadInteger("--rows", opt.rows, rows) || !ReadInteger("--per-row", opt.perRow, perRow) ||
        !ReadNumber("--margin-along", opt.marginAlong, along) ||
        !ReadNumber("--margin-across", opt.marginAcross, across)) {
        return 2;
    }

    CountingSink sink(CurrentMessageSink());
    ScopedMessageSink install(sink);
    CCalcPositionInRect layout(corners, rows, perRow, along, across);
    PrintPoints(layout.GetPoints());
    return sink.Count() > 0 ? 1 : 0;
}

}  // namespace

void AddCalcCommands(CLI::App& app, int& exitStatus) {
    CLI::App* calc = app.add_subcommand("calc", "Compute component positions without drawing");
    calc->require_subcommand(1);

    auto opt = std::make_shared<RectOptions>();
    CLI::App* rect = calc->add_subcommand(
        "rect", "Positions of components in rows inside a rectangle, printed as x,y,z");
    rect->add_option(
            "--corners", opt->corners,
            "The four corners in drawing order, e.g. \"0,0 3000,0 3000,2000 0,2000\"; rows "
            "run from corner 0 towards corner 1 and are stacked towards corner 3")
        ->required();
    rect->add_option("--rows", opt->rows, "Number of rows")->capture_default_str();
    rect->add_option("--per-row", opt->perRow, "Number of components in each row")
        ->capture_default_str();
    rect->add_option("--margin-along", opt->marginAlong, "Inset of the row ends")
        ->capture_default_str();
    rect->add_option("--margin-across", opt->marginAcross, "Inset of the first and last rows")
        ->capture_default_str();
    rect->callback([opt, &exitStatus] { exitStatus = RunRect(*opt); });

    auto arcOpt = std::make_shared<ArcOptions>();
    CLI::App* arc = calc->add_subcommand(
        "arc", "Positions of components spread evenly along an arc, both ends included");
    arc->add_option("--center", arcOpt->center, "The arc's centre")->capture_default_str();
    arc->add_option("--radius", arcOpt->radius, "The arc's radius")->required();
    arc->add_option("--from", arcOpt->from, "Start angle in degrees, counter-clockwise from +X")
        ->capture_default_str();
    arc->add_option("--to", arcOpt->to, "End angle in degrees; the arc runs counter-clockwise")
        ->capture_default_str();
    arc->add_option("--count", arcOpt->count, "Number of components")->capture_default_str();
    arc->add_option("--margin", arcOpt->margin, "Distance kept from each end of the arc")
        ->capture_default_str();
    arc->callback([arcOpt, &exitStatus] { exitStatus = RunArc(*arcOpt); });

    auto sectorOpt = std::make_shared<SectorOptions>();
    CLI::App* sector = calc->add_subcommand(
        "sector", "Positions of components on concentric rings in a sector, outer ring first");
    sector
        ->add_option("--points", sectorOpt->points,
                     "The outer arc's start, a point on it, its end, and a point of the inner "
                     "radius, e.g. \"3000,0 2121.32,2121.32 0,3000 1000,0\"")
        ->required();
    sector->add_option("--rings", sectorOpt->rings, "Number of rings")->capture_default_str();
    sector->add_option("--count", sectorOpt->count, "Components on the outer ring")
        ->capture_default_str();
    sector->add_option("--decrement", sectorOpt->decrement, "How many fewer on each next ring")
        ->capture_default_str();
    sector->callback([sectorOpt, &exitStatus] { exitStatus = RunSector(*sectorOpt); });
}

}  // namespace kelaz
