#include "module/queries/KelAzSelectFun.h"

#include <algorithm>
#include <cmath>

#include "host/db/HostApplicationServices.h"
#include "host/db/OpenObject.h"
#include "host/db/Selection.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "host/ge/LineSeg3d.h"
#include "suite/entities/KelAzCurveEntity.h"
#include "suite/entities/KelAzNode.h"
#include "suite/tools/Globl_Fun.h"
#include "suite/tools/KELToolKit.h"

namespace {

// Half the side of the box a point stands for when it is tested against extents.
constexpr double kPointBoxHalf = 1.0;
// Far enough to hold any drawing.
constexpr double kEverywhere = 1e300;

constexpr const wchar_t* kLineNotOpen = L"\nThis entity can not open for read!";
constexpr const wchar_t* kPointNotOpen = L"\nCan not open this entity to read!";

AcDbDatabase* Drawing() { return acdbHostApplicationServices()->workingDatabase(); }

// A class given by name; every suite entity for none, null when the name is unknown.
AcRxClass* ClassNamed(const CString& className) {
    return className.IsEmpty() ? KelAzEntity::desc() : kelaz::FindClass(className);
}

bool Select(AcDbObjectIdArray& ids, AcRxClass* cls, const AcGePoint3d& p1, const AcGePoint3d& p2,
            bool crossing, const CString& layers = CString()) {
    ids.removeAll();
    kelaz::SelectionFilter filter;
    filter.cls = cls;
    AcDbDatabase* db = Drawing();
    if (db == nullptr || cls == nullptr) return false;
    CStringArray names;
    CGlobl_Fun::StrToStrAry(layers, names, L',');
    for (CString name : names) {
        if (!name.Trim().IsEmpty()) filter.layers.push_back(name);
    }
    ids = crossing ? kelaz::SelectCrossing(db, p1, p2, filter)
                   : kelaz::SelectWindow(db, p1, p2, filter);
    return !ids.isEmpty();
}

// The two ends of a line; false when the object is no line or cannot be read.
bool LineEnds(const AcDbObjectId& id, AcGePoint3d& start, AcGePoint3d& end) {
    KelAzCurveEntity* line = nullptr;
    if (acdbOpenObject(line, id, AcDb::kForRead) != Acad::eOk) return false;
    line->getStartPoint(start);
    line->getEndPoint(end);
    line->close();
    return true;
}

AcGePoint3d Plan(const AcGePoint3d& p) { return {p.x, p.y, 0.0}; }

// Does the plan segment a-b meet the plan box (boundaries included)? Clips the segment's
// parameter range to each slab of the box in turn.
bool SegmentMeetsBox(const AcGePoint3d& a, const AcGePoint3d& b, const AcDbExtents& box) {
    double t0 = 0.0, t1 = 1.0;
    const double from[2] = {a.x, a.y};
    const double delta[2] = {b.x - a.x, b.y - a.y};
    const double lo[2] = {box.minPoint().x, box.minPoint().y};
    const double hi[2] = {box.maxPoint().x, box.maxPoint().y};
    for (int axis = 0; axis < 2; ++axis) {
        if (delta[axis] == 0.0) {
            if (from[axis] < lo[axis] || from[axis] > hi[axis]) return false;
            continue;
        }
        double enter = (lo[axis] - from[axis]) / delta[axis];
        double leave = (hi[axis] - from[axis]) / delta[axis];
        if (enter > leave) std::swap(enter, leave);
        t0 = std::max(t0, enter);
        t1 = std::min(t1, leave);
        if (t0 > t1) return false;
    }
    return true;
}

bool InPlanBox(const AcGePoint3d& p, const AcDbExtents& box) {
    return p.x >= box.minPoint().x && p.x <= box.maxPoint().x && p.y >= box.minPoint().y &&
           p.y <= box.maxPoint().y;
}

// The point components meeting the window p1-p2 whose insertion point passes the test; a
// component that cannot be read is told of.
template <class Test>
AcDbObjectIdArray ComponentsWhere(const AcGePoint3d& p1, const AcGePoint3d& p2, Test test) {
    AcDbObjectIdArray near, kept;
    Select(near, KelAzNode::desc(), p1, p2, true);
    for (const AcDbObjectId& id : near) {
        KelAzNode* node = nullptr;
        if (acdbOpenObject(node, id, AcDb::kForRead) != Acad::eOk) {
            acutPrintf(kPointNotOpen);
            continue;
        }
        const AcGePoint3d at = node->GetInsertPoint();
        node->close();
        if (test(at)) kept.append(id);
    }
    return kept;
}

// Keeps the lines with an end within tolerance of one of the points, in plan.
void KeepLinesEndingAt(const AcDbObjectIdArray& candidates, const AcGePoint3d* points, int count,
                       double tolerance, const AcDbObjectId& skip, AcDbObjectIdArray& ids) {
    for (const AcDbObjectId& id : candidates) {
        if (id == skip) continue;
        AcGePoint3d start, end;
        if (!LineEnds(id, start, end)) continue;
        for (int i = 0; i < count; ++i) {
            const AcGePoint3d p = Plan(points[i]);
            if (Plan(start).distanceTo(p) <= tolerance || Plan(end).distanceTo(p) <= tolerance) {
                ids.append(id);
                break;
            }
        }
    }
}

// Lines meeting the square of half side tolerance around one of the points.
AcDbObjectIdArray LinesNear(const AcGePoint3d* points, int count, double tolerance) {
    AcDbObjectIdArray all;
    const AcGeVector3d half(tolerance, tolerance, 0.0);
    for (int i = 0; i < count; ++i) {
        AcDbObjectIdArray near;
        Select(near, KelAzCurveEntity::desc(), points[i] - half, points[i] + half, true);
        for (const AcDbObjectId& id : near) {
            if (!all.contains(id)) all.append(id);
        }
    }
    return all;
}

}  // namespace

bool CKelAzSelectFun::PtIsInExtents(const AcGePoint3d& p, const AcDbExtents& box) {
    const AcGeVector3d half(kPointBoxHalf, kPointBoxHalf, 0.0);
    return KELToolKit::ExtentsInter(AcDbExtents(p - half, p + half), box);
}

bool CKelAzSelectFun::PtIsInExtents(const AcGePoint3d& p, const AcGePoint3d& a,
                                    const AcGePoint3d& b, bool flat, double tolerance) {
    AcGeTol tol;
    tol.setEqualPoint(tolerance);
    const AcGePoint3d tested(p.x, p.y, flat ? a.z : p.z);
    return AcGeLineSeg3d(a, b).isOn(tested, tol);
}

bool CKelAzSelectFun::LineIsInExtents(const AcDbObjectId& line, const AcDbExtents& box) {
    AcGePoint3d start, end;
    if (!LineEnds(line, start, end)) {
        acutPrintf(kLineNotOpen);
        return false;
    }
    return InPlanBox(start, box) && InPlanBox(end, box);
}

bool CKelAzSelectFun::LineIsInterExtents(const AcDbObjectId& line, const AcDbExtents& box) {
    AcGePoint3d start, end;
    if (!LineEnds(line, start, end)) {
        acutPrintf(kLineNotOpen);
        return false;
    }
    return SegmentMeetsBox(start, end, box);
}

bool CKelAzSelectFun::SelectAllEntity(AcDbObjectIdArray& ids, const CString& className) {
    return Select(ids, ClassNamed(className), AcGePoint3d(-kEverywhere, -kEverywhere, 0.0),
                  AcGePoint3d(kEverywhere, kEverywhere, 0.0), true);
}

bool CKelAzSelectFun::SelectEntityInLayer(AcDbObjectIdArray& ids, const CString& layers,
                                          const CString& className, const AcGePoint3d& p1,
                                          const AcGePoint3d& p2) {
    return Select(ids, ClassNamed(className), p1, p2, true, layers);
}

bool CKelAzSelectFun::SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                                   const AcGePoint3d& p1, const AcGePoint3d& p2, bool crossing) {
    return Select(ids, ClassNamed(className), p1, p2, crossing);
}

bool CKelAzSelectFun::SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                                   const AcGePoint3d& point, double tolerance) {
    const AcGeVector3d half(tolerance, tolerance, 0.0);
    return Select(ids, ClassNamed(className), point - half, point + half, true);
}

bool CKelAzSelectFun::SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                                   const CString& prompt) {
    ids.removeAll();
    AcRxClass* cls = ClassNamed(className);
    if (cls == nullptr) return false;
    if (!prompt.IsEmpty()) acutPrintf(L"%s", prompt.GetString());
    ads_name set = {0, 0};
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set) != RTNORM) return false;
    Adesk::Int32 length = 0;
    acedSSLength(set, &length);
    for (Adesk::Int32 i = 0; i < length; ++i) {
        ads_name name = {0, 0};
        AcDbObjectId id;
        if (acedSSName(set, i, name) != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) continue;
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        if (entity->isKindOf(cls)) ids.append(id);
        entity->close();
    }
    acedSSFree(set);
    return !ids.isEmpty();
}

bool CKelAzSelectFun::SelectPunEntity(AcDbObjectIdArray& ids, const AcGePoint3d& p,
                                      double tolerance, bool flat) {
    const AcGeVector3d half(tolerance, tolerance, 0.0);
    ids = ComponentsWhere(p - half, p + half, [&](const AcGePoint3d& at) {
        return (flat ? Plan(at).distanceTo(Plan(p)) : at.distanceTo(p)) <= tolerance;
    });
    return !ids.isEmpty();
}

bool CKelAzSelectFun::SelectPunEntity(AcDbObjectIdArray& ids, const AcGePoint3d& p1,
                                      const AcGePoint3d& p2) {
    const AcDbExtents window(AcGePoint3d(std::min(p1.x, p2.x), std::min(p1.y, p2.y), -kEverywhere),
                             AcGePoint3d(std::max(p1.x, p2.x), std::max(p1.y, p2.y), kEverywhere));
    ids = ComponentsWhere(p1, p2, [&](const AcGePoint3d& at) { return InPlanBox(at, window); });
    return !ids.isEmpty();
}

bool CKelAzSelectFun::GetAssoLine(AcDbObjectIdArray& ids, const AcGePoint3d& p, double tolerance) {
    ids.removeAll();
    KeepLinesEndingAt(LinesNear(&p, 1, tolerance), &p, 1, tolerance, AcDbObjectId::kNull, ids);
    return !ids.isEmpty();
}

bool CKelAzSelectFun::GetAssoLine(AcDbObjectIdArray& ids, const AcDbObjectId& line,
                                  double tolerance) {
    ids.removeAll();
    AcGePoint3d ends[2];
    if (!LineEnds(line, ends[0], ends[1])) {
        acutPrintf(kLineNotOpen);
        return false;
    }
    AcDbObjectIdArray candidates = LinesNear(ends, 2, tolerance);
    KeepLinesEndingAt(candidates, ends, 2, tolerance, line, ids);
    return !ids.isEmpty();
}
