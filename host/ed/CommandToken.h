#pragma once

// The tokens of an acedCommand call, as they are recorded.

#include <vector>

#include "host/db/AdsDef.h"
#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

namespace kelaz {

// One token of an acedCommand call, as given.
struct CommandToken {
    int type = RTSTR;
    CString text;       // RTSTR
    AcGePoint3d point;  // RT3DPOINT, RTPOINT (z 0)
    double real = 0.0;  // RTREAL
    int integer = 0;    // RTSHORT, RTLONG
    AcDbObjectId id;    // RTENAME

    static CommandToken Str(const CString& text);
    static CommandToken Point(const AcGePoint3d& point);
};

// The token as a person would type it: "_.arc", "0,0,0", "\\".
CString FormatToken(const CommandToken& token);
// A recorded call as one line: its tokens separated by blanks.
CString FormatRecord(const std::vector<CommandToken>& tokens);

using CommandRecord = std::vector<CommandToken>;

}  // namespace kelaz
