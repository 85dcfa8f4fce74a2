#include "host/ge/PlanarEnt.h"

#include "host/ge/LinearEnt3d.h"

AcGePoint2d AcGePlanarEnt::paramOf(const AcGePoint3d& pnt) const {
    const AcGeVector2d uv = (pnt - m_origin).convert2d(*this);
    return {uv.x, uv.y};
}

bool AcGePlanarEnt::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return line.isParallelTo(*this, tol);
}

bool AcGePlanarEnt::isParallelTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
    return m_normal.isParallelTo(other.m_normal, tol);
}

bool AcGePlanarEnt::isCoplanarTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
    return isParallelTo(other, tol) && std::abs(heightOf(other.m_origin)) <= tol.equalPoint();
}

bool AcGePlanarEnt::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& pnt,
                                  const AcGeTol& tol) const {
    return line.intersectWith(*this, pnt, tol);
}

void AcGePlanarEnt::setFrame(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                             const AcGeVector3d& vAxis) {
    m_origin = origin;
    m_uAxis = uAxis;
    m_vAxis = vAxis;
    const AcGeVector3d n = uAxis.crossProduct(vAxis);
    // Parallel axes: the sine of their angle is below the direction tolerance.
    const bool spansPlane =
        n.length() > AcGeContext::gTol.equalVector() * uAxis.length() * vAxis.length();
    m_normal = spansPlane ? n.normal() : AcGeVector3d::kIdentity;
}
