#include "suite/entities/KelAzNode.h"

#include <cmath>
#include <vector>

#include "host/app/RxClass.h"
#include "host/db/Ocs.h"
#include "host/ge/GeConstants.h"
#include "host/gi/WorldDraw.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/PropertyList.h"

ACRX_DXF_DEFINE_MEMBERS(KelAzNode, KelAzEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        KELAZNODE, KelAzSuite)

namespace {

constexpr Adesk::UInt16 kNodeVersion = 1;
constexpr auto kDxfInsert = AcDb::kDxfXCoord;
constexpr auto kDxfScale = static_cast<AcDb::DxfCode>(41);
constexpr auto kDxfRotation = AcDb::kDxfAngle;

// The node's own symbol: a circle with a cross.
constexpr double kNodeSymbolRadius = 150.0;
// Sides of the polygon an ellipse is drawn with.
constexpr int kEllipseSides = 48;
// Scales this close count as equal (relative), and frame axes this close to square as square.
constexpr double kScaleTolerance = 1e-9;
constexpr double kSquareTolerance = 1e-9;

bool IsScale(const AcGeScale3d& s) {
    for (double f : {s.sx, s.sy, s.sz}) {
        if (!std::isfinite(f) || f == 0.0) return false;
    }
    return true;
}

}  // namespace

namespace kelaz {

SymbolPainter::SymbolPainter(const AcGiWorldGeometry& geometry, const AcGeMatrix3d& toWorld,
                             const AcGeVector3d& normal)
    : m_geometry(geometry), m_toWorld(toWorld), m_normal(normal) {}

AcGePoint3d SymbolPainter::ToWorld(const AcGePoint2d& p) const {
    return m_toWorld * AcGePoint3d(p.x, p.y, 0.0);
}

void SymbolPainter::Line(const AcGePoint2d& from, const AcGePoint2d& to) const {
    const AcGePoint3d points[2] = {ToWorld(from), ToWorld(to)};
    m_geometry.polyline(2, points, &m_normal);
}

void SymbolPainter::Polygon(std::initializer_list<AcGePoint2d> points) const {
    std::vector<AcGePoint3d> world;
    world.reserve(points.size());
    for (const AcGePoint2d& p : points) world.push_back(ToWorld(p));
    m_geometry.polygon(static_cast<Adesk::UInt32>(world.size()), world.data());
}

void SymbolPainter::Circle(const AcGePoint2d& center, double radius) const {
    const AcGePoint3d c = ToWorld(center);
    const AcGeVector3d u = ToWorld(center + AcGeVector2d(radius, 0.0)) - c;
    const AcGeVector3d v = ToWorld(center + AcGeVector2d(0.0, radius)) - c;
    if (std::abs(u.length() - v.length()) <= kScaleTolerance * u.length()) {
        m_geometry.circle(c, u.length(), m_normal);
        return;
    }
    std::vector<AcGePoint3d> outline;
    outline.reserve(kEllipseSides);
    for (int i = 0; i < kEllipseSides; ++i) {
        const double a = kTwoPi * i / kEllipseSides;
        outline.push_back(c + u * std::cos(a) + v * std::sin(a));
    }
    m_geometry.polygon(kEllipseSides, outline.data());
}

}  // namespace kelaz

Acad::ErrorStatus KelAzNode::SetInsertPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_insert = point;
    return Acad::eOk;
}

AcGePoint3d KelAzNode::GetInsertPoint() const {
    assertReadEnabled();
    return m_insert;
}

Acad::ErrorStatus KelAzNode::setRotation(double rotation) {
    if (!std::isfinite(rotation)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_rotation = rotation;
    return Acad::eOk;
}

double KelAzNode::rotation() const {
    assertReadEnabled();
    return m_rotation;
}

Acad::ErrorStatus KelAzNode::setScaleFactors(const AcGeScale3d& scale) {
    if (!IsScale(scale)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_scale = scale;
    return Acad::eOk;
}

AcGeScale3d KelAzNode::scaleFactors() const {
    assertReadEnabled();
    return m_scale;
}

Acad::ErrorStatus KelAzNode::setNormal(const AcGeVector3d& normal) {
    const AcGeVector3d unit = normal.normal();
    if (!unit.isUnitLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = unit;
    return Acad::eOk;
}

AcGeVector3d KelAzNode::normal() const {
    assertReadEnabled();
    return m_normal;
}

CString KelAzNode::GetLabelText() const {
    const CString name = GetAttName();
    return name.Mid(name.ReverseFind(L'\\') + 1);
}

AcGeVector3d KelAzNode::XAxis() const { return kelaz::OcsDirection(m_normal, m_rotation); }

AcGeMatrix3d KelAzNode::GetSymbolTransform() const {
    assertReadEnabled();
    const AcGeVector3d x = XAxis();
    const AcGeVector3d y = m_normal.crossProduct(x);
    AcGeMatrix3d m;
    m.setCoordSystem(m_insert, x * m_scale.sx, y * m_scale.sy, m_normal * m_scale.sz);
    return m;
}

void KelAzNode::DrawSymbol(const kelaz::SymbolPainter& painter) const {
    painter.Circle(AcGePoint2d::kOrigin, kNodeSymbolRadius);
    painter.Line(AcGePoint2d(-kNodeSymbolRadius, 0.0), AcGePoint2d(kNodeSymbolRadius, 0.0));
    painter.Line(AcGePoint2d(0.0, -kNodeSymbolRadius), AcGePoint2d(0.0, kNodeSymbolRadius));
}

double KelAzNode::SymbolHalfHeight() const { return kNodeSymbolRadius; }

Adesk::Boolean KelAzNode::worldDraw(AcGiWorldDraw* mode) {
    assertReadEnabled();
    DrawSymbol(kelaz::SymbolPainter(mode->geometry(), GetSymbolTransform(), m_normal));
    const CString label = GetLabelText();
    if (label.IsEmpty()) return Adesk::kTrue;
    // The label reads along the frame's X axis even when the symbol is mirrored, centred under
    // the symbol (each character about as wide as it is high).
    const double sy = std::abs(m_scale.sy);
    const double height = kelaz::kNodeLabelHeight * sy;
    const AcGeVector3d x = XAxis();
    const AcGeVector3d y = m_normal.crossProduct(x);
    const double below = (SymbolHalfHeight() + kelaz::kNodeLabelGap + kelaz::kNodeLabelHeight) * sy;
    const AcGePoint3d position = m_insert - x * (label.GetLength() * height / 2.0) - y * below;
    mode->geometry().text(position, m_normal, x, height, 1.0, 0.0, label);
    return Adesk::kTrue;
}

Acad::ErrorStatus KelAzNode::transformBy(const AcGeMatrix3d& xform) {
    if (xform.isSingular()) return Acad::eInvalidInput;
    const AcGeVector3d x = XAxis();
    const AcGeVector3d movedX = xform * x;
    const AcGeVector3d movedY = xform * m_normal.crossProduct(x);
    const AcGeVector3d movedZ = xform * m_normal;
    AcGeTol square;
    square.setEqualVector(kSquareTolerance);
    if (!movedX.isPerpendicularTo(movedY, square) || !movedX.isPerpendicularTo(movedZ, square) ||
        !movedY.isPerpendicularTo(movedZ, square)) {
        return Acad::eCannotScaleNonUniformly;
    }
    assertWriteEnabled();
    // Keep the frame right-handed about the moved normal; a mirroring shows as a flipped X.
    const AcGeVector3d normal = movedZ.normal();
    const AcGeVector3d newX = movedY.normal().crossProduct(normal);
    const double flip = newX.dotProduct(movedX) < 0.0 ? -1.0 : 1.0;
    m_insert.transformBy(xform);
    m_scale.set(m_scale.sx * movedX.length() * flip, m_scale.sy * movedY.length(),
                m_scale.sz * movedZ.length());
    m_normal = normal;
    m_rotation = kelaz::OcsAngle(normal, newX);
    return Acad::eOk;
}

void KelAzNode::ListProperties(kelaz::PropertyList& list) const {
    KelAzEntity::ListProperties(list);
    list.AddPoint(L"insert", m_insert);
    list.AddReal(L"rotation", m_rotation);
    list.AddVector(L"scale", AcGeVector3d(m_scale.sx, m_scale.sy, m_scale.sz));
    list.AddVector(L"normal", m_normal);
}

Acad::ErrorStatus KelAzNode::dwgInFields(AcDbDwgFiler* pFiler) {
    Acad::ErrorStatus es = KelAzEntity::dwgInFields(pFiler);
    if (es != Acad::eOk) return es;
    es = kelaz::ReadClassVersion(pFiler, kNodeVersion);
    if (es != Acad::eOk) return es;
    AcGePoint3d insert;
    double rotation = 0.0;
    AcGeScale3d scale;
    AcGeVector3d normal;
    pFiler->readPoint3d(&insert);
    pFiler->readDouble(&rotation);
    pFiler->readScale3d(&scale);
    pFiler->readVector3d(&normal);
    if (pFiler->filerStatus() != Acad::eOk) return pFiler->filerStatus();
    if (!std::isfinite(rotation) || !IsScale(scale) || !normal.isUnitLength()) {
        pFiler->setFilerStatus(Acad::eFilerError);
        return pFiler->filerStatus();
    }
    m_insert = insert;
    m_rotation = rotation;
    m_scale = scale;
    m_normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzNode::dwgOutFields(AcDbDwgFiler* pFiler) const {
    if (KelAzEntity::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeUInt16(kNodeVersion);
    pFiler->writePoint3d(m_insert);
    pFiler->writeDouble(m_rotation);
    pFiler->writeScale3d(m_scale);
    pFiler->writeVector3d(m_normal);
    return pFiler->filerStatus();
}

Acad::ErrorStatus KelAzNode::dxfInFields(AcDbDxfFiler* pFiler) {
    if (KelAzEntity::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    AcGePoint3d insert = m_insert;
    double rotation = m_rotation;
    AcGeScale3d scale = m_scale;
    AcGeVector3d normal = m_normal;
    const Acad::ErrorStatus es =
        kelaz::ReadDxfSubclass(pFiler, L"KelAzNode", [&](const resbuf& rb) {
            const double* p = rb.resval.rpoint;
            switch (rb.restype) {
                case kDxfInsert:
                    insert.set(p[0], p[1], p[2]);
                    return true;
                case kDxfRotation:
                    rotation = rb.resval.rreal;
                    return true;
                case kDxfScale:
                    scale.sx = rb.resval.rreal;
                    return true;
                case kDxfScale + 1:
                    scale.sy = rb.resval.rreal;
                    return true;
                case kDxfScale + 2:
                    scale.sz = rb.resval.rreal;
                    return true;
                case AcDb::kDxfNormalX:
                    normal.set(p[0], p[1], p[2]);
                    return true;
                default:
                    return false;
            }
        });
    if (es != Acad::eOk) return es;
    if (!std::isfinite(rotation) || !IsScale(scale)) {
        return pFiler->setError(
            Acad::eInvalidDxfCode,
            L"Error: a rotation or scale factor that is not a number, or a scale of 0");
    }
    if (!normal.isUnitLength()) {
        return pFiler->setError(Acad::eInvalidDxfCode, L"Error: the normal is not a unit vector");
    }
    m_insert = insert;
    m_rotation = rotation;
    m_scale = scale;
    m_normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus KelAzNode::dxfOutFields(AcDbDxfFiler* pFiler) const {
    if (KelAzEntity::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
    pFiler->writeItem(AcDb::kDxfSubclass, L"KelAzNode");
    pFiler->writePoint3d(kDxfInsert, m_insert);
    pFiler->writeDouble(kDxfRotation, m_rotation);
    pFiler->writeScale3d(kDxfScale, m_scale);
    pFiler->writeVector3d(AcDb::kDxfNormalX, m_normal);
    return pFiler->filerStatus();
}
