#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <filesystem>
#include <sstream>

#include "host/app/DocManager.h"
#include "host/app/RxApp.h"
#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/ed/InputSource.h"
#include "module/entry/ModuleLoad.h"
#include "module/multipipe/MultiPipeRow.h"
#include "module/pipes/DocData.h"
#include "module/pipes/DocReactor.h"
#include "module/pipes/VerPipeInf.h"
#include "suite/data/Proj.h"
#include "suite/model/BimModel.h"
#include "tests/support/ProjectFixture.h"

namespace {

namespace fs = std::filesystem;

TEST(DocReactorName, TheFolderOfABackslashPathOrTheWholePath) {
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\Hospital\\Hospital.prj"), L"Hospital");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\Hospital\\Annex.prj"), L"Hospital");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"/home/li/hospital.kelaz"), L"/home/li/hospital.kelaz");
    // A backslash at the very start does not cut.
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"\\Hospital.prj"), L"Hospital.prj");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"X\\Hospital.prj"), L"X");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\\\Hospital.prj"), L"");
}

// Rows, risers and the model's build, counted: what the module remembers for a project.
std::string Remembered() {
    std::ostringstream s;
    s << CMultiPipeRowStore::Count() << " rows, "
      << CVerPipeLists::Risers().size() + CVerPipeLists::Planned().size() +
             CVerPipeLists::Made().size()
      << " risers, model " << (HasBimInstance() ? pGetBimInstance()->Generation() : 0);
    return s.str();
}

void Remember() {
    for (const wchar_t* spec : {L"电气", L"1_5u"}) {
        CMultiPipeRowStore::StoredRows(spec)->push_back(std::make_unique<MultiPipeRow>());
    }
    CVerPipeLists::Risers().push_back(boost::make_shared<CVerPipeInf>());
    CVerPipeLists::Planned().push_back(boost::make_shared<CVerPipeInf>());
    CVerPipeLists::Made().push_back(boost::make_shared<CVerPipeInf>());
    ASSERT_NE(pGetBimInstance(), nullptr);
}

// Project files named as a drafting office's data module hands them over, with backslashes. A
// backslash is an ordinary character of a file name here, so "D:\Work\School\School.prj" is one
// file in the current folder, and the project path the data module answers is that very text.
class DocReactorTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = kelaz::test::MakeTempDir();
        ASSERT_FALSE(m_dir.empty());
        m_back = fs::current_path();
        fs::current_path(m_dir);
        kelaz::SetDocumentConsole(&m_input, &m_out);
    }
    void TearDown() override {
        while (acDocManager->curDocument() != nullptr) {
            acDocManager->closeDocument(acDocManager->curDocument());
        }
        kelaz::UnloadLayoutModule();
        kelaz::SetDocumentConsole(nullptr, &std::cout);
        CMultiPipeRowStore::ClearAll();
        CVerPipeLists::ClearAll();
        pDeleteBimInstance();
        KelAzDataMng::CloseProject();
        fs::current_path(m_back);
        fs::remove_all(m_dir);
    }
    // The project becomes current and a document is created.
    static void NewDocumentOf(const wchar_t* project) {
        kelaz::ProjectOpenResult made;
        kelaz::ProjectDb::CreateDefaultFile(project, false, made);
        ASSERT_TRUE(KelAzDataMng::OpenProject(project));
        ASSERT_EQ(KelAzDataMng::CProj::GetPrjPath(), project);
        ASSERT_EQ(acDocManager->appContextNewDocument(nullptr), Acad::eOk);
    }

    std::string m_dir;
    fs::path m_back;
    kelaz::ScriptedInput m_input;
    std::ostringstream m_out;
};

TEST_F(DocReactorTest, ADocumentOfAnotherProjectClearsWhatTheModuleRemembers) {
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    const CDocReactor* reactor = kelaz::LoadedDocReactor();
    EXPECT_EQ(reactor->ProjectName(), L"");
    NewDocumentOf(L"D:\\Work\\Hospital\\Hospital.prj");
    EXPECT_EQ(reactor->ProjectName(), L"Hospital");
    Remember();
    const std::string hospital = Remembered();
    ASSERT_EQ(hospital.rfind("2 rows, 3 risers, model ", 0), 0u) << hospital;

    // The same path again, another file of its folder, a folder path whose last part is empty,
    // the built-in catalogue without a path, a null document: nothing is cleared.
    NewDocumentOf(L"D:\\Work\\Hospital\\Hospital.prj");
    NewDocumentOf(L"D:\\Work\\Hospital\\Annex.prj");
    NewDocumentOf(L"D:\\Work\\\\Hospital.prj");
    ASSERT_TRUE(KelAzDataMng::OpenDefaultProject());
    acDocManager->appContextNewDocument(nullptr);
    acDocManager->closeDocument(acDocManager->curDocument());
    kelaz::LoadedDocReactor()->documentCreated(nullptr);
    EXPECT_EQ(Remembered(), hospital);
    EXPECT_EQ(reactor->ProjectName(), L"Hospital");

    NewDocumentOf(L"D:\\Work\\School\\School.prj");
    EXPECT_EQ(Remembered(), "0 rows, 0 risers, model 0");
    EXPECT_EQ(reactor->ProjectName(), L"School");
    // Letter case counts; a path without a backslash is its own project's name.
    Remember();
    NewDocumentOf(L"D:\\Work\\school\\School.prj");
    EXPECT_EQ(Remembered(), "0 rows, 0 risers, model 0");
    Remember();
    NewDocumentOf(L"plain.kelaz");
    EXPECT_EQ(reactor->ProjectName(), L"plain.kelaz");
    EXPECT_EQ(Remembered(), "0 rows, 0 risers, model 0");

    // Unloaded, the module hears no document; loaded again, it has seen no project.
    Remember();
    const std::string plain = Remembered();
    ASSERT_TRUE(kelaz::UnloadLayoutModule());
    NewDocumentOf(L"D:\\Work\\School\\School.prj");
    EXPECT_EQ(Remembered(), plain);
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    NewDocumentOf(L"plain.kelaz");
    EXPECT_EQ(Remembered(), "0 rows, 0 risers, model 0");
}

TEST_F(DocReactorTest, TheModuleLoadsOnceUnlocksItselfAndRegistersItsReactor) {
    EXPECT_FALSE(kelaz::UnloadLayoutModule());
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    EXPECT_FALSE(kelaz::LoadLayoutModule());
    EXPECT_TRUE(kelaz::ApplicationIsMDIAware(kelaz::LayoutModuleId()));
    const CDocReactor* reactor = kelaz::LoadedDocReactor();
    EXPECT_EQ(reactor->isA(), AcRxClass::cast(acrxClassDictionary->at(L"CDocReactor")));
    EXPECT_TRUE(reactor->isKindOf(AcApDocManagerReactor::desc()));
    // A module that locked itself stays.
    acrxLockApplication(kelaz::LayoutModuleId());
    EXPECT_FALSE(kelaz::UnloadLayoutModule());
    acrxUnlockApplication(kelaz::LayoutModuleId());
    EXPECT_TRUE(kelaz::UnloadLayoutModule());
    EXPECT_EQ(kelaz::LoadedDocReactor(), nullptr);
    EXPECT_EQ(kelaz::LoadedDocDataManager(), nullptr);
}

TEST_F(DocReactorTest, PerDocumentDataFollowsTheDocumentsOpen) {
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    CDocDataManager* data = kelaz::LoadedDocDataManager();
    EXPECT_EQ(data->docData(), nullptr);
    acDocManager->appContextNewDocument(nullptr);
    AcApDocument* first = acDocManager->curDocument();
    acDocManager->appContextNewDocument(nullptr);
    data->docData(first)->m_word = 7;
    data->docData()->m_word = 8;
    {
        CDocDataManager own;  // hears the same documents, and stops when it goes
        own.docData(first);
        acDocManager->closeDocument(first);
        EXPECT_EQ(own.size(), 0u);
    }
    EXPECT_FALSE(data->hasData(first));
    EXPECT_EQ(data->docData(first), nullptr) << "no entry for a document closed";
    EXPECT_EQ(data->size(), 1u);
    EXPECT_EQ(data->docData()->m_word, 8u);
    acDocManager->closeDocument(acDocManager->curDocument());
    EXPECT_EQ(data->size(), 0u);
}

}  // namespace
