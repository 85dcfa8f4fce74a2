#include "suite/entities/KelAzDuct.h"

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzDuct, KelAzDuctPrototype, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, KELAZDUCT, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kDuctVersion = 1;
}

// A duct has no fields of its own yet; its version keeps room for them.
Acad::ErrorStatus KelAzDuct::dwgInFields(AcDbDwgFiler* pFiler) {
    const Acad::ErrorStatus es = KelAzDuctPrototype::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    return kelaz::ReadClassVersion(pFiler, kDuctVersion);
}

Acad::ErrorStatus KelAzDuct::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzDuctPrototype::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeUInt16(kDuctVersion);
}

Acad::ErrorStatus KelAzDuct::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzDuctPrototype::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return kelaz::ReadDxfSubclass(pFiler, L"KelAzDuct", [](const resbuf&) { return false; });
}

Acad::ErrorStatus KelAzDuct::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzDuctPrototype::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    return pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzDuct");
}
