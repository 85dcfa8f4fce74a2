#include "suite/entities/KelAzPipeValve.h"

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzPipeValve, KelAzNode, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZPIPEVALVE, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kPipeValveVersion = 1;
// The bow-tie, 400 mm long and 200 mm high.
constexpr double kHalfLength = 200.0;
constexpr double kHalfHeight = 100.0;
}  // namespace

void KelAzPipeValve::DrawSymbol(const kelaz::SymbolPainter& painter) const {
    painter.Polygon({AcGePoint2d(-kHalfLength, -kHalfHeight),
                     AcGePoint2d(-kHalfLength, kHalfHeight), AcGePoint2d::kOrigin});
    painter.Polygon({AcGePoint2d(kHalfLength, -kHalfHeight), AcGePoint2d(kHalfLength, kHalfHeight),
                     AcGePoint2d::kOrigin});
}

double KelAzPipeValve::SymbolHalfHeight() const { return kHalfHeight; }

// No fields of its own yet; the version keeps room for them.
Acad::ErrorStatus KelAzPipeValve::dwgInFields(AcDbDwgFiler* pFiler) {
    const Acad::ErrorStatus es = KelAzNode::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    return kelaz::ReadClassVersion(pFiler, kPipeValveVersion);
}

Acad::ErrorStatus KelAzPipeValve::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzNode::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeUInt16(kPipeValveVersion);
}

Acad::ErrorStatus KelAzPipeValve::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzNode::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return kelaz::ReadDxfSubclass(pFiler, L"KelAzPipeValve", [](const resbuf&) { return false; });
}

Acad::ErrorStatus KelAzPipeValve::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzNode::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzPipeValve");
}
