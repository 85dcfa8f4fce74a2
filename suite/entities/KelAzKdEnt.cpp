#include "suite/entities/KelAzKdEnt.h"

#include "host/app/RxClass.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzKdEnt, KelAzEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZKDENT, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kKdEntVersion = 1;
constexpr auto kDxfLocation = AcDb::kDxfXCoord;
constexpr auto kDxfXAxis = static_cast<AcDb::DxfCode>(AcDb::kDxfXCoord + 1);
constexpr auto kDxfYAxis = static_cast<AcDb::DxfCode>(AcDb::kDxfXCoord + 2);
}  // namespace

Acad::ErrorStatus KelAzKdEnt::SetPlacement(const KelAzCommon::Placement3D& placement) {
    if (!placement.IsValid()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_placement = placement;
    return Acad::eOk;
}

KelAzCommon::Placement3D KelAzKdEnt::GetPlacement() const {
    assertReadEnabled();
    return m_placement;
}

Adesk::Boolean KelAzKdEnt::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    const AcGeMatrix3d toWorld = m_placement.GetTransform();
    constexpr double h = kelaz::kKdMarkerHalfSide;
    const AcGePoint3d square[4] = {
        toWorld * AcGePoint3d(-h, -h, 0.0), toWorld * AcGePoint3d(h, -h, 0.0),
        toWorld * AcGePoint3d(h, h, 0.0), toWorld * AcGePoint3d(-h, h, 0.0)};
    mode->geometry().polygon(4, square);
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzKdEnt::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    KelAzCommon::Placement3D moved = m_placement;
    moved.SetLocation(xform * m_placement.GetLocation());
    if (!moved.SetAxes(xform * m_placement.GetXAxis(), xform * m_placement.GetYAxis())) {
        return Acad::eInvalidInput;
    }
    assertWriteEnabled();
    m_placement = moved;
    return Acad::eOk;
}

void KelAzKdEnt::ListProperties(kelaz::PropertyList& list) const {
    KelAzEntity::ListProperties(list);
    kelaz::PropertyList members;
    members.AddPoint(L"location", m_placement.GetLocation());
    members.AddVector(L"xAxis", m_placement.GetXAxis());
    members.AddVector(L"yAxis", m_placement.GetYAxis());
    list.AddGroup(L"placement", members);
}

Acad::ErrorStatus KelAzKdEnt::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kKdEntVersion);
    if (es != Acad::eOk) return es;
    AcGePoint3d location;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    pFiler->readPoint3d(&location);
    pFiler->readVector3d(&xAxis);
    pFiler->readVector3d(&yAxis);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    const KelAzCommon::Placement3D placement(location, xAxis, yAxis);
    if (!placement.IsValid()) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_placement = placement;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzKdEnt::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kKdEntVersion);
    pFiler->writePoint3d(m_placement.GetLocation());
    pFiler->writeVector3d(m_placement.GetXAxis());
    pFiler->writeVector3d(m_placement.GetYAxis());
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzKdEnt::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    AcGePoint3d location = m_placement.GetLocation();
    AcGeVector3d xAxis = m_placement.GetXAxis();
    AcGeVector3d yAxis = m_placement.GetYAxis();
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzKdEnt", [&](const resbuf& rb) {
            const double* p = rb.resval.rpoint;
            switch (rb.restype) {
                case kDxfLocation:
                    location.set(p[0], p[1], p[2]);
                    return true;
                case kDxfXAxis:
                    xAxis.set(p[0], p[1], p[2]);
                    return true;
                case kDxfYAxis:
                    yAxis.set(p[0], p[1], p[2]);
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    const KelAzCommon::Placement3D placement(location, xAxis, yAxis);
    if (!placement.IsValid()) {
        return pFiler->setError(Acad::eInvalidDxfCode,
                                L"Error: the placement's axes are not unit and square");
    }
    m_placement = placement;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzKdEnt::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzKdEnt");
    pFiler->writePoint3d(kDxfLocation, m_placement.GetLocation());
    pFiler->writeVector3d(kDxfXAxis, m_placement.GetXAxis());
    pFiler->writeVector3d(kDxfYAxis, m_placement.GetYAxis());
    return pFiler->filerStatus();
}
