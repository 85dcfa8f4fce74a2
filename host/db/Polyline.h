#pragma once

// A lightweight polyline: vertices in the plane of its normal at its elevation, each with the
// bulge of the segment that starts there (the tangent of a quarter of the segment's included
// angle; positive turns counter-clockwise about the normal) and its widths. Segment i runs from
// vertex i to vertex i + 1, and for a closed polyline the last one back to vertex 0. The
// parameter is the vertex index: vertex i at i, segment i from i to i + 1.

#include <vector>

#include "host/db/Curve.h"
#include "host/ge/Point2d.h"
#include "host/ge/Vector3d.h"

class AcGeCircArc3d;
class AcGeLineSeg2d;
class AcGeLineSeg3d;
class AcGeMatrix3d;

class AcDbPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline);

    enum SegType { kLine, kArc, kCoincident, kPoint, kEmpty };

    AcDbPolyline() = default;
    // Room for that many vertices; the polyline starts empty.
    explicit AcDbPolyline(unsigned int num);

    unsigned int numVerts() const;
    // Inserts before index (numVerts() appends). A width below 0 means "the default": the
    // constant width. eInvalidIndex beyond the end.
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge = 0.0,
                                  double startWidth = -1.0, double endWidth = -1.0);
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    // In the plane's own coordinates.
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& pt) const;
    // In world coordinates.
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& pt) const;
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& pt);
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
    Acad::ErrorStatus getConstantWidth(double& width) const;
    Acad::ErrorStatus setConstantWidth(double width);

    // kEmpty with no vertices, kPoint with one; otherwise for the segment starting at index:
    // kCoincident when its ends are the same point, kArc for a bulge, kLine else. An index
    // where no segment starts (the last vertex of an open polyline, or past the end) is kEmpty.
    SegType segType(unsigned int index) const;
    // The segment in world coordinates. The arc runs from vertex index to the next one,
    // counter-clockwise about its own normal, which is the polyline's normal for a positive
    // bulge and its reverse for a negative one. eNotApplicable for a segment of another type.
    Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const;
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg3d& line) const;
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg2d& line) const;

    double elevation() const;
    void setElevation(double elevation);
    AcGeVector3d normal() const;
    // A zero vector is refused with eInvalidInput; others are made unit.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    Adesk::Boolean isClosed() const override;
    void setClosed(Adesk::Boolean closed);
    // True when every bulge is zero.
    bool isOnlyLines() const;

    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;

    // Vertices and the real sweep of every arc segment (widths are not counted).
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // Rigid motions and uniform scaling; a mirroring turns the bulges round. A polyline of
    // straight segments also takes non-uniform scaling within its plane. Others answer
    // eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    struct Vertex {
        AcGePoint2d point;
        double bulge = 0.0;
        double startWidth = -1.0;
        double endWidth = -1.0;
    };
    unsigned int numSegments() const;
    AcGePoint3d toWorld(const AcGePoint2d& pt) const;
    bool arcSeg(unsigned int index, AcGeCircArc3d& arc) const;

    std::vector<Vertex> m_vertices;
    bool m_closed = false;
    double m_elevation = 0.0;
    double m_constantWidth = 0.0;
    double m_thickness = 0.0;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};
