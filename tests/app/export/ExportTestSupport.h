#pragma once

// Helpers for the exporter tests: a scratch folder, running a command, reading a file.

#include <stdlib.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace kelaz::test {

// A fresh folder under the system's temporary folder, removed with its contents at the end.
class ScratchDir {
public:
    explicit ScratchDir(const std::string& name)
        : m_path((std::filesystem::temp_directory_path() / (name + "-XXXXXX")).string()) {
        if (!mkdtemp(m_path.data())) m_path.clear();
    }
    ~ScratchDir() {
        std::error_code ec;
        if (!m_path.empty()) std::filesystem::remove_all(m_path, ec);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    std::string file(const std::string& name) const { return m_path + "/" + name; }
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

// The command's standard output, and its exit status (-1 when it did not exit normally).
inline std::pair<int, std::string> RunCommand(const std::string& command) {
    std::string out;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return {-1, out};
    std::array<char, 4096> buf{};
    for (size_t n = 0; (n = fread(buf.data(), 1, buf.size(), pipe)) > 0;) out.append(buf.data(), n);
    const int raw = pclose(pipe);
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, out};
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace kelaz::test
