#include "host/ge/LinearEnt3d.h"

#include <algorithm>

double AcGeLinearEnt3d::paramOf(const AcGePoint3d& pnt) const {
    const double lenSqrd = m_vector.lengthSqrd();
    if (lenSqrd == 0.0) return 0.0;
    return (pnt - m_point).dotProduct(m_vector) / lenSqrd;
}

AcGePoint3d AcGeLinearEnt3d::closestPointTo(const AcGePoint3d& pnt) const {
    double param = paramOf(pnt);
    if (hasStartPoint()) param = std::max(param, 0.0);
    if (hasEndPoint()) param = std::min(param, 1.0);
    return evalPoint(param);
}

bool AcGeLinearEnt3d::isParallelTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    return m_vector.isParallelTo(other.m_vector, tol);
}

bool AcGeLinearEnt3d::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return m_vector.isPerpendicularTo(plane.normal(), tol);
}

bool AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& other, const AcGeTol& tol) const {
    if (!isParallelTo(other, tol)) return false;
    const AcGeVector3d offset = other.m_point - m_point;
    const AcGeVector3d dir = direction();
    return (offset - dir * offset.dotProduct(dir)).length() <= tol.equalPoint();
}

bool AcGeLinearEnt3d::isParamWithin(double param, const AcGeTol& tol) const {
    const double len = m_vector.length();
    if (len == 0.0) return true;
    const double slack = tol.equalPoint() / len;
    if (hasStartPoint() && param < -slack) return false;
    if (hasEndPoint() && param > 1.0 + slack) return false;
    return true;
}

bool AcGeLinearEnt3d::intersectWith(const AcGeLinearEnt3d& other, AcGePoint3d& pnt,
                                    const AcGeTol& tol) const {
    if (isPoint(tol) || other.isPoint(tol)) {
        const AcGePoint3d single = isPoint(tol) ? m_point : other.m_point;
        if (!isOn(single, tol) || !other.isOn(single, tol)) return false;
        pnt = single;
        return true;
    }
    if (isParallelTo(other, tol)) return false;
    // Closest points of the two infinite lines: minimise |w + s·d1 - t·d2| over s and t.
    const AcGeVector3d& d1 = m_vector;
    const AcGeVector3d& d2 = other.m_vector;
    const AcGeVector3d w = m_point - other.m_point;
    const double a = d1.dotProduct(d1);
    const double b = d1.dotProduct(d2);
    const double c = d2.dotProduct(d2);
    const double d = d1.dotProduct(w);
    const double e = d2.dotProduct(w);
    const double den = a * c - b * b;  // > 0: the lines are not parallel
    const double s = (b * e - c * d) / den;
    const double t = (a * e - b * d) / den;
    const AcGePoint3d onThis = evalPoint(s);
    const AcGePoint3d onOther = other.evalPoint(t);
    if (onThis.distanceTo(onOther) > tol.equalPoint()) return false;  // skew
    if (!isParamWithin(s, tol) || !other.isParamWithin(t, tol)) return false;
    pnt = onThis + (onOther - onThis) * 0.5;
    return true;
}

bool AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& pnt,
                                    const AcGeTol& tol) const {
    const AcGeVector3d n = plane.normal();
    if (n.isZeroLength(tol)) return false;
    if (isPoint(tol)) {
        if (!plane.isOn(m_point, tol)) return false;
        pnt = m_point;
        return true;
    }
    if (isParallelTo(plane, tol)) return false;
    const double param = n.dotProduct(plane.pointOnPlane() - m_point) / n.dotProduct(m_vector);
    if (!isParamWithin(param, tol)) return false;
    const AcGePoint3d hit = evalPoint(param);
    if (!plane.containsInPlane(hit, tol)) return false;
    pnt = hit;
    return true;
}
