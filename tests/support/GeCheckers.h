#pragma once

// Tolerant comparisons of geometry values for tests, with messages that show both values:
//   EXPECT_POINT_NEAR(actual, expected, 1e-9);   // 2d or 3d points, by distance
//   EXPECT_VECTOR_NEAR(actual, expected, 1e-9);  // 2d or 3d vectors, by length of difference
//   EXPECT_MATRIX_NEAR(actual, expected, 1e-9);  // largest entry difference

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>
#include <string>

#include "host/ge/Matrix3d.h"
#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector2d.h"
#include "host/ge/Vector3d.h"

// Printers for gtest's own messages (EXPECT_EQ and friends); found by argument lookup.
inline void PrintTo(const AcGePoint2d& p, std::ostream* os) {
    *os << "(" << p.x << ", " << p.y << ")";
}
inline void PrintTo(const AcGeVector2d& v, std::ostream* os) {
    *os << "<" << v.x << ", " << v.y << ">";
}
inline void PrintTo(const AcGePoint3d& p, std::ostream* os) {
    *os << "(" << p.x << ", " << p.y << ", " << p.z << ")";
}
inline void PrintTo(const AcGeVector3d& v, std::ostream* os) {
    *os << "<" << v.x << ", " << v.y << ", " << v.z << ">";
}
inline void PrintTo(const AcGeMatrix3d& m, std::ostream* os) {
    for (const auto& row : m.entry)
        *os << "\n  [" << row[0] << ", " << row[1] << ", " << row[2] << ", " << row[3] << "]";
}

namespace kelaz::test {

template <class T>
std::string Show(const T& value) {
    std::ostringstream os;
    os.precision(17);
    PrintTo(value, &os);
    return os.str();
}

template <class T>
::testing::AssertionResult NearResult(const char* actualExpr, const char* expectedExpr,
                                      const T& actual, const T& expected, double gap, double tol) {
    if (gap <= tol) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actualExpr << " = " << Show(actual) << "\n  is " << gap << " away from "
           << expectedExpr << " = " << Show(expected) << "\n  tolerance " << tol;
}

inline ::testing::AssertionResult GeNear(const char* a, const char* b, const char*,
                                         const AcGePoint2d& actual, const AcGePoint2d& expected,
                                         double tol) {
    return NearResult(a, b, actual, expected, actual.distanceTo(expected), tol);
}
inline ::testing::AssertionResult GeNear(const char* a, const char* b, const char*,
                                         const AcGePoint3d& actual, const AcGePoint3d& expected,
                                         double tol) {
    return NearResult(a, b, actual, expected, actual.distanceTo(expected), tol);
}
inline ::testing::AssertionResult GeNear(const char* a, const char* b, const char*,
                                         const AcGeVector2d& actual, const AcGeVector2d& expected,
                                         double tol) {
    return NearResult(a, b, actual, expected, (actual - expected).length(), tol);
}
inline ::testing::AssertionResult GeNear(const char* a, const char* b, const char*,
                                         const AcGeVector3d& actual, const AcGeVector3d& expected,
                                         double tol) {
    return NearResult(a, b, actual, expected, (actual - expected).length(), tol);
}
inline ::testing::AssertionResult GeNear(const char* a, const char* b, const char*,
                                         const AcGeMatrix3d& actual, const AcGeMatrix3d& expected,
                                         double tol) {
    double gap = 0.0;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            gap = std::max(gap, std::abs(actual.entry[r][c] - expected.entry[r][c]));
    return NearResult(a, b, actual, expected, gap, tol);
}

}  // namespace kelaz::test

#define EXPECT_POINT_NEAR(actual, expected, tol) \
    EXPECT_PRED_FORMAT3(::kelaz::test::GeNear, actual, expected, tol)
#define EXPECT_VECTOR_NEAR(actual, expected, tol) \
    EXPECT_PRED_FORMAT3(::kelaz::test::GeNear, actual, expected, tol)
#define EXPECT_MATRIX_NEAR(actual, expected, tol) \
    EXPECT_PRED_FORMAT3(::kelaz::test::GeNear, actual, expected, tol)
