#include "host/db/Polyline.h"

#include <cmath>

#include "host/app/RxClass.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"
#include "host/db/Ocs.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/LineSeg2d.h"
#include "host/ge/LineSeg3d.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/Bulge.h"
#include "host/gi/WorldDraw.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        LWPOLYLINE, kelaz)

namespace {
constexpr Adesk::UInt16 kPolylineVersion = 1;
constexpr Adesk::Int16 kDxfClosedFlag = 1;
}  // namespace

AcDbPolyline::AcDbPolyline(unsigned int num) { m_vertices.reserve(num); }

unsigned int AcDbPolyline::numVerts() const {
    assertReadEnabled();
    return static_cast<unsigned int>(m_vertices.size());
}

unsigned int AcDbPolyline::numSegments() const {
    const auto n = static_cast<unsigned int>(m_vertices.size());
    if (n < 2) return 0;
    return m_closed ? n : n - 1;
}

AcGePoint3d AcDbPolyline::toWorld(const AcGePoint2d& pt) const {
    return AcGePoint3d::kOrigin + kelaz::OcsXAxis(m_normal) * pt.x +
           kelaz::OcsYAxis(m_normal) * pt.y + m_normal * m_elevation;
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge,
                                            double startWidth, double endWidth) {
    if (index > m_vertices.size()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices.insert(m_vertices.begin() + index, Vertex{pt, bulge, startWidth, endWidth});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices.erase(m_vertices.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& pt) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    pt = m_vertices[index].point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& pt) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    pt = toWorld(m_vertices[index].point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& pt) {
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices[index].point = pt;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    bulge = m_vertices[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices[index].bulge = bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth,
                                            double& endWidth) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    startWidth = m_vertices[index].startWidth;
    endWidth = m_vertices[index].endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth,
                                            double endWidth) {
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices[index].startWidth = startWidth;
    m_vertices[index].endWidth = endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    assertReadEnabled();
    width = m_constantWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (width < 0.0) return Acad::eNegativeValueNotAllowed;
    assertWriteEnabled();
    m_constantWidth = width;
    return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
    assertReadEnabled();
    if (m_vertices.empty()) return kEmpty;
    if (m_vertices.size() == 1) return kPoint;
    if (index >= numSegments()) return kEmpty;
    const Vertex& v0 = m_vertices[index];
    const Vertex& v1 = m_vertices[(index + 1) % m_vertices.size()];
    if (v0.point.isEqualTo(v1.point)) return kCoincident;
    return v0.bulge != 0.0 ? kArc : kLine;
}

bool AcDbPolyline::arcSeg(unsigned int index, AcGeCircArc3d& arc) const {
    if (segType(index) != kArc) return false;
    const Vertex& v0 = m_vertices[index];
    const Vertex& v1 = m_vertices[(index + 1) % m_vertices.size()];
    arc = kelaz::ArcFromBulge(toWorld(v0.point), toWorld(v1.point), v0.bulge, m_normal);
    return true;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const {
    assertReadEnabled();
    return arcSeg(index, arc) ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg3d& line) const {
    assertReadEnabled();
    const SegType type = segType(index);
    if (type != kLine && type != kCoincident) return Acad::eNotApplicable;
    line.set(toWorld(m_vertices[index].point),
             toWorld(m_vertices[(index + 1) % m_vertices.size()].point));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg2d& line) const {
    assertReadEnabled();
    const SegType type = segType(index);
    if (type != kLine && type != kCoincident) return Acad::eNotApplicable;
    line.set(m_vertices[index].point, m_vertices[(index + 1) % m_vertices.size()].point);
    return Acad::eOk;
}

double AcDbPolyline::elevation() const {
    assertReadEnabled();
    return m_elevation;
}

void AcDbPolyline::setElevation(double elevation) {
    assertWriteEnabled();
    m_elevation = elevation;
}

AcGeVector3d AcDbPolyline::normal() const {
    assertReadEnabled();
    return m_normal;
}

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = unit;
    return Acad::eOk;
}

double AcDbPolyline::thickness() const {
    assertReadEnabled();
    return m_thickness;
}

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) {
    assertWriteEnabled();
    m_thickness = thickness;
    return Acad::eOk;
}

Adesk::Boolean AcDbPolyline::isClosed() const {
    assertReadEnabled();
    return m_closed ? Adesk::kTrue : Adesk::kFalse;
}

void AcDbPolyline::setClosed(Adesk::Boolean closed) {
    assertWriteEnabled();
    m_closed = closed != Adesk::kFalse;
}

bool AcDbPolyline::isOnlyLines() const {
    assertReadEnabled();
    for (const Vertex& v : m_vertices) {
        if (v.bulge != 0.0) return false;
    }
    return true;
}

Acad::ErrorStatus AcDbPolyline::getStartParam(double& param) const {
    assertReadEnabled();
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getEndParam(double& param) const {
    assertReadEnabled();
    param = numSegments();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getStartPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    if (m_vertices.empty()) return Acad::eNotApplicable;
    point = toWorld(m_vertices.front().point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getEndPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    if (m_vertices.empty()) return Acad::eNotApplicable;
    point = toWorld(m_closed ? m_vertices.front().point : m_vertices.back().point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    if (m_vertices.empty()) return Acad::eNotApplicable;
    const unsigned int segments = numSegments();
    if (param < 0.0 || param > segments) return Acad::eInvalidInput;
    if (segments == 0) {
        point = toWorld(m_vertices.front().point);
        return Acad::eOk;
    }
    const auto index = std::min(static_cast<unsigned int>(param), segments - 1);
    const double t = param - index;
    AcGeCircArc3d arc;
    if (arcSeg(index, arc)) {
        point = arc.evalPoint(arc.startAng() + t * (arc.endAng() - arc.startAng()));
        return Acad::eOk;
    }
    const AcGePoint3d p0 = toWorld(m_vertices[index].point);
    const AcGePoint3d p1 = toWorld(m_vertices[(index + 1) % m_vertices.size()].point);
    point = p0 + (p1 - p0) * t;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    if (m_vertices.empty()) return Acad::eInvalidExtents;
    AcDbExtents box;
    for (const Vertex& v : m_vertices) box.addPoint(toWorld(v.point));
    for (unsigned int i = 0; i < numSegments(); ++i) {
        AcGeCircArc3d arc;
        if (!arcSeg(i, arc)) continue;
        kelaz::AddArcExtents(box, arc.center(), arc.radius(), arc.normal(), arc.refVec(),
                             arc.endAng() - arc.startAng());
    }
    if (m_thickness != 0.0) box.expandBy(m_normal * m_thickness);
    extents = box;
    return Acad::eOk;
}

Adesk::Boolean AcDbPolyline::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    mode->geometry().pline(*this);
    return Adesk::kTrue;
}

Acad::ErrorStatus AcDbPolyline::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    bool lines = true;
    for (const Vertex& v : m_vertices) lines = lines && v.bulge == 0.0;
    const bool uniform = xform.isUniScaledOrtho();
    if (!uniform && !lines) return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    // Normals go through the inverse transpose, so that they stay normal to the moved plane.
    const AcGeVector3d normal = (xform.inverse().transpose() * m_normal).normal();
    const AcGeVector3d xAxis = kelaz::OcsXAxis(normal);
    const AcGeVector3d yAxis = kelaz::OcsYAxis(normal);
    const AcGePoint3d origin = xform * toWorld(AcGePoint2d::kOrigin);
    const bool mirrored = xform.det() < 0.0;
    const double scale = xform.scale();
    for (Vertex& v : m_vertices) {
        const AcGeVector3d p = (xform * toWorld(v.point)).asVector();
        v.point.set(p.dotProduct(xAxis), p.dotProduct(yAxis));
        if (mirrored) v.bulge = -v.bulge;
        if (uniform) {
            if (v.startWidth > 0.0) v.startWidth *= scale;
            if (v.endWidth > 0.0) v.endWidth *= scale;
        }
    }
    if (uniform) {
        m_constantWidth *= scale;
        m_thickness *= scale;
    }
    m_elevation = origin.asVector().dotProduct(normal);
    m_normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::dwgInFields(AcDbDwgFiler* pFiler) {
    if (AcDbCurve::dwgInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::UInt16 version = 0;
    pFiler->readUInt16(&version);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (version > kPolylineVersion) return Acad::eMakeMeProxy;
    Adesk::UInt32 count = 0;
    bool closed = false;
    double elevation = 0.0;
    double constantWidth = 0.0;
    double thickness = 0.0;
    AcGeVector3d normal;
    pFiler->readUInt32(&count);
    pFiler->readBool(&closed);
    pFiler->readDouble(&elevation);
    pFiler->readDouble(&constantWidth);
    pFiler->readDouble(&thickness);
    pFiler->readVector3d(&normal);
    std::vector<Vertex> vertices;
    // Read one by one: a damaged count runs into the end of the data instead of allocating.
    for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
        Vertex v;
        pFiler->readPoint2d(&v.point);
        pFiler->readDouble(&v.bulge);
        pFiler->readDouble(&v.startWidth);
        pFiler->readDouble(&v.endWidth);
        vertices.push_back(v);
    }
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!normal.isUnitLength() || constantWidth < 0.0) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_vertices = std::move(vertices);
    m_closed = closed;
    m_elevation = elevation;
    m_constantWidth = constantWidth;
    m_thickness = thickness;
    m_normal = normal;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (AcDbCurve::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kPolylineVersion);
    pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_vertices.size()));
    pFiler->writeBool(m_closed);
    pFiler->writeDouble(m_elevation);
    pFiler->writeDouble(m_constantWidth);
    pFiler->writeDouble(m_thickness);
    pFiler->writeVector3d(m_normal);
    for (const Vertex& v : m_vertices) {
        pFiler->writePoint2d(v.point);
        pFiler->writeDouble(v.bulge);
        pFiler->writeDouble(v.startWidth);
        pFiler->writeDouble(v.endWidth);
    }
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* pFiler) {
    if (AcDbCurve::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    if (!pFiler->atSubclassData(L"AcDbPolyline")) {
        return pFiler->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s",
                                L"AcDbPolyline");
    }
    std::vector<Vertex> vertices;
    long expected = -1;
    bool closed = m_closed;
    double elevation = m_elevation;
    double constantWidth = m_constantWidth;
    double thickness = m_thickness;
    AcGeVector3d normal = m_normal;
    resbuf rb;
    bool known = true;
    while (known && !pFiler->atEOF() && pFiler->readItem(&rb) == Acad::eOk) {
        const double* p = rb.resval.rpoint;
        switch (rb.restype) {
            case AcDb::kDxfInt32:
                expected = rb.resval.rlong;
                break;
            case AcDb::kDxfInt16:
                closed = (rb.resval.rint & kDxfClosedFlag) != 0;
                break;
            case AcDb::kDxfElevation:
                elevation = rb.resval.rreal;
                break;
            case AcDb::kDxfThickness:
                thickness = rb.resval.rreal;
                break;
            case 43:
                constantWidth = rb.resval.rreal;
                break;
            case AcDb::kDxfXCoord:
                vertices.push_back(Vertex{AcGePoint2d(p[0], p[1])});
                break;
            case 40:
            case 41:
            case 42:
                if (vertices.empty()) {
                    return pFiler->setError(Acad::eBadDxfSequence,
                                            L"Error: group code %d before the first vertex",
                                            static_cast<int>(rb.restype));
                }
                (rb.restype == 40   ? vertices.back().startWidth
                 : rb.restype == 41 ? vertices.back().endWidth
                                    : vertices.back().bulge) = rb.resval.rreal;
                break;
            case AcDb::kDxfNormalX:
                normal.set(p[0], p[1], p[2]);
                break;
            default:
                pFiler->pushBackItem();
                known = false;
                break;
        }
    }
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (expected >= 0 && static_cast<std::size_t>(expected) != vertices.size()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: %d vertices announced, %d read",
                                static_cast<int>(expected), static_cast<int>(vertices.size()));
    }
    if (!normal.isUnitLength()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: the normal is not a unit vector");
    }
    m_vertices = std::move(vertices);
    m_closed = closed;
    m_elevation = elevation;
    m_constantWidth = constantWidth;
    m_thickness = thickness;
    m_normal = normal;
    return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (AcDbCurve::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbPolyline");
    pFiler->writeInt32(AcDb::kDxfInt32, static_cast<Adesk::Int32>(m_vertices.size()));
    pFiler->writeInt16(AcDb::kDxfInt16, m_closed ? kDxfClosedFlag : Adesk::Int16{0});
    pFiler->writeDouble(static_cast<AcDb::DxfCode>(43), m_constantWidth);
    pFiler->writeDouble(AcDb::kDxfElevation, m_elevation);
    pFiler->writeDouble(AcDb::kDxfThickness, m_thickness);
    for (const Vertex& v : m_vertices) {
        pFiler->writePoint2d(AcDb::kDxfXCoord, v.point);
        pFiler->writeDouble(static_cast<AcDb::DxfCode>(40), v.startWidth);
        pFiler->writeDouble(static_cast<AcDb::DxfCode>(41), v.endWidth);
        pFiler->writeDouble(static_cast<AcDb::DxfCode>(42), v.bulge);
    }
    pFiler->writeVector3d(AcDb::kDxfNormalX, m_normal);
    return pFiler->filerStatus();
}
