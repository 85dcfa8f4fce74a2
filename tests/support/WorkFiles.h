#pragma once

// Files of a test that runs the program: a fresh folder of its own, and whole files written and
// read back as bytes.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace kelaz::test {

// An empty folder of that name under the test's temporary folder (emptied when it was there).
inline std::filesystem::path WorkDir(const std::string& name) {
    const std::filesystem::path dir = std::filesystem::path(::testing::TempDir()) / name;
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

inline void Write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string Read(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace kelaz::test
