#include "host/ge/Vector3d.h"

#include "host/ge/GeConstants.h"
#include "host/ge/Matrix3d.h"
#include "host/ge/PlanarEnt.h"
#include "host/ge/Point3d.h"

AcGeVector3d AcGeVector3d::normal(const AcGeTol& tol) const {
    const double len = length();
    if (len <= tol.equalVector()) return *this;
    return *this / len;
}

AcGeVector3d AcGeVector3d::perpVector() const {
    // Judged on the direction, not the raw components, so that the choice does not depend on
    // the vector's length.
    const double limit = kelaz::kArbitraryAxisLimit * length();
    if (std::abs(x) < limit && std::abs(y) < limit) return kYAxis.crossProduct(*this);
    return kZAxis.crossProduct(*this);
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& mat) { return *this = mat * *this; }

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    const AcGeVector3d k = axis.normal();
    if (!k.isUnitLength()) return *this;
    // Rodrigues' rotation formula.
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return *this = *this * c + k.crossProduct(*this) * s + k * (k.dotProduct(*this) * (1.0 - c));
}

double AcGeVector3d::angleTo(const AcGeVector3d& v) const {
    // atan2 of sine and cosine parts stays accurate near 0 and π, where acos does not.
    return std::atan2(crossProduct(v).length(), dotProduct(v));
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const {
    const AcGeVector3d cross = crossProduct(v);
    const double unsignedAngle = std::atan2(cross.length(), dotProduct(v));
    if (cross.dotProduct(reference) >= 0.0) return unsignedAngle;
    return kelaz::NormalizeAngle(kelaz::kTwoPi - unsignedAngle);
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const {
    const AcGeVector3d n = planeNormal.normal();
    return *this - n * dotProduct(n);
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlanarEnt& plane) const {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    plane.getCoordSystem(origin, u, v);
    // The plane's axes need not be orthogonal or of unit length: solve the 2x2 normal equations
    // for the combination a·u + b·v closest to this vector.
    const double uu = u.dotProduct(u);
    const double uv = u.dotProduct(v);
    const double vv = v.dotProduct(v);
    const double wu = dotProduct(u);
    const double wv = dotProduct(v);
    const double det = uu * vv - uv * uv;
    // det / (uu·vv) is the squared sine of the angle between the axes; parallel axes span no
    // plane, and there are no components to give.
    const double minSine = AcGeContext::gTol.equalVector();
    if (!(det > uu * vv * minSine * minSine)) return AcGeVector2d::kIdentity;
    return {(wu * vv - wv * uv) / det, (wv * uu - wu * uv) / det};
}

bool AcGeVector3d::isParallelTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return normal(tol).crossProduct(v.normal(tol)).length() <= tol.equalVector();
}

bool AcGeVector3d::isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    return isParallelTo(v, tol) && dotProduct(v) > 0.0;
}

bool AcGeVector3d::isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::abs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
}
