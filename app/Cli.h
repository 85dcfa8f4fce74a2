#pragma once

namespace kelaz {

// The kelaz program: parses the command line and runs one command; answers the exit status.
int RunMain(int argc, char** argv);

}  // namespace kelaz
