#include "app/FilePaths.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <vector>

#include "host/db/DrawingFile.h"
#include "host/db/FileReplace.h"
#include "host/text/CString.h"

namespace kelaz {

namespace {

std::string Report(const char* action, const char* what, const std::string& path,
                   const FileStatus& status) {
    return std::string(action) + what + " " + path + "：\n  1. " + FileProblemText(status) + "。";
}

}  // namespace

std::string CheckReadPath(const std::string& path, const char* what) {
    std::vector<std::uint8_t> none;
    const FileStatus status = ReadRegularFile(path, none, 0);
    if (status.ok() || status.problem == FileProblem::kMissing) return std::string();
    return Report("不能读取", what, path, status);
}

std::string CheckWritePath(const std::string& path, const char* what) {
    const FileStatus status = CheckReplaceable(path);
    return status.ok() ? std::string() : Report("不能写入", what, path, status);
}

std::string CheckDrawingName(const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const size_t dot = name.rfind('.');
    std::string suffix = dot == std::string::npos ? std::string() : name.substr(dot);
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (dot != 0 && suffix == kDrawingSuffix) return std::string();
    return "“" + path + "”不是图形文件的名字：图形文件的名字以 " + kDrawingSuffix + " 结尾。";
}

bool FileExists(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0;
}

bool IsForeignFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && !IsDrawingFile(FromUtf8(path));
}

bool SameFile(const std::string& a, const std::string& b) {
    struct stat sa {
    }, sb{};
    return ::stat(a.c_str(), &sa) == 0 && ::stat(b.c_str(), &sb) == 0 && sa.st_dev == sb.st_dev &&
           sa.st_ino == sb.st_ino;
}

}  // namespace kelaz
