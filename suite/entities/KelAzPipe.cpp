#include "suite/entities/KelAzPipe.h"

#include "host/app/RxClass.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzPipe, KelAzCurveEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZPIPE, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kPipeVersion = 1;
}

Adesk::Boolean KelAzPipe::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    const AcGePoint3d points[2] = {StartPoint(), EndPoint()};
    mode->geometry().polyline(2, points);
    return Adesk::kTrue;
}

// A pipe has no fields of its own yet; its version keeps room for them.
Acad::ErrorStatus KelAzPipe::dwgInFields(AcDbDwgFiler* pFiler) {
    const Acad::ErrorStatus es = KelAzCurveEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    return kelaz::ReadClassVersion(pFiler, kPipeVersion);
}

Acad::ErrorStatus KelAzPipe::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzCurveEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeUInt16(kPipeVersion);
}

Acad::ErrorStatus KelAzPipe::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzCurveEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return kelaz::ReadDxfSubclass(pFiler, L"KelAzPipe", [](const resbuf&) { return false; });
}

Acad::ErrorStatus KelAzPipe::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzCurveEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzPipe");
}
