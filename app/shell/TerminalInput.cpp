#include "app/shell/TerminalInput.h"

#include <editline/readline.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace kelaz {

TerminalInput::TerminalInput(std::string historyFile) : m_historyFile(std::move(historyFile)) {
    // Read when the line editor starts, which using_history does.
    rl_catch_signals = 0;
    using_history();
    if (!m_historyFile.empty()) read_history(m_historyFile.c_str());
}

TerminalInput::~TerminalInput() {
    if (!m_historyFile.empty()) write_history(m_historyFile.c_str());
}

bool TerminalInput::NextLine(const CString& promptLine, CString& line) {
    m_interrupted = false;
    std::fflush(stdout);
    const std::string prompt = ToUtf8(promptLine);
    // Ctrl-C pressed while no question waited (a command at work) cancels the next question.
    if (TakeInterrupt()) {
        std::fputs(prompt.c_str(), stdout);
    } else {
        errno = 0;
        char* typed = readline(prompt.c_str());
        // A wait broken by the reminder alarm of a Ctrl-C already taken is no end of input.
        while (typed == nullptr && errno == EINTR && !InterruptPending()) {
            errno = 0;
            typed = readline(prompt.c_str());
        }
        if (typed != nullptr) {
            ++m_line;
            if (*typed != 0) add_history(typed);
            line = FromUtf8(typed);
            std::free(typed);
            return true;
        }
        // Ctrl-D: the cursor stays on the prompt's line.
        if (!TakeInterrupt()) return false;
    }
    // What was typed is given up; the line ends as if Enter had been pressed.
    std::fputs("^C\n", stdout);
    std::fflush(stdout);
    ++m_line;
    m_interrupted = true;
    line = L"^C";
    return true;
}

}  // namespace kelaz
