#include "host/ed/EntitySelection.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/Entity.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/OpenObject.h"
#include "host/db/Selection.h"
#include "host/ed/Ask.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/CommandStack.h"
#include "host/ed/EditorInput.h"
#include "host/ed/HostCommands.h"
#include "host/ge/GeConstants.h"
#include "host/gi/Bulge.h"
#include "host/gi/GiCollector.h"

namespace kelaz {

namespace {

// Arcs and circles are measured as chains of chords this many to a full turn: the chord misses
// the arc by under r/20000, far below any pick box.
constexpr int kChordsPerTurn = 512;
// Every character of a text counts as wide as the text is high, as its extents do.
constexpr double kTextCharWidth = 1.0;

struct PlanPoint {
    double x;
    double y;
};

PlanPoint Plan(const AcGePoint3d& p) { return {p.x, p.y}; }

double SegmentDistance(PlanPoint p, PlanPoint a, PlanPoint b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double len2 = dx * dx + dy * dy;
    double t = len2 > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / len2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

// The arc from center + radius * startVector sweeping counter-clockwise about normal, as chords.
double ArcDistance(PlanPoint p, const AcGePoint3d& center, double radius,
                   const AcGeVector3d& normal, const AcGeVector3d& startVector, double sweep) {
    const AcGeVector3d n = normal.normal();
    const AcGeVector3d u = startVector.normal();
    const AcGeVector3d v = n.crossProduct(u);
    const int chords = std::max(8, static_cast<int>(std::ceil(sweep / kTwoPi * kChordsPerTurn)));
    double best = HUGE_VAL;
    PlanPoint prev = Plan(center + u * radius);
    for (int i = 1; i <= chords; ++i) {
        const double a = sweep * i / chords;
        const PlanPoint next = Plan(center + (u * std::cos(a) + v * std::sin(a)) * radius);
        best = std::min(best, SegmentDistance(p, prev, next));
        prev = next;
    }
    return best;
}

double PolylineDistance(PlanPoint p, const GiPolyline& poly) {
    const size_t n = poly.points.size();
    if (n == 0) return HUGE_VAL;
    if (n == 1) return SegmentDistance(p, Plan(poly.points[0]), Plan(poly.points[0]));
    double best = HUGE_VAL;
    const size_t segments = poly.closed ? n : n - 1;
    for (size_t i = 0; i < segments; ++i) {
        const AcGePoint3d& a = poly.points[i];
        const AcGePoint3d& b = poly.points[(i + 1) % n];
        const double bulge = i < poly.bulges.size() ? poly.bulges[i] : 0.0;
        if (bulge == 0.0 || a.isEqualTo(b)) {
            best = std::min(best, SegmentDistance(p, Plan(a), Plan(b)));
            continue;
        }
        const AcGeCircArc3d arc = ArcFromBulge(a, b, bulge, poly.normal);
        best = std::min(best, ArcDistance(p, arc.center(), arc.radius(), arc.normal(), arc.refVec(),
                                          arc.endAng() - arc.startAng()));
    }
    return best;
}

double TextDistance(PlanPoint p, const GiText& text) {
    const AcGeVector3d along =
        text.direction.normal() * (text.height * kTextCharWidth * text.text.GetLength());
    const AcGeVector3d up =
        text.normal.normal().crossProduct(text.direction.normal()) * text.height;
    const PlanPoint c[4] = {Plan(text.position), Plan(text.position + along),
                            Plan(text.position + along + up), Plan(text.position + up)};
    // Inside the box when the point is on the same side of all four edges.
    int sides = 0;
    double best = HUGE_VAL;
    for (int i = 0; i < 4; ++i) {
        const PlanPoint a = c[i];
        const PlanPoint b = c[(i + 1) % 4];
        const double cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        sides += cross > 0.0 ? 1 : (cross < 0.0 ? -1 : 0);
        best = std::min(best, SegmentDistance(p, a, b));
    }
    return std::abs(sides) == 4 ? 0.0 : best;
}

double PrimitiveDistance(PlanPoint p, const GiPrimitive& primitive) {
    if (const auto* poly = std::get_if<GiPolyline>(&primitive.shape)) {
        return PolylineDistance(p, *poly);
    }
    if (const auto* arc = std::get_if<GiArc>(&primitive.shape)) {
        return ArcDistance(p, arc->center, arc->radius, arc->normal, arc->startVector, arc->sweep);
    }
    if (const auto* circle = std::get_if<GiCircle>(&primitive.shape)) {
        return ArcDistance(p, circle->center, circle->radius, circle->normal,
                           circle->normal.perpVector(), kTwoPi);
    }
    if (const auto* text = std::get_if<GiText>(&primitive.shape)) return TextDistance(p, *text);
    return HUGE_VAL;
}

// Selection sets by the number in their name.
std::map<Adesk::LongPtr, AcDbObjectIdArray>& SelectionSets() {
    static std::map<Adesk::LongPtr, AcDbObjectIdArray> sets;
    return sets;
}

const AcDbObjectIdArray* FindSet(const ads_name ss) {
    if (ss == nullptr) return nullptr;
    const auto it = SelectionSets().find(ss[0]);
    return it == SelectionSets().end() ? nullptr : &it->second;
}

bool PassesFilter(AcDbObjectId id, const resbuf* filter) {
    if (filter == nullptr) return true;
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return false;
    bool pass = true;
    for (const resbuf* rb = filter; rb != nullptr && pass; rb = rb->rbnext) {
        const CString value(rb->resval.rstring);
        if (rb->restype == 0) {
            pass = value.CompareNoCase(entity->isA()->dxfName()) == 0;
        } else if (rb->restype == 8) {
            pass = value.CompareNoCase(entity->layer()) == 0;
        }
    }
    entity->close();
    return pass;
}

// An ads_name parameter is a pointer to its two elements.
bool CopyName(AcDbObjectId id, Adesk::LongPtr* out) {
    ads_name name = {0, 0};
    if (acdbGetAdsName(name, id) != Acad::eOk) return false;
    out[0] = name[0];
    out[1] = name[1];
    return true;
}

int StoreSet(const AcDbObjectIdArray& ids, ads_name ss) {
    if (ids.isEmpty()) return RTERROR;
    static Adesk::LongPtr next = 0;
    SelectionSets()[++next] = ids;
    ss[0] = next;
    ss[1] = 0;
    return RTNORM;
}

}  // namespace

double PlanDistanceToPrimitives(const GiPrimitiveList& primitives, const AcGePoint3d& point) {
    double best = HUGE_VAL;
    for (const GiPrimitive& primitive : primitives) {
        best = std::min(best, PrimitiveDistance(Plan(point), primitive));
    }
    return best;
}

AcDbObjectId PickEntity(AcDbDatabase* db, const AcGePoint3d& point, double halfWidth) {
    if (db == nullptr) return AcDbObjectId::kNull;
    const AcGeVector3d half(halfWidth, halfWidth, 0.0);
    const AcDbObjectIdArray candidates = SelectCrossing(db, point - half, point + half);
    AcDbObjectId best;
    double bestDistance = halfWidth;
    for (const AcDbObjectId& id : candidates) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        const double distance = PlanDistanceToPrimitives(DrawEntity(*entity), point);
        entity->close();
        if (distance <= bestDistance) {
            bestDistance = distance;
            best = id;
        }
    }
    return best;
}

}  // namespace kelaz

int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres) {
    kelaz::Editor* ed = kelaz::CurrentEditor();
    if (ed == nullptr) return RTERROR;
    const kelaz::InitGet init = ed->TakeInitGet();
    kelaz::AskSpec spec;
    spec.point = true;
    kelaz::AskResult answer;
    const CString prompt = str != nullptr ? CString(str) : CString(L"\n选择对象: ");
    ed->SetErrNo(0);
    const int status = kelaz::Ask(*ed, prompt, init, spec, answer);
    if (status == RTNONE) {
        ed->SetErrNo(kelaz::kErrNoNullPick);
        return RTERROR;
    }
    if (status != RTNORM) return status;
    ed->SetLastPoint(answer.point);
    const AcDbObjectId id = kelaz::PickEntity(kelaz::CommandDatabase(*ed), answer.point);
    if (id.isNull()) {
        ed->NoteRefusal();
        ed->Print(L"\n未选中对象。");
        ed->SetErrNo(kelaz::kErrNoPickMissed);
        return RTERROR;
    }
    kelaz::CopyName(id, entres);
    ptres[0] = answer.point.x;
    ptres[1] = answer.point.y;
    ptres[2] = answer.point.z;
    return RTNORM;
}

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter,
              ads_name ss) {
    kelaz::Editor* ed = kelaz::CurrentEditor();
    AcDbDatabase* db = ed != nullptr ? kelaz::CommandDatabase(*ed)
                                     : acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr || ss == nullptr) return RTERROR;
    AcDbObjectIdArray found;
    const CString mode = kelaz::BareCommandName(CString(str));
    if (str == nullptr) {
        if (ed == nullptr) return RTERROR;
        kelaz::SelectionPrompt selection(*ed);
        while (true) {
            kelaz::CommandInput input;
            if (!kelaz::ReadCommandInput(*ed, selection.Prompt(), input)) return RTCAN;
            if (selection.Feed(input) == kelaz::HostCommand::Step::kDone) break;
        }
        found = selection.Selected();
    } else if (mode.CompareNoCase(L"W") == 0 || mode.CompareNoCase(L"C") == 0) {
        if (pt1 == nullptr || pt2 == nullptr) return RTERROR;
        const auto* a = static_cast<const double*>(pt1);
        const auto* b = static_cast<const double*>(pt2);
        const AcGePoint3d corner1(a[0], a[1], a[2]);
        const AcGePoint3d corner2(b[0], b[1], b[2]);
        found = mode.CompareNoCase(L"W") == 0 ? kelaz::SelectWindow(db, corner1, corner2)
                                              : kelaz::SelectCrossing(db, corner1, corner2);
    } else if (mode.CompareNoCase(L"X") == 0) {
        found = kelaz::ModelSpaceIds(db);
    } else {
        return RTERROR;
    }
    AcDbObjectIdArray kept;
    for (const AcDbObjectId& id : found) {
        if (kelaz::PassesFilter(id, filter)) kept.append(id);
    }
    return kelaz::StoreSet(kept, ss);
}

int acedSSLength(const ads_name ss, Adesk::Int32* len) {
    const AcDbObjectIdArray* set = kelaz::FindSet(ss);
    if (set == nullptr || len == nullptr) return RTERROR;
    *len = set->length();
    return RTNORM;
}

int acedSSName(const ads_name ss, Adesk::Int32 i, ads_name entres) {
    const AcDbObjectIdArray* set = kelaz::FindSet(ss);
    if (set == nullptr || i < 0 || i >= set->length()) return RTERROR;
    return kelaz::CopyName(set->at(i), entres) ? RTNORM : RTERROR;
}

int acedSSFree(const ads_name sname) {
    if (sname == nullptr) return RTERROR;
    return kelaz::SelectionSets().erase(sname[0]) > 0 ? RTNORM : RTERROR;
}
