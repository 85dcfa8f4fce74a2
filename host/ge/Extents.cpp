#include "host/ge/Extents.h"

#include <algorithm>

#include "host/ge/Matrix3d.h"

bool AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
    if (min.x > max.x || min.y > max.y || min.z > max.z) return false;
    m_min = min;
    m_max = max;
    return true;
}

void AcDbExtents::addPoint(const AcGePoint3d& pnt) {
    m_min.set(std::min(m_min.x, pnt.x), std::min(m_min.y, pnt.y), std::min(m_min.z, pnt.z));
    m_max.set(std::max(m_max.x, pnt.x), std::max(m_max.y, pnt.y), std::max(m_max.z, pnt.z));
}

void AcDbExtents::addExt(const AcDbExtents& ext) {
    if (kelaz::ExtentsIsEmpty(ext)) return;
    addPoint(ext.m_min);
    addPoint(ext.m_max);
}

void AcDbExtents::expandBy(const AcGeVector3d& vec) {
    if (kelaz::ExtentsIsEmpty(*this)) return;
    for (unsigned i = 0; i < 3; ++i) (vec[i] > 0.0 ? m_max[i] : m_min[i]) += vec[i];
}

void AcDbExtents::transformBy(const AcGeMatrix3d& mat) {
    if (kelaz::ExtentsIsEmpty(*this)) return;
    AcDbExtents out;
    for (int corner = 0; corner < 8; ++corner) {
        const AcGePoint3d pnt{(corner & 1) ? m_max.x : m_min.x, (corner & 2) ? m_max.y : m_min.y,
                              (corner & 4) ? m_max.z : m_min.z};
        out.addPoint(mat * pnt);
    }
    *this = out;
}

namespace kelaz {

bool ExtentsIsEmpty(const AcDbExtents& ext) {
    const AcGePoint3d lo = ext.minPoint();
    const AcGePoint3d hi = ext.maxPoint();
    return lo.x > hi.x || lo.y > hi.y || lo.z > hi.z;
}

bool ExtentsIntersect(const AcDbExtents& a, const AcDbExtents& b, const AcGeTol& tol) {
    if (ExtentsIsEmpty(a) || ExtentsIsEmpty(b)) return false;
    const double slack = tol.equalPoint();
    for (unsigned i = 0; i < 3; ++i) {
        if (a.minPoint()[i] > b.maxPoint()[i] + slack) return false;
        if (b.minPoint()[i] > a.maxPoint()[i] + slack) return false;
    }
    return true;
}

bool ExtentsContain(const AcDbExtents& box, const AcGePoint3d& pnt, const AcGeTol& tol) {
    if (ExtentsIsEmpty(box)) return false;
    const double slack = tol.equalPoint();
    for (unsigned i = 0; i < 3; ++i) {
        if (pnt[i] < box.minPoint()[i] - slack || pnt[i] > box.maxPoint()[i] + slack) return false;
    }
    return true;
}

}  // namespace kelaz
