#include "app/CalcCommand.h"

#include <cstdio>
#include <memory>
#include <string>

#include "app/PointText.h"
#include "host/ui/MessageBox.h"
#include "module/entry/DispUtils.h"
#include "module/layout/CalcPositionInRect.h"

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
    std::fprintf(stderr, "kelaz: %s: '%s' is not a whole number\n", option.c_str(), text.c_str());
    return false;
}

bool ReadNumber(const std::string& option, const std::string& text, double& value) {
    if (CDispUtils::ParseToDouble(FromUtf8(text), value)) return true;
    std::fprintf(stderr, "kelaz: %s: '%s' is not a number\n", option.c_str(), text.c_str());
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

int RunRect(const RectOptions& opt) {
    AcGePoint3dArray corners;
    std::string error;
    if (!ParsePointList(opt.corners, corners, error)) {
        std::fprintf(stderr, "kelaz: --corners: %s\n", error.c_str());
        return 2;
    }
    if (corners.length() != 4) {
        std::fprintf(
            stderr,
            "kelaz: --corners: give the rectangle's four corners in drawing order (%d given)\n",
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
    const AcGePoint3dArray points = layout.GetPoints();
    for (const AcGePoint3d& p : points) std::printf("%s\n", FormatPoint(p).c_str());
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
}

}  // namespace kelaz
