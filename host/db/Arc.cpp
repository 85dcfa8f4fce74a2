#include "host/db/Arc.h"

#include <utility>

#include "host/app/RxClass.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/Ocs.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/Bulge.h"
#include "host/gi/WorldDraw.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbArc, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ARC,
                        kelaz)

namespace {
constexpr Adesk::UInt16 kArcVersion = 1;

// The sweep from start to end counter-clockwise; equal angles are a whole turn.
double Sweep(double startAngle, double endAngle) {
    const double sweep = kelaz::NormalizeAngle(endAngle - startAngle);
    return sweep > 0.0 ? sweep : kelaz::kTwoPi;
}
}  // namespace

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                 double startAngle, double endAngle)
    : m_center(center),
      m_radius(radius > 0.0 ? radius : 1.0),
      m_startAngle(kelaz::NormalizeAngle(startAngle)),
      m_endAngle(kelaz::NormalizeAngle(endAngle)) {
    const AcGeVector3d unit = normal.normal();
    if (unit.isUnitLength()) m_normal = unit;
}

AcGePoint3d AcDbArc::center() const {
    assertReadEnabled();
    return m_center;
}

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
    assertWriteEnabled();
    m_center = center;
    return Acad::eOk;
}

double AcDbArc::radius() const {
    assertReadEnabled();
    return m_radius;
}

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    if (!(radius > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_radius = radius;
    return Acad::eOk;
}

double AcDbArc::startAngle() const {
    assertReadEnabled();
    return m_startAngle;
}

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
    assertWriteEnabled();
    m_startAngle = kelaz::NormalizeAngle(angle);
    return Acad::eOk;
}

double AcDbArc::endAngle() const {
    assertReadEnabled();
    return m_endAngle;
}

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
    assertWriteEnabled();
    m_endAngle = kelaz::NormalizeAngle(angle);
    return Acad::eOk;
}

double AcDbArc::totalAngle() const {
    assertReadEnabled();
    return Sweep(m_startAngle, m_endAngle);
}

AcGeVector3d AcDbArc::normal() const {
    assertReadEnabled();
    return m_normal;
}

Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = unit;
    return Acad::eOk;
}

double AcDbArc::thickness() const {
    assertReadEnabled();
    return m_thickness;
}

Acad::ErrorStatus AcDbArc::setThickness(double thickness) {
    assertWriteEnabled();
    m_thickness = thickness;
    return Acad::eOk;
}

AcGePoint3d AcDbArc::pointAtAngle(double angle) const {
    return m_center + kelaz::OcsDirection(m_normal, angle) * m_radius;
}

Acad::ErrorStatus AcDbArc::getStartParam(double& param) const {
    assertReadEnabled();
    param = m_startAngle;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getEndParam(double& param) const {
    assertReadEnabled();
    param = m_startAngle + Sweep(m_startAngle, m_endAngle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getStartPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    point = pointAtAngle(m_startAngle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getEndPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    point = pointAtAngle(m_endAngle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    if (param < m_startAngle || param > m_startAngle + Sweep(m_startAngle, m_endAngle)) {
        return Acad::eInvalidInput;
    }
    point = pointAtAngle(param);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    extents = AcDbExtents();
    const AcGeVector3d start = kelaz::OcsDirection(m_normal, m_startAngle);
    const double sweep = Sweep(m_startAngle, m_endAngle);
    kelaz::AddArcExtents(extents, m_center, m_radius, m_normal, start, sweep);
    if (m_thickness != 0.0) {
        kelaz::AddArcExtents(extents, m_center + m_normal * m_thickness, m_radius, m_normal, start,
                             sweep);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbArc::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    mode->geometry().circularArc(m_center, m_radius, m_normal,
                                 kelaz::OcsDirection(m_normal, m_startAngle),
                                 Sweep(m_startAngle, m_endAngle));
    return Adesk::kTrue;
}

Acad::ErrorStatus AcDbArc::transformBy(const AcGeMatrix3d& xform) {
    if (!xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    AcGePoint3d start = pointAtAngle(m_startAngle);
    AcGePoint3d end = pointAtAngle(m_endAngle);
    const AcGePoint3d center = xform * m_center;
    const AcGeVector3d normal = (xform * m_normal).normal();
    const double scale = xform.scale();
    // A translation or uniform scaling keeps the frame: the angles stay exactly as they are.
    bool keepsFrame = normal == m_normal;
    for (int r = 0; r < 3 && keepsFrame; ++r) {
        for (int c = 0; c < 3; ++c) {
            if (xform.entry[r][c] != (r == c ? scale : 0.0)) keepsFrame = false;
        }
    }
    m_center = center;
    m_radius *= scale;
    m_thickness *= scale;
    if (keepsFrame) return Acad::eOk;
    start.transformBy(xform);
    end.transformBy(xform);
    // A mirroring turns the arc clockwise about the transformed normal: swapping its ends makes
    // it counter-clockwise again.
    if (xform.det() < 0.0) std::swap(start, end);
    m_normal = normal;
    m_startAngle = kelaz::OcsAngle(m_normal, start - m_center);
    m_endAngle = kelaz::OcsAngle(m_normal, end - m_center);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::dwgInFields(AcDbDwgFiler* pFiler) {
    if (AcDbCurve::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::UInt16 version = 0;
    pFiler->readUInt16(&version);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (version > kArcVersion) return Acad::eMakeMeProxy;
    AcGePoint3d center;
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
    AcGeVector3d normal;
    double thickness = 0.0;
    pFiler->readPoint3d(&center);
    pFiler->readDouble(&radius);
    pFiler->readDouble(&startAngle);
    pFiler->readDouble(&endAngle);
    pFiler->readVector3d(&normal);
    pFiler->readDouble(&thickness);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!(radius > 0.0) || !normal.isUnitLength() || !(startAngle >= 0.0) ||
        !(startAngle < kelaz::kTwoPi) || !(endAngle >= 0.0) || !(endAngle < kelaz::kTwoPi)) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_center = center;
    m_radius = radius;
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    m_normal = normal;
    m_thickness = thickness;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbArc::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbCurve::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kArcVersion);
    pFiler->writePoint3d(m_center);
    pFiler->writeDouble(m_radius);
    pFiler->writeDouble(m_startAngle);
    pFiler->writeDouble(m_endAngle);
    pFiler->writeVector3d(m_normal);
    pFiler->writeDouble(m_thickness);
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbCurve::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    // The circle's fields come first under their own marker, as the host files an arc.
    if (!pFiler->atSubclassData(L"AcDbCircle")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s",
                                L"AcDbCircle");
    }
    AcGePoint3d center = m_center;
    double radius = m_radius;
    double startAngle = m_startAngle;
    double endAngle = m_endAngle;
    AcGeVector3d normal = m_normal;
    double thickness = m_thickness;
    bool arcPart = false;
    resbuf rb;
    while (!pFiler->atEOF() && pFiler->readItem(&rb) == Acad::eOk) {
        const double* p = rb.resval.rpoint;
        if (rb.restype == AcDb::kDxfXCoord && !arcPart) {
            center.set(p[0], p[1], p[2]);
        } else if (rb.restype == AcDb::kDxfReal && !arcPart) {
            radius = rb.resval.rreal;
        } else if (rb.restype == AcDb::kDxfThickness && !arcPart) {
            thickness = rb.resval.rreal;
        } else if (rb.restype == AcDb::kDxfNormalX && !arcPart) {
            normal.set(p[0], p[1], p[2]);
        } else if (rb.restype == AcDb::kDxfSubclass && !arcPart &&
                   std::wstring_view(rb.resval.rstring) == L"AcDbArc") {
            arcPart = true;
        } else if (rb.restype == AcDb::kDxfAngle && arcPart) {
            startAngle = rb.resval.rreal;
        } else if (rb.restype == AcDb::kDxfAngle + 1 && arcPart) {
            endAngle = rb.resval.rreal;
        } else {
            pFiler->pushBackItem();
            break;
        }
    }
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!arcPart) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s", L"AcDbArc");
    }
    if (!(radius > 0.0) || !normal.isUnitLength()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: radius %g or normal invalid",
                                radius);
    }
    m_center = center;
    m_radius = radius;
    m_startAngle = kelaz::NormalizeAngle(startAngle);
    m_endAngle = kelaz::NormalizeAngle(endAngle);
    m_normal = normal;
    m_thickness = thickness;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbCurve::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbCircle");
    pFiler->writeDouble(AcDb::kDxfThickness, m_thickness);
    pFiler->writePoint3d(AcDb::kDxfXCoord, m_center);
    pFiler->writeDouble(AcDb::kDxfReal, m_radius);
    pFiler->writeVector3d(AcDb::kDxfNormalX, m_normal);
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbArc");
    // Angles in radians, as the filer takes them; a file writer turns them into degrees.
    pFiler->writeDouble(AcDb::kDxfAngle, m_startAngle);
    pFiler->writeDouble(static_cast<AcDb::DxfCode>(AcDb::kDxfAngle + 1), m_endAngle);
    return pFiler->filerStatus();
}
