#pragma once

// A circular arc in space: centre, unit normal, unit reference vector in the arc's plane, radius,
// and start and end angles measured from the reference vector counter-clockwise about the
// normal. The angles are kept so that startAng <= endAng <= startAng + 2π; the arc runs from the
// start angle to the end angle.

#include "host/ge/GeConstants.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

class AcGeCircArc3d {
public:
    // The unit circle on the world XY plane.
    AcGeCircArc3d() = default;
    // A full circle; the reference vector comes from the normal by the arbitrary axis rule.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
        set(center, normal, radius);
    }
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAng = 0.0, double endAng = kelaz::kTwoPi) {
        set(center, normal, refVec, radius, startAng, endAng);
    }
    // See set(startPoint, pnt, endPoint).
    AcGeCircArc3d(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                  const AcGePoint3d& endPoint) {
        set(startPoint, pnt, endPoint);
    }

    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    // A reference vector off the arc's plane is projected onto it.
    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal,
                       const AcGeVector3d& refVec, double radius, double startAng, double endAng);
    // The arc from startPoint through pnt to endPoint. The normal is chosen so that the arc runs
    // counter-clockwise about it; the reference vector points from the centre to startPoint, so
    // the start angle is 0. Collinear or coincident points lie on no circle: they leave a
    // degenerate arc of radius 0 centred on startPoint, which radius() reveals. Drawing data can
    // hold such picks, so they are not treated as a programming error.
    AcGeCircArc3d& set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt,
                       const AcGePoint3d& endPoint);

    AcGePoint3d center() const { return m_center; }
    AcGeVector3d normal() const { return m_normal; }
    AcGeVector3d refVec() const { return m_refVec; }
    double radius() const { return m_radius; }
    double startAng() const { return m_startAng; }
    double endAng() const { return m_endAng; }
    AcGePoint3d startPoint() const { return evalPoint(m_startAng); }
    AcGePoint3d endPoint() const { return evalPoint(m_endAng); }
    // The point of the circle at the angle from the reference vector.
    AcGePoint3d evalPoint(double angle) const;
    double length() const { return m_radius * (m_endAng - m_startAng); }

    AcGeCircArc3d& setCenter(const AcGePoint3d& center) {
        m_center = center;
        return *this;
    }
    AcGeCircArc3d& setRadius(double radius) {
        m_radius = radius;
        return *this;
    }
    AcGeCircArc3d& setAngles(double startAng, double endAng);
    AcGeCircArc3d& setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec);

    // On the circle and within the sweep, both within tol.equalPoint().
    bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const;

private:
    AcGePoint3d m_center;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
    AcGeVector3d m_refVec = AcGeVector3d::kXAxis;
    double m_radius = 1.0;
    double m_startAng = 0.0;
    double m_endAng = kelaz::kTwoPi;
};
