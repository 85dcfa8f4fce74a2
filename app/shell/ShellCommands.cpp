#include "app/shell/ShellCommands.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "app/FilePaths.h"
#include "app/export/ExportFormat.h"
#include "app/shell/FileCommands.h"
#include "app/shell/InputHelp.h"
#include "app/shell/Interrupt.h"
#include "app/shell/Journal.h"
#include "app/shell/Session.h"
#include "app/shell/TerminalInput.h"
#include "host/app/DocManager.h"
#include "host/ed/InputSource.h"

namespace kelaz {

namespace {

struct RunOptions {
    std::string script;
    SessionOptions session;
};

void AddSessionOptions(CLI::App* cmd, SessionOptions& opt, bool outputs) {
    cmd->add_option("--drawing", opt.drawing, "Open this drawing first (a .kdw file)");
    cmd->add_option("--project", opt.project, "The project database the commands read");
    if (!outputs) return;
    cmd->add_option("--save", opt.save, "Save the drawing to this file at the end");
    cmd->add_option("--dxf", opt.dxf, "Export DXF to this file at the end");
    cmd->add_option("--png", opt.png, "Export PNG to this file at the end");
    cmd->add_option("--svg", opt.svg, "Export SVG to this file at the end");
    cmd->add_option("--pdf", opt.pdf, "Export PDF to this file at the end");
}

// Every path of the command line, checked before the session starts, so that a session is never
// run only to find at its end that its drawing cannot be written. Empty when all can be used.
std::string CheckSessionPaths(const SessionOptions& opt) {
    std::string bad;
    if (!opt.drawing.empty() && !(bad = CheckReadPath(opt.drawing, "图形")).empty()) return bad;
    if (!opt.project.empty() && !(bad = CheckReadPath(opt.project, "项目")).empty()) return bad;
    if (!opt.save.empty()) {
        if (!(bad = CheckDrawingName(opt.save)).empty()) {
            if (ExportFormatOf(opt.save))
                bad += "要输出 DXF、PNG、SVG 或 PDF，请用 --dxf、--png、--svg 或 --pdf。";
            return bad;
        }
        if (!(bad = CheckWritePath(opt.save, "图形")).empty()) return bad;
        if (IsForeignFile(opt.save))
            return "文件 " + opt.save + " 不是 kelaz 图形，--save 不会覆盖它。";
    }
    for (const std::string* path : {&opt.dxf, &opt.png, &opt.svg, &opt.pdf}) {
        if (!path->empty() && !(bad = CheckWritePath(*path, "输出文件")).empty()) return bad;
    }
    return bad;
}

// Runs a session on the input; the exit status. A script (countRefusals) that had answers
// refused or commands unknown did not go as written: it says how many and answers 1, after
// writing the outputs of what it did.
int RunSession(InputSource& input, const SessionOptions& options, const std::string& name,
               bool countRefusals = false) {
    if (const std::string bad = CheckSessionPaths(options); !bad.empty()) {
        std::fprintf(stderr, "[kelaz] %s\n", bad.c_str());
        return 2;
    }
    Session session(input, std::cout);
    std::string error;
    if (!session.Open(options, error)) {
        std::fprintf(stderr, "[kelaz] %s\n", error.c_str());
        return 2;
    }
    if (options.journal) {
        switch (session.StartJournal(error)) {
            case Session::JournalStart::kBusy:
            case Session::JournalStart::kRefused:
                std::fprintf(stderr, "[kelaz] %s\n", error.c_str());
                return 2;
            case Session::JournalStart::kCancelled:
                std::fprintf(stderr, "[kelaz] %s\n", error.c_str());
                return 1;
            default:
                break;
        }
    }
    session.Run();
    if (session.StoppedInCommand()) {
        std::fprintf(stderr,
                     "[kelaz] %s 在第 %d 行结束了，这时命令还在等“%s”的回答；什么也没有写出。\n",
                     name.c_str(), session.StoppedAtLine(), session.StoppedAtPrompt().c_str());
        return 1;
    }
    std::vector<std::string> errors;
    const bool written = session.WriteOutputs(options, errors);
    for (const std::string& message : errors) std::fprintf(stderr, "[kelaz] %s\n", message.c_str());
    const int refused = countRefusals ? session.Refusals() : 0;
    if (refused > 0) {
        std::fprintf(stderr, "[kelaz] %s: %d 处输入被拒绝或是未知命令，脚本没有照写的那样执行\n",
                     name.c_str(), refused);
    }
    return written && refused == 0 ? 0 : 1;
}

// Why the script's bytes are no UTF-8 text, or empty when they are.
std::string NotUtf8Text(const std::string& bytes) {
    if (bytes.rfind("\xFF\xFE", 0) == 0 || bytes.rfind("\xFE\xFF", 0) == 0)
        return "是 UTF-16 文本，请存为 UTF-8";
    int line = 1;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        if (c == 0) return "第 " + std::to_string(line) + " 行有 NUL 字节，不是文本";
        if (c == '\n') ++line;
        // The length of the sequence its first byte announces, and the smallest value it may
        // carry (longer forms of shorter sequences are no UTF-8).
        int length = 1;
        unsigned int value = c;
        unsigned int least = 0;
        if (c >= 0xF0 && c <= 0xF4) {
            length = 4, value = c & 0x07u, least = 0x10000;
        } else if (c >= 0xE0) {
            length = 3, value = c & 0x0Fu, least = 0x800;
        } else if (c >= 0xC2 && c <= 0xDF) {
            length = 2, value = c & 0x1Fu, least = 0x80;
        } else if (c >= 0x80) {
            length = 0;
        }
        bool valid = length > 0 && i + static_cast<std::size_t>(length) <= bytes.size();
        for (int k = 1; valid && k < length; ++k) {
            const auto next = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
            valid = (next & 0xC0u) == 0x80u;
            value = (value << 6) | (next & 0x3Fu);
        }
        valid = valid && value >= least && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
        if (!valid) return "第 " + std::to_string(line) + " 行不是 UTF-8 文本";
        i += static_cast<std::size_t>(length);
    }
    return std::string();
}

int RunScript(RunOptions opt) {
    std::error_code ec;
    if (std::filesystem::is_directory(opt.script, ec)) {
        std::fprintf(stderr, "[kelaz] 脚本 %s 是一个目录，不是文件\n", opt.script.c_str());
        return 2;
    }
    std::ifstream file(opt.script, std::ios::binary);
    const std::string text =
        file ? std::string(std::istreambuf_iterator<char>(file), {}) : std::string();
    if (!file || file.bad()) {
        std::fprintf(stderr, "[kelaz] 不能读取脚本 %s\n", opt.script.c_str());
        return 2;
    }
    const std::string why = NotUtf8Text(text);
    if (!why.empty()) {
        std::fprintf(stderr, "[kelaz] 脚本 %s %s\n", opt.script.c_str(), why.c_str());
        return 2;
    }
    InterruptHandling interrupts(InterruptHandling::Mode::kEnd);
    std::istringstream lines(text);
    StreamInput input(lines, FromUtf8(opt.script));
    opt.session.journal = true;
    return RunSession(input, opt.session, opt.script, true);
}

int RunShell(SessionOptions opt) {
    opt.journal = true;
    opt.newDrawingIfMissing = true;
    if (isatty(STDIN_FILENO) == 0) {
        InterruptHandling interrupts(InterruptHandling::Mode::kEnd);
        StreamInput input(std::cin, L"stdin");
        return RunSession(input, opt, "标准输入");
    }
    opt.interactive = true;
    // The line editor reads multibyte text by the character type of the locale; numbers keep
    // the "C" rules.
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) std::setlocale(LC_CTYPE, "");
    const char* home = std::getenv("HOME");
    TerminalInput input(home != nullptr ? std::string(home) + "/.kelaz_history" : std::string());
    std::printf(
        "kelaz shell：HELP 列出命令，QUIT 或 Ctrl-D 结束；回答的写法见 kelaz help input。\n");
    return RunSession(input, opt, "终端");
}

struct RecoverOptions {
    std::string target;  // a drawing, or a journal
    std::string save;
};

int Refuse(const std::string& message, int status) {
    std::fprintf(stderr, "[kelaz] %s\n", message.c_str());
    return status;
}

// Rebuilds a drawing from the journal a session left behind, asking nothing: the journal's own
// lines answer every question the session asked.
int RunRecover(const RecoverOptions& opt) {
    const bool isJournal =
        opt.target.size() > 8 && opt.target.compare(opt.target.size() - 8, 8, ".journal") == 0;
    std::string drawing = isJournal ? std::string() : AbsolutePath(opt.target);
    const std::string path = isJournal ? AbsolutePath(opt.target) : JournalPathFor(drawing);
    if (::access(path.c_str(), F_OK) != 0) {
        return Refuse(opt.target + " 没有会话记录（" + path + "），没有什么要恢复。", 1);
    }
    JournalFile journal;
    std::string why;
    switch (journal.Open(path, false, why)) {
        case JournalFile::OpenStatus::kBusy:
            return Refuse(path + " 正被一个 kelaz 会话使用，不能恢复。", 2);
        case JournalFile::OpenStatus::kFailed:
            return Refuse("不能打开 " + path + "：" + why, 2);
        case JournalFile::OpenStatus::kOpened:
            break;
    }
    std::string bytes;
    JournalContents contents;
    if (!journal.Read(bytes) || !ParseJournal(bytes, contents)) {
        return Refuse(path + " 不是能读的会话记录。", 2);
    }
    if (isJournal) drawing = contents.header.drawing;
    if (drawing != contents.header.drawing) {
        return Refuse(path + " 是 " + contents.header.drawing + " 的会话记录。", 2);
    }
    const JournalCheck check =
        CheckJournal(contents, drawing.empty() ? FileState() : FileStateOf(drawing));
    if (!check.belongs) {
        return Refuse(path + " 不能用来恢复 " + drawing + "：" + ToUtf8(check.why), 2);
    }
    const std::string out = opt.save.empty() ? drawing : opt.save;
    if (out.empty()) return Refuse("无名图形的会话记录要用 --save 指定恢复的图形写到哪里。", 2);

    ScriptedInput nothing;
    std::ostream muted(nullptr);
    Session session(nothing, muted);
    SessionOptions options;
    options.project = contents.header.project;
    std::string error;
    if (!session.Open(options, error)) return Refuse(error + "会话记录用的是这个项目。", 2);
    if (!session.Rebuild(contents, check, error)) return Refuse("不能恢复：" + error, 2);
    {
        FileWriteGuard writing;
        if (!WriteDrawing(*session.Document()->database(), out, error)) {
            return Refuse(error, 1);  // the drawing file's report names the file
        }
    }
    std::fprintf(stderr, "[kelaz] 已按 %s 重放 %d 行，恢复的图形写入 %s。\n", path.c_str(),
                 contents.InputRecords(), out.c_str());
    // Written back to the drawing, the journal has done its work; written elsewhere, the drawing
    // still has it, for its next session to recover or discard.
    if (AbsolutePath(out) == drawing) journal.Remove();
    return 0;
}

}  // namespace

void AddShellCommand(CLI::App& app, int& exitStatus) {
    auto opt = std::make_shared<SessionOptions>();
    CLI::App* shell = app.add_subcommand("shell", "The drafting command line, typed (or piped in)");
    AddSessionOptions(shell, *opt, false);
    shell->callback([opt, &exitStatus] { exitStatus = RunShell(*opt); });
}

void AddRecoverCommand(CLI::App& app, int& exitStatus) {
    auto opt = std::make_shared<RecoverOptions>();
    CLI::App* recover = app.add_subcommand(
        "recover",
        "Rebuild a drawing from the journal of a session that did not end (plan.kdw.journal) "
        "and save it: back to the drawing, or to --save");
    recover->add_option("drawing", opt->target, "The drawing, or the journal itself")->required();
    recover->add_option("--save", opt->save, "Write the recovered drawing here instead");
    recover->callback([opt, &exitStatus] { exitStatus = RunRecover(*opt); });
}

void AddRunCommand(CLI::App& app, int& exitStatus) {
    auto opt = std::make_shared<RunOptions>();
    CLI::App* run = app.add_subcommand(
        "run", "Run a script of command-line answers; optionally save and export at the end");
    run->add_option("script", opt->script, "The script: one answer per line")->required();
    AddSessionOptions(run, opt->session, true);
    run->callback([opt, &exitStatus] { exitStatus = RunScript(*opt); });
}

void AddHelpCommand(CLI::App& app, int& exitStatus) {
    auto topic = std::make_shared<std::string>();
    CLI::App* help = app.add_subcommand("help", "Help on a topic: input");
    help->add_option("topic", *topic, "The topic: input")->required();
    help->callback([topic, &exitStatus] {
        if (*topic == "input") {
            std::printf("%s", kInputHelp);
            exitStatus = 0;
        } else {
            std::fprintf(stderr, "[kelaz] 没有关于“%s”的帮助；可用的主题：input\n", topic->c_str());
            exitStatus = 2;
        }
    });
}

}  // namespace kelaz
