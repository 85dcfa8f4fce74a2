#include "module/pipes/DrawSoftPipe.h"

#include <cmath>

#include "host/db/Arc.h"
#include "host/db/OpenObject.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/EditorInput.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/tools/ModelSpace.h"

namespace {

constexpr const wchar_t* kFirstPointPrompt = L"\n指定第一点[参考点(R)]:";
constexpr const wchar_t* kBasePointPrompt = L"\n指定基点:";
constexpr const wchar_t* kFirstAfterBasePrompt = L"\n指定第一点:";
constexpr const wchar_t* kNextPointPrompt = L"\n指定下一点[弧线(A)/退回(U)]:";
constexpr const wchar_t* kMiddlePointPrompt = L"\n指定圆弧的中间点:";
constexpr const wchar_t* kSamePointMessage = L"\n连续两点不能重合，请重新指定点";

// Two picks closer than this are one point: a segment between them would have no direction.
constexpr double kSamePointDistance = 0.0001;
// A bulge smaller than this is a straight segment.
constexpr double kStraightBulge = 1e-8;
constexpr double kTwoPi = 6.283185307179586;

// The host's answer text buffer for a keyword.
constexpr size_t kKeywordBuffer = 133;

AcGePoint3d ToPoint(const ads_point p) { return AcGePoint3d(p[0], p[1], p[2]); }

void ToAds(const AcGePoint3d& point, ads_point p) {
    p[0] = point.x;
    p[1] = point.y;
    p[2] = point.z;
}

}  // namespace

CDrawSoftPipe::~CDrawSoftPipe() = default;

Acad::ErrorStatus CDrawSoftPipe::Draw() {
    DoDraw();
    return Acad::eOk;
}

void CDrawSoftPipe::DoDraw() {
    AcDbObjectId id;
    while (GetFreeDraw(id) != -1) {
    }
}

int CDrawSoftPipe::GetFreeDraw(AcDbObjectId& id) {
    id.setNull();
    AcGePoint3d first;
    const Acad::ErrorStatus firstStatus = GetFreeDrawFirstPt(first);
    if (firstStatus == Acad::eUserBreak) return -1;
    // Enter at the first point does not end the command: the first point is asked again.
    if (firstStatus == Acad::eInvalidInput) return 1;

    AcDbObjectId lineId;
    if (CreateNewSoftPipe(lineId) == -1) return -1;
    AddPt(lineId, first, AcGeVector3d::kZAxis, 0.0);
    AcGePoint3d curPt = first;
    const Acad::ErrorStatus es = AddNextPtToFreeObj(lineId, curPt);

    KelAzSoftLine* line = nullptr;
    if (acdbOpenObject(line, lineId, AcDb::kForWrite) != Acad::eOk) {
        return es == Acad::eUserBreak ? -1 : 0;
    }
    // A single point is no pipe: such a run leaves nothing behind, however it ended.
    const bool kept = line->numVerts() > 1;
    if (!kept) line->erase();
    line->close();
    if (es == Acad::eUserBreak) return -1;
    if (!kept) return 0;
    id = lineId;
    return 1;
}

Acad::ErrorStatus CDrawSoftPipe::GetFreeDrawFirstPt(AcGePoint3d& pt) {
    ads_point picked = {0.0, 0.0, 0.0};
    acedInitGet(0, L"R");
    switch (acedGetPoint(nullptr, kFirstPointPrompt, picked)) {
        case RTNORM:
            pt = ToPoint(picked);
            return Acad::eOk;
        case RTKWORD: {
            // The base point only starts the rubber band (and "@dx,dy" measures from it); the
            // first point is the one picked after it.
            ads_point base = {0.0, 0.0, 0.0};
            if (acedGetPoint(nullptr, kBasePointPrompt, base) != RTNORM) return Acad::eUserBreak;
            if (acedGetPoint(base, kFirstAfterBasePrompt, picked) != RTNORM)
                return Acad::eUserBreak;
            pt = ToPoint(picked);
            return Acad::eOk;
        }
        case RTCAN:
        case RTERROR:  // no command line to ask at: asking again would never end
            return Acad::eUserBreak;
        default:
            return Acad::eInvalidInput;
    }
}

int CDrawSoftPipe::CreateNewSoftPipe(AcDbObjectId& id) {
    const CString attName = CDispGlobaFun::GetCurAttName(true, false);
    const CString sysCode = CDispGlobaFun::GetCurSysCode(true, true);
    if (attName.IsEmpty() || sysCode.IsEmpty()) return -1;
    auto* line = new KelAzSoftLine;
    line->SetAttName(attName);
    line->SetSysCode(sysCode);
    if (addToModelSpace(id, line) != Acad::eOk) {
        delete line;
        return 0;
    }
    return 1;
}

Acad::ErrorStatus CDrawSoftPipe::AddNextPtToFreeObj(const AcDbObjectId& id, AcGePoint3d& curPt) {
    // After an arc the run goes on in the arc's plane: later vertices keep its normal.
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    for (;;) {
        ads_point from = {0.0, 0.0, 0.0};
        ads_point picked = {0.0, 0.0, 0.0};
        ToAds(curPt, from);
        acedInitGet(0, L"A U");
        const int rc = acedGetPoint(from, kNextPointPrompt, picked);
        if (rc == RTNORM) {
            const AcGePoint3d pt = ToPoint(picked);
            if (curPt.distanceTo(pt) < kSamePointDistance) {
                acutPrintf(kSamePointMessage);
                continue;
            }
            curPt = pt;
            AddPt(id, pt, normal, 0.0);
            continue;
        }
        if (rc == RTNONE) return Acad::eOk;
        if (rc != RTKWORD) return Acad::eUserBreak;

        ACHAR keyword[kKeywordBuffer] = {};
        acedGetInput(keyword, kKeywordBuffer);
        if (CString(keyword) == L"A") {
            AcGePoint3d next;
            AcGeVector3d arcNormal = normal;
            double bulge = 0.0;
            const Acad::ErrorStatus es = FreeCir(curPt, next, arcNormal, bulge, id);
            if (es != Acad::eOk) return es;
            normal = arcNormal;
            curPt = next;
            AddPt(id, next, normal, bulge);
        } else if (CString(keyword) == L"U") {
            KelAzSoftLine* line = nullptr;
            if (acdbOpenObject(line, id, AcDb::kForWrite) != Acad::eOk) continue;
            // No lower bound: U on the first vertex takes it away too, and the next point
            // starts the run afresh from where the drafter was.
            if (line->numVerts() > 0) line->removeVertexAt(line->numVerts() - 1);
            if (line->numVerts() > 0) {
                const unsigned int last = line->numVerts() - 1;
                line->getPointAt(last, curPt);
                // The arc that led to the removed vertex goes with it.
                line->setBulgeAt(last, 0.0);
            }
            line->close();
        }
    }
}

Acad::ErrorStatus CDrawSoftPipe::AddPt(const AcDbObjectId& id, const AcGePoint3d& pt,
                                       AcGeVector3d normal, double bulge) {
    KelAzSoftLine* line = nullptr;
    if (acdbOpenObject(line, id, AcDb::kForWrite) != Acad::eOk) return Acad::eInvalidInput;
    if (std::fabs(bulge) > kStraightBulge && line->numVerts() > 0) {
        line->setBulgeAt(line->numVerts() - 1, bulge);
    }
    line->addVertexAt(pt, normal, 0.0);
    line->close();
    return Acad::eOk;
}

Acad::ErrorStatus CDrawSoftPipe::FreeCir(AcGePoint3d& curPt, AcGePoint3d& nextPt,
                                         AcGeVector3d& normal, double& bulge,
                                         const AcDbObjectId& id) {
    for (;;) {
        ads_point from = {0.0, 0.0, 0.0};
        ads_point middle = {0.0, 0.0, 0.0};
        ToAds(curPt, from);
        if (acedGetPoint(from, kMiddlePointPrompt, middle) != RTNORM) return Acad::eUserBreak;
        // The host's ARC takes the start and the middle point and waits for the drafter to
        // drag and pick the end.
        if (acedCommand(RTSTR, L"_.arc", RT3DPOINT, from, RT3DPOINT, middle, RTNONE) != RTNORM)
            return Acad::eUserBreak;
        if (acedCommand(RTSTR, L"\\", RTNONE) != RTNORM) return Acad::eUserBreak;
        // No arc (three points in a line, or Enter at its end point): the middle point again.
        if (DealLastArc(curPt, nextPt, normal, bulge, id)) return Acad::eOk;
    }
}

bool CDrawSoftPipe::DealLastArc(AcGePoint3d& curPt, AcGePoint3d& nextPt, AcGeVector3d& normal,
                                double& bulge, const AcDbObjectId& /*id*/) {
    ads_name last = {0, 0};
    if (acdbEntLast(last) != RTNORM) return false;
    AcDbObjectId arcId;
    if (acdbGetObjectId(arcId, last) != Acad::eOk) return false;
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, arcId, AcDbArc::desc(), AcDb::kForWrite) != Acad::eOk) return false;
    auto* arc = static_cast<AcDbArc*>(object);

    AcGePoint3d start, end;
    arc->getStartPoint(start);
    arc->getEndPoint(end);
    double sweep = arc->endAngle() - arc->startAngle();
    if (sweep < 0.0) sweep += kTwoPi;
    const double b = std::tan(sweep / 4.0);
    // The host keeps arcs counter-clockwise: an arc picked clockwise starts at the picked end,
    // and runs from the current point the other way round.
    if (curPt.isEqualTo(start)) {
        nextPt = end;
        bulge = b;
    } else {
        nextPt = start;
        bulge = -b;
    }
    curPt = nextPt;
    normal = arc->normal();
    // The arc was only the drafter's way to show the bend; the soft line carries it now.
    arc->erase();
    arc->close();
    return true;
}
