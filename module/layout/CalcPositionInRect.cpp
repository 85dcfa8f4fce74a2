#include "module/layout/CalcPositionInRect.h"

#include "host/ui/ResourceOverride.h"
#include "module/entry/Resource.h"
#include "suite/tools/KelMessageBox.h"

namespace {
// A margin below this is no margin.
constexpr double kMarginTolerance = 1e-6;
}  // namespace

CCalcPositionInRect::CCalcPositionInRect(const AcGePoint3dArray& corners, int rows, int perRow,
                                         double marginAlong, double marginAcross)
    : m_ptCorners(corners),
      m_nRows(rows),
      m_nPerRow(perRow),
      m_dMarginAlong(marginAlong),
      m_dMarginAcross(marginAcross) {}

AcGePoint3dArray CCalcPositionInRect::GetPoints() {
    m_ptResult.removeAll();
    {
        CAcModuleResourceOverride resources(kelaz::ModuleResources());
        Calc();
    }
    return m_ptResult;
}

AcGePoint3dArray CCalcPositionInRect::DisposalOnLine(AcGePoint3d start, AcGePoint3d end,
                                                     double margin, int count) {
    AcGePoint3dArray points;
    const AcGeVector3d dir = (end - start).normal();
    if (margin > kMarginTolerance) {
        if (margin - 0.5 * start.distanceTo(end) > kMarginTolerance) {
            kelaz::ShowWarning(IDS_LINE_MARGIN_TOO_LARGE);
            return points;
        }
        start += margin * dir;
        end -= margin * dir;
    }
    // A single point stands at the start; the step is then never used.
    const double step = count > 1 ? start.distanceTo(end) / (count - 1) : 0.0;
    for (int i = 0; i < count; ++i) points.append(start + (i * step) * dir);
    return points;
}

void CCalcPositionInRect::Calc() {
    if (m_ptCorners.length() < 4) return;
    AcGePoint3d p0 = m_ptCorners[0];
    AcGePoint3d p1 = m_ptCorners[1];
    AcGePoint3d p3 = m_ptCorners[3];
    const double lengthAcross = p0.distanceTo(p3);
    const double lengthAlong = p0.distanceTo(p1);
    const AcGeVector3d along = (p1 - p0).normal();
    const AcGeVector3d across = (p3 - p0).normal();

    // Each margin is checked against half of the other side, not of its own: drafters' tables
    // were made with this rule and the refusals must stay the same.
    if (m_dMarginAlong >= kMarginTolerance) {
        if (m_dMarginAlong - 0.5 * lengthAcross >= kMarginTolerance) {
            kelaz::ShowWarning(IDS_RECT_MARGIN_ALONG_TOO_LARGE);
            return;
        }
        p0 += m_dMarginAlong * along;
        p1 -= m_dMarginAlong * along;
        p3 += m_dMarginAlong * along;
    }
    if (m_dMarginAcross >= kMarginTolerance) {
        if (m_dMarginAcross - 0.5 * lengthAlong >= kMarginTolerance) {
            kelaz::ShowWarning(IDS_RECT_MARGIN_ACROSS_TOO_LARGE);
            return;
        }
        p0 += m_dMarginAcross * across;
        p1 += m_dMarginAcross * across;
        p3 -= m_dMarginAcross * across;
    }

    const double rowStep = m_nRows > 1 ? p0.distanceTo(p3) / (m_nRows - 1) : 0.0;
    AcGePoint3d a = p0;
    AcGePoint3d b = p1;
    for (int row = 0; row < m_nRows; ++row) {
        m_ptResult.append(DisposalOnLine(a, b, 0.0, m_nPerRow));
        a += rowStep * across;
        b += rowStep * across;
    }
}
