#include "host/db/Circle.h"

#include <algorithm>
#include <cmath>

#include "host/app/RxClass.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/Ocs.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/WorldDraw.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        CIRCLE, kelaz)

namespace {
constexpr Adesk::UInt16 kCircleVersion = 1;
}

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_center(center), m_radius(radius > 0.0 ? radius : 1.0) {
    const AcGeVector3d unit = normal.normal();
    if (unit.isUnitLength()) m_normal = unit;
}

AcGePoint3d AcDbCircle::center() const {
    assertReadEnabled();
    return m_center;
}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
    assertWriteEnabled();
    m_center = center;
    return Acad::eOk;
}

double AcDbCircle::radius() const {
    assertReadEnabled();
    return m_radius;
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    if (!(radius > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_radius = radius;
    return Acad::eOk;
}

AcGeVector3d AcDbCircle::normal() const {
    assertReadEnabled();
    return m_normal;
}

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = unit;
    return Acad::eOk;
}

double AcDbCircle::thickness() const {
    assertReadEnabled();
    return m_thickness;
}

Acad::ErrorStatus AcDbCircle::setThickness(double thickness) {
    assertWriteEnabled();
    m_thickness = thickness;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getStartParam(double& param) const {
    assertReadEnabled();
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getEndParam(double& param) const {
    assertReadEnabled();
    param = kelaz::kTwoPi;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getStartPoint(AcGePoint3d& point) const {
    return getPointAtParam(0.0, point);
}

Acad::ErrorStatus AcDbCircle::getEndPoint(AcGePoint3d& point) const {
    return getPointAtParam(0.0, point);
}

Acad::ErrorStatus AcDbCircle::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    if (param < 0.0 || param > kelaz::kTwoPi) return Acad::eInvalidInput;
    point = m_center + kelaz::OcsDirection(m_normal, param) * m_radius;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    // Along world axis i the circle reaches r·sqrt(1 - n[i]²) from its centre.
    const AcGeVector3d half(m_radius * std::sqrt(std::max(0.0, 1.0 - m_normal.x * m_normal.x)),
                            m_radius * std::sqrt(std::max(0.0, 1.0 - m_normal.y * m_normal.y)),
                            m_radius * std::sqrt(std::max(0.0, 1.0 - m_normal.z * m_normal.z)));
    extents = AcDbExtents();
    extents.addPoint(m_center - half);
    extents.addPoint(m_center + half);
    if (m_thickness != 0.0) {
        const AcGeVector3d up = m_normal * m_thickness;
        extents.addPoint(m_center - half + up);
        extents.addPoint(m_center + half + up);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbCircle::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    mode->geometry().circle(m_center, m_radius, m_normal);
    return Adesk::kTrue;
}

Acad::ErrorStatus AcDbCircle::transformBy(const AcGeMatrix3d& xform) {
    if (!xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    m_center.transformBy(xform);
    m_normal = (xform * m_normal).normal();
    m_radius *= xform.scale();
    m_thickness *= xform.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::dwgInFields(AcDbDwgFiler* pFiler) {
    if (AcDbCurve::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::UInt16 version = 0;
    pFiler->readUInt16(&version);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (version > kCircleVersion) return Acad::eMakeMeProxy;
    AcGePoint3d center;
    double radius = 0.0;
    AcGeVector3d normal;
    double thickness = 0.0;
    pFiler->readPoint3d(&center);
    pFiler->readDouble(&radius);
    pFiler->readVector3d(&normal);
    pFiler->readDouble(&thickness);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!(radius > 0.0) || !normal.isUnitLength()) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_center = center;
    m_radius = radius;
    m_normal = normal;
    m_thickness = thickness;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbCurve::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kCircleVersion);
    pFiler->writePoint3d(m_center);
    pFiler->writeDouble(m_radius);
    pFiler->writeVector3d(m_normal);
    pFiler->writeDouble(m_thickness);
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbCurve::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    if (!pFiler->atSubclassData(L"AcDbCircle")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s",
                                L"AcDbCircle");
    }
    AcGePoint3d center = m_center;
    double radius = m_radius;
    AcGeVector3d normal = m_normal;
    double thickness = m_thickness;
    resbuf rb;
    while (!pFiler->atEOF() && pFiler->readItem(&rb) == Acad::eOk) {
        const double* p = rb.resval.rpoint;
        if (rb.restype == AcDb::kDxfXCoord) {
            center.set(p[0], p[1], p[2]);
        } else if (rb.restype == AcDb::kDxfReal) {
            radius = rb.resval.rreal;
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
    if (!(radius > 0.0) || !normal.isUnitLength()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: radius %g or normal invalid",
                                radius);
    }
    m_center = center;
    m_radius = radius;
    m_normal = normal;
    m_thickness = thickness;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbCurve::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbCircle");
    pFiler->writeDouble(AcDb::kDxfThickness, m_thickness);
    pFiler->writePoint3d(AcDb::kDxfXCoord, m_center);
    pFiler->writeDouble(AcDb::kDxfReal, m_radius);
    pFiler->writeVector3d(AcDb::kDxfNormalX, m_normal);
    return pFiler->filerStatus();
}
