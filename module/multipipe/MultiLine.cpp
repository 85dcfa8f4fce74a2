#include "module/multipipe/MultiLine.h"

#include <memory>
#include <vector>

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/Polyline.h"
#include "host/ge/Matrix3d.h"
#include "host/ge/Plane.h"

namespace {
constexpr Adesk::UInt16 kMultiLineVersion = 1;
constexpr const wchar_t* kClassName = L"CMultiLine";
}  // namespace

AcRxClass* CMultiLine::gpDesc = nullptr;

void CMultiLine::rxInit() {
    if (gpDesc != nullptr) return;
    gpDesc = newAcRxClass(
        kClassName, AcDbEntity::desc()->name(), 0, 0, 0,
        []() -> AcRxObject* { return new CMultiLine(); }, L"CMULTILINE", L"kelaz");
}

// Looked up in the class dictionary once and kept for the life of the process.
AcRxClass* CMultiLine::desc() {
    static AcRxClass* cached = [] {
        rxInit();
        return AcRxClass::cast(acrxClassDictionary->at(kClassName));
    }();
    return cached;
}

AcRxClass* CMultiLine::isA() const { return desc(); }

void CMultiLine::SetFlag(Adesk::Boolean state) {
    assertWriteEnabled();
    m_bState = state;
}

Adesk::Boolean CMultiLine::GetFlag() const {
    assertReadEnabled();
    return m_bState;
}

void CMultiLine::SetSegments(const MultiLineSegmentArray& segments) {
    assertWriteEnabled();
    m_segments = segments;
}

const MultiLineSegmentArray& CMultiLine::GetSegments() const {
    assertReadEnabled();
    return m_segments;
}

Adesk::Boolean CMultiLine::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    AcDbEntity::worldDraw(mode);
    // The preview lies flat at elevation 0, whatever the heights of the traced points.
    const AcGePlane plane(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
    std::vector<std::unique_ptr<AcDbPolyline>> polylines;
    polylines.reserve(static_cast<size_t>(m_segments.length()));
    for (const MultiLineSegment& s : m_segments) {
        auto pline = std::make_unique<AcDbPolyline>(3);
        pline->addVertexAt(0, s.pt2.convert2d(plane), s.bulge0, -1, -1);
        pline->addVertexAt(1, s.pt1.convert2d(plane), s.bulge1, -1, -1);
        pline->addVertexAt(2, s.pt0.convert2d(plane), s.bulge2, -1, -1);
        polylines.push_back(std::move(pline));
    }
    for (const auto& pline : polylines) pline->worldDraw(mode);
    return Adesk::kTrue;
}

void CMultiLine::viewportDraw(AcGiViewportDraw* mode) {
    assertReadEnabled();
    AcDbEntity::viewportDraw(mode);
}

Acad::ErrorStatus CMultiLine::transformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled(false, true);
    AcDbDwgFiler* filer = undoFiler();
    if (filer == nullptr) return Acad::eOk;
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    xform.getCoordSystem(origin, x, y, z);
    filer->writeAddress(desc());
    filer->writeInt16(kTransformUndoCode);
    filer->writePoint3d(origin);
    filer->writeVector3d(x);
    filer->writeVector3d(y);
    filer->writeVector3d(z);
    return Acad::eOk;
}

Acad::ErrorStatus CMultiLine::applyPartialUndo(AcDbDwgFiler* filer, AcRxClass* objectClass) {
    if (objectClass != desc()) return AcDbEntity::applyPartialUndo(filer, objectClass);
    Adesk::Int16 code = 0;
    filer->readInt16(&code);
    if (code != kTransformUndoCode) return AcDbEntity::applyPartialUndo(filer, objectClass);
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    filer->readPoint3d(&origin);
    filer->readVector3d(&x);
    filer->readVector3d(&y);
    filer->readVector3d(&z);
    AcGeMatrix3d inverse;
    inverse.setCoordSystem(origin, x, y, z);
    inverse.invert();
    return transformBy(inverse);
}

Acad::ErrorStatus CMultiLine::dwgOutFields(AcDbDwgFiler* pFiler) const {
    assertReadEnabled();
    if (AcDbEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kMultiLineVersion);
    pFiler->writeBoolean(m_bState);
    for (const MultiLineSegment& s : m_segments) {
        pFiler->writePoint3d(s.pt2);
        pFiler->writePoint3d(s.pt1);
        pFiler->writePoint3d(s.pt0);
    }
    return pFiler->filerStatus();
}

Acad::ErrorStatus CMultiLine::dwgInFields(AcDbDwgFiler* pFiler) {
    assertWriteEnabled();
    if (AcDbEntity::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::UInt16 version = 0;
    pFiler->readUInt16(&version);
    if (version > kMultiLineVersion) return Acad::eMakeMeProxy;
    if (version == 0) return pFiler->filerStatus();
    pFiler->readBoolean(&m_bState);
    // The number of segments is not filed: the points of the segments this entity holds are
    // read and dropped, so a filed preview comes back without segments of its own.
    for (int i = 0; i < m_segments.length(); ++i) {
        AcGePoint3d discarded;
        pFiler->readPoint3d(&discarded);
        pFiler->readPoint3d(&discarded);
        pFiler->readPoint3d(&discarded);
    }
    return pFiler->filerStatus();
}

Acad::ErrorStatus CMultiLine::dxfOutFields(AcDbDxfFiler* pFiler) const {
    assertReadEnabled();
    if (AcDbEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, kClassName);
    pFiler->writeInt16(AcDb::kDxfInt16, static_cast<Adesk::Int16>(kMultiLineVersion));
    return pFiler->filerStatus();
}

Acad::ErrorStatus CMultiLine::dxfInFields(AcDbDxfFiler* pFiler) {
    assertWriteEnabled();
    if (AcDbEntity::dxfInFields(pFiler) != Acad::eOk || !pFiler->atSubclassData(kClassName)) {
        return pFiler->filerStatus();
    }
    resbuf item;
    pFiler->readItem(&item);
    if (item.restype != AcDb::kDxfInt16) {
        pFiler->pushBackItem();
        pFiler->setError(Acad::eInvalidDxfCode, L"Error: expected object version group code %d",
                         static_cast<int>(AcDb::kDxfInt16));
        return pFiler->filerStatus();
    }
    if (static_cast<Adesk::UInt16>(item.resval.rint) > kMultiLineVersion) return Acad::eMakeMeProxy;
    return pFiler->filerStatus();
}
