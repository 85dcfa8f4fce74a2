#pragma once

// The guard a command of the suite makes on its first line: from the command table it learns
// whether the command drives the property bar, needs a current attribute and system code, and
// draws block components in a jig; IsValid starts the command, the destructor ends it however
// the command's scope is left.

#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CInitCmd {
public:
    explicit CInitCmd(const CString& cmd);
    CInitCmd(const CInitCmd&) = default;
    CInitCmd& operator=(const CInitCmd&) = default;
    ~CInitCmd();

    // False: the command must stop at once.
    bool IsValid();

private:
    bool UpdateUiOnCmd();
    void Release();
    void RefreshJigEnt();

    CString m_strCmd;
    bool m_bCheckAttribute = true;
    bool m_bUpdateUi = true;
    bool m_bJigDrawBlock = false;
    CString m_strRefreshPath;
    bool m_bValid = false;
};
