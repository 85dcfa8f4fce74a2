#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "app/export/DxfWriter.h"
#include "tests/app/export/ExportTestSupport.h"
#include "tests/app/export/SampleDrawing.h"
#include "tests/support/GeCheckers.h"

namespace kelaz::test {
namespace {

// One line of check_dxf.py's report: its kind, then key=value fields.
using Finding = std::map<std::string, std::string>;

// Debian's interpreter: another python3 earlier on PATH may lack the ezdxf package.
std::vector<Finding> ReadWithEzdxf(const std::string& dxf) {
    const auto script = std::filesystem::path(__FILE__).parent_path() / "check_dxf.py";
    const auto [status, report] =
        RunCommand("/usr/bin/python3 '" + script.string() + "' '" + dxf + "'");
    EXPECT_EQ(status, 0) << report;
    std::vector<Finding> findings;
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream parts(line);
        Finding f;
        std::getline(parts, f["kind"], '\t');
        for (std::string part; std::getline(parts, part, '\t');)
            f[part.substr(0, part.find('='))] = part.substr(part.find('=') + 1);
        findings.push_back(f);
    }
    return findings;
}

std::vector<Finding> OfKind(const std::vector<Finding>& all, const std::string& kind) {
    std::vector<Finding> some;
    std::copy_if(all.begin(), all.end(), std::back_inserter(some),
                 [&](const Finding& f) { return f.at("kind") == kind; });
    return some;
}

AcGePoint3d Point(const std::string& xyz) {
    AcGePoint3d p;
    char comma = 0;
    std::istringstream(xyz) >> p.x >> comma >> p.y >> comma >> p.z;
    return p;
}

TEST(DxfWriter, ForeignReaderFindsEveryEntityWithItsIdentityPropertiesAndGeometry) {
    ScratchDir dir("kelaz-dxf");
    std::string error;
    ASSERT_TRUE(WriteDxf(SampleDrawing(), dir.file("sample.dxf"), error)) << error;
    const auto findings = ReadWithEzdxf(dir.file("sample.dxf"));
    ASSERT_FALSE(OfKind(findings, "AUDIT").empty());

    const Finding audit = OfKind(findings, "AUDIT")[0];
    EXPECT_EQ(audit.at("errors"), "0") << audit.at("first");
    EXPECT_EQ(audit.at("problems"), "0") << audit.at("first");
    const Finding header = OfKind(findings, "HEADER")[0];
    EXPECT_EQ(header.at("version"), "AC1015");
    EXPECT_EQ(header.at("insunits"), "4");
    EXPECT_EQ(header.at("codepage"), "ANSI_936");
    EXPECT_EQ(OfKind(findings, "APPIDS")[0].at("names"), "ACAD,KELAZ");
    std::map<std::string, std::string> layers;
    for (const auto& layer : OfKind(findings, "LAYER"))
        layers[layer.at("name")] = layer.at("color");
    EXPECT_EQ(layers["0"], "7");
    EXPECT_EQ(layers["暖通-风管"], "3");
    EXPECT_EQ(layers["PIPE"], "5");

    // One file entity per primitive, in drawing order, each naming its drawing entity.
    const auto e = OfKind(findings, "ENTITY");
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"1A", "LWPOLYLINE"}, {"1A", "TEXT"},       {"1A", "CIRCLE"}, {"2B", "ARC"},
        {"2C", "ARC"},        {"3D", "LWPOLYLINE"}, {"3D", "TEXT"}};
    ASSERT_EQ(e.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(e[i].at("handle"), expected[i].first) << i;
        EXPECT_EQ(e[i].at("type"), expected[i].second) << i;
        EXPECT_TRUE(layers.count(e[i].at("layer"))) << e[i].at("layer");
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(e[i].at("class"), "KelAzDuct");
        EXPECT_EQ(e[i].at("xdata"), "1000:送风系统|1040:2.5|1070:3|1071:70000|1010:1.0,2.0,3.0");
    }
    EXPECT_EQ(e[0].at("color"), "256");
    EXPECT_EQ(e[0].at("closed"), "1");
    EXPECT_EQ(e[0].at("vertices"),
              "0.0,0.0,0.0,0.0;2000.0,0.0,0.0,0.5;2000.0,1000.0,0.0,0.0;0.0,1000.0,0.0,-0.25");
    EXPECT_EQ(e[1].at("text"), "风法兰 DN100");
    EXPECT_POINT_NEAR(Point(e[1].at("insert")), AcGePoint3d(100, 1200, 0), 1e-9);
    EXPECT_EQ(e[1].at("height"), "250.0");
    EXPECT_EQ(e[2].at("color"), "1");
    EXPECT_POINT_NEAR(Point(e[2].at("center")), AcGePoint3d(1000, 500, 0), 1e-9);

    // The arcs' ends where the drawing has them, whichever way their normal points.
    EXPECT_EQ(e[3].at("class"), "KelAzPipe");
    EXPECT_EQ(e[3].at("color"), "6") << "drawn by block: the entity's colour";
    EXPECT_EQ(e[3].at("xdata"), "1000:DN50|1040:0.75");
    const double h = 400 * std::sqrt(3.0) / 2;
    EXPECT_POINT_NEAR(Point(e[3].at("start")), AcGePoint3d(3000 + h, 700, 0), 1e-6);
    EXPECT_POINT_NEAR(Point(e[3].at("end")), AcGePoint3d(3000 - h, 700, 0), 1e-6);
    EXPECT_EQ(e[3].at("extrusion"), "0.0,0.0,1.0");
    EXPECT_EQ(e[4].at("extrusion"), "0.0,0.0,-1.0");
    EXPECT_POINT_NEAR(Point(e[4].at("center")), AcGePoint3d(3000, -500, 0), 1e-6);
    EXPECT_POINT_NEAR(Point(e[4].at("start")), AcGePoint3d(3400, -500, 0), 1e-6);
    EXPECT_POINT_NEAR(Point(e[4].at("end")), AcGePoint3d(3000, -900, 0), 1e-6);

    // A raised outline keeps its height; a character GBK lacks survives as an escape; a text too
    // long for extended data is cut to its 255 bytes, between characters.
    EXPECT_EQ(e[5].at("vertices"), "0.0,-1000.0,300.0,0.0;1000.0,-1000.0,300.0,0.0");
    EXPECT_EQ(e[6].at("text"), "标注 한");
    EXPECT_EQ(e[6].at("color"), "4");
    std::string cut;
    for (int i = 0; i < 127; ++i) cut += "长";
    EXPECT_EQ(e[6].at("xdata"), "1000:" + cut);
}

TEST(DxfWriter, RefusesWhatCannotBeWrittenAndOpensNoFile) {
    ScratchDir dir("kelaz-dxf");
    std::string error;
    ExportDrawing badItem = SampleDrawing();
    badItem.entities[1].xdata.push_back({1070, 2.5});  // a real under an integer's code
    EXPECT_FALSE(WriteDxf(badItem, dir.file("item.dxf"), error));
    EXPECT_NE(error.find("2B"), std::string::npos) << error;
    EXPECT_NE(error.find("1070"), std::string::npos) << error;

    ExportDrawing badNumber = SampleDrawing();
    std::get<GiCircle>(badNumber.entities[0].primitives[2].shape).radius = std::nan("");
    error.clear();
    EXPECT_FALSE(WriteDxf(badNumber, dir.file("number.dxf"), error));
    EXPECT_NE(error.find("1A"), std::string::npos) << error;
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));

    EXPECT_FALSE(WriteDxf(SampleDrawing(), dir.file("no/folder/x.dxf"), error));
    EXPECT_EQ(error, "无法打开文件来写入");
}

}  // namespace
}  // namespace kelaz::test
