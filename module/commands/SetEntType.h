#pragma once

// Which component types each command of the suite lays out: learnt from the command table on
// demand, offered in the property bar while the command runs, and reordered so that the small
// type last worked with is offered first next time.

#include <boost/shared_ptr.hpp>
#include <map>
#include <vector>

#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CSetEntType {
public:
    static boost::shared_ptr<CSetEntType> Instance();

    CSetEntType() = default;
    CSetEntType(const CSetEntType&) = default;
    CSetEntType& operator=(const CSetEntType&) = default;
    virtual ~CSetEntType();

    // Makes the command current and shows its types in the property bar; false (the drafter
    // told) when the command table has no types for it.
    bool SetCurrentCmd(const CString& cmd);
    // Ends the current command: remembers the small type worked with and lifts the bar's
    // restriction of small types.
    void Release();

private:
    bool ReadCmdData();
    bool InsertBigEntType(const CString& cmd, const CString& bigType);
    bool InsertSmallEntType(const CString& cmd, const CString& smallTypes);
    bool IsCmdExist(const bool& bShowMsg);
    void UpdateUiOnCurrentCmd();
    void MoveToFirst(const CString& smallType);
    void SetFinishedEntType(const CString& attPath);

    struct Less {
        bool operator()(const CString& a, const CString& b) const { return a.Compare(b) < 0; }
    };

    CString m_strCurCmd;
    static std::map<CString, CString, Less> m_mapEntBigType;
    static std::map<CString, std::vector<CString>, Less> m_mapEntSmallType;
    static boost::shared_ptr<CSetEntType> m_pInstance;
};
