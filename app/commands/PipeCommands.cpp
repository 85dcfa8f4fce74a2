#include "app/commands/PipeCommands.h"

#include <cmath>
#include <vector>

#include "app/commands/CommandInput.h"
#include "app/shell/CommandHelp.h"
#include "host/db/OpenObject.h"
#include "host/ed/Answer.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "module/commands/InitCmd.h"
#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "module/queries/KelAzSelect.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzDuctPrototype.h"
#include "suite/tools/KelMessageBox.h"

namespace kelaz {

namespace {

// Two points closer than this are one (the creators' own shortest length).
constexpr double kSamePoint = 0.0001;
// The middle point of an arc must stand off the chord by more than this share of the two
// spans' product: less is a straight line.
constexpr double kCollinear = 1e-9;
constexpr size_t kWordSize = 64;

// The small category NEWDUCT offers first, and the big category it adds sizes to.
constexpr const wchar_t* kDefaultDuctCategory = L"暖通\\风管\\矩形风管";
constexpr const wchar_t* kDuctBigCategory = L"风管";

// Starts a drawing command through its guard; false (the drafter told what is missing) when
// the command must stop.
bool StartDrawing(CInitCmd& guard) {
    if (guard.IsValid()) return true;
    if (IFaceBarCtrl::GetCurAttName().IsEmpty()) acutPrintf(L"\n请先用 ATT 选择要绘制的管线");
    return false;
}

AcGePoint3d At(const ads_point p, double z) { return AcGePoint3d(p[0], p[1], z); }

CString TakeKeyword() {
    wchar_t word[kWordSize] = {};
    acedGetInput(word, kWordSize);
    return CString(word);
}

// Takes a drawn segment out of the drawing again.
void EraseEntity(const AcDbObjectId& id) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForWrite) != Acad::eOk) return;
    entity->erase();
    entity->close();
}

// What LEAD and PIPE have drawn so far: each segment with the point it started from, so that U
// takes the last one back and goes on from where it began.
struct Run {
    struct Segment {
        AcDbObjectId id;
        AcGePoint3d from;
    };
    std::vector<Segment> segments;
    AcGePoint3d current;

    void Add(const AcDbObjectId& id, const AcGePoint3d& to) {
        segments.push_back({id, current});
        current = to;
    }
    void TakeBack() {
        if (segments.empty()) {
            TellRefused(L"\n没有可以回退的线段。");
            return;
        }
        EraseEntity(segments.back().id);
        current = segments.back().from;
        segments.pop_back();
    }
};

// The first point of a run, at the elevation; false when the drafter ends or cancels.
bool FirstPoint(double level, AcGePoint3d& point) {
    if (CKelAzSelect::GetPoint(point, true) != RTNORM) return false;
    point.z = level;
    return true;
}

// A lead segment from the run's point to the next one; the drafter is told when it is refused.
void AddLeadSegment(Run& run, const AcGePoint3d& to, double bulge) {
    AcDbObjectId id;
    if (run.current.distanceTo(to) < kSamePoint) {
        TellRefused(L"\n与上一点重合，请重新指定。");
    } else if (CDispGlobaFun::CreateNewLead(run.current, to, bulge, AcGeVector3d::kZAxis, 0, id,
                                            CString(), false)) {
        run.Add(id, to);
    } else {
        TellRefused(L"\n这一段引线没有绘制。");
    }
}

// The arc of LEAD's A: a point on the arc and its end; false on a cancel (Enter goes back to
// the next-point prompt).
bool AddLeadArc(Run& run, double level) {
    ads_point from = {run.current.x, run.current.y, run.current.z};
    ads_point second = {0, 0, 0}, end = {0, 0, 0};
    int rc = acedGetPoint(from, L"\n指定圆弧上的第二点:", second);
    if (rc == RTNORM) rc = acedGetPoint(second, L"\n指定圆弧的端点:", end);
    if (rc == RTNONE) return true;
    if (rc != RTNORM) return false;
    const AcGePoint3d middle = At(second, level), to = At(end, level);
    double bulge = 0.0;
    if (!BulgeThroughPoints(run.current, middle, to, bulge)) {
        TellRefused(L"\n三点在一条直线上，不能画圆弧，请重新指定。");
        return true;
    }
    AddLeadSegment(run, to, bulge);
    return true;
}

void LeadCommand() {
    CInitCmd guard(L"LEAD");
    if (!StartDrawing(guard)) return;
    double level = 0.0;
    if (!AskLevel(L"LEAD_level", level)) return;
    Run run;
    if (!FirstPoint(level, run.current)) return;
    for (;;) {
        AcGePoint3d next;
        const int rc = CKelAzSelect::GetNextPoint(next, run.current, nullptr, 0.0);
        if (rc == RTKWORD) {
            const CString word = TakeKeyword();
            if (word == L"U") {
                run.TakeBack();
            } else if (word == L"A" && !AddLeadArc(run, level)) {
                break;
            }
            continue;
        }
        if (rc != RTNORM) break;
        next.z = level;
        AddLeadSegment(run, next, 0.0);
    }
    acutPrintf(L"\n已绘制 %d 段引线", static_cast<int>(run.segments.size()));
}

void PipeCommand() {
    CInitCmd guard(L"PIPE");
    if (!StartDrawing(guard)) return;
    double level = 0.0;
    if (!AskLevel(L"PIPE_level", level)) return;
    const CString attName = CDispGlobaFun::GetCurAttName(true, false);
    const CString sysCode = CDispGlobaFun::GetCurSysCode(true, true);
    Run run;
    if (!FirstPoint(level, run.current)) return;
    for (;;) {
        ads_point base = {run.current.x, run.current.y, run.current.z};
        ads_point picked = {0, 0, 0};
        acedInitGet(0, L"U");
        const int rc = acedGetPoint(base, L"\n指定下一点[回退(U)]<回车结束>:", picked);
        if (rc == RTKWORD) {
            TakeKeyword();
            run.TakeBack();
            continue;
        }
        if (rc != RTNORM) break;
        const AcGePoint3d next = At(picked, level);
        AcDbObjectId id;
        if (run.current.distanceTo(next) < kSamePoint) {
            TellRefused(L"\n与上一点重合，请重新指定。");
        } else if (CDispGlobaFun::AddLinePipe(run.current, next, 0, attName, sysCode, id)) {
            run.Add(id, next);
        } else {
            TellRefused(L"\n这一段管道没有绘制。");
        }
    }
    acutPrintf(L"\n已绘制 %d 段管道", static_cast<int>(run.segments.size()));
}

// MAINLEAD, RISER and MAINPIPE: at each plan point a vertical object between two elevations,
// each typed as a number or in the floor form. The creator refuses equal elevations; the
// drafter is told, and nothing is made.
struct VerticalKind {
    const wchar_t* command;
    const wchar_t* what;  // the object, in prompts and reports
    const wchar_t* levelKey;
    bool lead;
};

void VerticalCommand(const VerticalKind& kind) {
    CInitCmd guard(kind.command);
    if (!StartDrawing(guard)) return;
    const CString attName = CDispGlobaFun::GetCurAttName(true, false);
    const CString sysCode = CDispGlobaFun::GetCurSysCode(true, true);
    const CString key = kind.levelKey;
    int made = 0;
    for (;;) {
        ads_point picked = {0, 0, 0};
        if (acedGetPoint(nullptr, FormatText(L"\n指定%s位置<回车结束>:", kind.what), picked) !=
            RTNORM)
            break;
        double from = 0.0, to = 0.0;
        if (!AskLevel(key + L"_start", from, L"起点标高") ||
            !AskLevel(key + L"_end", to, L"终点标高"))
            break;
        const AcGePoint3d start = At(picked, from), end = At(picked, to);
        AcDbObjectId id;
        const bool created =
            kind.lead ? CDispGlobaFun::AddMainLead(start, end, attName, sysCode, id, CString())
                      : CDispGlobaFun::AddMainPipe(start, end, attName, sysCode, id);
        if (!created) {
            ShowWarning(CString(L"起点标高与终点标高相同"));
            continue;
        }
        ++made;
        acutPrintf(L"\n%s %g,%g，标高 %g 至 %g", kind.what, picked[0], picked[1], from, to);
    }
    acutPrintf(L"\n已绘制 %d 根%s", made, kind.what);
}

void MainLeadCommand() { VerticalCommand({L"MAINLEAD", L"主引线", L"MAINLEAD", true}); }
void RiserCommand() { VerticalCommand({L"RISER", L"立管", L"RISER", false}); }
void MainPipeCommand() { VerticalCommand({L"MAINPIPE", L"立管", L"RISER", false}); }

// The duct under a pick; false when the drafter ends or cancels.
bool PickDuct(AcDbObjectId& id, AcGePoint3d& picked) {
    const auto isDuct = [](const AcDbObjectId& candidate) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, candidate, AcDb::kForRead) != Acad::eOk) return false;
        const bool duct = KelAzDuctPrototype::cast(entity) != nullptr;
        entity->close();
        return duct;
    };
    return PickEntity(L"\n选择风管<回车结束>:", isDuct, L"\n所选对象不是风管，请重新选择。", id,
                      picked);
}

void ExtendCommand() {
    CInitCmd guard(L"EXTEND");
    if (!guard.IsValid()) return;
    for (;;) {
        AcDbObjectId id;
        AcGePoint3d picked;
        if (!PickDuct(id, picked)) return;
        ads_point base = {picked.x, picked.y, picked.z};
        ads_point target = {0, 0, 0};
        if (acedGetPoint(base, L"\n指定延伸到的点:", target) != RTNORM) return;
        KelAzDuctPrototype* duct = nullptr;
        if (acdbOpenObject(duct, id, AcDb::kForWrite) != Acad::eOk) {
            TellRefused(L"\n风管正被占用，不能修改。");
            continue;
        }
        AcGePoint3d start, end;
        duct->getStartPoint(start);
        duct->getEndPoint(end);
        // A point typed in plan goes to the elevation of the end it moves (the one nearer in
        // plan, the start on a tie), so that a level duct stays level.
        AcGePoint3d to(target[0], target[1], 0.0);
        const auto plan = [](const AcGePoint3d& p) { return AcGePoint3d(p.x, p.y, 0.0); };
        to.z = plan(start).distanceTo(to) > plan(end).distanceTo(to) ? end.z : start.z;
        const bool done = CDispGlobaFun::ExtendLine(duct, to);
        AcGePoint3d newStart, newEnd;
        duct->getStartPoint(newStart);
        duct->getEndPoint(newEnd);
        duct->close();
        if (!done) {
            TellRefused(L"\n风管不能修改。");
        } else if (newStart == start && newEnd == end) {
            acutPrintf(L"\n此点已是风管的端点");
        } else {
            acutPrintf(L"\n风管%s移到 %s", newStart != start ? L"起点" : L"终点",
                       FormatPoint(to).GetString());
        }
    }
}

// --- NEWDUCT ---

// The big category of a small category path ("暖通\\风管\\矩形风管": "风管").
CString BigCategoryOf(const CString& path) {
    const int first = path.Find(L'\\');
    const int second = first < 0 ? -1 : path.Find(L'\\', first + 1);
    return second < 0 ? CString() : path.Mid(first + 1, second - first - 1);
}

// Every duct small category of the catalogue, speciality by speciality.
std::vector<CString> DuctCategories() {
    std::vector<CString> out;
    CStringArray specs;
    KelAzDataMng::CProj::GetAllSpecs(specs);
    for (const CString& spec : specs) {
        const CString big = spec + L"\\" + kDuctBigCategory;
        CStringArray smalls;
        if (!KelAzDataMng::CAtt::GetChildNames(big, smalls)) continue;
        for (const CString& small : smalls) out.push_back(big + L"\\" + small);
    }
    return out;
}

// The duct small category the text names: its path, or the name of a duct small category.
CString FindDuctCategory(const CString& text) {
    KelAzDataMng::SAttDataIndex index;
    if (KelAzDataMng::SmallCategoryNameToId(text, index))
        return BigCategoryOf(text) == kDuctBigCategory ? text : CString();
    for (const CString& path : DuctCategories()) {
        if (path.Mid(path.ReverseFind(L'\\') + 1) == text) return path;
    }
    return CString();
}

bool AskDuctCategory(CString& category) {
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"\n输入风管小类[列表(?)]<%s>:", kDefaultDuctCategory), text))
            return false;
        if (text.IsEmpty()) text = kDefaultDuctCategory;
        if (text == L"?") {
            for (const CString& path : DuctCategories()) acutPrintf(L"\n  %s", path.GetString());
            continue;
        }
        category = FindDuctCategory(text);
        if (!category.IsEmpty()) return true;
        TellRefused(FormatText(L"\n“%s”不是风管的小类，请重新输入。", text.GetString()));
    }
}

// The duct size the new one is copied from: an attribute path, or a member of the category.
bool AskSourceDuct(const CString& category, CString& source) {
    CStringArray members;
    KelAzDataMng::CAtt::GetChildNames(category, members);
    const CString offered = members.IsEmpty() ? CString() : category + L"\\" + members[0];
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"\n输入参照的风管规格<%s>:",
                                offered.IsEmpty() ? L"无" : offered.GetString()),
                     text, true))
            return false;
        if (text.IsEmpty()) text = offered;
        KelAzDataMng::SAttDataIndex index;
        for (const CString& path : {text, category + L"\\" + text}) {
            if (!text.IsEmpty() && KelAzDataMng::AttNameToAttId(path, index)) {
                source = path;
                return true;
            }
        }
        TellRefused(FormatText(L"\n没有风管规格“%s”，请重新输入。", text.GetString()));
    }
}

// A size in millimetres above 0, as typed; with optional, Enter answers the empty text.
bool AskSize(const CString& prompt, bool optional, CString& size) {
    for (;;) {
        CString text;
        if (!AskText(prompt, text)) return false;
        if (text.IsEmpty() && optional) {
            size.Empty();
            return true;
        }
        double value = 0.0;
        if (!CDispUtils::ParseToDouble(text, value)) {
            TellRefused(FormatText(L"\n“%s”不是数值，请重新输入。", text.GetString()));
        } else if (!(value > 0.0)) {
            TellRefused(L"\n尺寸必须大于0，请重新输入。");
        } else {
            size = text;
            return true;
        }
    }
}

// The questions are answered whatever the catalogue holds of the new name, and the name is
// tested by the creator only at the end: a session rebuilt from its journal replays NEWDUCT
// against a project file that already has the size (the catalogue is saved at once), and the
// replay must read the same lines as the first run did. It is refused then, and nothing changes.
void NewDuctCommand() {
    CInitCmd guard(L"NEWDUCT");
    if (!guard.IsValid()) return;
    CString category, source, name, width, height;
    if (!AskDuctCategory(category) || !AskSourceDuct(category, source)) return;
    for (;;) {
        if (!AskText(L"\n输入新规格名称:", name, true) || name.IsEmpty()) return;
        if (name.Find(L'\\') < 0) break;
        TellRefused(L"\n名称中不能有“\\”，请重新输入。");
    }
    if (!AskSize(L"\n输入宽度(圆形风管为直径):", false, width) ||
        !AskSize(L"\n输入高度<回车为圆形风管>:", true, height))
        return;
    if (!CDispGlobaFun::AddFGByCurFG(category, name, source, width, height, true)) {
        ShowWarning(
            FormatText(L"%s 下已有“%s”，没有新建规格", category.GetString(), name.GetString()));
        return;
    }
    if (KelAzDataMng::CAtt::HasUnsavedChanges()) {
        ShowWarning(CString(L"新规格没有写入项目文件"));
        return;
    }
    acutPrintf(L"\n已新建风管规格 %s\\%s（%s，%s）", category.GetString(), name.GetString(),
               height.IsEmpty() ? L"圆形" : L"矩形",
               (height.IsEmpty() ? L"B," + width : L"B," + width + L",H," + height).GetString());
}

}  // namespace

bool BulgeThroughPoints(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end,
                        double& bulge) {
    const double ax = start.x - middle.x, ay = start.y - middle.y;
    const double bx = end.x - middle.x, by = end.y - middle.y;
    const double spans = std::hypot(ax, ay) * std::hypot(bx, by);
    // The turn from start to end seen at the middle: its sign is the arc's sense.
    const double cross = bx * ay - by * ax;
    if (spans == 0.0 || std::abs(cross) <= kCollinear * spans) return false;
    const double atMiddle = std::atan2(std::abs(cross), ax * bx + ay * by);
    const double size = 1.0 / std::tan(atMiddle / 2.0);
    // Counter-clockwise from start through middle to end: middle lies right of start->end.
    bulge = cross > 0.0 ? size : -size;
    return true;
}

void RegisterPipeCommands(const wchar_t* group) {
    const Adesk::Int32 flags = ACRX_CMD_MODAL;
    RegisterCommand(group, L"LEAD", L"在一个标高上绘制引线（A 圆弧，U 回退，回车结束）", flags,
                    LeadCommand);
    RegisterCommand(group, L"MAINLEAD", L"绘制主引线（位置、起点标高、终点标高）", flags,
                    MainLeadCommand);
    RegisterCommand(group, L"RISER", L"绘制立管（位置、起点标高、终点标高）", flags, RiserCommand);
    RegisterCommand(group, L"MAINPIPE", L"绘制立管（同 RISER）", flags, MainPipeCommand);
    RegisterCommand(group, L"PIPE", L"在一个标高上绘制管道（U 回退，回车结束）", flags,
                    PipeCommand);
    RegisterCommand(group, L"EXTEND", L"把风管较近的一端移到指定点", flags, ExtendCommand);
    RegisterCommand(group, L"NEWDUCT", L"按已有规格新建风管规格（写入项目）", flags,
                    NewDuctCommand);
}

}  // namespace kelaz
