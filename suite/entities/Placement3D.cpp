#include "suite/entities/Placement3D.h"

#include <cmath>

namespace KelAzCommon {

namespace {
// How far from unit length and from square a frame's axes may be.
constexpr double kFrameTolerance = 1e-9;
}  // namespace

bool Placement3D::SetAxes(const AcGeVector3d& xAxis, const AcGeVector3d& yAxis) {
    const AcGeVector3d x = xAxis.normal();
    if (!x.isUnitLength()) return false;
    const AcGeVector3d y = (yAxis - x * yAxis.dotProduct(x)).normal();
    if (!y.isUnitLength() || yAxis.isParallelTo(x)) return false;
    m_xAxis = x;
    m_yAxis = y;
    return true;
}

bool Placement3D::IsValid() const {
    return std::abs(m_xAxis.length() - 1.0) <= kFrameTolerance &&
           std::abs(m_yAxis.length() - 1.0) <= kFrameTolerance &&
           std::abs(m_xAxis.dotProduct(m_yAxis)) <= kFrameTolerance;
}

AcGeMatrix3d Placement3D::GetTransform() const {
    AcGeMatrix3d m;
    m.setCoordSystem(m_location, m_xAxis, m_yAxis, GetZAxis());
    return m;
}

}  // namespace KelAzCommon
