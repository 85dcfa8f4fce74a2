#include "app/commands/CurveLayoutCommands.h"

#include <cmath>

#include "app/commands/CommandInput.h"
#include "app/commands/LayoutPlacement.h"
#include "app/shell/Session.h"
#include "host/db/Arc.h"
#include "host/db/OpenObject.h"
#include "host/db/Polyline.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "module/commands/InitCmd.h"
#include "module/entry/DispGlobaFun.h"
#include "module/layout/DisposeOnCurve.h"
#include "module/layout/DisposeOnSector.h"
#include "suite/entities/KelAzLead.h"
#include "suite/tools/KELToolKit.h"

namespace kelaz {

namespace {

constexpr const wchar_t* kLevelKey = L"PLACE_level";
// The bulge below which the arc layout takes a polyline segment for straight.
constexpr double kStraightBulge = 1e-6;

// What a picked object is to the arc layout.
enum class CurveKind { kNone, kArc, kPolyline, kLead };

CurveKind KindOf(const AcDbObjectId& id) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return CurveKind::kNone;
    CurveKind kind = CurveKind::kNone;
    if (AcDbArc::cast(entity)) kind = CurveKind::kArc;
    if (AcDbPolyline::cast(entity)) kind = CurveKind::kPolyline;
    if (KelAzLead::cast(entity)) kind = CurveKind::kLead;
    entity->close();
    return kind;
}

// The arc, polyline or lead to lay out on; false when the drafter ends or cancels.
bool PickCurve(AcDbObjectId& id) {
    AcGePoint3d picked;
    return PickEntity(
        L"\n选择圆弧、多义线或引线:",
        [](const AcDbObjectId& candidate) { return KindOf(candidate) != CurveKind::kNone; },
        L"\n所选对象不是圆弧、多义线或引线，请重新选择。", id, picked);
}

// Why the arc layout placed nothing where the module itself said nothing: the drafter has
// already been told of a margin too large and of a polyline with other than two vertices.
void TellSilentRefusal(const AcDbObjectId& id) {
    if (KindOf(id) == CurveKind::kLead) {
        TellRefused(L"\n这种引线不能用于弧线布置。");
        return;
    }
    AcDbPolyline* pline = nullptr;
    if (acdbOpenObject(pline, id, AcDb::kForRead) != Acad::eOk) return;
    double bulge = 0.0;
    if (pline->numVerts() == 2 && pline->getBulgeAt(0, bulge) == Acad::eOk &&
        std::abs(bulge) <= kStraightBulge)
        TellRefused(L"\n多义线的第一段是直线，不是圆弧。");
    pline->close();
}

AcGePoint3dArray AtLevel(const AcGePoint3dArray& points, double level) {
    AcGePoint3dArray raised = points;
    for (AcGePoint3d& p : raised) p.z = level;
    return raised;
}

void ArcLayoutCommand() {
    CInitCmd guard(L"ARCLAYOUT");
    if (!StartPlacing(guard)) return;
    AcDbObjectId curve;
    if (!PickCurve(curve)) return;
    static int count = 3;
    static double margin = 0.0;
    if (!AskCount(L"\n输入布置个数", L"布置个数", count) || !AskLength(L"\n输入两端边距", margin)) {
        return;
    }
    double level = 0.0;
    if (!AskLevel(kLevelKey, level)) return;
    CDisposeOnCurve layout;
    layout.SetLevel(level);
    layout.SetComponentType(CDispGlobaFun::GetCurAttName(false, false));
    AcGePoint3dArray points;
    if (!layout.DisposalOnArc(points, curve, margin, count)) {
        TellSilentRefusal(curve);
        acutPrintf(L"\n没有布置构件");
        return;
    }
    PlaceLaidOut(AtLevel(points, level));
}

// The three points of the outer arc and the point of the inner radius; false on a cancel.
bool AskSector(AcGePoint3d& p1, AcGePoint3d& p2, AcGePoint3d& p3, AcGePoint3d& p4) {
    for (;;) {
        ads_point a = {0, 0, 0}, b = {0, 0, 0}, c = {0, 0, 0}, d = {0, 0, 0};
        if (acedGetPoint(nullptr, L"\n指定外圆弧的起点:", a) != RTNORM) return false;
        if (acedGetPoint(a, L"\n指定外圆弧上的第二点:", b) != RTNORM) return false;
        if (acedGetPoint(b, L"\n指定外圆弧的终点:", c) != RTNORM) return false;
        p1.set(a[0], a[1], a[2]);
        p2.set(b[0], b[1], b[2]);
        p3.set(c[0], c[1], c[2]);
        AcGeCircArc3d arc;
        if (!KELToolKit::FormArcByTreePt(p1, p2, p3, arc)) {
            TellRefused(L"\n三点在一条直线上，不能确定圆弧，请重新指定。");
            continue;
        }
        const int rc = acedGetPoint(nullptr, L"\n指定内圆弧上的一点<圆心>:", d);
        if (rc == RTNONE) {
            p4 = arc.center();
            return true;
        }
        if (rc != RTNORM) return false;
        p4.set(d[0], d[1], d[2]);
        return true;
    }
}

void SectorLayoutCommand() {
    CInitCmd guard(L"SECTORLAYOUT");
    if (!StartPlacing(guard)) return;
    AcGePoint3d p1, p2, p3, p4;
    if (!AskSector(p1, p2, p3, p4)) return;
    static int rings = 3;
    static int count = 5;
    static int decrement = 1;
    double level = 0.0;
    CDisposeOnSector layout;
    for (;;) {
        if (!AskCount(L"\n输入圈数", L"圈数", rings) ||
            !AskCount(L"\n输入外圈个数", L"外圈个数", count) ||
            !AskInteger(L"\n输入每圈递减个数", decrement)) {
            return;
        }
        if (!AskLevel(kLevelKey, level)) return;
        // Numbers the module refuses are asked again; it has told the drafter.
        if (layout.SetDisposalInfo(rings, count, decrement, level, 0.0, 0.0)) break;
    }
    layout.Dispose(p1, p2, p3, p4);
    AcGePoint3dArray points;
    layout.GetDisPointArray(points);
    PlaceLaidOut(AtLevel(points, level));
}

}  // namespace

void RegisterCurveLayoutCommands(const wchar_t* group) {
    RegisterCommand(group, L"ARCLAYOUT", L"沿圆弧、弧形多义线均匀布置当前构件", ACRX_CMD_MODAL,
                    ArcLayoutCommand);
    RegisterCommand(group, L"SECTORLAYOUT", L"在扇形或环形区域内按圈布置当前构件", ACRX_CMD_MODAL,
                    SectorLayoutCommand);
}

}  // namespace kelaz
