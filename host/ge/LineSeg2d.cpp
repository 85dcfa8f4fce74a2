#include "host/ge/LineSeg2d.h"

#include <algorithm>

namespace {

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// Whether the parameter lies within [0, 1] with tol.equalPoint() of slack at each end.
bool IsParamWithin(double param, double length, const AcGeTol& tol) {
    const double slack = tol.equalPoint() / length;
    return param >= -slack && param <= 1.0 + slack;
}

}  // namespace

double AcGeLineSeg2d::paramOf(const AcGePoint2d& pnt) const {
    const AcGeVector2d vec = m_end - m_start;
    const double lenSqrd = vec.lengthSqrd();
    if (lenSqrd == 0.0) return 0.0;
    return (pnt - m_start).dotProduct(vec) / lenSqrd;
}

AcGePoint2d AcGeLineSeg2d::closestPointTo(const AcGePoint2d& pnt) const {
    return evalPoint(std::clamp(paramOf(pnt), 0.0, 1.0));
}

bool AcGeLineSeg2d::intersectWith(const AcGeLineSeg2d& other, AcGePoint2d& pnt,
                                  const AcGeTol& tol) const {
    const AcGeVector2d r = m_end - m_start;
    const AcGeVector2d s = other.m_end - other.m_start;
    if (r.isZeroLength(tol) || s.isZeroLength(tol)) {
        const AcGePoint2d single = r.isZeroLength(tol) ? m_start : other.m_start;
        if (!isOn(single, tol) || !other.isOn(single, tol)) return false;
        pnt = single;
        return true;
    }
    if (r.isParallelTo(s, tol)) return false;
    // start + t·r = other.start + u·s, solved with 2d cross products.
    const AcGeVector2d q = other.m_start - m_start;
    const double den = Cross(r, s);
    const double t = Cross(q, s) / den;
    const double u = Cross(q, r) / den;
    if (!IsParamWithin(t, r.length(), tol) || !IsParamWithin(u, s.length(), tol)) return false;
    pnt = evalPoint(t);
    return true;
}
