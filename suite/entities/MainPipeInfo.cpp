#include "suite/entities/MainPipeInfo.h"

#include <cmath>
#include <cwchar>

#include "host/ge/Matrix3d.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/PropertyList.h"

namespace kelaz {

bool SetMainPipeFloorName(MainPipeInfo& info, const CString& floorName) {
    if (floorName.GetLength() > kMaxFloorNameLength) return false;
    std::wmemset(info.floorName, L'\0', kMainPipeFloorNameSize);
    std::wmemcpy(info.floorName, floorName.GetString(), floorName.GetLength());
    return true;
}

bool GetMainPipeFloorName(const MainPipeInfo& info, CString& floorName) {
    const wchar_t* end = std::wmemchr(info.floorName, L'\0', kMainPipeFloorNameSize);
    if (end == nullptr) return false;
    floorName = CString(info.floorName, static_cast<int>(end - info.floorName));
    return true;
}

Acad::ErrorStatus RiserFromInfo(const MainPipeInfo& info, CString& floorName, AcGePoint3d& start,
                                AcGePoint3d& end) {
    CString name;
    if (!GetMainPipeFloorName(info, name)) return Acad::eInvalidInput;
    for (double v : {info.z1, info.z2, info.x, info.y}) {
        if (!std::isfinite(v)) return Acad::eInvalidInput;
    }
    floorName = name;
    start.set(info.x, info.y, info.z1);
    end.set(info.x, info.y, info.z2);
    return Acad::eOk;
}

MainPipeInfo RiserInfo(const CString& floorName, const AcGePoint3d& start, const AcGePoint3d& end) {
    MainPipeInfo info;
    // Names come in through the setters, which refuse what does not fit.
    SetMainPipeFloorName(info, floorName);
    info.z1 = start.z;
    info.z2 = end.z;
    info.x = start.x;
    info.y = start.y;
    return info;
}

bool IsRiser(const AcGePoint3d& start, const AcGePoint3d& end) {
    return start.x == end.x && start.y == end.y;
}

Acad::ErrorStatus TransformRiser(const AcGeMatrix3d& xform, AcGePoint3d& start, AcGePoint3d& end) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    if (!(xform * AcGeVector3d::kZAxis).isParallelTo(AcGeVector3d::kZAxis)) {
        return Acad::eNotApplicable;
    }
    const AcGePoint3d movedStart = xform * start;
    const AcGePoint3d movedEnd = xform * end;
    start = movedStart;
    end.set(movedStart.x, movedStart.y, movedEnd.z);
    return Acad::eOk;
}

void DrawRiser(AcGiWorldDraw* mode, const AcGePoint3d& start) {
    mode->geometry().circle(start, kRiserSymbolRadius, AcGeVector3d::kZAxis);
    mode->geometry().circle(start, kRiserDotRadius, AcGeVector3d::kZAxis);
}

AcDbExtents RiserExtents(const AcGePoint3d& start, const AcGePoint3d& end) {
    AcDbExtents box;
    const AcGeVector3d r(kRiserSymbolRadius, kRiserSymbolRadius, 0.0);
    box.addPoint(start - r);
    box.addPoint(start + r);
    box.addPoint(end);
    return box;
}

void ListRiser(PropertyList& list, const CString& floorName, const AcGePoint3d& start,
               const AcGePoint3d& end) {
    PropertyList members;
    members.AddText(L"floor", floorName);
    members.AddReal(L"z1", start.z);
    members.AddReal(L"z2", end.z);
    members.AddReal(L"x", start.x);
    members.AddReal(L"y", start.y);
    list.AddGroup(L"mainPipe", members);
}

}  // namespace kelaz
