#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "app/shell/Journal.h"
#include "app/shell/Session.h"
#include "host/app/DocManager.h"
#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"
#include "module/multipipe/MultiPipeRow.h"
#include "module/pipes/VerPipeInf.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjectDb.h"
#include "suite/model/BimModel.h"
#include "tests/support/ProjectFixture.h"
#include "tests/support/RunProgram.h"

namespace {

namespace fs = std::filesystem;
using kelaz::test::ReadBytes;
using kelaz::test::RunKelaz;

// What the layout module remembers for the project, counted.
struct Remembered {
    size_t rows = 0;
    size_t risers = 0;
    bool model = false;
    int generation = 0;
    bool operator==(const Remembered&) const = default;
};

Remembered Now() {
    Remembered r;
    r.rows = CMultiPipeRowStore::Count();
    r.risers = CVerPipeLists::Risers().size() + CVerPipeLists::Planned().size() +
               CVerPipeLists::Made().size();
    r.model = HasBimInstance();
    r.generation = r.model ? pGetBimInstance()->Generation() : 0;
    return r;
}

void Remember() {
    auto row = std::make_unique<MultiPipeRow>();
    row->spec = L"电气";
    CMultiPipeRowStore::StoredRows(L"电气")->push_back(std::move(row));
    CVerPipeLists::Risers().push_back(boost::make_shared<CVerPipeInf>());
    CVerPipeLists::Made().push_back(boost::make_shared<CVerPipeInf>());
    ASSERT_NE(pGetBimInstance(), nullptr);
}

// A session in this process, on a folder with two projects and three drawings, fed line by line.
class DocumentSwitch : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = kelaz::test::MakeTempDir();
        ASSERT_FALSE(m_dir.empty());
        for (const char* name : {"p1.kelaz", "p2.kelaz"}) {
            kelaz::ProjectOpenResult result;
            ASSERT_TRUE(
                kelaz::ProjectDb::CreateDefaultFile(kelaz::FromUtf8(Path(name)), false, result));
        }
        for (const char* name : {"a.kdw", "b.kdw", "c.kdw"}) {
            ASSERT_EQ(RunKelaz("sample '" + Path(name) + "'").status, 0);
        }
    }
    void TearDown() override {
        m_session.reset();
        CMultiPipeRowStore::ClearAll();
        CVerPipeLists::ClearAll();
        pDeleteBimInstance();
        std::error_code ignored;
        fs::remove_all(m_dir, ignored);
    }
    std::string Path(const std::string& name) const { return m_dir + "/" + name; }
    void Start(const std::string& drawing, const std::string& project) {
        m_session = std::make_unique<kelaz::Session>(m_input, m_out);
        kelaz::SessionOptions options;
        options.drawing = drawing;
        options.project = project;
        std::string error;
        ASSERT_TRUE(m_session->Open(options, error)) << error;
    }
    // Runs the lines given, and what was printed meanwhile.
    std::string Type(std::initializer_list<std::string> lines) {
        for (const std::string& line : lines) m_input.Add(kelaz::FromUtf8(line));
        m_out.str("");
        if (kelaz::Editor* editor = kelaz::CurrentEditor()) editor->ResumeInput();
        m_session->Run();
        return m_out.str();
    }
    std::string Current() const {
        return kelaz::ToUtf8(CString(acDocManager->curDocument()->fileName()));
    }

    std::string m_dir;
    kelaz::ScriptedInput m_input;
    std::ostringstream m_out;
    std::unique_ptr<kelaz::Session> m_session;
};

TEST_F(DocumentSwitch, RememberedSurviveADrawingOfTheSameProjectAndGoWithAnother) {
    Start(Path("a.kdw"), Path("p1.kelaz"));
    Remember();
    const Remembered p1 = Now();
    ASSERT_EQ(p1.rows, 1u);

    // A refusal in the drawing left still counts for the session.
    std::string out = Type({"NOSUCH", "OPEN", Path("b.kdw")});
    EXPECT_EQ(Current(), Path("b.kdw"));
    EXPECT_EQ(acDocManager->documentCount(), 1);
    EXPECT_NE(out.find("已打开 " + Path("b.kdw") + "。"), std::string::npos) << out;
    EXPECT_EQ(out.find("换了项目"), std::string::npos) << out;
    EXPECT_EQ(Now(), p1);
    EXPECT_EQ(m_session->Refusals(), 1);

    // Naming the project the session is in, written another way, changes nothing.
    out = Type({"OPEN", "P", m_dir + "/./p1.kelaz", Path("c.kdw")});
    EXPECT_EQ(Current(), Path("c.kdw"));
    EXPECT_EQ(out.find("换了项目"), std::string::npos) << out;
    EXPECT_EQ(Now(), p1);

    out = Type({"OPEN", "p", Path("p2.kelaz"), Path("a.kdw")});
    EXPECT_EQ(Current(), Path("a.kdw"));
    EXPECT_NE(out.find("，项目 " + Path("p2.kelaz") + "。"), std::string::npos) << out;
    EXPECT_NE(out.find("换了项目：记住的多管设置行、立管拆分列表和楼层模型已清除。"),
              std::string::npos)
        << out;
    EXPECT_EQ(Now(), Remembered());
    EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p2.kelaz")));
    EXPECT_EQ(m_session->ProjectPath(), Path("p2.kelaz"));

    // PROJECT goes back with a new drawing, and clears again.
    Remember();
    out = Type({"PROJECT", Path("p1.kelaz")});
    EXPECT_EQ(Now(), Remembered());
    EXPECT_EQ(acDocManager->documentCount(), 1);
    EXPECT_NE(out.find("已换到项目 " + Path("p1.kelaz") + "，开始一张新图形。"), std::string::npos)
        << out;
    EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p1.kelaz")));
    out = Type({"PROJECT", Path("p1.kelaz"), "PROJECT", ""});
    EXPECT_NE(out.find("已经是现在的项目"), std::string::npos) << out;
    EXPECT_NE(out.find("项目没有改变。"), std::string::npos) << out;
}

TEST_F(DocumentSwitch, UnsavedChangesAreAskedAboutAsQuitAsks) {
    Start(Path("a.kdw"), "");
    const std::string a = ReadBytes(Path("a.kdw"));
    // cancel stays; the end of the input at the question stays.
    std::string out = Type({"ARC", "0,0", "50,50", "100,0", "OPEN", Path("b.kdw"), "cancel"});
    EXPECT_NE(out.find("有未保存的修改。yes 保存后打开"), std::string::npos) << out;
    EXPECT_EQ(Current(), Path("a.kdw"));
    Type({"OPEN", Path("b.kdw")});
    EXPECT_EQ(Current(), Path("a.kdw"));
    // no goes without saving.
    Type({"OPEN", Path("b.kdw"), "no"});
    EXPECT_EQ(Current(), Path("b.kdw"));
    EXPECT_EQ(ReadBytes(Path("a.kdw")), a);
    // yes saves first.
    Type({"ARC", "0,0", "50,50", "100,0", "PROJECT", Path("p1.kelaz"), "yes"});
    EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p1.kelaz")));
    const auto dump = RunKelaz("dump '" + Path("b.kdw") + "'");
    EXPECT_NE(dump.out.find("\"class\":\"AcDbArc\""), std::string::npos) << dump.out;
}

TEST_F(DocumentSwitch, WhatCannotBeOpenedIsRefusedBeforeAnyQuestionAndChangesNothing) {
    Start(Path("a.kdw"), Path("p1.kelaz"));
    Remember();
    const Remembered p1 = Now();
    AcApDocument* doc = acDocManager->curDocument();
    Type({"ARC", "0,0", "50,50", "100,0"});

    fs::copy_file(Path("a.kdw"), Path("d.kdw"));
    std::ofstream(Path("junk.kdw")) << "junk";
    std::ofstream(Path("junk.kelaz")) << "junk";
    // A journal with a line in it: work a session left behind on b.kdw.
    {
        kelaz::JournalHeader header;
        header.drawing = Path("b.kdw");
        std::ofstream(Path("b.kdw.journal"))
            << kelaz::FormatJournalHeader(header) << "M 0\nL ARC\n";
    }
    // Another session works on c.kdw.
    kelaz::JournalFile held;
    std::string why;
    ASSERT_EQ(held.Open(Path("c.kdw.journal"), false, why),
              kelaz::JournalFile::OpenStatus::kOpened);

    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"OPEN", Path("missing.kdw")}, "不存在"},
        {{"OPEN", Path("a.kdw")}, "就是现在的图形"},
        {{"OPEN", Path("p1.kelaz")}, "不是图形文件的名字"},
        {{"OPEN", Path("junk.kdw")}, "不能读取图形"},
        {{"OPEN", Path("b.kdw")}, "kelaz recover"},
        {{"OPEN", Path("c.kdw")}, "被占用"},
        {{"OPEN", "P", Path("junk.kelaz"), Path("d.kdw")}, "不能打开项目"},
        {{"OPEN", "P", Path("none.kelaz"), Path("d.kdw")},
         "项目文件 " + Path("none.kelaz") + " 不存在"},
        {{"PROJECT", Path("junk.kelaz")}, "不能打开项目"},
        {{"OPEN", ""}, "没有给出文件名"},
    };
    for (const auto& [lines, says] : cases) {
        for (const std::string& line : lines) m_input.Add(kelaz::FromUtf8(line));
        // Read as a command: no question took it as its answer.
        const std::string out = Type({"ARC", "0,300", "50,350", "100,300"});
        EXPECT_NE(out.find(says), std::string::npos) << lines[1] << ": " << out;
        EXPECT_EQ(out.find("(yes/no/cancel)"), std::string::npos) << lines[1] << ": " << out;
        EXPECT_EQ(acDocManager->curDocument(), doc) << lines[1];
        EXPECT_EQ(Now(), p1) << lines[1];
        EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p1.kelaz")));
    }
    // The journal left behind is not touched.
    EXPECT_NE(ReadBytes(Path("b.kdw.journal")).find("L ARC\n"), std::string::npos);
}

}  // namespace
