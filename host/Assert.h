#pragma once

// Always-on checks of invariants that only a programming error can break (an index past the end
// of an array, a read of an object opened for write). Bad user or file input is never asserted:
// it is reported and refused.

namespace kelaz {
[[noreturn]] void AssertFailed(const char* expr, const char* file, int line, const char* why);
}

#define KELAZ_ASSERT(expr, why)                                        \
    do {                                                               \
        if (!(expr)) ::kelaz::AssertFailed(#expr, __FILE__, __LINE__, why); \
    } while (false)
