#pragma once

// What HELP NAME tells of each command: the questions it asks with their keywords, and an
// example typed on one line. A command gets its help by a row here; a test makes sure that
// every command of the command line has one.

#include <vector>

namespace kelaz {

struct CommandHelpRow {
    const wchar_t* name;
    // The prompts in the order they come, one per line, keywords as the prompts show them.
    const wchar_t* prompts;
    // Typed at the command prompt; "\n" separates lines typed one after another.
    const wchar_t* example;
};

const std::vector<CommandHelpRow>& CommandHelpTable();
// The row of a command (any letter case); null when it has none.
const CommandHelpRow* FindCommandHelp(const wchar_t* name);

}  // namespace kelaz
