#include "app/DrawingCommands.h"

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

#include "app/FilePaths.h"
#include "app/drawing/DrawingView.h"
#include "app/drawing/SampleDrawing.h"
#include "app/export/Export.h"
#include "host/db/Database.h"

namespace kelaz {

namespace {

struct DrawingOptions {
    std::string drawing;
    std::string output;
    bool force = false;
    bool risers = false;
};

// A refusal of what the command line asked for: the program's message, status 2.
int Refuse(const std::string& message) {
    std::fprintf(stderr, "[kelaz] %s\n", message.c_str());
    return 2;
}

int RunDump(const DrawingOptions& opt) {
    if (const std::string bad = CheckReadPath(opt.drawing, "图形"); !bad.empty()) {
        return Refuse(bad);
    }
    std::string report;
    const std::unique_ptr<AcDbDatabase> db = OpenDrawing(opt.drawing, report);
    if (!db) return Refuse(report);
    DumpDrawing(*db, std::cout);
    return 0;
}

int RunExport(const DrawingOptions& opt) {
    if (const std::string bad = CheckReadPath(opt.drawing, "图形"); !bad.empty()) {
        return Refuse(bad);
    }
    if (const std::string bad = CheckWritePath(opt.output, "输出文件"); !bad.empty()) {
        return Refuse(bad);
    }
    std::string report;
    const std::unique_ptr<AcDbDatabase> db = OpenDrawing(opt.drawing, report);
    if (!db) return Refuse(report);
    std::string error;
    if (!ExportByName(BuildExportDrawing(*db), opt.output, error)) {
        std::fprintf(stderr, "[kelaz] 不能输出 %s：%s。\n", opt.output.c_str(), error.c_str());
        return 1;
    }
    std::printf("%s\n", opt.output.c_str());
    return 0;
}

int RunSample(const DrawingOptions& opt) {
    if (const std::string bad = CheckDrawingName(opt.drawing); !bad.empty()) return Refuse(bad);
    if (const std::string bad = CheckWritePath(opt.drawing, "图形"); !bad.empty()) {
        return Refuse(bad);
    }
    if (!opt.force && FileExists(opt.drawing)) {
        return Refuse("文件 " + opt.drawing + " 已经存在；要替换它，请加 --force。");
    }
    InitDrawingClasses();
    AcDbDatabase db;
    if (!(opt.risers ? BuildRiserSampleDrawing(db) : BuildSampleDrawing(db))) {
        std::fprintf(stderr, "[kelaz] 不能建立示例图形。\n");
        return 1;
    }
    if (db.saveAs(FromUtf8(opt.drawing)) != Acad::eOk) {
        std::fprintf(stderr, "[kelaz] %s\n", ToUtf8(LastFileReport(db)).c_str());
        return 1;
    }
    std::printf("%s\n", opt.drawing.c_str());
    return 0;
}

}  // namespace

void AddDrawingCommands(CLI::App& app, int& exitStatus) {
    auto dumpOpt = std::make_shared<DrawingOptions>();
    CLI::App* dump =
        app.add_subcommand("dump", "Print every entity of a drawing as one JSON object per line");
    dump->add_option("drawing", dumpOpt->drawing, "The drawing file")->required();
    dump->callback([dumpOpt, &exitStatus] { exitStatus = RunDump(*dumpOpt); });

    auto sampleOpt = std::make_shared<DrawingOptions>();
    CLI::App* sample = app.add_subcommand(
        "sample", "Write a sample plant-room drawing holding one of every entity class");
    sample->add_option("drawing", sampleOpt->drawing, "The drawing file to write (.kdw)")
        ->required();
    sample->add_flag("--force", sampleOpt->force, "Replace the file if it exists");
    sample->add_flag("--risers", sampleOpt->risers,
                     "Write a pipe shaft instead: risers through the storeys of the default "
                     "project, to split by floor with SPLITRISER");
    sample->callback([sampleOpt, &exitStatus] { exitStatus = RunSample(*sampleOpt); });

    auto exportOpt = std::make_shared<DrawingOptions>();
    CLI::App* exp = app.add_subcommand(
        "export", "Write a drawing as DXF, PNG, SVG or PDF (by the file's suffix)");
    exp->add_option("drawing", exportOpt->drawing, "The drawing file")->required();
    exp->add_option("-o,--output", exportOpt->output, "The file to write: .dxf, .png, .svg or .pdf")
        ->required();
    exp->callback([exportOpt, &exitStatus] { exitStatus = RunExport(*exportOpt); });
}

}  // namespace kelaz
