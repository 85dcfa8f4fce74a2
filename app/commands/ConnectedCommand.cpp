#include "app/commands/ConnectedCommand.h"

#include "app/shell/Session.h"
#include "host/db/OpenObject.h"
#include "host/ed/Answer.h"
#include "host/ed/EditorInput.h"
#include "module/commands/InitCmd.h"
#include "module/queries/DealLineEntity.h"
#include "module/queries/HighLightVector.h"
#include "module/queries/KelAzSelectFun.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzPipe.h"

namespace kelaz {

namespace {

// Half the side of the box around the point in which lines are gathered: anything that ends at
// the point or passes through it meets the box.
constexpr double kGatherHalf = 1.0;

// Leads, pipes and ducts among the ids: the lines the classification knows the ends of.
AcDbObjectIdArray KnownLines(const AcDbObjectIdArray& ids) {
    AcDbObjectIdArray lines;
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        if (KelAzLead::cast(entity) || KelAzPipe::cast(entity) || KelAzDuct::cast(entity))
            lines.append(id);
        entity->close();
    }
    return lines;
}

void Describe(const AcDbObjectId& id) {
    KelAzCurveEntity* line = nullptr;
    if (acdbOpenObject(line, id, AcDb::kForRead) != Acad::eOk) return;
    AcGePoint3d start, end;
    line->getStartPoint(start);
    line->getEndPoint(end);
    acutPrintf(L"\n  %s %s  %s -> %s  %s", line->isA()->name(), id.handle().text().GetString(),
               FormatPoint(start).GetString(), FormatPoint(end).GetString(),
               line->GetAttName().GetString());
    line->close();
}

void ConnectedCommand() {
    CInitCmd guard(L"CONNECTED");
    if (!guard.IsValid()) return;
    CHighLightVector lit;
    for (;;) {
        ads_point at = {0, 0, 0};
        if (acedGetPoint(nullptr, L"\n指定查询点<回车结束>:", at) != RTNORM) return;
        const AcGePoint3d point(at[0], at[1], at[2]);
        AcDbObjectIdArray near;
        CKelAzSelectFun::SelectEntity(near, L"KelAzCurveEntity", point, kGatherHalf);
        CDealLineEntity lines;
        lines.SetStyle(true, true, true);
        lines.SetAllId(KnownLines(near));
        lines.Classify();
        const AcDbObjectIdArray found = lines.FindEntity(point);
        // The lines of the last point go dark when the next point is asked about.
        lit = CHighLightVector();
        if (found.isEmpty()) {
            acutPrintf(L"\n此点没有连接的管线");
            continue;
        }
        acutPrintf(L"\n%d 条管线连接于 %s:", found.length(), FormatPoint(point).GetString());
        for (const AcDbObjectId& id : found) {
            Describe(id);
            lit.Append(id);
        }
    }
}

}  // namespace

void RegisterConnectedCommand(const wchar_t* group) {
    RegisterCommand(group, L"CONNECTED", L"列出并高亮连接于某点的管线（回车结束）", ACRX_CMD_MODAL,
                    ConnectedCommand);
}

}  // namespace kelaz
