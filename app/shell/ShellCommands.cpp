#include "app/shell/ShellCommands.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

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

// Runs a session on the input; the exit status.
int RunSession(InputSource& input, const SessionOptions& options, const std::string& name) {
    Session session(input, std::cout);
    std::string error;
    if (!session.Open(options, error)) {
        std::fprintf(stderr, "kelaz: %s\n", error.c_str());
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
                     "kelaz: %s ended at line %d while a command waited for an answer to \"%s\"; "
                     "nothing was written\n",
                     name.c_str(), session.StoppedAtLine(), session.StoppedAtPrompt().c_str());
        return 1;
    }
    if (!session.WriteOutputs(options, error)) {
        std::fprintf(stderr, "kelaz: %s", error.c_str());
        return 1;
    }
    return 0;
}

int RunScript(RunOptions opt) {
    std::ifstream file(opt.script, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "kelaz: cannot read the script %s\n", opt.script.c_str());
        return 2;
    }
    InterruptHandling interrupts(InterruptHandling::Mode::kEnd);
    StreamInput input(file, FromUtf8(opt.script));
    opt.session.journal = true;
    return RunSession(input, opt.session, opt.script);
}

int RunShell(SessionOptions opt) {
    opt.journal = true;
    opt.newDrawingIfMissing = true;
    if (isatty(STDIN_FILENO) == 0) {
        InterruptHandling interrupts(InterruptHandling::Mode::kEnd);
        StreamInput input(std::cin, L"stdin");
        return RunSession(input, opt, "standard input");
    }
    opt.interactive = true;
    // The line editor reads multibyte text by the character type of the locale; numbers keep
    // the "C" rules.
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) std::setlocale(LC_CTYPE, "");
    const char* home = std::getenv("HOME");
    TerminalInput input(home != nullptr ? std::string(home) + "/.kelaz_history" : std::string());
    std::printf(
        "kelaz shell: HELP lists the commands, QUIT or Ctrl-D ends; answers are "
        "described by kelaz help input.\n");
    return RunSession(input, opt, "the terminal");
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
    if (!session.Open(options, error)) return Refuse("记录用的项目打不开：" + error, 2);
    if (!session.Rebuild(contents, check, error)) return Refuse("不能恢复：" + error, 2);
    {
        FileWriteGuard writing;
        if (!WriteDrawing(*session.Document()->database(), out, error)) {
            return Refuse("恢复的图形写不进 " + out + "：" + error, 1);
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
            std::fprintf(stderr, "kelaz: no help on \"%s\"; the topics are: input\n",
                         topic->c_str());
            exitStatus = 2;
        }
    });
}

}  // namespace kelaz
