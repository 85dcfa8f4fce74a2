#pragma once

// A placement in space: a location and the directions of its X and Y axes (its Z axis is
// their cross product). A plain value: the axes are kept as given, and IsValid() tells
// whether they form a frame; SetAxes squares any two independent directions up into one.

#include "host/ge/Matrix3d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

namespace KelAzCommon {

class Placement3D {
public:
    Placement3D() = default;
    // The axes as given: check IsValid() before using them.
    Placement3D(const AcGePoint3d& location, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis)
        : m_location(location), m_xAxis(xAxis), m_yAxis(yAxis) {}

    AcGePoint3d GetLocation() const { return m_location; }
    void SetLocation(const AcGePoint3d& location) { m_location = location; }
    AcGeVector3d GetXAxis() const { return m_xAxis; }
    AcGeVector3d GetYAxis() const { return m_yAxis; }
    AcGeVector3d GetZAxis() const { return m_xAxis.crossProduct(m_yAxis); }

    // X along xAxis, Y the part of yAxis square to it, both unit. False, and nothing changed,
    // when either is zero or they are parallel.
    bool SetAxes(const AcGeVector3d& xAxis, const AcGeVector3d& yAxis);
    // Unit axes square to each other (within the tolerance of frames read back from files).
    bool IsValid() const;
    // From the placement's own coordinates to the world.
    AcGeMatrix3d GetTransform() const;

    friend bool operator==(const Placement3D&, const Placement3D&) = default;

private:
    AcGePoint3d m_location;
    AcGeVector3d m_xAxis = AcGeVector3d::kXAxis;
    AcGeVector3d m_yAxis = AcGeVector3d::kYAxis;
};

}  // namespace KelAzCommon
