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

// Rows, risers and the model's build, counted: what the layout module remembers for a project.
std::string Remembered() {
    std::ostringstream s;
    s << CMultiPipeRowStore::Count() << " rows, "
      << CVerPipeLists::Risers().size() + CVerPipeLists::Made().size() << " risers, model "
      << (HasBimInstance() ? pGetBimInstance()->Generation() : 0);
    return s.str();
}

void Remember() {
    CMultiPipeRowStore::StoredRows(L"电气")->push_back(std::make_unique<MultiPipeRow>());
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
    const std::string p1 = Remembered();

    // A refusal in the drawing left still counts for the session.
    std::string out = Type({"NOSUCH", "OPEN", Path("b.kdw")});
    EXPECT_EQ(Current(), Path("b.kdw"));
    EXPECT_EQ(acDocManager->documentCount(), 1);
    EXPECT_NE(out.find("已打开 " + Path("b.kdw") + "。"), std::string::npos) << out;
    EXPECT_EQ(out.find("换了项目"), std::string::npos) << out;
    EXPECT_EQ(Remembered(), p1);
    EXPECT_EQ(m_session->Refusals(), 1);

    // Naming the project the session is in, written another way, changes nothing.
    out = Type({"OPEN", "P", m_dir + "/./p1.kelaz", Path("c.kdw")});
    EXPECT_EQ(Current(), Path("c.kdw"));
    EXPECT_EQ(out.find("换了项目"), std::string::npos) << out;
    EXPECT_EQ(Remembered(), p1);

    out = Type({"OPEN", "p", Path("p2.kelaz"), Path("a.kdw")});
    EXPECT_EQ(Current(), Path("a.kdw"));
    EXPECT_NE(out.find("，项目 " + Path("p2.kelaz") + "。"), std::string::npos) << out;
    EXPECT_NE(out.find("换了项目：记住的多管设置行、立管拆分列表和楼层模型已清除。"),
              std::string::npos)
        << out;
    EXPECT_EQ(Remembered(), "0 rows, 0 risers, model 0");
    EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p2.kelaz")));
    EXPECT_EQ(m_session->ProjectPath(), Path("p2.kelaz"));

    // PROJECT goes back with a new drawing, and clears again.
    Remember();
    Type({"PROJECT", Path("p1.kelaz")});
    EXPECT_EQ(Remembered(), "0 rows, 0 risers, model 0");
    EXPECT_EQ(acDocManager->documentCount(), 1);
    EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p1.kelaz")));
}

TEST_F(DocumentSwitch, WhatCannotBeOpenedIsRefusedBeforeAnyQuestionAndChangesNothing) {
    Start(Path("a.kdw"), Path("p1.kelaz"));
    Remember();
    const std::string p1 = Remembered();
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
        {{"OPEN", Path("junk.kdw")}, "不能读取图形"},
        {{"OPEN", Path("b.kdw")}, "kelaz recover"},
        {{"OPEN", Path("c.kdw")}, "被占用"},
        {{"OPEN", "P", Path("junk.kelaz"), Path("d.kdw")}, "不能打开项目"},
        {{"PROJECT", Path("junk.kelaz")}, "不能打开项目"},
    };
    for (const auto& [lines, says] : cases) {
        for (const std::string& line : lines) m_input.Add(kelaz::FromUtf8(line));
        // Read as a command: no question took it as its answer.
        const std::string out = Type({"ARC", "0,300", "50,350", "100,300"});
        EXPECT_NE(out.find(says), std::string::npos) << lines[1] << ": " << out;
        EXPECT_EQ(out.find("(yes/no/cancel)"), std::string::npos) << lines[1] << ": " << out;
        EXPECT_EQ(acDocManager->curDocument(), doc) << lines[1];
        EXPECT_EQ(Remembered(), p1) << lines[1];
        EXPECT_EQ(KelAzDataMng::CProj::GetPrjPath(), kelaz::FromUtf8(Path("p1.kelaz")));
    }
    // The journal left behind is not touched.
    EXPECT_NE(ReadBytes(Path("b.kdw.journal")).find("L ARC\n"), std::string::npos);
}

}  // namespace
