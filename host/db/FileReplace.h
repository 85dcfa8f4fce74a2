#pragma once

// Files read and written whole, the way every file of this program is.
//
// Reading opens without waiting (a named pipe must not block the program) and takes only
// regular files. Writing replaces a file: the new contents go to a temporary file beside the
// target and are renamed over it only once complete, so that a failed or killed write never
// leaves half a file under the target's name. The new file keeps the target's permissions (and
// its owner and group where the process may set them); a symbolic link keeps pointing where it
// did, the file it names being the one replaced. A target that may not be written is refused.
//
// A temporary file is named after the file it replaces, "NAME.tmp-PID-N" followed by the
// target's suffix (writers that choose a format by the suffix then choose the right one).
// Those left by a process that no longer runs are removed the next time the target is written.

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kelaz {

enum class FileProblem {
    kNone,
    kMissing,       // reading: no such file
    kDirectory,     // the path names a folder
    kNotRegular,    // a named pipe, a device or a socket
    kUnreadable,    // reading: the file cannot be opened or read
    kLinkLoop,      // the symbolic links do not end anywhere
    kNoFolder,      // writing: the folder does not exist or is not a folder
    kFolderDenied,  // writing: no file can be made in the folder
    kReadOnly,      // writing: the file is there and may not be written
    kWriteFailed,   // writing: the contents could not be written or put in place
};

struct FileStatus {
    FileProblem problem = FileProblem::kNone;
    int error = 0;       // the system's errno, when it said why
    mode_t type = 0;     // kNotRegular: the file's type bits (S_IFIFO, ...)
    std::string folder;  // kNoFolder, kFolderDenied: the folder concerned

    bool ok() const { return problem == FileProblem::kNone; }
};

// What stops the file, as an item of a report ("文件是只读的"); the caller ends the sentence.
std::string FileProblemText(const FileStatus& status);

// Reads the regular file at path, at most limit bytes of it (0: only checks that it can be
// read).
FileStatus ReadRegularFile(const std::string& path, std::vector<std::uint8_t>& bytes,
                           std::size_t limit);

// The file a write to path lands on: path with the symbolic links of its last part followed.
std::string FollowLinks(const std::string& path, FileStatus& status);

// Whether path can be replaced, without writing anything.
FileStatus CheckReplaceable(const std::string& path);

// Replaces the file at path with what write puts in the temporary file it is given. write
// answers false when it failed (kWriteFailed then carries no errno: the writer knows why). No
// message of this function names the temporary file.
FileStatus ReplaceFile(const std::string& path,
                       const std::function<bool(const std::string& temporary)>& write);

}  // namespace kelaz
