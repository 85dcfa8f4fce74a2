#include "module/layout/DisposeOnSector.h"

#include <algorithm>
#include <cstdint>

#include "host/ge/Vector3d.h"
#include "module/entry/DispGlobaFun.h"
#include "module/layout/DisposeOnCurve.h"
#include "suite/tools/KelMessageBox.h"

namespace {

// p4 this far outside the outer arc counts as outside.
constexpr double kOutside = 1e-6;

// 32-bit arithmetic as the stored counts have it: wraps instead of overflowing.
std::int32_t Wrap(std::int64_t value) { return static_cast<std::int32_t>(value); }

// The angle about +Z of the direction from p to the centre, measured from that direction to
// the X axis: the order the ends are put in below depends on this sense.
double AngleToCentre(const AcGePoint3d& p, const AcGePoint3d& centre) {
    return (centre - p).angleTo(AcGeVector3d::kXAxis, AcGeVector3d::kZAxis);
}

}  // namespace

bool CDisposeOnSector::SetDisposalInfo(int rings, int count, int decrement, double level,
                                       double endMargin, double rotation) {
    if (decrement != 0) {
        const std::int32_t spare = Wrap(
            static_cast<std::int64_t>(Wrap(static_cast<std::int64_t>(rings) * decrement)) - count);
        if (Wrap(static_cast<std::int64_t>(spare) / decrement) > 1) {
            kelaz::ShowWarning(CString(L"输入数据错误"));
            return false;
        }
    }
    m_nRings = rings;
    m_nCount = count;
    m_nDecrement = decrement;
    m_dLevel = level;
    m_dEndMargin = endMargin;
    m_dRotation = rotation;
    return true;
}

bool CDisposeOnSector::Dispose(const AcGePoint3d& p1In, const AcGePoint3d& p2,
                               const AcGePoint3d& p3In, const AcGePoint3d& p4In) {
    m_ptArray.removeAll();
    AcGePoint3d p1 = p1In, p3 = p3In, p4 = p4In;
    const AcGePoint3d centre = CDispGlobaFun::CenterOfArc(p1, p2, p3);
    const double outer = p1.distanceTo(centre);
    double inner = p4.distanceTo(centre);
    if (inner - outer > kOutside) {
        p4 = centre;
        inner = 0.0;
    }
    const double a1 = AngleToCentre(p1, centre);
    const double a2 = AngleToCentre(p2, centre);
    const double a3 = AngleToCentre(p3, centre);
    const double a4 = AngleToCentre(p4, centre);
    const double lo = std::min(a1, a3);
    const double hi = std::max(a1, a3);
    const bool a4Between = a4 >= lo && a4 <= hi;
    if (a2 < lo || a2 > hi) {
        // The arc runs through the angles' origin.
        if (a1 > a3) std::swap(p1, p3);
        if (a4Between) {
            p4 = centre;
            inner = 0.0;
        }
    } else {
        if (a3 > a1) std::swap(p1, p3);
        if (!a4Between) {
            p4 = centre;
            inner = 0.0;
        }
    }
    // A single ring lies on the outer arc; there is no spacing to spread.
    const double step = m_nRings > 1 ? (outer - inner) / (m_nRings - 1) : 0.0;
    AcGePoint3d start = p1, end = p3;
    double radius = outer;
    const AcGeVector3d inwardFromStart = (centre - p1).normal();
    const AcGeVector3d inwardFromEnd = (centre - p3).normal();
    for (int ring = 0; ring < m_nRings; ++ring) {
        CDisposeOnCurve curve;
        curve.SetLevel(m_dLevel);
        AcGePoint3dArray points;
        curve.DisposalOnArc(points, start, end, centre, radius, m_nCount);
        m_nAmountOfSame += curve.GetAmountOfSame();
        m_ptArray.append(points);
        start += inwardFromStart * step;
        end += inwardFromEnd * step;
        radius -= step;
        m_nCount = Wrap(static_cast<std::int64_t>(m_nCount) - m_nDecrement);
    }
    return true;
}

void CDisposeOnSector::GetDisPointArray(AcGePoint3dArray& out) const { out.append(m_ptArray); }

int CDisposeOnSector::GetAmountOfSame() const { return m_nAmountOfSame; }
