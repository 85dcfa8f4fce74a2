#include "app/Cli.h"

#include <CLI/CLI.hpp>
#include <clocale>
#include <cstdio>

#include "app/CalcCommand.h"
#include "app/DrawingCommands.h"
#include "app/ProjectCommand.h"
#include "app/Version.h"
#include "app/shell/ShellCommands.h"

namespace kelaz {

int RunMain(int argc, char** argv) {
    // Numbers are read and written with '.' whatever the user's locale says.
    std::setlocale(LC_ALL, "C");

    CLI::App app{"kelaz: layout of building-services components (HVAC, water, fire, electrical)",
                 "kelaz"};
    app.set_version_flag("--version", std::string("kelaz ") + kVersion);
    int exitStatus = 0;
    AddCalcCommands(app, exitStatus);
    AddDrawingCommands(app, exitStatus);
    AddShellCommand(app, exitStatus);
    AddRunCommand(app, exitStatus);
    AddRecoverCommand(app, exitStatus);
    AddHelpCommand(app, exitStatus);
    AddProjectCommands(app, exitStatus);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        const int code = app.exit(e);
        return code == 0 ? 0 : 2;  // usage errors
    }
    if (argc <= 1) std::printf("%s", app.help().c_str());
    return exitStatus;
}

}  // namespace kelaz
