#include "suite/entities/KelAzSoftLine.h"

#include <cmath>

#include "host/app/RxClass.h"
#include "host/db/Polyline.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzSoftLine, KelAzEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZSOFTLINE, KelAzSuite)

namespace {
constexpr Adesk::UInt16 kSoftLineVersion = 1;
constexpr auto kDxfCount = AcDb::kDxfInt32;
constexpr auto kDxfPoint = AcDb::kDxfXCoord;
constexpr auto kDxfBulge = static_cast<AcDb::DxfCode>(42);
}  // namespace

unsigned int KelAzSoftLine::numVerts() const {
    assertReadEnabled();
    return static_cast<unsigned int>(m_vertices.size());
}

Acad::ErrorStatus KelAzSoftLine::addVertexAt(const AcGePoint3d& point, const AcGeVector3d& normal,
                                             double bulge) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength() || !std::isfinite(bulge)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_vertices.push_back(Vertex{point, unit, bulge});
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::removeVertexAt(unsigned int index) {
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    m_vertices.erase(m_vertices.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::getPointAt(unsigned int index, AcGePoint3d& point) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    point = m_vertices[index].point;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::getNormalAt(unsigned int index, AcGeVector3d& normal) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    normal = m_vertices[index].normal;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::getBulgeAt(unsigned int index, double& bulge) const {
    assertReadEnabled();
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    bulge = m_vertices[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::setBulgeAt(unsigned int index, double bulge) {
    if (index >= m_vertices.size()) return Acad::eInvalidIndex;
    if (!std::isfinite(bulge)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_vertices[index].bulge = bulge;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::GetPlanPolyline(AcDbPolyline& polyline) const {
    assertReadEnabled();
    while (polyline.numVerts() > 0) polyline.removeVertexAt(polyline.numVerts() - 1);
    polyline.setClosed(Adesk::kFalse);
    polyline.setNormal(AcGeVector3d::kZAxis);
    polyline.setElevation(m_vertices.empty() ? 0.0 : m_vertices.front().point.z);
    for (const Vertex& v : m_vertices) {
        double bulge = 0.0;
        if (!v.normal.isPerpendicularTo(AcGeVector3d::kZAxis)) {
            bulge = v.normal.z < 0.0 ? -v.bulge : v.bulge;
        }
        polyline.addVertexAt(polyline.numVerts(), AcGePoint2d(v.point.x, v.point.y), bulge);
    }
    return Acad::eOk;
}

Adesk::Boolean KelAzSoftLine::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    if (m_vertices.empty()) return Adesk::kTrue;
    AcDbPolyline plan;
    GetPlanPolyline(plan);
    mode->geometry().pline(plan);
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzSoftLine::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    bool arcs = false;
    for (const Vertex& v : m_vertices) arcs = arcs || v.bulge != 0.0;
    if (arcs && !xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    assertWriteEnabled();
    // Normals go through the inverse transpose, so that they stay square to the moved arcs.
    const AcGeMatrix3d normals = xform.inverse().transpose();
    const bool mirrored = xform.det() < 0.0;
    for (Vertex& v : m_vertices) {
        v.point.transformBy(xform);
        const AcGeVector3d normal = (normals * v.normal).normal();
        if (normal.isUnitLength()) v.normal = normal;
        if (mirrored) v.bulge = -v.bulge;
    }
    return Acad::eOk;
}

void KelAzSoftLine::ListProperties(kelaz::PropertyList& list) const {
    KelAzEntity::ListProperties(list);
    std::vector<std::vector<double>> vertices;
    std::vector<std::vector<double>> normals;
    for (const Vertex& v : m_vertices) {
        vertices.push_back({v.point.x, v.point.y, v.point.z, v.bulge});
        normals.push_back({v.normal.x, v.normal.y, v.normal.z});
    }
    list.AddRows(L"vertices", std::move(vertices));
    list.AddRows(L"normals", std::move(normals));
}

Acad::ErrorStatus KelAzSoftLine::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kSoftLineVersion);
    if (es != Acad::eOk) return es;
    Adesk::UInt32 count = 0;
    if (pFiler->readUInt32(&count) != Acad::eOk) return pFiler->filerStatus();
    // Grown vertex by vertex: a damaged count must not claim memory up front.
    std::vector<Vertex> vertices;
    for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
        Vertex v;
        pFiler->readPoint3d(&v.point);
        pFiler->readVector3d(&v.normal);
        pFiler->readDouble(&v.bulge);
        if (pFiler->filerStatus() != Acad::eOk) break;
        if (!v.normal.isUnitLength() || !std::isfinite(v.bulge)) {
            pFiler->setFilerStatus(Acad::eFilerError);
            break;
        }
        vertices.push_back(v);
    }
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    m_vertices = std::move(vertices);
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kSoftLineVersion);
    pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_vertices.size()));
    for (const Vertex& v : m_vertices) {
        pFiler->writePoint3d(v.point);
        pFiler->writeVector3d(v.normal);
        pFiler->writeDouble(v.bulge);
    }
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzSoftLine::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    Adesk::Int32 count = 0;
    std::vector<Vertex> vertices;
    bool orphan = false;  // a normal or bulge before any point
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzSoftLine", [&](const resbuf& rb) {
            const double* p = rb.resval.rpoint;
            switch (rb.restype) {
                case kDxfCount:
                    count = rb.resval.rlong;
                    return true;
                case kDxfPoint:
                    vertices.push_back(Vertex{{p[0], p[1], p[2]}});
                    return true;
                case AcDb::kDxfNormalX:
                    if (vertices.empty())
                        orphan = true;
                    else
                        vertices.back().normal.set(p[0], p[1], p[2]);
                    return true;
                case kDxfBulge:
                    if (vertices.empty())
                        orphan = true;
                    else
                        vertices.back().bulge = rb.resval.rreal;
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    if (orphan || count < 0 || static_cast<std::size_t>(count) != vertices.size()) {
        return pFiler->setError(Acad::eInvalidDxfCode,
                                L"Error: %d vertices announced, %d complete ones given",
                                static_cast<int>(count), static_cast<int>(vertices.size()));
    }
    for (const Vertex& v : vertices) {
        if (!v.normal.isUnitLength() || !std::isfinite(v.bulge)) {
            return pFiler->setError(Acad::eInvalidDxfCode,
                                    L"Error: a vertex normal that is not a unit vector, or a bulge "
                                    L"that is not a number");
        }
    }
    m_vertices = std::move(vertices);
    return Acad::eOk;
}

Acad::ErrorStatus KelAzSoftLine::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzSoftLine");
    pFiler->writeInt32(kDxfCount, static_cast<Adesk::Int32>(m_vertices.size()));
    for (const Vertex& v : m_vertices) {
        pFiler->writePoint3d(kDxfPoint, v.point);
        pFiler->writeVector3d(AcDb::kDxfNormalX, v.normal);
        pFiler->writeDouble(kDxfBulge, v.bulge);
    }
    return pFiler->filerStatus();
}
