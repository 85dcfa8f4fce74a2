#include "app/shell/Interrupt.h"

#include <signal.h>

namespace kelaz {

namespace {

volatile sig_atomic_t g_mode = 0;  // 0 none, 1 cancel, 2 end
volatile sig_atomic_t g_interrupted = 0;
volatile sig_atomic_t g_writing = 0;
volatile sig_atomic_t g_pending = 0;
struct sigaction g_previous;

void EndBySignal() {
    signal(SIGINT, SIG_DFL);
    raise(SIGINT);
}

void OnInterrupt(int /*signo*/) {
    if (g_mode == 1) {
        g_interrupted = 1;
    } else if (g_writing > 0) {
        g_pending = 1;
    } else {
        EndBySignal();
    }
}

}  // namespace

InterruptHandling::InterruptHandling(Mode mode) {
    g_mode = mode == Mode::kCancel ? 1 : 2;
    g_interrupted = 0;
    g_pending = 0;
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;  // no SA_RESTART: a read waiting at the terminal returns
    sigaction(SIGINT, &action, &g_previous);
}

InterruptHandling::~InterruptHandling() {
    sigaction(SIGINT, &g_previous, nullptr);
    g_mode = 0;
}

bool TakeInterrupt() {
    if (g_interrupted == 0) return false;
    g_interrupted = 0;
    return true;
}

FileWriteGuard::FileWriteGuard() { g_writing = g_writing + 1; }

FileWriteGuard::~FileWriteGuard() {
    g_writing = g_writing - 1;
    if (g_writing == 0 && g_pending != 0 && g_mode == 2) EndBySignal();
}

}  // namespace kelaz
