#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/make_shared.hpp>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

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
#include "suite/data/CurrentProject.h"
#include "suite/data/Proj.h"
#include "suite/model/BimModel.h"
#include "tests/support/ProjectFixture.h"

namespace {

namespace fs = std::filesystem;

TEST(DocReactorName, TheFolderOfABackslashPathOrTheWholePath) {
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\Hospital\\Hospital.prj"), L"Hospital");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\School\\School.prj"), L"School");
    // Another file of the same folder names the same project.
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\Hospital\\Annex.prj"), L"Hospital");
    // No backslash: no folder cut, the whole path.
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"/home/li/hospital.kelaz"), L"/home/li/hospital.kelaz");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"Hospital.prj"), L"Hospital.prj");
    // A backslash at the very start does not cut.
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"\\Hospital.prj"), L"Hospital.prj");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"X\\Hospital.prj"), L"X");
    // Nothing after the folder's last backslash: no name.
    EXPECT_EQ(CDocReactor::ProjectNameOf(L"D:\\Work\\\\Hospital.prj"), L"");
    EXPECT_EQ(CDocReactor::ProjectNameOf(L""), L"");
}

// What the module remembers for a project, counted.
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

// Two rows of each speciality, a riser with one piece planned and made, and the model built
// from the current project.
void Remember() {
    for (const wchar_t* spec : {L"电气", L"1_5u"}) {
        for (int i = 0; i < 2; ++i) {
            auto row = std::make_unique<MultiPipeRow>();
            row->spec = spec;
            row->horzOffset = 100.0 * (i + 1);
            CMultiPipeRowStore::StoredRows(spec)->push_back(std::move(row));
        }
    }
    CVerPipeLists::Risers().push_back(boost::make_shared<CVerPipeInf>());
    CVerPipeLists::Planned().push_back(boost::make_shared<CVerPipeInf>());
    CVerPipeLists::Made().push_back(boost::make_shared<CVerPipeInf>());
    ASSERT_NE(pGetBimInstance(), nullptr);
}

// Project files in a folder of their own, named as the data module of a drafting office hands
// them over: paths with backslashes. Here a backslash is an ordinary character of a file name,
// so "D:\Work\Hospital\Hospital.prj" is one file in the current folder, and the project path
// the data module answers is exactly that text.
class DocReactorTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = kelaz::test::MakeTempDir();
        ASSERT_FALSE(m_dir.empty());
        m_back = fs::current_path();
        fs::current_path(m_dir);
        for (const wchar_t* name :
             {L"D:\\Work\\Hospital\\Hospital.prj", L"D:\\Work\\Hospital\\Annex.prj",
              L"D:\\Work\\hospital\\Hospital.prj", L"D:\\Work\\School\\School.prj",
              L"D:\\Work\\\\Hospital.prj", L"plain.kelaz"}) {
            kelaz::ProjectOpenResult result;
            ASSERT_TRUE(kelaz::ProjectDb::CreateDefaultFile(name, false, result)) << result.message;
        }
        kelaz::SetDocumentConsole(&m_input, &m_out);
        ClearCaches();
    }
    void TearDown() override {
        while (acDocManager->curDocument() != nullptr) {
            acDocManager->closeDocument(acDocManager->curDocument());
        }
        kelaz::UnloadLayoutModule();
        kelaz::SetDocumentConsole(nullptr, &std::cout);
        ClearCaches();
        KelAzDataMng::CloseProject();
        fs::current_path(m_back);
        std::error_code ignored;
        fs::remove_all(m_dir, ignored);
    }
    static void ClearCaches() {
        CMultiPipeRowStore::ClearAll();
        CVerPipeLists::ClearAll();
        pDeleteBimInstance();
    }
    static void UseProject(const wchar_t* path) {
        CString error;
        ASSERT_TRUE(KelAzDataMng::OpenProject(path, error)) << error;
        ASSERT_EQ(KelAzDataMng::CProj::GetPrjPath(), path);
    }
    static AcApDocument* NewDocument() {
        EXPECT_EQ(acDocManager->appContextNewDocument(nullptr), Acad::eOk);
        return acDocManager->curDocument();
    }

    std::string m_dir;
    fs::path m_back;
    kelaz::ScriptedInput m_input;
    std::ostringstream m_out;
};

TEST_F(DocReactorTest, ADocumentOfAnotherProjectClearsWhatTheModuleRemembers) {
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    const CDocReactor* reactor = kelaz::LoadedDocReactor();
    ASSERT_NE(reactor, nullptr);
    EXPECT_EQ(reactor->ProjectName(), L"");

    UseProject(L"D:\\Work\\Hospital\\Hospital.prj");
    NewDocument();
    EXPECT_EQ(reactor->ProjectName(), L"Hospital");
    Remember();
    const Remembered hospital = Now();
    ASSERT_EQ(hospital.rows, 4u);
    ASSERT_EQ(hospital.risers, 3u);
    ASSERT_TRUE(hospital.model);

    // The same path again, and another file of the same folder: the same project.
    NewDocument();
    EXPECT_EQ(Now(), hospital);
    UseProject(L"D:\\Work\\Hospital\\Annex.prj");
    NewDocument();
    EXPECT_EQ(Now(), hospital);
    // The built-in catalogue has no path: it says nothing of the project.
    ASSERT_TRUE(KelAzDataMng::OpenDefaultProject());
    NewDocument();
    EXPECT_EQ(Now(), hospital);
    EXPECT_EQ(reactor->ProjectName(), L"Hospital");
    // Neither does a folder path whose last part is empty.
    UseProject(L"D:\\Work\\\\Hospital.prj");
    NewDocument();
    EXPECT_EQ(Now(), hospital);
    // Closing documents clears nothing.
    acDocManager->closeDocument(acDocManager->curDocument());
    EXPECT_EQ(Now(), hospital);

    UseProject(L"D:\\Work\\School\\School.prj");
    NewDocument();
    EXPECT_EQ(Now(), Remembered());
    EXPECT_EQ(reactor->ProjectName(), L"School");
    // The next reader builds the model of this project anew.
    ASSERT_NE(pGetBimInstance(), nullptr);
    EXPECT_GT(pGetBimInstance()->Generation(), hospital.generation);

    // Letter case counts.
    Remember();
    UseProject(L"D:\\Work\\Hospital\\Hospital.prj");
    NewDocument();
    Remember();
    UseProject(L"D:\\Work\\hospital\\Hospital.prj");
    NewDocument();
    EXPECT_EQ(Now(), Remembered());
    EXPECT_EQ(reactor->ProjectName(), L"hospital");

    // A path without a backslash is its own project's name.
    Remember();
    const CString plain = kelaz::FromUtf8(m_dir + "/plain.kelaz");
    UseProject(plain);
    NewDocument();
    EXPECT_EQ(Now(), Remembered());
    EXPECT_EQ(reactor->ProjectName(), plain);
}

TEST_F(DocReactorTest, ANullDocumentAndAnUnloadedModuleClearNothing) {
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    UseProject(L"D:\\Work\\Hospital\\Hospital.prj");
    NewDocument();
    Remember();
    const Remembered hospital = Now();
    UseProject(L"D:\\Work\\School\\School.prj");
    kelaz::LoadedDocReactor()->documentCreated(nullptr);
    EXPECT_EQ(Now(), hospital);
    EXPECT_EQ(kelaz::LoadedDocReactor()->ProjectName(), L"Hospital");

    // Unloaded, the reactor hears no document: its project is not checked.
    ASSERT_TRUE(kelaz::UnloadLayoutModule());
    EXPECT_EQ(kelaz::LoadedDocReactor(), nullptr);
    NewDocument();
    EXPECT_EQ(Now(), hospital);
    // Loaded again it starts with no project seen, as after the host's load.
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    EXPECT_EQ(kelaz::LoadedDocReactor()->ProjectName(), L"");
    NewDocument();
    EXPECT_EQ(Now(), Remembered());
    EXPECT_EQ(kelaz::LoadedDocReactor()->ProjectName(), L"School");
}

TEST_F(DocReactorTest, TheModuleLoadsOnceUnlocksItselfAndIsRegistered) {
    EXPECT_FALSE(kelaz::UnloadLayoutModule());
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    EXPECT_FALSE(kelaz::LoadLayoutModule());
    EXPECT_FALSE(kelaz::ApplicationIsLocked(kelaz::LayoutModuleId()));
    EXPECT_TRUE(kelaz::ApplicationIsMDIAware(kelaz::LayoutModuleId()));

    AcRxClass* cls = AcRxClass::cast(acrxClassDictionary->at(L"CDocReactor"));
    ASSERT_NE(cls, nullptr);
    EXPECT_EQ(CDocReactor::desc(), cls);
    EXPECT_EQ(cls->myParent(), AcApDocManagerReactor::desc());
    const CDocReactor* reactor = kelaz::LoadedDocReactor();
    EXPECT_EQ(reactor->isA(), cls);
    EXPECT_TRUE(reactor->isKindOf(AcApDocManagerReactor::desc()));
    EXPECT_EQ(CDocReactor::cast(reactor), reactor);

    // A module that locked itself is not unloaded.
    acrxLockApplication(kelaz::LayoutModuleId());
    EXPECT_FALSE(kelaz::UnloadLayoutModule());
    EXPECT_TRUE(kelaz::IsLayoutModuleLoaded());
    acrxUnlockApplication(kelaz::LayoutModuleId());
    EXPECT_TRUE(kelaz::UnloadLayoutModule());
    EXPECT_FALSE(kelaz::IsLayoutModuleLoaded());
    EXPECT_EQ(kelaz::LoadedDocDataManager(), nullptr);
}

TEST_F(DocReactorTest, PerDocumentDataFollowsTheDocumentsOpen) {
    ASSERT_TRUE(kelaz::LoadLayoutModule());
    CDocDataManager* loaded = kelaz::LoadedDocDataManager();
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->docData(), nullptr);  // no document yet
    EXPECT_EQ(loaded->docData(nullptr), nullptr);

    AcApDocument* first = NewDocument();
    AcApDocument* second = NewDocument();
    {
        // A manager of its own hears the same documents, and stops when it goes.
        CDocDataManager own;
        own.docData(first)->m_word = 1;
        EXPECT_EQ(own.docData(), own.docData(second));
        own.docData()->m_word = 2;
        loaded->docData(first)->m_word = 7;
        EXPECT_EQ(own.size(), 2u);
        EXPECT_EQ(own.docData(first)->m_word, 1u);

        acDocManager->closeDocument(first);
        EXPECT_FALSE(own.hasData(first));
        EXPECT_FALSE(loaded->hasData(first));
        EXPECT_TRUE(own.hasData(second));
        EXPECT_EQ(own.size(), 1u);
        // A document no longer open gets no entry.
        EXPECT_EQ(own.docData(first), nullptr);
        EXPECT_EQ(own.size(), 1u);
    }
    // The manager above is gone; closing a document must not reach it.
    AcApDocument* third = NewDocument();
    EXPECT_EQ(loaded->docData(third)->m_word, 0u);
    acDocManager->closeDocument(second);
    acDocManager->closeDocument(third);
    EXPECT_EQ(loaded->size(), 0u);
}

}  // namespace
