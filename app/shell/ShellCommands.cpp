#include "app/shell/ShellCommands.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "app/FilePaths.h"
#include "app/export/ExportFormat.h"
#include "app/shell/InputHelp.h"
#include "app/shell/Session.h"
#include "app/shell/TerminalInput.h"
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

// Runs a session on the input; the exit status.
int RunSession(InputSource& input, const SessionOptions& options, const std::string& name) {
    if (const std::string bad = CheckSessionPaths(options); !bad.empty()) {
        std::fprintf(stderr, "[kelaz] %s\n", bad.c_str());
        return 2;
    }
    Session session(input, std::cout);
    std::string error;
    if (!session.Open(options, error)) {
        std::fprintf(stderr, "kelaz: %s\n", error.c_str());
        return 2;
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

int RunScript(const RunOptions& opt) {
    std::ifstream file(opt.script, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "kelaz: cannot read the script %s\n", opt.script.c_str());
        return 2;
    }
    StreamInput input(file, FromUtf8(opt.script));
    return RunSession(input, opt.session, opt.script);
}

int RunShell(const SessionOptions& opt) {
    if (isatty(STDIN_FILENO) == 0) {
        StreamInput input(std::cin, L"stdin");
        return RunSession(input, opt, "standard input");
    }
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

}  // namespace

void AddShellCommand(CLI::App& app, int& exitStatus) {
    auto opt = std::make_shared<SessionOptions>();
    CLI::App* shell = app.add_subcommand("shell", "The drafting command line, typed (or piped in)");
    AddSessionOptions(shell, *opt, false);
    shell->callback([opt, &exitStatus] { exitStatus = RunShell(*opt); });
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
