#include "host/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace kelaz {

void AssertFailed(const char* expr, const char* file, int line, const char* why) {
    std::fprintf(stderr, "kelaz: internal error at %s:%d: %s (%s)\n", file, line, why, expr);
    std::abort();
}

}  // namespace kelaz
