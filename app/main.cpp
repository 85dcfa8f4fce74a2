#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include "app/Cli.h"

namespace {

// Status of a fault in the program itself, as sysexits names it (EX_SOFTWARE).
constexpr int kInternalFault = 70;

}  // namespace

// Everything the commands did not turn into a message of their own ends here, as one clear
// message and a status of its own, never as an abort.
int main(int argc, char** argv) {
    try {
        // The one way to reach this handler on purpose, for its test.
        if (const char* fault = std::getenv("KELAZ_TEST_INTERNAL_FAULT")) {
            throw std::runtime_error(fault);
        }
        return kelaz::RunMain(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "[kelaz] 内部错误，程序已停止：%s\n", e.what());
    } catch (...) {
        std::fprintf(stderr, "[kelaz] 内部错误，程序已停止。\n");
    }
    return kInternalFault;
}
