#include "host/ge/CircArc3d.h"

#include <algorithm>
#include <cmath>

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                  double radius) {
    return set(center, normal, normal.perpVector(), radius, 0.0, kelaz::kTwoPi);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                  const AcGeVector3d& refVec, double radius, double startAng,
                                  double endAng) {
    m_center = center;
    m_radius = radius;
    setAxes(normal, refVec);
    return setAngles(startAng, endAng);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                                  const AcGePoint3d& endPoint) {
    const AcGeVector3d chord1 = pnt - startPoint;
    const AcGeVector3d chord2 = endPoint - pnt;
    // Walking start -> pnt -> end turns left about the normal of a counter-clockwise arc.
    const AcGeVector3d turn = chord1.crossProduct(chord2);
    const double sine = AcGeContext::gTol.equalVector();
    if (!(turn.length() > sine * chord1.length() * chord2.length())) {
        m_center = startPoint;
        m_normal = AcGeVector3d::kZAxis;
        m_refVec = AcGeVector3d::kXAxis;
        m_radius = 0.0;
        m_startAng = m_endAng = 0.0;
        return *this;
    }
    // Circumcentre relative to endPoint, from a = start - end and b = pnt - end.
    const AcGeVector3d a = startPoint - endPoint;
    const AcGeVector3d b = pnt - endPoint;
    const AcGeVector3d axb = a.crossProduct(b);
    const AcGeVector3d toCenter =
        (b * a.lengthSqrd() - a * b.lengthSqrd()).crossProduct(axb) / (2.0 * axb.lengthSqrd());
    m_center = endPoint + toCenter;
    m_normal = turn.normal();
    const AcGeVector3d toStart = startPoint - m_center;
    m_radius = toStart.length();
    m_refVec = toStart / m_radius;
    m_startAng = 0.0;
    m_endAng = m_refVec.angleTo(endPoint - m_center, m_normal);
    return *this;
}

AcGePoint3d AcGeCircArc3d::evalPoint(double angle) const {
    const AcGeVector3d side = m_normal.crossProduct(m_refVec);
    return m_center + (m_refVec * std::cos(angle) + side * std::sin(angle)) * m_radius;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAng, double endAng) {
    m_startAng = startAng;
    // An end before the start wraps round once; a sweep beyond a full turn is a full turn.
    const double sweep = endAng - startAng;
    if (sweep < 0.0)
        m_endAng = startAng + kelaz::NormalizeAngle(sweep);
    else
        m_endAng = startAng + std::min(sweep, kelaz::kTwoPi);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec) {
    m_normal = normal.normal();
    m_refVec = refVec.orthoProject(m_normal).normal();
    return *this;
}

bool AcGeCircArc3d::isOn(const AcGePoint3d& pnt, const AcGeTol& tol) const {
    const AcGeVector3d offset = pnt - m_center;
    const double height = offset.dotProduct(m_normal);
    const AcGeVector3d inPlane = offset - m_normal * height;
    if (std::hypot(height, inPlane.length() - m_radius) > tol.equalPoint()) return false;
    if (m_radius <= tol.equalPoint()) return true;  // the arc is all but a point
    // Within the sweep, with tol.equalPoint() of arc length to spare at either end.
    const double slack = tol.equalPoint() / m_radius;
    const double fromStart =
        kelaz::NormalizeAngle(m_refVec.angleTo(inPlane, m_normal) - m_startAng);
    const double sweep = m_endAng - m_startAng;
    return fromStart <= sweep + slack || fromStart >= kelaz::kTwoPi - slack;
}
