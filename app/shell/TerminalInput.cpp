#include "app/shell/TerminalInput.h"

#include <editline/readline.h>

#include <cstdio>
#include <cstdlib>

namespace kelaz {

TerminalInput::TerminalInput(std::string historyFile) : m_historyFile(std::move(historyFile)) {
    using_history();
    if (!m_historyFile.empty()) read_history(m_historyFile.c_str());
}

TerminalInput::~TerminalInput() {
    if (!m_historyFile.empty()) write_history(m_historyFile.c_str());
}

bool TerminalInput::NextLine(const CString& promptLine, CString& line) {
    std::fflush(stdout);
    char* typed = readline(ToUtf8(promptLine).c_str());
    if (typed == nullptr) return false;  // Ctrl-D: the cursor stays on the prompt's line
    ++m_line;
    if (*typed != 0) add_history(typed);
    line = FromUtf8(typed);
    std::free(typed);
    return true;
}

}  // namespace kelaz
