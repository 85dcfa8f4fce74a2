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
    // A script written on another system may end its lines with CR LF.
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    line = FromUtf8(bytes);
    return true;
}

}  // namespace kelaz
