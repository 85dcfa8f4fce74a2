#pragma once

// A point component (equipment, valves, section components ...): placed at its insertion point,
// turned by its rotation about its normal and sized by its scale factors, like a block
// reference. It draws its plan symbol, sized for a 1:100 plan, and below it a label: the last
// part of its attribute name. This class's own symbol is a circle with a cross.

#include <initializer_list>

#include "host/ge/Matrix3d.h"
#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Scale3d.h"
#include "host/ge/Vector3d.h"
#include "suite/entities/KelAzEntity.h"

class AcGiWorldGeometry;

namespace kelaz {

// Height of a node's label text and its gap below the symbol (1:100 plan, millimetres).
inline constexpr double kNodeLabelHeight = 250.0;
inline constexpr double kNodeLabelGap = 100.0;

// Draws a symbol given in its own coordinates (millimetres at scale 1, centred on the
// insertion point) into world draw through the node's placement.
class SymbolPainter {
public:
    SymbolPainter(const AcGiWorldGeometry& geometry, const AcGeMatrix3d& toWorld,
                  const AcGeVector3d& normal);

    void Line(const AcGePoint2d& from, const AcGePoint2d& to) const;
    void Polygon(std::initializer_list<AcGePoint2d> points) const;
    // A circle stays a circle under equal X and Y scales; otherwise it is drawn as the polygon
    // of its ellipse.
    void Circle(const AcGePoint2d& center, double radius) const;

private:
    AcGePoint3d ToWorld(const AcGePoint2d& p) const;

    const AcGiWorldGeometry& m_geometry;
    AcGeMatrix3d m_toWorld;
    AcGeVector3d m_normal;
};

}  // namespace kelaz

class KelAzNode : public KelAzEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzNode);

    KelAzNode() = default;

    Acad::ErrorStatus SetInsertPoint(const AcGePoint3d& point);
    AcGePoint3d GetInsertPoint() const;
    // Radians, counter-clockwise about the normal from the X axis of the normal's frame.
    // A number that is not finite is refused with eInvalidInput.
    Acad::ErrorStatus setRotation(double rotation);
    double rotation() const;
    // A factor of 0 or not finite is refused with eInvalidInput; negative factors mirror.
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    AcGeScale3d scaleFactors() const;
    // A zero vector is refused with eInvalidInput; others are made unit.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    AcGeVector3d normal() const;

    // The last part of the attribute name ("方形散流器" of "暖通\\风口\\方形散流器").
    CString GetLabelText() const;
    // From the symbol's own coordinates to the world: scale, rotation, normal, insertion point.
    AcGeMatrix3d GetSymbolTransform() const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // The insertion point moves and the frame turns with the motion; what a motion stretches
    // along the frame's axes goes into the scale factors, and a mirroring into a negative X
    // factor. A motion that shears the frame answers eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    // The symbol in its own coordinates.
    virtual void DrawSymbol(const kelaz::SymbolPainter& painter) const;
    // How far the symbol reaches below its centre, where the label goes.
    virtual double SymbolHalfHeight() const;

private:
    AcGeVector3d XAxis() const;

    AcGePoint3d m_insert;
    double m_rotation = 0.0;
    AcGeScale3d m_scale;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};
