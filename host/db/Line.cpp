#include "host/db/Line.h"

#include "host/app/RxClass.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/WorldDraw.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbLine, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, LINE,
                        kelaz)

namespace {
constexpr Adesk::UInt16 kLineVersion = 1;
}

AcGePoint3d AcDbLine::startPoint() const {
    assertReadEnabled();
    return m_start;
}

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_start = point;
    return Acad::eOk;
}

AcGePoint3d AcDbLine::endPoint() const {
    assertReadEnabled();
    return m_end;
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_end = point;
    return Acad::eOk;
}

double AcDbLine::thickness() const {
    assertReadEnabled();
    return m_thickness;
}

Acad::ErrorStatus AcDbLine::setThickness(double thickness) {
    assertWriteEnabled();
    m_thickness = thickness;
    return Acad::eOk;
}

AcGeVector3d AcDbLine::normal() const {
    assertReadEnabled();
    return m_normal;
}

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = unit;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getStartParam(double& param) const {
    assertReadEnabled();
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getEndParam(double& param) const {
    assertReadEnabled();
    param = m_start.distanceTo(m_end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getStartPoint(AcGePoint3d& point) const {
    point = startPoint();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getEndPoint(AcGePoint3d& point) const {
    point = endPoint();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    const double length = m_start.distanceTo(m_end);
    if (param < 0.0 || param > length) return Acad::eInvalidInput;
    point = length == 0.0 ? m_start : m_start + (m_end - m_start) * (param / length);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    extents = AcDbExtents();
    extents.addPoint(m_start);
    extents.addPoint(m_end);
    if (m_thickness != 0.0) {
        extents.addPoint(m_start + m_normal * m_thickness);
        extents.addPoint(m_end + m_normal * m_thickness);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbLine::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    const AcGePoint3d points[2] = {m_start, m_end};
    mode->geometry().polyline(2, points, &m_normal);
    return Adesk::kTrue;
}

Acad::ErrorStatus AcDbLine::transformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    m_start.transformBy(xform);
    m_end.transformBy(xform);
    const AcGeVector3d normal = (xform * m_normal).normal();
    if (normal.isUnitLength()) m_normal = normal;
    m_thickness *= xform.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::dwgInFields(AcDbDwgFiler* pFiler) {
    if (AcDbCurve::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::UInt16 version = 0;
    pFiler->readUInt16(&version);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (version > kLineVersion) return Acad::eMakeMeProxy;
    AcGePoint3d start;
    AcGePoint3d end;
    double thickness = 0.0;
    AcGeVector3d normal;
    pFiler->readPoint3d(&start);
    pFiler->readPoint3d(&end);
    pFiler->readDouble(&thickness);
    pFiler->readVector3d(&normal);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!normal.isUnitLength()) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_start = start;
    m_end = end;
    m_thickness = thickness;
    m_normal = normal;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLine::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbCurve::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kLineVersion);
    pFiler->writePoint3d(m_start);
    pFiler->writePoint3d(m_end);
    pFiler->writeDouble(m_thickness);
    pFiler->writeVector3d(m_normal);
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbCurve::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    if (!pFiler->atSubclassData(L"AcDbLine")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s", L"AcDbLine");
    }
    AcGePoint3d start = m_start;
    AcGePoint3d end = m_end;
    double thickness = m_thickness;
    AcGeVector3d normal = m_normal;
    resbuf rb;
    while (!pFiler->atEOF() && pFiler->readItem(&rb) == Acad::eOk) {
        const double* p = rb.resval.rpoint;
        if (rb.restype == AcDb::kDxfXCoord) {
            start.set(p[0], p[1], p[2]);
        } else if (rb.restype == AcDb::kDxfXCoord + 1) {
            end.set(p[0], p[1], p[2]);
        } else if (rb.restype == AcDb::kDxfThickness) {
            thickness = rb.resval.rreal;
        } else if (rb.restype == AcDb::kDxfNormalX) {
            normal.set(p[0], p[1], p[2]);
        } else {
            pFiler->pushBackItem();
            break;
        }
    }
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!normal.isUnitLength()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: the normal is not a unit vector");
    }
    m_start = start;
    m_end = end;
    m_thickness = thickness;
    m_normal = normal;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbCurve::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLine");
    pFiler->writeDouble(AcDb::kDxfThickness, m_thickness);
    pFiler->writePoint3d(AcDb::kDxfXCoord, m_start);
    pFiler->writePoint3d(static_cast<AcDb::DxfCode>(AcDb::kDxfXCoord + 1), m_end);
    pFiler->writeVector3d(AcDb::kDxfNormalX, m_normal);
    return pFiler->filerStatus();
}
