#include "app/shell/Journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <boost/crc.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "app/shell/Interrupt.h"

namespace kelaz {

namespace {

namespace fs = std::filesystem;

constexpr const char* kMagic = "kelaz-journal";

std::string Escape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '\\':
                out += "\\\\";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            default:
                out += c;
        }
    }
    return out;
}

std::string Unescape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char next = text[++i];
        out += next == 't' ? '\t' : next == 'n' ? '\n' : next == 'r' ? '\r' : next;
    }
    return out;
}

std::string Escape(const CString& text) { return Escape(ToUtf8(text)); }

// The first blank-separated word of text from pos; pos moves past it and the blank after it.
std::string Word(const std::string& text, size_t& pos) {
    const size_t end = std::min(text.find(' ', pos), text.size());
    std::string word = text.substr(pos, end - pos);
    pos = end < text.size() ? end + 1 : end;
    return word;
}

std::string FormatState(const FileState& state) {
    char crc[16];
    std::snprintf(crc, sizeof crc, "%08x", state.crc);
    return std::to_string(state.size) + " " + crc;
}

bool ParseState(const std::string& text, size_t& pos, FileState& state) {
    const std::string size = Word(text, pos);
    const std::string crc = Word(text, pos);
    if (size.empty() || crc.size() != 8) return false;
    char* end = nullptr;
    state.size = std::strtoull(size.c_str(), &end, 10);
    if (*end != 0) return false;
    state.crc = static_cast<std::uint32_t>(std::strtoul(crc.c_str(), &end, 16));
    if (*end != 0) return false;
    state.exists = true;
    return true;
}

bool ParseHeaderLine(const std::string& line, JournalHeader& header) {
    size_t pos = 0;
    const std::string key = Word(line, pos);
    const std::string rest = line.substr(pos);
    if (key == "started") {
        header.started = Word(line, pos);
        header.pid = std::strtol(line.c_str() + pos, nullptr, 10);
    } else if (key == "drawing") {
        header.drawing = Unescape(rest);
    } else if (key == "base") {
        if (rest == "new") {
            header.base = FileState();
        } else if (!ParseState(line, pos, header.base)) {
            return false;
        }
    } else if (key == "project") {
        header.project = rest == "default" ? std::string() : Unescape(rest);
    } else if (key == "setting" || key == "level") {
        // Fields separated by tabs: keys and values may hold blanks.
        ProjectSessionRow row;
        std::vector<std::string> fields;
        for (size_t start = 0;;) {
            const size_t tab = rest.find('\t', start);
            fields.push_back(Unescape(rest.substr(start, tab - start)));
            if (tab == std::string::npos) break;
            start = tab + 1;
        }
        if (key == "setting" && fields.size() == 2) {
            row = {ProjectSessionRow::Table::kSetting, FromUtf8(fields[0]), 0, FromUtf8(fields[1])};
        } else if (key == "level" && fields.size() == 3) {
            row = {ProjectSessionRow::Table::kLevelHistory, FromUtf8(fields[0]),
                   std::strtoll(fields[1].c_str(), nullptr, 10), FromUtf8(fields[2])};
        } else {
            return false;
        }
        header.projectState.push_back(row);
    }
    // Other keys are left to later formats.
    return true;
}

bool ParseRecord(const std::string& line, JournalRecord& record) {
    if (line.empty()) return false;
    const char kind = line[0];
    const std::string rest = line.size() > 2 ? line.substr(2) : std::string();
    size_t pos = 2;
    switch (kind) {
        case 'M':
            record.kind = JournalRecord::Kind::kMode;
            record.interactive = rest == "1";
            return true;
        case 'L':
            record.kind = JournalRecord::Kind::kLine;
            record.text = FromUtf8(Unescape(rest));
            return line.size() >= 2;
        case 'C':
            record.kind = JournalRecord::Kind::kInterrupt;
            return true;
        case 'E':
            record.kind = JournalRecord::Kind::kEnd;
            return true;
        case 'P':
            record.kind = JournalRecord::Kind::kSaveBegins;
            record.path = Unescape(rest);
            return true;
        case 'S':
            record.kind = JournalRecord::Kind::kSaved;
            if (!ParseState(line, pos, record.saved)) return false;
            record.path = Unescape(line.substr(pos));
            return true;
        case 'F':
            record.kind = JournalRecord::Kind::kSaveFailed;
            record.path = Unescape(rest);
            return true;
        case 'K':
            record.kind = JournalRecord::Kind::kFact;
            record.path = Unescape(rest);
            return true;
        default:
            return false;
    }
}

}  // namespace

FileState FileStateOf(const std::string& path) {
    FileState state;
    std::ifstream in(path, std::ios::binary);
    if (!in) return state;
    boost::crc_32_type crc;
    char buf[1 << 16];
    while (in.read(buf, sizeof buf) || in.gcount() > 0) {
        crc.process_bytes(buf, static_cast<size_t>(in.gcount()));
        state.size += static_cast<std::uint64_t>(in.gcount());
    }
    state.exists = true;
    state.crc = crc.checksum();
    return state;
}

int JournalContents::InputRecords() const {
    int n = 0;
    for (const JournalRecord& r : records) {
        n += r.kind == JournalRecord::Kind::kLine || r.kind == JournalRecord::Kind::kInterrupt ||
             r.kind == JournalRecord::Kind::kEnd;
    }
    return n;
}

std::string FormatJournalHeader(const JournalHeader& header) {
    std::string out = std::string(kMagic) + " " + std::to_string(kJournalFormat) + "\n";
    out += "started " + header.started + " " + std::to_string(header.pid) + "\n";
    out += "drawing " + Escape(header.drawing) + "\n";
    out += "base " + (header.base.exists ? FormatState(header.base) : std::string("new")) + "\n";
    // A project's path is absolute, so it is never the word "default".
    out += "project " + (header.project.empty() ? std::string("default") : Escape(header.project)) +
           "\n";
    for (const ProjectSessionRow& row : header.projectState) {
        if (row.table == ProjectSessionRow::Table::kSetting) {
            out += "setting " + Escape(row.key) + "\t" + Escape(row.value) + "\n";
        } else {
            out += "level " + Escape(row.key) + "\t" + std::to_string(row.ord) + "\t" +
                   Escape(row.value) + "\n";
        }
    }
    return out + "begin\n";
}

std::string FormatJournalRecord(const JournalRecord& record) {
    switch (record.kind) {
        case JournalRecord::Kind::kMode:
            return record.interactive ? "M 1\n" : "M 0\n";
        case JournalRecord::Kind::kLine:
            return "L " + Escape(record.text) + "\n";
        case JournalRecord::Kind::kInterrupt:
            return "C\n";
        case JournalRecord::Kind::kEnd:
            return "E\n";
        case JournalRecord::Kind::kSaveBegins:
            return "P " + Escape(record.path) + "\n";
        case JournalRecord::Kind::kSaved:
            return "S " + FormatState(record.saved) + " " + Escape(record.path) + "\n";
        case JournalRecord::Kind::kSaveFailed:
            return "F " + Escape(record.path) + "\n";
        case JournalRecord::Kind::kFact:
            return "K " + Escape(record.path) + "\n";
    }
    return std::string();
}

bool ParseJournal(const std::string& bytes, JournalContents& contents) {
    contents = JournalContents();
    size_t pos = 0;
    bool inHeader = true;
    bool first = true;
    // Only complete lines: the last one may have been cut off.
    for (size_t end = bytes.find('\n'); end != std::string::npos;
         pos = end + 1, end = bytes.find('\n', pos)) {
        const std::string line = bytes.substr(pos, end - pos);
        if (first) {
            first = false;
            if (line != std::string(kMagic) + " " + std::to_string(kJournalFormat)) return false;
            continue;
        }
        if (inHeader) {
            if (line == "begin") {
                inHeader = false;
                contents.completeSize = end + 1;
            } else if (!ParseHeaderLine(line, contents.header)) {
                return false;
            }
            continue;
        }
        JournalRecord record;
        // A record that does not read is where the journal stops being trusted.
        if (!ParseRecord(line, record)) break;
        contents.records.push_back(std::move(record));
        contents.completeSize = end + 1;
    }
    return !inHeader;
}

std::string JournalPathFor(const std::string& absoluteDrawing) {
    return absoluteDrawing + ".journal";
}

std::string JournalBasePath(const std::string& journalPath) { return journalPath + "-base"; }

std::string UntitledJournalFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && *state == '/') return std::string(state) + "/kelaz";
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == 0) return std::string();
    return std::string(home) + "/.local/state/kelaz";
}

JournalCheck CheckJournal(const JournalContents& contents, const FileState& current) {
    JournalCheck check;
    const JournalHeader& header = contents.header;
    // What the session left in the drawing's file: its last save there, or a save it died in
    // (whose file may be the old one or the new one: it is replaced in one step).
    const JournalRecord* lastSave = nullptr;
    bool diedSaving = false;
    for (const JournalRecord& r : contents.records) {
        if (header.drawing.empty() || r.path != header.drawing) continue;
        diedSaving = r.kind == JournalRecord::Kind::kSaveBegins;
        if (r.kind == JournalRecord::Kind::kSaved) lastSave = &r;
    }
    const std::string journal = JournalPathFor(header.drawing);
    if (header.drawing.empty()) {
        check.belongs = true;
    } else if (current == header.base) {
        check.belongs = true;
        check.basePath = header.base.exists ? header.drawing : std::string();
    } else if (diedSaving || (lastSave != nullptr && current == lastSave->saved)) {
        // The file is the session's own work; the session started from the copy kept of the
        // file before its first save over it.
        check.belongs = true;
        if (header.base.exists) {
            check.basePath = JournalBasePath(journal);
            if (!(FileStateOf(check.basePath) == header.base)) {
                check.belongs = false;
                check.why = FormatText(L"会话开始时的图形（%s）已经不在了。",
                                       FromUtf8(check.basePath).GetString());
            }
        }
    } else {
        check.why = L"图形文件在那次会话之后被改过。";
    }
    return check;
}

JournalFile::~JournalFile() { Close(); }

JournalFile::OpenStatus JournalFile::Open(const std::string& path, bool exclusive,
                                          std::string& error) {
    Close();
    const int flags = O_RDWR | O_CREAT | O_CLOEXEC | (exclusive ? O_EXCL : 0);
    const int fd = ::open(path.c_str(), flags, 0644);
    if (fd < 0) {
        error = std::strerror(errno);
        return OpenStatus::kFailed;
    }
    // A running session holds the lock; the system lets go of it when the process dies however
    // it dies, so an unlocked journal is one left behind.
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int why = errno;
        ::close(fd);
        error = std::strerror(why);
        return why == EWOULDBLOCK ? OpenStatus::kBusy : OpenStatus::kFailed;
    }
    m_fd = fd;
    m_path = path;
    return OpenStatus::kOpened;
}

bool JournalFile::Read(std::string& bytes) const {
    bytes.clear();
    if (m_fd < 0) return false;
    char buf[1 << 16];
    for (off_t at = 0;;) {
        const ssize_t n = ::pread(m_fd, buf, sizeof buf, at);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (n == 0) return true;
        bytes.append(buf, static_cast<size_t>(n));
        at += n;
    }
}

bool JournalFile::WriteAll(const std::string& bytes) {
    if (m_fd < 0) return false;
    FileWriteGuard writing;
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t n = ::write(m_fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return !m_sync || ::fdatasync(m_fd) == 0;
}

bool JournalFile::Start(const JournalHeader& header) {
    if (m_fd < 0 || ::ftruncate(m_fd, 0) != 0 || ::lseek(m_fd, 0, SEEK_SET) != 0) return false;
    // The copy of an earlier session's base belongs to the journal being replaced.
    std::error_code ignored;
    fs::remove(JournalBasePath(m_path), ignored);
    const bool sync = m_sync;
    m_sync = true;
    const bool ok = WriteAll(FormatJournalHeader(header));
    m_sync = sync;
    return ok;
}

bool JournalFile::Continue(std::uint64_t completeSize) {
    return m_fd >= 0 && ::ftruncate(m_fd, static_cast<off_t>(completeSize)) == 0 &&
           ::lseek(m_fd, 0, SEEK_END) >= 0;
}

bool JournalFile::Append(const JournalRecord& record) {
    // One write per record: a process killed between two leaves whole records behind.
    return WriteAll(FormatJournalRecord(record));
}

void JournalFile::Remove() {
    if (m_fd < 0) return;
    std::error_code ignored;
    fs::remove(JournalBasePath(m_path), ignored);
    ::unlink(m_path.c_str());
    Close();
}

void JournalFile::Close() {
    if (m_fd >= 0) ::close(m_fd);
    m_fd = -1;
}

}  // namespace kelaz
