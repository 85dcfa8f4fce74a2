#include "suite/entities/KelAzLeadPrototype.h"

#include <cmath>

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_NO_CONS_DEFINE_MEMBERS(KelAzLeadPrototype, KelAzCurveEntity)

namespace {
constexpr Adesk::UInt16 kLeadPrototypeVersion = 1;
constexpr auto kDxfLayingType = AcDb::kDxfInt32;
}  // namespace

Acad::ErrorStatus KelAzLeadPrototype::SetLayingType(int layingType) {
    assertWriteEnabled();
    m_layingType = layingType;
    return Acad::eOk;
}

int KelAzLeadPrototype::GetLayingType() const {
    assertReadEnabled();
    return m_layingType;
}

void KelAzLeadPrototype::ListProperties(kelaz::PropertyList& list) const {
    KelAzCurveEntity::ListProperties(list);
    list.AddInteger(L"layingType", m_layingType);
}

Acad::ErrorStatus KelAzLeadPrototype::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzCurveEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kLeadPrototypeVersion);
    if (es != Acad::eOk) return es;
    Adesk::Int32 layingType = 0;
    if (pFiler->readInt32(&layingType) != Acad::eOk) return pFiler->filerStatus();
    m_layingType = layingType;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzLeadPrototype::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzCurveEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kLeadPrototypeVersion);
    pFiler->writeInt32(m_layingType);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzLeadPrototype::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzCurveEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    int layingType = m_layingType;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzLeadPrototype", [&](const resbuf& rb) {
            if (rb.restype != kDxfLayingType) return false;
            layingType = rb.resval.rlong;
            return true;
        });
    if (es != Acad::eOk) return es;
    m_layingType = layingType;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzLeadPrototype::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzCurveEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzLeadPrototype");
    pFiler->writeInt32(kDxfLayingType, m_layingType);
    return pFiler->filerStatus();
}

namespace kelaz {

std::vector<std::pair<double, double>> DashRuns(double length, double dash, double gap) {
    std::vector<std::pair<double, double>> runs;
    if (!(length > 0.0)) return runs;
    // n dashes and n - 1 gaps; stretch both by the same factor to cover the run exactly.
    const double period = dash + gap;
    const auto n = static_cast<int>(std::floor((length + gap) / period));
    if (n < 2) {
        runs.emplace_back(0.0, length);
        return runs;
    }
    const double stretch = length / (n * dash + (n - 1) * gap);
    for (int i = 0; i < n; ++i) {
        const double from = i * period * stretch;
        runs.emplace_back(from, i == n - 1 ? length : from + dash * stretch);
    }
    return runs;
}

}  // namespace kelaz
