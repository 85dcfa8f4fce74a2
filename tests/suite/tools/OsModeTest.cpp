#include <gtest/gtest.h>

#include <sstream>

#include "host/db/AdsDef.h"
#include "host/db/Database.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/InputSource.h"
#include "suite/tools/OsMode.h"

TEST(OsMode, SnapsAreOnForTheCommandAndGivenBackAfter) {
    AcDbDatabase db;
    kelaz::ScriptedInput input;
    std::ostringstream out;
    kelaz::Editor editor(&db, &input, &out);
    kelaz::ScopedEditor scope(editor);
    for (const int before : {0, 1 | COsMode::kSuspended, 4}) {
        editor.SetOsMode(before);
        {
            COsMode snap(1);
            const int during = editor.OsMode();
            EXPECT_EQ(during & COsMode::kSuspended, 0);
            EXPECT_NE(during, 0);
            // A drafter who had snaps keeps the same ones.
            if ((before & ~COsMode::kSuspended) != 0) {
                EXPECT_EQ(during, before & ~COsMode::kSuspended);
            }
            resbuf value;
            ASSERT_EQ(acedGetVar(L"OSMODE", &value), RTNORM);
            EXPECT_EQ(value.resval.rint, during);
        }
        EXPECT_EQ(editor.OsMode(), before);
    }
    editor.SetOsMode(39);
    {
        COsMode off(0);
        EXPECT_EQ(editor.OsMode(), 39 | COsMode::kSuspended);
    }
    EXPECT_EQ(editor.OsMode(), 39);
}
