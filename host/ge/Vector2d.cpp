#include "host/ge/Vector2d.h"

#include "host/ge/GeConstants.h"

namespace {

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

}  // namespace

AcGeVector2d AcGeVector2d::normal(const AcGeTol& tol) const {
    const double len = length();
    if (len <= tol.equalVector()) return *this;
    return *this / len;
}

AcGeVector2d& AcGeVector2d::rotateBy(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return set(c * x - s * y, s * x + c * y);
}

double AcGeVector2d::angle() const { return kelaz::NormalizeAngle(std::atan2(y, x)); }

double AcGeVector2d::angleTo(const AcGeVector2d& v) const {
    // atan2 of sine and cosine parts stays accurate near 0 and π, where acos does not.
    return std::atan2(std::abs(Cross(*this, v)), dotProduct(v));
}

bool AcGeVector2d::isParallelTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::abs(Cross(normal(tol), v.normal(tol))) <= tol.equalVector();
}

bool AcGeVector2d::isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return isParallelTo(v, tol) && dotProduct(v) > 0.0;
}

bool AcGeVector2d::isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
    return std::abs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
}
