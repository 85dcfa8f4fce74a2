#pragma once

// A 4x4 homogeneous transformation of space. Points and vectors are columns, so a matrix acts as
// M·p and the product A·B applies B first. entry[row][3] holds the translation.

#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"

class AcGeLine3d;
class AcGePlane;

class AcGeMatrix3d {
public:
    static const AcGeMatrix3d kIdentity;

    constexpr AcGeMatrix3d()
        : entry{{1.0, 0.0, 0.0, 0.0},
                {0.0, 1.0, 0.0, 0.0},
                {0.0, 0.0, 1.0, 0.0},
                {0.0, 0.0, 0.0, 1.0}} {}

    double operator()(unsigned int row, unsigned int col) const {
        KELAZ_ASSERT(row < 4 && col < 4, "matrix index out of range");
        return entry[row][col];
    }
    double& operator()(unsigned int row, unsigned int col) {
        KELAZ_ASSERT(row < 4 && col < 4, "matrix index out of range");
        return entry[row][col];
    }

    // Products: (a * b) applies b first, then a.
    AcGeMatrix3d operator*(const AcGeMatrix3d& mat) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& mat) { return *this = *this * mat; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& setToProduct(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
        return *this = a * b;
    }

    // Exact, entry by entry. Use isEqualTo for a tolerant comparison.
    bool operator==(const AcGeMatrix3d& mat) const;
    bool operator!=(const AcGeMatrix3d& mat) const { return !(*this == mat); }
    // Translations compare within equalPoint, the other entries within equalVector.
    bool isEqualTo(const AcGeMatrix3d& mat, const AcGeTol& tol = AcGeContext::gTol) const;

    // A singular matrix cannot be inverted; it is returned (or left) unchanged and isSingular
    // tells. Matrices read from drawings can be singular, so this is not a programming error.
    AcGeMatrix3d inverse(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix3d& invert(const AcGeTol& tol = AcGeContext::gTol);
    AcGeMatrix3d transpose() const;
    AcGeMatrix3d& transposeIt() { return *this = transpose(); }
    double det() const;

    // Judged on shape, not size: a matrix that scales by 1e-6 is as invertible as the identity.
    bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    // Rotation, reflection and translation with the same scale on every axis.
    bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // The largest scale the matrix applies to any of the axes.
    double scale() const;
    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
    AcGeVector3d getTranslation() const { return translation(); }

    AcGeMatrix3d& setToIdentity();
    AcGeMatrix3d& setToTranslation(const AcGeVector3d& vec);
    // Right-hand rule about the axis through center. A zero axis gives the identity.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double scaleAll, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& plane);
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& pnt);
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    // Maps the "from" frame onto the "to" frame: fromOrigin goes to toOrigin, fromX to toX, and
    // so on. Degenerate "from" axes leave a singular matrix.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                     const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                     const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
    // The frame becomes the matrix's columns: it maps the world axes onto the given ones.
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;
    // Plane coordinates to world: the plane's axes are the arbitrary-axis frame of the normal,
    // through the world origin. A zero normal gives the identity.
    AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
    // Plane coordinates to world through the plane's origin, with its u axis kept as the X axis
    // and its v axis squared up to it, so that the matrix is always a rigid motion.
    AcGeMatrix3d& setToPlaneToWorld(const AcGePlane& plane);
    AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
    AcGeMatrix3d& setToWorldToPlane(const AcGePlane& plane);

    static AcGeMatrix3d translation(const AcGeVector3d& vec);
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(double scaleAll, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d mirroring(const AcGePlane& plane);
    static AcGeMatrix3d mirroring(const AcGePoint3d& pnt);
    static AcGeMatrix3d mirroring(const AcGeLine3d& line);
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                      const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                      const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                      const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
    static AcGeMatrix3d planeToWorld(const AcGePlane& plane);
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);
    static AcGeMatrix3d worldToPlane(const AcGePlane& plane);

    double entry[4][4];
};

inline constexpr AcGeMatrix3d AcGeMatrix3d::kIdentity{};
