#pragma once

// The command table of the open project: for each command of the suite, what it lays out (big
// type and small types of the property bar) and what its start-up has to check.

#include <vector>

#include "host/text/CString.h"

struct CmdData {
    CString strCmdName;  // empty when the table has no such command
    bool bJigDrawBlock = false;
    bool bCheckAttribute = false;
    bool bUpdateUi = false;
    CString strBigType;
    CString strSmallTypes;  // separated by ','
    CString strRefreshPath;
    std::vector<CString> vecExtra;
    CString strDescription;  // what the command does, for people
};

class CCmdDataReader {
public:
    static CCmdDataReader* Instance();

    // The record of a command; command names are matched ignoring ASCII case, as the host
    // matches typed commands. An empty record when the command or the project is missing.
    CmdData GetCmdData(const CString& cmd) const;
    // Every command in table order; false when no project is open.
    bool GetAllCmdData(std::vector<CmdData>& commands) const;

private:
    CCmdDataReader() = default;
};
