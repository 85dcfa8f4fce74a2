#include "app/commands/LayoutPlacement.h"

#include <algorithm>

#include "host/ed/Answer.h"
#include "host/ed/EditorInput.h"
#include "module/commands/InitCmd.h"
#include "module/entry/DispGlobaFun.h"
#include "module/queries/DealPunEntity.h"
#include "module/queries/KelAzSelectFun.h"
#include "suite/bar/FaceBarCtrl.h"

namespace kelaz {

namespace {

// How many occupied points are listed one by one before the rest are only counted.
constexpr int kListedPoints = 10;
// The window searched for components grows this much around the points.
constexpr double kSearchMargin = 1.0;
constexpr size_t kKeywordSize = 32;
// Above this many components a layout is most likely a typing slip (1000 rows instead of 10):
// the drafter confirms before the drawing grows by that much, and the default is not to.
constexpr int kConfirmAbove = 10000;
// Long placements say how far they have come after every this many components.
constexpr int kProgressStep = 20000;

bool ConfirmLarge(int count) {
    if (count <= kConfirmAbove) return true;
    acedInitGet(0, L"Y N");
    wchar_t word[kKeywordSize] = {};
    CString prompt;
    prompt.Format(L"\n将布置 %d 个构件，继续吗？[是(Y)/否(N)]<否>:", count);
    const int rc = acedGetKword(prompt.GetString(), word, kKeywordSize);
    return rc == RTNORM && CString(word) == L"Y";
}

}  // namespace

bool StartPlacing(CInitCmd& guard) {
    if (guard.IsValid()) return true;
    if (IFaceBarCtrl::GetCurAttName().IsEmpty()) acutPrintf(L"\n请先用 ATT 选择要布置的构件");
    return false;
}

std::vector<int> OccupiedPoints(const AcGePoint3dArray& points) {
    std::vector<int> occupied;
    if (points.isEmpty()) return occupied;
    AcGePoint3d lo = points[0], hi = points[0];
    for (const AcGePoint3d& p : points) {
        lo.set(std::min(lo.x, p.x), std::min(lo.y, p.y), 0.0);
        hi.set(std::max(hi.x, p.x), std::max(hi.y, p.y), 0.0);
    }
    const AcGeVector3d grow(kSearchMargin, kSearchMargin, 0.0);
    AcDbObjectIdArray standing;
    if (!CKelAzSelectFun::SelectPunEntity(standing, lo - grow, hi + grow)) return occupied;
    CDealPunEntity components(standing);
    if (!components.Deal(false)) return occupied;
    for (int i = 0; i < points.length(); ++i) {
        if (components.HasEntity(points[i])) occupied.push_back(i);
    }
    return occupied;
}

int PlaceLaidOut(const AcGePoint3dArray& points) {
    AcGePoint3dArray placing = points;
    const std::vector<int> occupied = OccupiedPoints(points);
    if (!occupied.empty()) {
        acutPrintf(L"\n有 %d 个位置已有构件:", static_cast<int>(occupied.size()));
        const int listed = std::min<int>(kListedPoints, static_cast<int>(occupied.size()));
        for (int i = 0; i < listed; ++i)
            acutPrintf(L"\n  %s", FormatPoint(points[occupied[i]]).GetString());
        if (listed < static_cast<int>(occupied.size()))
            acutPrintf(L"\n  ……还有 %d 个", static_cast<int>(occupied.size()) - listed);
        acedInitGet(0, L"S P X");
        wchar_t word[kKeywordSize] = {};
        const int rc = acedGetKword(L"\n已有构件的位置[跳过(S)/仍然布置(P)/放弃(X)]<跳过>:", word,
                                    kKeywordSize);
        if (rc == RTCAN || (rc == RTNORM && CString(word) == L"X")) {
            acutPrintf(L"\n没有布置构件");
            return 0;
        }
        if (rc == RTNONE || CString(word) == L"S") {
            // One pass keeping the free points: removing them one at a time is quadratic.
            placing.setLogicalLength(0);
            size_t next = 0;
            for (int i = 0; i < points.length(); ++i) {
                if (next < occupied.size() && occupied[next] == i) {
                    ++next;
                    continue;
                }
                placing.append(points[i]);
            }
        }
    }
    if (!ConfirmLarge(placing.length())) {
        acutPrintf(L"\n没有布置构件");
        return 0;
    }
    int placed = 0;
    const int total = placing.length();
    for (int from = 0; from < total; from += kProgressStep) {
        const int count = std::min(kProgressStep, total - from);
        AcGePoint3dArray chunk;
        chunk.setPhysicalLength(count);
        for (int i = from; i < from + count; ++i) chunk.append(placing[i]);
        placed += CDispGlobaFun::CreateNodeEntities(chunk, CString(), CString(), 0.0,
                                                    AcGeVector3d::kZAxis, AcGeScale3d());
        if (total > kProgressStep) acutPrintf(L"\n正在布置 %d/%d", from + count, total);
    }
    acutPrintf(L"\n已布置 %d 个构件", placed);
    return placed;
}

}  // namespace kelaz
