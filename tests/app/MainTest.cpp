#include <gtest/gtest.h>

#include <string>

#include "tests/support/RunProgram.h"

namespace {

// Whatever escapes the commands is one message and the status of an internal fault, not an
// abort; the variable is the handler's deliberate way in.
TEST(Program, AFaultThatEscapesEveryCommandIsOneMessageAndStatus70) {
    const auto r = kelaz::test::RunCommandLine("KELAZ_TEST_INTERNAL_FAULT='故意的 fault' " +
                                               std::string(KELAZ_EXE) + " --version 2>&1");
    EXPECT_EQ(r.status, 70);
    EXPECT_EQ(r.out, "[kelaz] 内部错误，程序已停止：故意的 fault\n");
    EXPECT_EQ(kelaz::test::RunKelaz("--version").status, 0);
}

}  // namespace
