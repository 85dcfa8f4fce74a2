#pragma once

// Runs the kelaz program as a user would and captures what it prints.

#include <sys/wait.h>
#include <array>
#include <cstdio>
#include <string>

namespace kelaz::test {

struct ProgramResult {
    int status = -1;
    std::string out;  // standard output and standard error, interleaved
};

inline ProgramResult RunCommandLine(const std::string& cmd) {
    ProgramResult r;
    FILE* pipe = popen(cmd.c_str(), "r");
    if (!pipe) return r;
    std::array<char, 4096> buf{};
    size_t n = 0;
    while ((n = fread(buf.data(), 1, buf.size(), pipe)) > 0) r.out.append(buf.data(), n);
    const int raw = pclose(pipe);
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return r;
}

inline ProgramResult RunKelaz(const std::string& args) {
    return RunCommandLine(std::string(KELAZ_EXE) + " " + args + " 2>&1");
}

// For what might wait for ever when broken: stopped after the time, with status 124.
inline ProgramResult RunKelazWithin(int seconds, const std::string& args) {
    return RunCommandLine("timeout " + std::to_string(seconds) + " " + KELAZ_EXE + " " + args +
                          " 2>&1");
}

}  // namespace kelaz::test
