#include "host/ge/Matrix3d.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/ge/Line3d.h"
#include "host/ge/Plane.h"

namespace {

// Matrices that do not project keep the bottom row (0, 0, 0, 1); their invertibility is that of
// the 3x3 linear part, whatever the size of the translation.
bool IsAffine(const AcGeMatrix3d& m) {
    return m.entry[3][0] == 0.0 && m.entry[3][1] == 0.0 && m.entry[3][2] == 0.0 &&
           m.entry[3][3] == 1.0;
}

AcGeVector3d Column(const AcGeMatrix3d& m, int col) {
    return {m.entry[0][col], m.entry[1][col], m.entry[2][col]};
}

void SetLinear(AcGeMatrix3d& m, const AcGeVector3d& c0, const AcGeVector3d& c1,
               const AcGeVector3d& c2, const AcGeVector3d& translation) {
    const AcGeVector3d cols[4] = {c0, c1, c2, translation};
    for (int c = 0; c < 4; ++c) {
        for (int r = 0; r < 3; ++r) m.entry[r][c] = cols[c][static_cast<unsigned>(r)];
        m.entry[3][c] = c == 3 ? 1.0 : 0.0;
    }
}

}  // namespace

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& mat) const {
    AcGeMatrix3d out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) sum += entry[r][k] * mat.entry[k][c];
            out.entry[r][c] = sum;
        }
    }
    return out;
}

bool AcGeMatrix3d::operator==(const AcGeMatrix3d& mat) const {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (entry[r][c] != mat.entry[r][c]) return false;
    return true;
}

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& mat, const AcGeTol& tol) const {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            const bool isTranslation = c == 3 && r < 3;
            const double limit = isTranslation ? tol.equalPoint() : tol.equalVector();
            if (std::abs(entry[r][c] - mat.entry[r][c]) > limit) return false;
        }
    }
    return true;
}

AcGeMatrix3d AcGeMatrix3d::inverse(const AcGeTol& tol) const {
    AcGeMatrix3d copy = *this;
    return copy.invert(tol);
}

AcGeMatrix3d& AcGeMatrix3d::invert(const AcGeTol& tol) {
    if (isSingular(tol)) return *this;
    // Gauss-Jordan elimination with partial pivoting on [this | identity].
    double a[4][4];
    std::copy(&entry[0][0], &entry[0][0] + 16, &a[0][0]);
    AcGeMatrix3d inv;
    for (int col = 0; col < 4; ++col) {
        int pivot = col;
        for (int r = col + 1; r < 4; ++r)
            if (std::abs(a[r][col]) > std::abs(a[pivot][col])) pivot = r;
        if (a[pivot][col] == 0.0) return *this;  // only reachable with a loosened tolerance
        std::swap(a[pivot], a[col]);
        std::swap(inv.entry[pivot], inv.entry[col]);
        const double scaleRow = 1.0 / a[col][col];
        for (int c = 0; c < 4; ++c) {
            a[col][c] *= scaleRow;
            inv.entry[col][c] *= scaleRow;
        }
        for (int r = 0; r < 4; ++r) {
            if (r == col || a[r][col] == 0.0) continue;
            const double factor = a[r][col];
            for (int c = 0; c < 4; ++c) {
                a[r][c] -= factor * a[col][c];
                inv.entry[r][c] -= factor * inv.entry[col][c];
            }
        }
    }
    return *this = inv;
}

AcGeMatrix3d AcGeMatrix3d::transpose() const {
    AcGeMatrix3d out;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) out.entry[r][c] = entry[c][r];
    return out;
}

double AcGeMatrix3d::det() const {
    // Gaussian elimination with partial pivoting; each row swap flips the sign.
    double a[4][4];
    std::copy(&entry[0][0], &entry[0][0] + 16, &a[0][0]);
    double result = 1.0;
    for (int col = 0; col < 4; ++col) {
        int pivot = col;
        for (int r = col + 1; r < 4; ++r)
            if (std::abs(a[r][col]) > std::abs(a[pivot][col])) pivot = r;
        if (a[pivot][col] == 0.0) return 0.0;
        if (pivot != col) {
            std::swap(a[pivot], a[col]);
            result = -result;
        }
        result *= a[col][col];
        for (int r = col + 1; r < 4; ++r) {
            const double factor = a[r][col] / a[col][col];
            for (int c = col; c < 4; ++c) a[r][c] -= factor * a[col][c];
        }
    }
    return result;
}

bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    // |det| against Hadamard's bound (the product of the vectors' lengths) is a measure of shape
    // in [0, 1]: 1 for orthogonal vectors, 0 when they are dependent.
    if (IsAffine(*this)) {
        const AcGeVector3d c0 = Column(*this, 0);
        const AcGeVector3d c1 = Column(*this, 1);
        const AcGeVector3d c2 = Column(*this, 2);
        const double det3 = c0.dotProduct(c1.crossProduct(c2));
        return std::abs(det3) <= tol.equalVector() * c0.length() * c1.length() * c2.length();
    }
    double bound = 1.0;
    for (const auto& row : entry)
        bound *= std::sqrt(row[0] * row[0] + row[1] * row[1] + row[2] * row[2] + row[3] * row[3]);
    return std::abs(det()) <= tol.equalVector() * bound;
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    if (!IsAffine(*this)) return false;
    const AcGeVector3d c0 = Column(*this, 0);
    const AcGeVector3d c1 = Column(*this, 1);
    const AcGeVector3d c2 = Column(*this, 2);
    const double len = c0.length();
    if (len == 0.0) return false;
    const double sameScale = tol.equalVector() * len;
    return std::abs(c1.length() - len) <= sameScale && std::abs(c2.length() - len) <= sameScale &&
           c0.isPerpendicularTo(c1, tol) && c1.isPerpendicularTo(c2, tol) &&
           c2.isPerpendicularTo(c0, tol);
}

double AcGeMatrix3d::scale() const {
    return std::max(
        {Column(*this, 0).length(), Column(*this, 1).length(), Column(*this, 2).length()});
}

AcGeMatrix3d& AcGeMatrix3d::setToIdentity() { return *this = AcGeMatrix3d(); }

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& vec) {
    setToIdentity();
    for (unsigned r = 0; r < 3; ++r) entry[r][3] = vec[r];
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis,
                                          const AcGePoint3d& center) {
    const AcGeVector3d k = axis.normal();
    if (!k.isUnitLength()) return setToIdentity();
    // Rodrigues: R = cos·I + sin·[k]x + (1 - cos)·k·kᵀ, about the axis through center.
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double t = 1.0 - c;
    const AcGeVector3d c0{c + t * k.x * k.x, t * k.x * k.y + s * k.z, t * k.x * k.z - s * k.y};
    const AcGeVector3d c1{t * k.x * k.y - s * k.z, c + t * k.y * k.y, t * k.y * k.z + s * k.x};
    const AcGeVector3d c2{t * k.x * k.z + s * k.y, t * k.y * k.z - s * k.x, c + t * k.z * k.z};
    const AcGeVector3d o = center.asVector();
    SetLinear(*this, c0, c1, c2, o - (c0 * o.x + c1 * o.y + c2 * o.z));
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double scaleAll, const AcGePoint3d& center) {
    SetLinear(*this, AcGeVector3d::kXAxis * scaleAll, AcGeVector3d::kYAxis * scaleAll,
              AcGeVector3d::kZAxis * scaleAll, center.asVector() * (1.0 - scaleAll));
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
    // p' = p - 2 (n·(p - o)) n: linear part I - 2nnᵀ, translation 2 (n·o) n.
    const AcGeVector3d n = plane.normal();
    const AcGeVector3d cols[3] = {AcGeVector3d::kXAxis - n * (2.0 * n.x),
                                  AcGeVector3d::kYAxis - n * (2.0 * n.y),
                                  AcGeVector3d::kZAxis - n * (2.0 * n.z)};
    SetLinear(*this, cols[0], cols[1], cols[2],
              n * (2.0 * n.dotProduct(plane.pointOnPlane().asVector())));
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& pnt) {
    SetLinear(*this, -AcGeVector3d::kXAxis, -AcGeVector3d::kYAxis, -AcGeVector3d::kZAxis,
              pnt.asVector() * 2.0);
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    // p' = 2·foot(p) - p: linear part 2ddᵀ - I, translation 2 (o - (d·o) d).
    const AcGeVector3d d = line.direction();
    const AcGeVector3d o = line.pointOnLine().asVector();
    SetLinear(*this, d * (2.0 * d.x) - AcGeVector3d::kXAxis, d * (2.0 * d.y) - AcGeVector3d::kYAxis,
              d * (2.0 * d.z) - AcGeVector3d::kZAxis, (o - d * d.dotProduct(o)) * 2.0);
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(
    const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis, const AcGeVector3d& fromYAxis,
    const AcGeVector3d& fromZAxis, const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
    const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis) {
    AcGeMatrix3d from;
    from.setCoordSystem(fromOrigin, fromXAxis, fromYAxis, fromZAxis);
    AcGeMatrix3d to;
    to.setCoordSystem(toOrigin, toXAxis, toYAxis, toZAxis);
    // A singular "from" comes back uninverted, so the product stays singular.
    return *this = to * from.inverse();
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    SetLinear(*this, xAxis, yAxis, zAxis, origin.asVector());
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
    xAxis = Column(*this, 0);
    yAxis = Column(*this, 1);
    zAxis = Column(*this, 2);
    const AcGeVector3d t = Column(*this, 3);
    origin.set(t.x, t.y, t.z);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
    const AcGeVector3d n = normal.normal();
    if (!n.isUnitLength()) return setToIdentity();
    const AcGeVector3d u = n.perpVector().normal();
    return setCoordSystem(AcGePoint3d::kOrigin, u, n.crossProduct(u), n);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGePlane& plane) {
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    plane.getCoordSystem(origin, u, v);
    const AcGeVector3d n = plane.normal();
    // A degenerate plane has no frame; the world frame is the least surprising stand-in.
    if (!n.isUnitLength()) return setToIdentity();
    const AcGeVector3d xAxis = u.normal();
    return setCoordSystem(origin, xAxis, n.crossProduct(xAxis), n);
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) {
    return setToPlaneToWorld(normal).invert();
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGePlane& plane) {
    return setToPlaneToWorld(plane).invert();
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& vec) {
    return AcGeMatrix3d().setToTranslation(vec);
}

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis,
                                    const AcGePoint3d& center) {
    return AcGeMatrix3d().setToRotation(angle, axis, center);
}

AcGeMatrix3d AcGeMatrix3d::scaling(double scaleAll, const AcGePoint3d& center) {
    return AcGeMatrix3d().setToScaling(scaleAll, center);
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePlane& plane) {
    return AcGeMatrix3d().setToMirroring(plane);
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& pnt) {
    return AcGeMatrix3d().setToMirroring(pnt);
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGeLine3d& line) {
    return AcGeMatrix3d().setToMirroring(line);
}

AcGeMatrix3d AcGeMatrix3d::alignCoordSys(const AcGePoint3d& fromOrigin,
                                         const AcGeVector3d& fromXAxis,
                                         const AcGeVector3d& fromYAxis,
                                         const AcGeVector3d& fromZAxis, const AcGePoint3d& toOrigin,
                                         const AcGeVector3d& toXAxis, const AcGeVector3d& toYAxis,
                                         const AcGeVector3d& toZAxis) {
    return AcGeMatrix3d().setToAlignCoordSys(fromOrigin, fromXAxis, fromYAxis, fromZAxis, toOrigin,
                                             toXAxis, toYAxis, toZAxis);
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
    return AcGeMatrix3d().setToPlaneToWorld(normal);
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGePlane& plane) {
    return AcGeMatrix3d().setToPlaneToWorld(plane);
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
    return AcGeMatrix3d().setToWorldToPlane(normal);
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGePlane& plane) {
    return AcGeMatrix3d().setToWorldToPlane(plane);
}

AcGeVector3d operator*(const AcGeMatrix3d& mat, const AcGeVector3d& vec) {
    const auto& e = mat.entry;
    return {e[0][0] * vec.x + e[0][1] * vec.y + e[0][2] * vec.z,
            e[1][0] * vec.x + e[1][1] * vec.y + e[1][2] * vec.z,
            e[2][0] * vec.x + e[2][1] * vec.y + e[2][2] * vec.z};
}
