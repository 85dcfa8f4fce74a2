#pragma once

// What Ctrl-C (SIGINT) does while a session runs.
//
// At a terminal it is an answer: it cancels the question that waits, as "^C" does. The handler
// only notes it; the system call reading the terminal returns EINTR (the handler is installed
// without SA_RESTART), the line editor gives up the line, and TerminalInput takes the note.
//
// Elsewhere (piped input, kelaz run) it ends the program as the default action does, except in
// the middle of writing a file: a drawing or journal record being written is finished first,
// then the program ends by the same signal.

namespace kelaz {

class InterruptHandling {
public:
    enum class Mode { kCancel, kEnd };
    // Installs the handler for the mode; the previous one comes back at the end.
    explicit InterruptHandling(Mode mode);
    ~InterruptHandling();
    InterruptHandling(const InterruptHandling&) = delete;
    InterruptHandling& operator=(const InterruptHandling&) = delete;
};

// kCancel: whether Ctrl-C was pressed since the last call; the note is taken.
bool TakeInterrupt();
// Whether a Ctrl-C waits to be taken.
bool InterruptPending();

// While one lives, an interrupt that would end the program waits for it to go.
class FileWriteGuard {
public:
    FileWriteGuard();
    ~FileWriteGuard();
    FileWriteGuard(const FileWriteGuard&) = delete;
    FileWriteGuard& operator=(const FileWriteGuard&) = delete;
};

}  // namespace kelaz
