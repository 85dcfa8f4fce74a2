#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/export/DxfWriter.h"
#include "app/export/Export.h"
#include "tests/app/export/ExportTestSupport.h"
#include "tests/app/export/SampleDrawing.h"

namespace kelaz::test {
namespace {

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::vector<std::string> FilesIn(const std::string& dir) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(ExportByName, ChoosesTheWriterBySuffixInAnyCaseAndLeavesOnlyTheFile) {
    ScratchDir dir("kelaz-export");
    const ExportDrawing drawing = SampleDrawing();
    const std::pair<const char*, std::string> cases[] = {
        {"a.dxf", "AC1015"}, {"b.DXF", "AC1015"}, {"c.png", "\x89PNG"},
        {"d.Svg", "<svg"},   {"e.pdf", "%PDF-"},
    };
    for (const auto& [name, marker] : cases) {
        std::string error;
        EXPECT_TRUE(ExportByName(drawing, dir.file(name), error)) << name << ": " << error;
        EXPECT_NE(ReadFile(dir.file(name)).substr(0, 200).find(marker), std::string::npos) << name;
    }
    EXPECT_EQ(FilesIn(dir.path()),
              (std::vector<std::string>{"a.dxf", "b.DXF", "c.png", "d.Svg", "e.pdf"}));
    // Permissions as for any new file, not the temporary file's private ones.
    struct stat st {};
    ASSERT_EQ(stat(dir.file("a.dxf").c_str(), &st), 0);
    const mode_t mask = umask(0);
    umask(mask);
    EXPECT_EQ(st.st_mode & 0777, 0666 & ~mask);
}

TEST(ExportByName, RefusalsAreExplainedAndLeaveEverythingAsItWas) {
    ScratchDir dir("kelaz-export");
    const ExportDrawing drawing = SampleDrawing();
    std::string error;

    EXPECT_FALSE(ExportByName(drawing, dir.file("plan.dwg"), error));
    EXPECT_NE(error.find("不认识这种文件后缀"), std::string::npos) << error;
    EXPECT_FALSE(ExportByName(drawing, dir.file("plan"), error));

    error.clear();
    EXPECT_FALSE(ExportByName(drawing, dir.file("missing/plan.png"), error));
    EXPECT_EQ(error, "文件夹 " + dir.file("missing") + " 不存在");
    error.clear();
    EXPECT_FALSE(ExportByName(drawing, "/proc/kelaz-plan.pdf", error)) << "not writable by anyone";
    EXPECT_EQ(error.rfind("不能在文件夹 /proc 中建立文件（", 0), 0u) << error;

    // A drawing the writer refuses leaves the earlier file and no temporary behind.
    WriteFile(dir.file("keep.dxf"), "earlier export");
    ExportDrawing bad = drawing;
    bad.entities[0].xdata.push_back({1000, 1.5});
    error.clear();
    EXPECT_FALSE(ExportByName(bad, dir.file("keep.dxf"), error));
    EXPECT_NE(error.find("1A"), std::string::npos) << error;
    EXPECT_EQ(ReadFile(dir.file("keep.dxf")), "earlier export");
    EXPECT_EQ(FilesIn(dir.path()), std::vector<std::string>{"keep.dxf"});

    std::filesystem::create_directory(dir.file("folder.svg"));
    EXPECT_FALSE(ExportByName(drawing, dir.file("folder.svg"), error));
    EXPECT_TRUE(std::filesystem::is_directory(dir.file("folder.svg")));
}

TEST(ExportByName, ReplacesTheFileALinkNamesKeepingItsModeAndRefusesReadOnlyFiles) {
    ScratchDir dir("kelaz-export");
    const ExportDrawing drawing = SampleDrawing();
    WriteFile(dir.file("plan.svg"), "earlier export");
    ASSERT_EQ(chmod(dir.file("plan.svg").c_str(), 0664), 0);
    std::filesystem::create_symlink("plan.svg", dir.file("view.svg"));
    std::string error;
    ASSERT_TRUE(ExportByName(drawing, dir.file("view.svg"), error)) << error;
    EXPECT_TRUE(std::filesystem::is_symlink(dir.file("view.svg")));
    EXPECT_NE(ReadFile(dir.file("plan.svg")).find("<svg"), std::string::npos);
    struct stat st {};
    ASSERT_EQ(stat(dir.file("plan.svg").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0664u);

    ASSERT_EQ(chmod(dir.file("plan.svg").c_str(), 0444), 0);
    const std::string before = ReadFile(dir.file("plan.svg"));
    EXPECT_FALSE(ExportByName(drawing, dir.file("view.svg"), error));
    EXPECT_EQ(error, "文件是只读的");
    EXPECT_EQ(ReadFile(dir.file("plan.svg")), before);
    EXPECT_EQ(FilesIn(dir.path()), (std::vector<std::string>{"plan.svg", "view.svg"}));
}

// LibreCAD reads the file with its own DXF library and prints it. Its exit status means nothing;
// the PDF tells: an empty drawing printed in the same run sets the size of a blank page.
TEST(ExportByName, LibreCadPrintsTheDxf) {
    ScratchDir dir("kelaz-librecad");
    std::string error;
    ASSERT_TRUE(ExportByName(SampleDrawing(), dir.file("sample.dxf"), error)) << error;
    ASSERT_TRUE(ExportByName(ExportDrawing{}, dir.file("empty.dxf"), error)) << error;
    RunCommand("cd '" + dir.path() +
               "' && QT_QPA_PLATFORM=offscreen timeout 60 librecad dxf2pdf -t out sample.dxf "
               "empty.dxf >/dev/null 2>&1");

    const std::string pdf = ReadFile(dir.file("out/sample.pdf"));
    const std::string blank = ReadFile(dir.file("out/empty.pdf"));
    ASSERT_FALSE(pdf.empty()) << "LibreCAD could not read the file";
    ASSERT_FALSE(blank.empty());
    EXPECT_EQ(pdf.rfind("%PDF-", 0), 0u);
    EXPECT_NE(pdf.find("/Type /Page"), std::string::npos);
    EXPECT_NE(pdf.find("%%EOF", pdf.size() - 8), std::string::npos);
    EXPECT_GT(pdf.size(), 10 * blank.size()) << "the drawing's lines and text are on the page";
}

}  // namespace
}  // namespace kelaz::test
