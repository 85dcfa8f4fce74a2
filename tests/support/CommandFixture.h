#pragma once

// A default project and an empty drawing as the working database, a recording message sink and
// a fresh property bar: what a command of the suite finds when it starts.

#include <sqlite3.h>

#include <string>

#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/ui/MessageBox.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/SqliteDb.h"
#include "tests/support/ProjectFixture.h"

namespace kelaz::test {

class CommandTest : public ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        IFaceBarCtrl::Reset();
        acdbHostApplicationServices()->setWorkingDatabase(&db);
    }
    void TearDown() override {
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        IFaceBarCtrl::Reset();
        ProjectTest::TearDown();
    }
    // Runs SQL on the project file and opens it again, for tables the program never edits.
    void EditProject(const std::string& sql) {
        KelAzDataMng::CloseProject();
        EditProjectFile(m_file, [&](SqliteDb& file) {
            ASSERT_TRUE(file.Exec(sql.c_str())) << file.LastError();
        });
        Reopen();
    }
    std::vector<CString> Texts() const {
        std::vector<CString> out;
        for (const auto& r : sink.Records()) out.push_back(r.text);
        return out;
    }

    AcDbDatabase db;
    RecordingMessageSink sink;
    ScopedMessageSink install{sink};
};

}  // namespace kelaz::test
