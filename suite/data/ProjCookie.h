#pragma once

// Per-project keepsakes: the recent elevations typed in each elevation box, and the flange
// matching tables (which flange fits a duct of which size).

#include <boost/shared_ptr.hpp>

#include "host/text/Array.h"
#include "host/text/CString.h"

namespace KelAzDataMng {

// The two shapes a flange matching table is kept for.
inline constexpr const wchar_t* kFlangeShapeSquare = L"方形";  // rectangular ducts, by width
inline constexpr const wchar_t* kFlangeShapeRound = L"圆形";   // round ducts, by diameter

struct SFlangeMapInfo {
    double dSize = 0.0;  // duct width or diameter; 0 in the wildcard row
    CString strFlangeName;
    CString strFlangePath;  // table key + "\\风部件\\风法兰\\" + flange name
    bool bAnySize = false;  // the one flange for every size
};

class CLevelHeightCookie {
public:
    // Most recent first as they were stored; empty when none are or no project is open.
    CStringArray GetLevelHeight(const CString& key) const;
    // Replaces the list of the key (the first kMaxEntries are kept); false when no project
    // is open or the key is empty.
    bool SetLevelHeight(const CString& key, const CStringArray& levels);

    static constexpr int kMaxEntries = 20;
};

class CFlanMatchCookie {
public:
    // The rows of one table in stored order; false (rows untouched) for an unknown shape or
    // when the project cannot be read.
    bool GetFlanMatchData(const CString& key, const CString& shape,
                          CArray<SFlangeMapInfo>& rows) const;
    // Replaces the table's rows as one change: on failure the old rows stay.
    bool SetFlanMatchData(const CString& key, const CString& shape,
                          const CArray<SFlangeMapInfo>& rows);
};

class CKelAzProjCookie {
public:
    static CKelAzProjCookie* Instance();
    // Always there; answers nothing while no project is open.
    boost::shared_ptr<CLevelHeightCookie> GetLevelHeightObj();
    // Empty while no project is open.
    boost::shared_ptr<CFlanMatchCookie> GetFlanMatchObj();

private:
    CKelAzProjCookie() = default;
    boost::shared_ptr<CLevelHeightCookie> m_levelHeight;
    boost::shared_ptr<CFlanMatchCookie> m_flanMatch;
};

}  // namespace KelAzDataMng
