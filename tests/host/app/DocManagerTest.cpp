#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "host/app/DocManager.h"
#include "host/app/RxApp.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/Line.h"
#include "host/ed/CommandStack.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "host/ed/InputSource.h"
#include "tests/support/DbCheckers.h"

namespace {

// Notes every reaction as "event:title".
class Recorder : public AcApDocManagerReactor {
public:
    void documentCreateStarted(AcApDocument* d) override { Note("createStarted", d); }
    void documentCreated(AcApDocument* d) override { Note("created", d); }
    void documentToBeDestroyed(AcApDocument* d) override { Note("toBeDestroyed", d); }
    void documentDestroyed(const ACHAR* fileName) override {
        events.push_back("destroyed:" + kelaz::ToUtf8(CString(fileName)));
    }
    void documentBecameCurrent(AcApDocument* d) override { Note("current", d); }
    void documentActivated(AcApDocument* d) override { Note("activated", d); }
    std::vector<std::string> events;

private:
    void Note(const char* what, AcApDocument* d) {
        events.push_back(std::string(what) + ":" + kelaz::ToUtf8(CString(d->docTitle())));
    }
};

// Closes whatever a test left open, so tests do not see each other's documents.
class DocManagerTest : public ::testing::Test {
protected:
    void SetUp() override { kelaz::SetDocumentConsole(&input, &out); }
    void TearDown() override {
        while (acDocManager->curDocument() != nullptr) {
            acDocManager->closeDocument(acDocManager->curDocument());
        }
        kelaz::SetDocumentConsole(nullptr, &std::cout);
    }
    kelaz::ScriptedInput input;
    std::ostringstream out;
};

TEST_F(DocManagerTest, ReactorsHearDocumentsMadeAndClosedInOrder) {
    Recorder recorder;
    acDocManager->addReactor(&recorder);
    acDocManager->addReactor(&recorder);  // told once all the same
    ASSERT_EQ(acDocManager->appContextNewDocument(nullptr), Acad::eOk);
    AcApDocument* first = acDocManager->curDocument();
    ASSERT_EQ(acDocManager->appContextNewDocument(nullptr), Acad::eOk);
    AcApDocument* second = acDocManager->curDocument();
    EXPECT_NE(first, second);
    EXPECT_EQ(acDocManager->documentCount(), 2);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), second->database());
    EXPECT_EQ(kelaz::CurrentEditor(), &kelaz::EditorOf(second));
    EXPECT_EQ(acDocManager->document(first->database()), first);

    const std::string t1 = kelaz::ToUtf8(CString(first->docTitle()));
    const std::string t2 = kelaz::ToUtf8(CString(second->docTitle()));
    ASSERT_EQ(acDocManager->closeDocument(second), Acad::eOk);
    EXPECT_EQ(acDocManager->curDocument(), first);  // the one left becomes current
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), first->database());
    acDocManager->removeReactor(&recorder);
    acDocManager->closeDocument(first);  // not heard any more

    const std::vector<std::string> expected = {
        "createStarted:" + t1, "created:" + t1,   "current:" + t1, "activated:" + t1,
        "createStarted:" + t2, "created:" + t2,   "current:" + t2, "activated:" + t2,
        "toBeDestroyed:" + t2, "destroyed:" + t2, "current:" + t1,
    };
    EXPECT_EQ(recorder.events, expected);
    EXPECT_EQ(acDocManager->curDocument(), nullptr);
    EXPECT_EQ(acDocManager->closeDocument(first), Acad::eInvalidInput);
}

TEST_F(DocManagerTest, OpeningADrawingFileAndLocks) {
    const std::string path = ::testing::TempDir() + "docmanager-open.kdw";
    {
        AcDbDatabase db;
        kelaz::test::Append(db, new AcDbLine({0, 0, 0}, {1, 1, 0}));
        ASSERT_EQ(db.saveAs(kelaz::FromUtf8(path)), Acad::eOk);
    }
    ASSERT_EQ(acDocManager->appContextOpenDocument(kelaz::FromUtf8(path)), Acad::eOk);
    AcApDocument* doc = acDocManager->curDocument();
    EXPECT_EQ(kelaz::ToUtf8(CString(doc->fileName())), path);
    EXPECT_NE(acDocManager->appContextOpenDocument(L"/no/such/drawing.kdw"), Acad::eOk);
    EXPECT_FALSE(kelaz::LastOpenReport().IsEmpty());
    EXPECT_EQ(acDocManager->documentCount(), 1);

    EXPECT_EQ(doc->lockMode(), AcAp::kNotLocked);
    EXPECT_EQ(acDocManager->lockDocument(doc), Acad::eOk);
    EXPECT_EQ(acDocManager->lockDocument(doc, AcAp::kRead), Acad::eOk);
    EXPECT_EQ(doc->lockMode(), AcAp::kRead);
    EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
    EXPECT_EQ(doc->lockMode(), AcAp::kWrite);
    EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eOk);
    EXPECT_EQ(acDocManager->unlockDocument(doc), Acad::eNotApplicable);
    EXPECT_EQ(doc->lockMode(), AcAp::kNotLocked);
}

// The transparent command sent by the elevation pick: it picks an entity and notes it.
AcDbObjectId g_picked;
int g_transparentRuns = 0;
void PickHeight() {
    ++g_transparentRuns;
    ads_name name;
    ads_point at;
    if (acedEntSel(L"\n选择对象:", name, at) == RTNORM) acdbGetObjectId(g_picked, name);
}

TEST_F(DocManagerTest, SentTextRunsATransparentCommandAtTheNextPrompt) {
    ASSERT_EQ(acedRegCmds->addCommand(L"TEST", L"PickHeight", L"PickHeight", ACRX_CMD_TRANSPARENT,
                                      PickHeight),
              Acad::eOk);
    EXPECT_EQ(acedRegCmds->addCommand(L"TEST", L"PICKHEIGHT", nullptr, 0, PickHeight),
              Acad::eDuplicateKey);
    ASSERT_EQ(acDocManager->appContextNewDocument(nullptr), Acad::eOk);
    AcApDocument* doc = acDocManager->curDocument();
    const AcDbObjectId line =
        kelaz::test::Append(*doc->database(), new AcDbLine({0, 0, 0}, {100, 0, 0}));
    input.Add(L"50,0");     // answers the transparent command's pick
    input.Add(L"200,300");  // answers the prompt that was waiting
    g_transparentRuns = 0;
    ASSERT_EQ(acDocManager->sendStringToExecute(doc, L"'PickHeight ", false, true, false),
              Acad::eOk);
    EXPECT_EQ(g_transparentRuns, 0);  // nothing runs until input is asked for
    ads_point p;
    ASSERT_EQ(acedGetPoint(nullptr, L"\n指定第一点:", p), RTNORM);
    EXPECT_EQ(g_transparentRuns, 1);
    EXPECT_EQ(g_picked, line);
    EXPECT_EQ(p[0], 200.0);
    // Not echoed; the interrupted prompt is shown again.
    EXPECT_EQ(out.str(), "指定第一点:\n选择对象:50,0\n指定第一点:200,300\n");

    // A command that is not transparent is refused inside a prompt.
    ASSERT_EQ(acedRegCmds->addCommand(L"TEST", L"Modal", nullptr, ACRX_CMD_MODAL, PickHeight),
              Acad::eOk);
    input.Add(L"'modal");
    input.Add(L"1,1");
    ASSERT_EQ(acedGetPoint(nullptr, L"\n点:", p), RTNORM);
    EXPECT_EQ(g_transparentRuns, 1);
    EXPECT_NE(out.str().find("不能透明使用 Modal 命令。"), std::string::npos);
    EXPECT_EQ(acedRegCmds->removeGroup(L"TEST"), Acad::eOk);
    EXPECT_EQ(kelaz::FindRegisteredCommand(L"PickHeight"), nullptr);
}

TEST(RxApp, UnlockAndSeveralDocumentsAreRegisteredPerApplication) {
    int app = 0;
    int other = 0;
    EXPECT_TRUE(kelaz::ApplicationIsLocked(&app));
    EXPECT_FALSE(kelaz::ApplicationIsMDIAware(&app));
    EXPECT_TRUE(acrxUnlockApplication(&app));
    EXPECT_TRUE(acrxRegisterAppMDIAware(&app));
    EXPECT_FALSE(kelaz::ApplicationIsLocked(&app));
    EXPECT_TRUE(kelaz::ApplicationIsMDIAware(&app));
    EXPECT_TRUE(kelaz::ApplicationIsLocked(&other));
    EXPECT_FALSE(acrxUnlockApplication(nullptr));
}

}  // namespace
