#include "host/db/FileReplace.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

namespace kelaz {

namespace {

// As many links as the system itself follows before it gives up.
constexpr int kMaxLinks = 40;

FileStatus Problem(FileProblem problem, int error = 0) {
    FileStatus status;
    status.problem = problem;
    status.error = error;
    return status;
}

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The suffix of the name, dot included; empty when it has none.
std::string SuffixOf(const std::string& path) {
    const std::string name = NameOf(path);
    const size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot);
}

mode_t NewFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

bool WithoutAnswer(pid_t pid) { return ::kill(pid, 0) != 0 && errno == ESRCH; }

// Reads "PID-N" at the start of rest; the PID when it is there.
bool TemporaryPid(const std::string& rest, pid_t& pid) {
    size_t i = 0;
    long long value = 0;
    while (i < rest.size() && rest[i] >= '0' && rest[i] <= '9' && value < INT_MAX) {
        value = value * 10 + (rest[i] - '0');
        ++i;
    }
    if (i == 0 || value > INT_MAX || i >= rest.size() || rest[i] != '-') return false;
    if (i + 1 >= rest.size() || rest[i + 1] < '0' || rest[i + 1] > '9') return false;
    pid = static_cast<pid_t>(value);
    return pid > 0;
}

// Temporary files of target left by processes that have ended: nothing will ever rename them.
// A write of this process in flight, or of another live process, is left alone.
void RemoveStaleTemporaries(const std::string& target) {
    const std::string folder = FolderOf(target);
    const std::string prefix = NameOf(target) + ".tmp-";
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr) return;
    std::vector<std::string> stale;
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        pid_t pid = 0;
        if (name.compare(0, prefix.size(), prefix) != 0 ||
            !TemporaryPid(name.substr(prefix.size()), pid) || pid == ::getpid()) {
            continue;
        }
        if (WithoutAnswer(pid)) stale.push_back(folder + "/" + name);
    }
    ::closedir(dir);
    for (const std::string& file : stale) {
        struct stat st {};
        if (::lstat(file.c_str(), &st) == 0 && S_ISREG(st.st_mode)) ::unlink(file.c_str());
    }
}

// A new empty file beside target, private until it is complete.
bool CreateTemporary(const std::string& target, std::string& temporary, int& error) {
    static unsigned counter = 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        temporary = target + ".tmp-" + std::to_string(::getpid()) + "-" +
                    std::to_string(counter++) + SuffixOf(target);
        const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd >= 0) {
            ::close(fd);
            return true;
        }
        if (errno != EEXIST) break;
    }
    error = errno;
    return false;
}

bool Flush(const std::string& file) {
    const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool flushed = ::fsync(fd) == 0;
    const int saved = errno;
    ::close(fd);
    errno = saved;
    return flushed;
}

}  // namespace

std::string FileProblemText(const FileStatus& status) {
    const std::string why = std::strerror(status.error);
    switch (status.problem) {
        case FileProblem::kNone:
            break;
        case FileProblem::kMissing:
            return "文件不存在";
        case FileProblem::kDirectory:
            return "这是一个文件夹，不是文件";
        case FileProblem::kNotRegular:
            return status.type == S_IFIFO ? "这是一个命名管道，不是文件"
                                          : "这是一个设备或套接字，不是文件";
        case FileProblem::kUnreadable:
            return "文件无法打开或读取（" + why + "）";
        case FileProblem::kLinkLoop:
            return "符号链接指不到文件（" + why + "）";
        case FileProblem::kNoFolder:
            return "文件夹 " + status.folder + " 不存在";
        case FileProblem::kFolderDenied:
            return "不能在文件夹 " + status.folder + " 中建立文件（" + why + "）";
        case FileProblem::kReadOnly:
            return "文件是只读的";
        case FileProblem::kWriteFailed:
            // A writer that failed on its own says why itself; the system has nothing to add.
            return status.error == 0 ? std::string("写入失败") : "写入失败（" + why + "）";
    }
    return std::string();
}

FileStatus ReadRegularFile(const std::string& path, std::vector<std::uint8_t>& bytes,
                           std::size_t limit) {
    bytes.clear();
    // Without O_NONBLOCK, opening a named pipe waits for a writer that may never come.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        const int error = errno;
        if (error == ENOENT) return Problem(FileProblem::kMissing, error);
        if (error == ELOOP) return Problem(FileProblem::kLinkLoop, error);
        return Problem(FileProblem::kUnreadable, error);
    }
    struct stat st {};
    FileStatus status;
    if (::fstat(fd, &st) != 0) {
        status = Problem(FileProblem::kUnreadable, errno);
    } else if (S_ISDIR(st.st_mode)) {
        status = Problem(FileProblem::kDirectory);
    } else if (!S_ISREG(st.st_mode)) {
        status = Problem(FileProblem::kNotRegular);
        status.type = st.st_mode & S_IFMT;
    }
    std::uint8_t buffer[65536];
    while (status.ok() && bytes.size() < limit) {
        const size_t want = std::min(sizeof buffer, limit - bytes.size());
        const ssize_t got = ::read(fd, buffer, want);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            status = Problem(FileProblem::kUnreadable, errno);
            bytes.clear();
        }
        if (got <= 0) break;
        bytes.insert(bytes.end(), buffer, buffer + got);
    }
    ::close(fd);
    return status;
}

std::string FollowLinks(const std::string& path, FileStatus& status) {
    status = FileStatus();
    std::string current = path;
    for (int i = 0; i < kMaxLinks; ++i) {
        struct stat st {};
        if (::lstat(current.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return current;
        std::string target(static_cast<size_t>(PATH_MAX), '\0');
        const ssize_t n = ::readlink(current.c_str(), target.data(), target.size());
        if (n < 0) return current;
        target.resize(static_cast<size_t>(n));
        current = target.front() == '/' ? target : FolderOf(current) + "/" + target;
    }
    status = Problem(FileProblem::kLinkLoop, ELOOP);
    return path;
}

FileStatus CheckReplaceable(const std::string& path) {
    FileStatus status;
    const std::string target = FollowLinks(path, status);
    if (!status.ok()) return status;
    const std::string folder = FolderOf(target);
    struct stat st {};
    const bool found = ::stat(folder.c_str(), &st) == 0;
    if (!found || !S_ISDIR(st.st_mode)) {
        status = Problem(FileProblem::kNoFolder, found ? ENOTDIR : errno);
        status.folder = folder;
        return status;
    }
    if (::access(folder.c_str(), W_OK | X_OK) != 0) {
        status = Problem(FileProblem::kFolderDenied, errno);
        status.folder = folder;
        return status;
    }
    if (::stat(target.c_str(), &st) != 0) return status;  // a new file
    if (S_ISDIR(st.st_mode)) return Problem(FileProblem::kDirectory);
    if (!S_ISREG(st.st_mode)) {
        status = Problem(FileProblem::kNotRegular);
        status.type = st.st_mode & S_IFMT;
        return status;
    }
    // The mode bits say read-only even to a user the system would let write (root).
    if ((st.st_mode & 0222) == 0) return Problem(FileProblem::kReadOnly, EACCES);
    if (::access(target.c_str(), W_OK) != 0) return Problem(FileProblem::kReadOnly, errno);
    return status;
}

FileStatus ReplaceFile(const std::string& path,
                       const std::function<bool(const std::string& temporary)>& write) {
    FileStatus status = CheckReplaceable(path);
    if (!status.ok()) return status;
    const std::string target = FollowLinks(path, status);
    RemoveStaleTemporaries(target);

    std::string temporary;
    int error = 0;
    if (!CreateTemporary(target, temporary, error)) {
        status = Problem(FileProblem::kFolderDenied, error);
        status.folder = FolderOf(target);
        return status;
    }
    auto fail = [&](int why) {
        ::unlink(temporary.c_str());
        return Problem(FileProblem::kWriteFailed, why);
    };
    if (!write(temporary)) return fail(0);
    if (!Flush(temporary)) return fail(errno);

    struct stat st {};
    if (::stat(target.c_str(), &st) == 0) {
        // Owner and group first: changing them may clear the set-id bits the mode then restores.
        // A user who may not give the file away keeps it as their own.
        if (::chown(temporary.c_str(), st.st_uid, st.st_gid) != 0 &&
            ::chown(temporary.c_str(), static_cast<uid_t>(-1), st.st_gid) != 0) {
            errno = 0;
        }
        if (::chmod(temporary.c_str(), st.st_mode & 07777) != 0) return fail(errno);
    } else if (::chmod(temporary.c_str(), NewFileMode()) != 0) {
        return fail(errno);
    }
    if (::rename(temporary.c_str(), target.c_str()) != 0) return fail(errno);
    return status;
}

}  // namespace kelaz
