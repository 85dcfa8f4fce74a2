#pragma once

// A drawing with a command line whose answers a test gives up front, and whose output it reads.
//   kelaz::test::CommandLineHarness cl({L"0,0", L"A"});
//   acedGetPoint(nullptr, L"\n指定第一点:", p);
//   EXPECT_EQ(cl.Out(), "指定第一点:0,0\n");

#include <initializer_list>
#include <sstream>
#include <string>

#include "host/db/Database.h"
#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"

namespace kelaz::test {

class CommandLineHarness {
public:
    explicit CommandLineHarness(std::initializer_list<const wchar_t*> lines = {})
        : input(lines), editor(&db, &input, &out), scope(editor) {}

    void Type(const wchar_t* line) { input.Add(line); }
    std::string Out() const { return out.str(); }
    void ClearOut() { out.str(""); }

    AcDbDatabase db;
    ScriptedInput input;
    std::ostringstream out;
    Editor editor;

private:
    ScopedEditor scope;
};

}  // namespace kelaz::test
