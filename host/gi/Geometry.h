#pragma once

// The geometry calls an entity draws with. Each answers true when drawing should stop (the
// regeneration was aborted), false to go on.

#include "host/Adesk.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

class AcDbPolyline;

enum AcGiArcType { kAcGiArcSimple = 0, kAcGiArcSector, kAcGiArcChord };

class AcGiGeometry {
public:
    virtual ~AcGiGeometry() = default;

    virtual Adesk::Boolean circle(const AcGePoint3d& center, double radius,
                                  const AcGeVector3d& normal) const = 0;
    // The circle through three points.
    virtual Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2,
                                  const AcGePoint3d& p3) const = 0;
    // From center + radius * startVector, sweepAngle counter-clockwise about normal.
    virtual Adesk::Boolean circularArc(const AcGePoint3d& center, double radius,
                                       const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                       double sweepAngle,
                                       AcGiArcType arcType = kAcGiArcSimple) const = 0;
    // The arc from start through point to end.
    virtual Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                       const AcGePoint3d& end,
                                       AcGiArcType arcType = kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean polyline(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                                    const AcGeVector3d* pNormal = nullptr,
                                    Adesk::LongPtr lBaseSubEntMarker = -1) const = 0;
    // A closed outline.
    virtual Adesk::Boolean polygon(Adesk::UInt32 nbPoints,
                                   const AcGePoint3d* pVertexList) const = 0;
    // numSegs segments of the polyline from fromIndex; 0 for all of them.
    virtual Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex = 0,
                                 Adesk::UInt32 numSegs = 0) const = 0;
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, double height, double width,
                                double oblique, const wchar_t* pMsg) const = 0;

protected:
    AcGiGeometry() = default;
    AcGiGeometry(const AcGiGeometry&) = default;
    AcGiGeometry& operator=(const AcGiGeometry&) = default;
};

class AcGiWorldGeometry : public AcGiGeometry {};

class AcGiViewportGeometry : public AcGiGeometry {};
