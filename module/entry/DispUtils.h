#pragma once

// Number and text rules the whole module shares: strict parsing of what a drafter types, the
// backslash category paths ("暖通\风部件\风法兰"), and a few geometry tests.

#include "host/db/ObjectId.h"
#include "host/ge/Extents.h"
#include "host/ge/GeArrays.h"
#include "host/ge/LinearEnt3d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Tol.h"
#include "host/text/Array.h"
#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CDispUtils {
public:
    // A decimal number with optional sign and at most one inner point; no exponent, no blanks
    // inside, small enough for a double. value is untouched when the text is refused.
    static bool ParseToDouble(const CString& text, double& value);
    // An integer with optional sign that an int holds; value is untouched when the text is
    // refused.
    static bool ParseToInteger(const CString& text, int& value);

    // Counts the non-overlapping occurrences of pattern; positions receive their indices when
    // there is at least one and are left alone otherwise.
    static int FindSpecStringCount(const CString& text, const CString& pattern,
                                   CUIntArray& positions);
    // Index of the first element equal to text, or -1.
    static int FindInCStringArray(const CString& text, const CStringArray& array);

    // Taking category paths apart. The answers on empty input differ from function to function
    // and callers rely on each of them.
    static bool CutFirstSegment(CString& text, const CString& separator);
    static bool GetFirstSegment(CString& text, const CString& separator);
    static bool CutLastSegment(CString& text, const CString& separator);
    static bool GetLastSegment(CString& text, const CString& separator);

    static AcGeTol GetTolerance(double equalPoint, double equalVector);
    static AcDbExtents CalcSquareExtents(const AcGePoint3d& centre, double half);
    // The longer array (b on a tie) followed by what the other adds.
    static AcDbObjectIdArray GetUnion(const AcDbObjectIdArray& a, const AcDbObjectIdArray& b);

    // Does the line cross the triangle p0 p1 p2?
    static bool IsIntersectWith(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2,
                                const AcGeLinearEnt3d& line, AcGePoint3d& hit, const AcGeTol& tol);
    // Does the line cross the quadrilateral p0 p1 p2 p3 (any of its four triangles)?
    static bool IsIntersectWith(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2,
                                const AcGePoint3d& p3, const AcGeLinearEnt3d& line,
                                AcGePoint3d& hit, const AcGeTol& tol);
    // Three corners: a triangle; four: a quadrilateral; any other count: false.
    static bool IsIntersectWith(const AcGePoint3dArray& corners, const AcGeLinearEnt3d& line,
                                AcGePoint3d& hit, const AcGeTol& tol);
    static bool IsIntersectWith(const AcGePoint3dArray& corners, const AcGeLinearEnt3d& line,
                                const AcGeTol& tol);
};
