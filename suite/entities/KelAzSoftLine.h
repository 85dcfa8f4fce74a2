#pragma once

// A flexible (soft) pipe: a polyline whose vertices each carry a point, a normal and the bulge
// of the segment to the next vertex (positive counter-clockwise about that vertex's normal).
// In plan it draws as its polyline at the first vertex's elevation.

#include <vector>

#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "suite/entities/KelAzEntity.h"

class AcDbPolyline;

class KelAzSoftLine : public KelAzEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzSoftLine);

    KelAzSoftLine() = default;

    unsigned int numVerts() const;
    // Appends a vertex. A zero normal or a bulge that is not finite is refused with
    // eInvalidInput; the normal is made unit.
    Acad::ErrorStatus addVertexAt(const AcGePoint3d& point, const AcGeVector3d& normal,
                                  double bulge = 0.0);
    // eInvalidIndex past the last vertex.
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& point) const;
    Acad::ErrorStatus getNormalAt(unsigned int index, AcGeVector3d& normal) const;
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);

    // The plan polyline: in the XY plane at the first vertex's elevation, each bulge turned
    // round where its vertex's normal points down (and flattened where it lies level, since
    // such an arc is seen edge-on). The polyline's vertices are replaced.
    Acad::ErrorStatus GetPlanPolyline(AcDbPolyline& polyline) const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    // Points move and normals turn; a mirroring turns the bulges round. With arcs, only rigid
    // motions and uniform scaling (eCannotScaleNonUniformly otherwise).
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    struct Vertex {
        AcGePoint3d point;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        double bulge = 0.0;
    };

    std::vector<Vertex> m_vertices;
};
