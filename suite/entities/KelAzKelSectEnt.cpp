#include "suite/entities/KelAzKelSectEnt.h"

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzKelSectEnt, KelAzNode, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZKELSECTENT, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kKelSectEntVersion = 1;
// The symbol's square, 400 mm a side, and the section inside it.
constexpr double kHalfSide = 200.0;
constexpr double kSectionRadius = 160.0;
}  // namespace

void KelAzKelSectEnt::DrawSymbol(const kelaz::SymbolPainter& painter) const {
    painter.Polygon({AcGePoint2d(-kHalfSide, -kHalfSide), AcGePoint2d(kHalfSide, -kHalfSide),
                     AcGePoint2d(kHalfSide, kHalfSide), AcGePoint2d(-kHalfSide, kHalfSide)});
    painter.Circle(AcGePoint2d::kOrigin, kSectionRadius);
}

double KelAzKelSectEnt::SymbolHalfHeight() const { return kHalfSide; }

// No fields of its own yet; the version keeps room for them.
Acad::ErrorStatus KelAzKelSectEnt::dwgInFields(AcDbDwgFiler* pFiler) {
    const Acad::ErrorStatus es = KelAzNode::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    return kelaz::ReadClassVersion(pFiler, kKelSectEntVersion);
}

Acad::ErrorStatus KelAzKelSectEnt::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzNode::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeUInt16(kKelSectEntVersion);
}

Acad::ErrorStatus KelAzKelSectEnt::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzNode::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return kelaz::ReadDxfSubclass(pFiler, L"KelAzKelSectEnt", [](const resbuf&) { return false; });
}

Acad::ErrorStatus KelAzKelSectEnt::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzNode::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzKelSectEnt");
}
