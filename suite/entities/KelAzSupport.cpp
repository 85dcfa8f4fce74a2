#include "suite/entities/KelAzSupport.h"

#include "host/app/RxClass.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzSupport, KelAzCurveEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, KELAZSUPPORT, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kSupportVersion = 1;
}

Adesk::Boolean KelAzSupport::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    const AcGiWorldGeometry& geometry = mode->geometry();
    const AcGePoint3d line[2] = {StartPoint(), EndPoint()};
    geometry.polyline(2, line);
    // The marks lie across the support in plan; a support seen end-on gets them along X.
    AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(EndPoint() - StartPoint());
    across.z = 0.0;
    across = across.isZeroLength() ? AcGeVector3d::kXAxis : across.normal();
    const AcGeVector3d half = across * (kelaz::kSupportMarkLength / 2.0);
    for (const AcGePoint3d& end : line) {
        const AcGePoint3d mark[2] = {end - half, end + half};
        geometry.polyline(2, mark);
    }
    return Adesk::kTrue;
}

// A support has no fields of its own yet; its version keeps room for them.
Acad::ErrorStatus KelAzSupport::dwgInFields(AcDbDwgFiler* pFiler) {
    const Acad::ErrorStatus es = KelAzCurveEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    return kelaz::ReadClassVersion(pFiler, kSupportVersion);
}

Acad::ErrorStatus KelAzSupport::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzCurveEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeUInt16(kSupportVersion);
}

Acad::ErrorStatus KelAzSupport::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzCurveEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return kelaz::ReadDxfSubclass(pFiler, L"KelAzSupport", [](const resbuf&) { return false; });
}

Acad::ErrorStatus KelAzSupport::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzCurveEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzSupport");
}
