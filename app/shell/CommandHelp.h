#pragma once

// The commands of the command line as HELP lists them: every command is registered here with a
// line that says what it does.

#include "host/ed/CommandStack.h"

namespace kelaz {

// Registers a command for the command line and for HELP's list.
Acad::ErrorStatus RegisterCommand(const wchar_t* group, const wchar_t* name,
                                  const wchar_t* description, Adesk::Int32 flags,
                                  AcRxFunctionPtr function);
void RegisterHelpCommand(const wchar_t* group);

}  // namespace kelaz
