#include "suite/entities/KelAzMainPipe.h"

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzMainPipe, KelAzCurveEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent,
                        0, KELAZMAINPIPE, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kMainPipeVersion = 1;
constexpr auto kDxfFloorName = static_cast<AcDb::DxfCode>(300);
}  // namespace

Acad::ErrorStatus KelAzMainPipe::SetMainPipeInfo(const MainPipeInfo& info) {
    CString floorName;
    AcGePoint3d start;
    AcGePoint3d end;
    const Acad::ErrorStatus es = kelaz::RiserFromInfo(info, floorName, start, end);
    if (es != Acad::eOk) return es;
    assertWriteEnabled();
    m_floorName = floorName;
    KelAzCurveEntity::setStartPoint(start);
    KelAzCurveEntity::setEndPoint(end);
    return Acad::eOk;
}

MainPipeInfo KelAzMainPipe::GetMainPipeInfo() const {
    assertReadEnabled();
    return kelaz::RiserInfo(m_floorName, StartPoint(), EndPoint());
}

Acad::ErrorStatus KelAzMainPipe::setStartPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    KelAzCurveEntity::setStartPoint(point);
    return KelAzCurveEntity::setEndPoint(AcGePoint3d(point.x, point.y, EndPoint().z));
}

Acad::ErrorStatus KelAzMainPipe::setEndPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    KelAzCurveEntity::setEndPoint(point);
    return KelAzCurveEntity::setStartPoint(AcGePoint3d(point.x, point.y, StartPoint().z));
}

Acad::ErrorStatus KelAzMainPipe::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    extents = kelaz::RiserExtents(StartPoint(), EndPoint());
    return Acad::eOk;
}

Adesk::Boolean KelAzMainPipe::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    kelaz::DrawRiser(mode, StartPoint());
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzMainPipe::transformBy(const AcGeMatrix3d& xform) {
    AcGePoint3d start = StartPoint();
    AcGePoint3d end = EndPoint();
    const Acad::ErrorStatus es = kelaz::TransformRiser(xform, start, end);
    if (es != Acad::eOk) return es;
    assertWriteEnabled();
    KelAzCurveEntity::setStartPoint(start);
    return KelAzCurveEntity::setEndPoint(end);
}

void KelAzMainPipe::ListProperties(kelaz::PropertyList& list) const {
    KelAzCurveEntity::ListProperties(list);
    kelaz::ListRiser(list, m_floorName, StartPoint(), EndPoint());
}

Acad::ErrorStatus KelAzMainPipe::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzCurveEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kMainPipeVersion);
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

Acad::ErrorStatus KelAzMainPipe::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzCurveEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kMainPipeVersion);
    pFiler->writeString(m_floorName);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzMainPipe::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzCurveEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    CString floorName = m_floorName;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzMainPipe", [&](const resbuf& rb) {
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

Acad::ErrorStatus KelAzMainPipe::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzCurveEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzMainPipe");
    pFiler->writeString(kDxfFloorName, m_floorName);
    return pFiler->filerStatus();
}
