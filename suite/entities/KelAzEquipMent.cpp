#include "suite/entities/KelAzEquipMent.h"

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzEquipMent, KelAzNode, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZEQUIPMENT, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kEquipMentVersion = 1;
// The symbol's rectangle, 600 by 400 mm.
constexpr double kHalfWidth = 300.0;
constexpr double kHalfHeight = 200.0;
}  // namespace

void KelAzEquipMent::DrawSymbol(const kelaz::SymbolPainter& painter) const {
    const AcGePoint2d a(-kHalfWidth, -kHalfHeight);
    const AcGePoint2d b(kHalfWidth, -kHalfHeight);
    const AcGePoint2d c(kHalfWidth, kHalfHeight);
    const AcGePoint2d d(-kHalfWidth, kHalfHeight);
    painter.Polygon({a, b, c, d});
    painter.Line(a, c);
    painter.Line(b, d);
}

double KelAzEquipMent::SymbolHalfHeight() const { return kHalfHeight; }

// No fields of its own yet; the version keeps room for them.
Acad::ErrorStatus KelAzEquipMent::dwgInFields(AcDbDwgFiler* pFiler) {
    const Acad::ErrorStatus es = KelAzNode::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    return kelaz::ReadClassVersion(pFiler, kEquipMentVersion);
}

Acad::ErrorStatus KelAzEquipMent::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzNode::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeUInt16(kEquipMentVersion);
}

Acad::ErrorStatus KelAzEquipMent::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzNode::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return kelaz::ReadDxfSubclass(pFiler, L"KelAzEquipMent", [](const resbuf&) { return false; });
}

Acad::ErrorStatus KelAzEquipMent::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzNode::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzEquipMent");
}
