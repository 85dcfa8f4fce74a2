#pragma once

// The paths the program is given (drawings, projects, outputs), checked before anything reads or
// writes them: a folder, a named pipe or a file without permission is a numbered report in the
// program's words, never a hang or a crash. The messages are in Chinese, without the "[kelaz] "
// prefix the caller puts in front.

#include <string>

namespace kelaz {

// The suffix of kelaz's drawings.
inline constexpr const char* kDrawingSuffix = ".kdw";

// Empty when path can be read as a file, or is not there at all (the readers say so in their
// own words); otherwise "不能读取<what> PATH：" and the numbered problem.
std::string CheckReadPath(const std::string& path, const char* what);
// Empty when a file at path can be written (replacing one that is there); otherwise "不能写入
// <what> PATH：" and the numbered problem. Symbolic links are followed.
std::string CheckWritePath(const std::string& path, const char* what);

// Empty when the name ends in the drawing's suffix (any letter case); otherwise why it cannot
// be a drawing's name.
std::string CheckDrawingName(const std::string& path);
// Whether something is at path, a link followed: what a write there would replace.
bool FileExists(const std::string& path);
// Whether a file is at path that is not a kelaz drawing: one a save must never overwrite.
bool IsForeignFile(const std::string& path);
// Whether a and b are the same file (through links, or by two names).
bool SameFile(const std::string& a, const std::string& b);

}  // namespace kelaz
