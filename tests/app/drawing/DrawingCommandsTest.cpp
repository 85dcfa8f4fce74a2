#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/support/RunProgram.h"

namespace fs = std::filesystem;
using kelaz::test::RunKelaz;

namespace {

std::string Read(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

class DrawingCommands : public ::testing::Test {
protected:
    DrawingCommands()
        : dir(fs::temp_directory_path() / ("kelaz-drawing-" + std::to_string(::getpid()))) {
        fs::create_directories(dir);
    }
    ~DrawingCommands() override { fs::remove_all(dir); }
    fs::path dir;
};

// The handles a dump lists, in order.
std::vector<std::string> Handles(const std::string& dump) {
    std::vector<std::string> out;
    std::istringstream lines(dump);
    std::string line;
    while (std::getline(lines, line)) {
        const auto at = line.find("\"handle\":\"");
        if (at == std::string::npos) continue;
        out.push_back(line.substr(at + 10, line.find('"', at + 10) - at - 10));
    }
    return out;
}

}  // namespace

TEST_F(DrawingCommands, SampleSurvivesSaveReopenAndExportsEveryEntity) {
    const std::string drawing = (dir / "plant.kdw").string();
    ASSERT_EQ(RunKelaz("sample " + drawing).status, 0);
    const auto dump = RunKelaz("dump " + drawing);
    ASSERT_EQ(dump.status, 0) << dump.out;
    const std::vector<std::string> handles = Handles(dump.out);
    ASSERT_EQ(handles.size(), 18u) << dump.out;
    // Every class of the drawing is there once at least.
    for (const char* cls :
         {"AcDbPolyline", "AcDbLine", "AcDbArc", "AcDbCircle", "KelAzDuct", "KelAzEquipMent",
          "KelAzKelSectEnt", "KelAzSupport", "KelAzSoftLine", "KelAzPipe", "KelAzPipeValve",
          "KelAzMainPipe", "KelAzLead", "KelAzMainLead", "KelAzKdEnt"}) {
        EXPECT_NE(dump.out.find(std::string("\"class\":\"") + cls + "\""), std::string::npos)
            << cls;
    }
    EXPECT_NE(
        dump.out.find("\"mainPipe\":{\"floor\":\"1\",\"z1\":0,\"z2\":4500,\"x\":5500,\"y\":500}"),
        std::string::npos);

    // The DXF carries every entity with its handle, checked by a reader nobody here wrote.
    const std::string dxf = (dir / "plant.dxf").string();
    ASSERT_EQ(RunKelaz("export " + drawing + " -o " + dxf).status, 0);
    const std::string script =
        "import ezdxf,sys\n"
        "doc=ezdxf.readfile(sys.argv[1])\n"
        "a=doc.audit()\n"
        "print('errors', len(a.errors))\n"
        "hs=sorted({e.get_xdata('KELAZ')[0].value for e in doc.modelspace() if "
        "e.has_xdata('KELAZ')})\n"
        "print(' '.join(hs))\n";
    std::ofstream(dir / "check.py") << script;
    FILE* pipe = popen(
        ("/usr/bin/python3 " + (dir / "check.py").string() + " " + dxf + " 2>&1").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    char buf[4096];
    std::string out;
    while (fgets(buf, sizeof buf, pipe)) out += buf;
    pclose(pipe);
    std::set<std::string> expected(handles.begin(), handles.end());
    std::string joined;
    for (const std::string& h : expected) joined += (joined.empty() ? "" : " ") + h;
    EXPECT_EQ(out, "errors 0\n" + joined + "\n");

    for (const char* suffix : {".png", ".svg", ".pdf"}) {
        const fs::path file = dir / (std::string("plant") + suffix);
        ASSERT_EQ(RunKelaz("export " + drawing + " -o " + file.string()).status, 0) << suffix;
        EXPECT_GT(fs::file_size(file), 1000u) << suffix;
    }
}

TEST_F(DrawingCommands, DamagedOrMissingDrawingsAreRefusedAndLeftAlone) {
    const fs::path drawing = dir / "plant.kdw";
    ASSERT_EQ(RunKelaz("sample " + drawing.string()).status, 0);
    std::string bytes = Read(drawing);
    bytes[bytes.size() / 2] ^= 0x5A;
    std::ofstream(drawing, std::ios::binary) << bytes;

    const auto dump = RunKelaz("dump " + drawing.string());
    EXPECT_EQ(dump.status, 2);
    EXPECT_EQ(dump.out.rfind(
                  "[kelaz] 不能读取图形 " + drawing.string() + "：\n  1. 文件已损坏：校验和", 0),
              0u)
        << dump.out;
    EXPECT_EQ(dump.out.find("{\"handle\""), std::string::npos);
    EXPECT_EQ(Read(drawing), bytes) << "a refused drawing is not touched";

    const fs::path png = dir / "out.png";
    EXPECT_EQ(RunKelaz("export " + drawing.string() + " -o " + png.string()).status, 2);
    EXPECT_FALSE(fs::exists(png));
    EXPECT_EQ(RunKelaz("dump " + (dir / "none.kdw").string()).status, 2);

    // A good drawing to an unknown format: a message and no file.
    ASSERT_EQ(RunKelaz("sample --force " + drawing.string()).status, 0);
    const auto bad = RunKelaz("export " + drawing.string() + " -o " + (dir / "out.bmp").string());
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.out, "[kelaz] 不能输出 " + (dir / "out.bmp").string() +
                           "：不认识这种文件后缀（请用 .dxf、.png、.svg 或 .pdf）。\n");
    EXPECT_FALSE(fs::exists(dir / "out.bmp"));
}

TEST_F(DrawingCommands, FoldersAndPipesAreRefusedWithANumberedReportAtOnce) {
    const std::string good = (dir / "good.kdw").string();
    ASSERT_EQ(RunKelaz("sample " + good).status, 0);
    fs::create_directory(dir / "folder.kdw");
    fs::create_directory(dir / "folder.png");
    ASSERT_EQ(::mkfifo((dir / "pipe.kdw").c_str(), 0644), 0);
    ASSERT_EQ(::mkfifo((dir / "pipe.png").c_str(), 0644), 0);
    const std::string d = dir.string() + "/";
    const std::pair<std::string, const char*> cases[] = {
        {"dump " + d + "folder.kdw", "不能读取图形"},
        {"dump " + d + "pipe.kdw", "命名管道"},
        {"export " + d + "folder.kdw -o " + d + "out.png", "文件夹"},
        {"export " + d + "pipe.kdw -o " + d + "out.png", "命名管道"},
        {"export " + good + " -o " + d + "folder.png", "不能写入输出文件"},
        {"export " + good + " -o " + d + "pipe.png", "命名管道"},
        {"export " + good + " -o " + d + "none/out.png", "不存在"},
        {"sample --force " + d + "folder.kdw", "文件夹"},
    };
    for (const auto& [args, says] : cases) {
        const auto r = kelaz::test::RunKelazWithin(20, args);
        EXPECT_EQ(r.status, 2) << args << "\n" << r.out;
        EXPECT_EQ(r.out.rfind("[kelaz] 不能", 0), 0u) << r.out;
        EXPECT_NE(r.out.find("：\n  1. "), std::string::npos) << r.out;
        EXPECT_NE(r.out.find(says), std::string::npos) << r.out;
    }
    EXPECT_FALSE(fs::exists(dir / "out.png"));
    EXPECT_TRUE(fs::is_directory(dir / "folder.kdw"));
    EXPECT_TRUE(fs::is_fifo(dir / "pipe.png"));
}

TEST_F(DrawingCommands, SampleWritesOnlyDrawingNamesAndReplacesOnlyWhenForced) {
    const fs::path drawing = dir / "plant.kdw";
    const auto dxf = RunKelaz("sample " + (dir / "plant.dxf").string());
    EXPECT_EQ(dxf.status, 2);
    EXPECT_NE(dxf.out.find(".kdw 结尾"), std::string::npos) << dxf.out;
    EXPECT_FALSE(fs::exists(dir / "plant.dxf"));

    ASSERT_EQ(RunKelaz("sample " + drawing.string()).status, 0);
    ASSERT_EQ(::chmod(drawing.c_str(), 0640), 0);
    std::ofstream(drawing, std::ios::app) << "x";  // the checksum no longer matches
    const std::string changed = Read(drawing);
    const auto again = RunKelaz("sample " + drawing.string());
    EXPECT_EQ(again.status, 2);
    EXPECT_NE(again.out.find("--force"), std::string::npos) << again.out;
    EXPECT_EQ(Read(drawing), changed);
    ASSERT_EQ(RunKelaz("sample --force " + drawing.string()).status, 0);
    EXPECT_EQ(RunKelaz("dump " + drawing.string()).status, 0);
    EXPECT_EQ(fs::status(drawing).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}
