#include "host/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace kelaz {

// The second line is for the program's developers: the check as written in the source, with its
// note, quoted as it is.
void AssertFailed(const char* expr, const char* file, int line, const char* why) {
    std::fprintf(stderr, "[kelaz] 内部错误，程序已停止：%s 第 %d 行的检查没有通过。\n  %s（%s）\n",
                 file, line, why, expr);
    std::abort();
}

}  // namespace kelaz
