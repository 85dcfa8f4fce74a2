#pragma once

// The text of `kelaz help input`: the grammar of what is typed at kelaz's command line, the same
// for `kelaz shell` and for the scripts of `kelaz run`.

namespace kelaz {

extern const char* const kInputHelp;

}  // namespace kelaz
