#include "app/shell/Interrupt.h"

#include <signal.h>
#include <sys/time.h>

namespace kelaz {

namespace {

volatile sig_atomic_t g_mode = 0;  // 0 none, 1 cancel, 2 end
volatile sig_atomic_t g_interrupted = 0;
volatile sig_atomic_t g_writing = 0;
volatile sig_atomic_t g_pending = 0;
struct sigaction g_previous;
struct sigaction g_previousAlarm;

// A Ctrl-C that lands after the terminal's reader looked for one but before it waits for a key
// would be lost: until it is taken, an alarm every tenth of a second interrupts that wait again.
void Remind(bool on) {
    itimerval timer{};
    if (on) {
        timer.it_value.tv_usec = 100000;
        timer.it_interval.tv_usec = 100000;
    }
    setitimer(ITIMER_REAL, &timer, nullptr);
}

void OnAlarm(int /*signo*/) {}

void EndBySignal() {
    signal(SIGINT, SIG_DFL);
    raise(SIGINT);
}

void OnInterrupt(int /*signo*/) {
    if (g_mode == 1) {
        g_interrupted = 1;
        Remind(true);
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
    if (mode == Mode::kCancel) {
        action.sa_handler = OnAlarm;
        sigaction(SIGALRM, &action, &g_previousAlarm);
    }
}

InterruptHandling::~InterruptHandling() {
    if (g_mode == 1) {
        Remind(false);
        sigaction(SIGALRM, &g_previousAlarm, nullptr);
    }
    sigaction(SIGINT, &g_previous, nullptr);
    g_mode = 0;
}

bool InterruptPending() { return g_interrupted != 0; }

bool TakeInterrupt() {
    if (g_interrupted == 0) return false;
    g_interrupted = 0;
    Remind(false);
    return true;
}

FileWriteGuard::FileWriteGuard() { g_writing = g_writing + 1; }

FileWriteGuard::~FileWriteGuard() {
    g_writing = g_writing - 1;
    if (g_writing == 0 && g_pending != 0 && g_mode == 2) EndBySignal();
}

}  // namespace kelaz
