#include "module/entry/DispUtils.h"

#include <cerrno>
#include <climits>
#include <cmath>
#include <cwchar>
#include <cwctype>

#include "host/ge/BoundedPlane.h"

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsSign(wchar_t c) { return c == L'+' || c == L'-'; }

// The shared opening of both strict parsers: a trimmed copy that starts with a digit or a sign
// and is not a lone sign.
bool TrimmedNumberStart(const CString& text, CString& trimmed) {
    if (text.IsEmpty()) return false;
    trimmed = text;
    trimmed.Trim();
    if (trimmed.IsEmpty()) return false;
    const wchar_t first = trimmed.GetAt(0);
    if (!IsDigit(first) && !IsSign(first)) return false;
    return !(trimmed.GetLength() == 1 && IsSign(first));
}

}  // namespace

bool CDispUtils::ParseToInteger(const CString& text, int& value) {
    CString s;
    if (!TrimmedNumberStart(text, s)) return false;
    for (int i = 1; i < s.GetLength(); ++i) {
        if (!IsDigit(s.GetAt(i))) return false;
    }
    // Digits beyond an int's range would be read as its limit, a number nobody typed.
    errno = 0;
    const long long parsed = std::wcstoll(s.GetString(), nullptr, 10);
    if (errno == ERANGE || parsed < INT_MIN || parsed > INT_MAX) return false;
    value = static_cast<int>(parsed);
    return true;
}

bool CDispUtils::ParseToDouble(const CString& text, double& value) {
    CString s;
    if (!TrimmedNumberStart(text, s)) return false;
    CUIntArray points;
    const int count = FindSpecStringCount(s, L".", points);
    if (count > 1) return false;
    if (count == 1) {
        const int p = static_cast<int>(points[0]);
        if (p == 0 || p == s.GetLength() - 1) return false;
        if (!IsDigit(s.GetAt(p - 1)) || !IsDigit(s.GetAt(p + 1))) return false;
    }
    for (int i = 1; i < s.GetLength(); ++i) {
        const wchar_t c = s.GetAt(i);
        if (!IsDigit(c) && c != L'.') return false;
    }
    // Digits enough to overflow a double name no length a drawing can use.
    const double parsed = _wtof(s);
    if (!std::isfinite(parsed)) return false;
    value = parsed;
    return true;
}

int CDispUtils::FindSpecStringCount(const CString& text, const CString& pattern,
                                    CUIntArray& positions) {
    if (pattern.IsEmpty() || text.IsEmpty()) return 0;
    CUIntArray found;
    for (int at = text.Find(pattern, 0); at >= 0;
         at = text.Find(pattern, at + pattern.GetLength())) {
        found.Add(static_cast<UINT>(at));
    }
    if (!found.IsEmpty()) positions.Copy(found);
    return static_cast<int>(found.GetSize());
}

int CDispUtils::FindInCStringArray(const CString& text, const CStringArray& array) {
    if (text.IsEmpty() || array.IsEmpty()) return -1;
    for (INT_PTR i = 0; i < array.GetSize(); ++i) {
        if (array[i] == text) return static_cast<int>(i);
    }
    return -1;
}

bool CDispUtils::CutFirstSegment(CString& text, const CString& separator) {
    if (separator.IsEmpty()) return true;
    if (text.IsEmpty()) return false;
    const int at = text.Find(separator);
    if (at < 0) return false;
    text = text.Mid(at + separator.GetLength());
    return true;
}

bool CDispUtils::GetFirstSegment(CString& text, const CString& separator) {
    if (separator.IsEmpty() || text.IsEmpty()) return true;
    const int at = text.Find(separator);
    if (at < 0) return false;
    text = text.Left(at);
    return true;
}

bool CDispUtils::CutLastSegment(CString& text, const CString& separator) {
    if (separator.IsEmpty() || text.IsEmpty()) return true;
    CUIntArray positions;
    if (FindSpecStringCount(text, separator, positions) == 0) return false;
    text = text.Left(static_cast<int>(positions[positions.GetUpperBound()]));
    return true;
}

bool CDispUtils::GetLastSegment(CString& text, const CString& separator) {
    if (separator.IsEmpty()) return true;
    if (text.IsEmpty()) return false;
    CUIntArray positions;
    if (FindSpecStringCount(text, separator, positions) == 0) return false;
    text = text.Mid(static_cast<int>(positions[positions.GetUpperBound()]) + separator.GetLength());
    return true;
}

AcGeTol CDispUtils::GetTolerance(double equalPoint, double equalVector) {
    AcGeTol tol;
    tol.setEqualPoint(equalPoint);
    tol.setEqualVector(equalVector);
    return tol;
}

AcDbExtents CDispUtils::CalcSquareExtents(const AcGePoint3d& centre, double half) {
    const AcGeVector3d d(half, half, half);
    return AcDbExtents(centre - d, centre + d);
}

AcDbObjectIdArray CDispUtils::GetUnion(const AcDbObjectIdArray& a, const AcDbObjectIdArray& b) {
    const bool aLonger = a.length() > b.length();
    AcDbObjectIdArray result = aLonger ? a : b;
    for (const AcDbObjectId& id : aLonger ? b : a) {
        if (!result.contains(id)) result.append(id);
    }
    return result;
}

bool CDispUtils::IsIntersectWith(const AcGePoint3d& p0, const AcGePoint3d& p1,
                                 const AcGePoint3d& p2, const AcGeLinearEnt3d& line,
                                 AcGePoint3d& hit, const AcGeTol& tol) {
    // Two parallelograms over the triangle, from two of its corners: a point inside both is
    // inside the triangle.
    const AcGeBoundedPlane fromP1(p0, p1, p2);
    const AcGeBoundedPlane fromP0(p1, p0, p2);
    AcGePoint3d first;
    AcGePoint3d second;
    if (!fromP1.intersectWith(line, first, tol)) return false;
    if (!fromP0.intersectWith(line, second, tol)) return false;
    hit = second;
    return true;
}

bool CDispUtils::IsIntersectWith(const AcGePoint3d& p0, const AcGePoint3d& p1,
                                 const AcGePoint3d& p2, const AcGePoint3d& p3,
                                 const AcGeLinearEnt3d& line, AcGePoint3d& hit,
                                 const AcGeTol& tol) {
    return IsIntersectWith(p0, p1, p2, line, hit, tol) ||
           IsIntersectWith(p0, p1, p3, line, hit, tol) ||
           IsIntersectWith(p0, p2, p3, line, hit, tol) ||
           IsIntersectWith(p1, p2, p3, line, hit, tol);
}

bool CDispUtils::IsIntersectWith(const AcGePoint3dArray& corners, const AcGeLinearEnt3d& line,
                                 AcGePoint3d& hit, const AcGeTol& tol) {
    if (corners.length() == 3)
        return IsIntersectWith(corners[0], corners[1], corners[2], line, hit, tol);
    if (corners.length() == 4) {
        return IsIntersectWith(corners[0], corners[1], corners[2], corners[3], line, hit, tol);
    }
    return false;
}

bool CDispUtils::IsIntersectWith(const AcGePoint3dArray& corners, const AcGeLinearEnt3d& line,
                                 const AcGeTol& tol) {
    AcGePoint3d scratch;
    return IsIntersectWith(corners, line, scratch, tol);
}
