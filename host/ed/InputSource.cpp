#include "host/ed/InputSource.h"

namespace kelaz {

ScriptedInput::ScriptedInput(std::initializer_list<const wchar_t*> lines) {
    for (const wchar_t* line : lines) m_lines.emplace_back(line);
}

bool ScriptedInput::NextLine(const CString& /*promptLine*/, CString& line) {
    if (m_next >= static_cast<int>(m_lines.size())) return false;
    line = m_lines[static_cast<size_t>(m_next++)];
    return true;
}

bool StreamInput::NextLine(const CString& /*promptLine*/, CString& line) {
    std::string bytes;
    if (!std::getline(m_in, bytes)) return false;
    ++m_line;
    // Editors on some systems start UTF-8 text with a byte order mark: it is no part of line 1.
    if (m_line == 1 && bytes.rfind("\xEF\xBB\xBF", 0) == 0) bytes.erase(0, 3);
    // A script written on another system may end its lines with CR LF.
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    line = FromUtf8(bytes);
    return true;
}

}  // namespace kelaz
