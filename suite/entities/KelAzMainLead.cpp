#include "suite/entities/KelAzMainLead.h"

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzMainLead, KelAzLeadPrototype, AcDb::kDHL_CURRENT,
                        AcDb::kMReleaseCurrent, 0, KELAZMAINLEAD, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kMainLeadVersion = 1;
constexpr auto kDxfFloorName = static_cast<AcDb::DxfCode>(300);
}  // namespace

Acad::ErrorStatus KelAzMainLead::SetMainPipeInfo(const MainPipeInfo& info) {
    CString floorName;
    AcGePoint3d start;
    AcGePoint3d end;
    const Acad::ErrorStatus es = kelaz::RiserFromInfo(info, floorName, start, end);
    if (es != Acad::eOk) return es;
    assertWriteEnabled();
    m_floorName = floorName;
    KelAzLeadPrototype::setStartPoint(start);
    KelAzLeadPrototype::setEndPoint(end);
    return Acad::eOk;
}

MainPipeInfo KelAzMainLead::GetMainPipeInfo() const {
    assertReadEnabled();
    return kelaz::RiserInfo(m_floorName, StartPoint(), EndPoint());
}

Acad::ErrorStatus KelAzMainLead::setStartPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    KelAzLeadPrototype::setStartPoint(point);
    return KelAzLeadPrototype::setEndPoint(AcGePoint3d(point.x, point.y, EndPoint().z));
}

Acad::ErrorStatus KelAzMainLead::setEndPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    KelAzLeadPrototype::setEndPoint(point);
    return KelAzLeadPrototype::setStartPoint(AcGePoint3d(point.x, point.y, StartPoint().z));
}

Acad::ErrorStatus KelAzMainLead::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    extents = kelaz::RiserExtents(StartPoint(), EndPoint());
    return Acad::eOk;
}

Adesk::Boolean KelAzMainLead::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    kelaz::DrawRiser(mode, StartPoint());
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzMainLead::transformBy(const AcGeMatrix3d& xform) {
    AcGePoint3d start = StartPoint();
    AcGePoint3d end = EndPoint();
    const Acad::ErrorStatus es = kelaz::TransformRiser(xform, start, end);
    if (es != Acad::eOk) return es;
    assertWriteEnabled();
    KelAzLeadPrototype::setStartPoint(start);
    return KelAzLeadPrototype::setEndPoint(end);
}

void KelAzMainLead::ListProperties(kelaz::PropertyList& list) const {
    KelAzLeadPrototype::ListProperties(list);
    kelaz::ListRiser(list, m_floorName, StartPoint(), EndPoint());
}

Acad::ErrorStatus KelAzMainLead::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzLeadPrototype::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kMainLeadVersion);
    if (es != Acad::eOk) return es;
    CString floorName;
    if (pFiler->readString(floorName) != Acad::eOk) return pFiler->filerStatus();
    // A sloping riser or a floor name too long for MainPipeInfo comes from damaged data.
    if (!kelaz::IsRiser(StartPoint(), EndPoint()) ||
        floorName.GetLength() > kelaz::kMaxFloorNameLength) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_floorName = floorName;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzMainLead::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzLeadPrototype::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kMainLeadVersion);
    pFiler->writeString(m_floorName);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzMainLead::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzLeadPrototype::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    CString floorName = m_floorName;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzMainLead", [&](const resbuf& rb) {
            if (rb.restype != kDxfFloorName) return false;
            floorName = rb.resval.rstring;
            return true;
        });
    if (es != Acad::eOk) return es;
    if (!kelaz::IsRiser(StartPoint(), EndPoint())) {
        return pFiler->setError(Acad::eInvalidDxfCode,
                                L"Error: the ends of a riser are at different plan positions");
    }
    if (floorName.GetLength() > kelaz::kMaxFloorNameLength) {
        return pFiler->setError(Acad::eInvalidDxfCode,
                                L"Error: the floor name is longer than %d characters",
                                kelaz::kMaxFloorNameLength);
    }
    m_floorName = floorName;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzMainLead::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzLeadPrototype::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzMainLead");
    pFiler->writeString(kDxfFloorName, m_floorName);
    return pFiler->filerStatus();
}
