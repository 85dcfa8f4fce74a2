#pragma once

// Insertion points of identical components on concentric rings filling a sector or an annular
// sector: the outer ring carries the given number, each ring further in a fixed number fewer,
// the rings spaced evenly from the outer arc to the inner radius. Each ring is an arc layout.

#include "host/ge/GeArrays.h"
#include "host/ge/Point3d.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CDisposeOnSector {
public:
    CDisposeOnSector() = default;
    CDisposeOnSector(const CDisposeOnSector&) = default;
    CDisposeOnSector& operator=(const CDisposeOnSector&) = default;
    virtual ~CDisposeOnSector() = default;

    // rings, components on the outer ring, how many fewer on each next ring, the elevation of
    // the components; endMargin and rotation are what the caller offered the drafter for the
    // ring ends and the components' turn, kept for it and not used here. Refuses (the drafter
    // is told) a decrement that would leave the innermost ring with -decrement components or
    // fewer; nothing is stored then.
    bool SetDisposalInfo(int rings, int count, int decrement, double level, double endMargin,
                         double rotation);
    // p1, p2, p3: start, a middle point and end of the outer arc, in either sense; p4 marks the
    // inner radius (outside the outer arc or outside the sector: the rings reach the centre).
    // The count is left lowered by the decrement of every ring laid, and the amount of same is
    // only added to, so a second run starts where the first one stopped. Always true.
    bool Dispose(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3,
                 const AcGePoint3d& p4);
    // Appends the points of the last run, outer ring first.
    void GetDisPointArray(AcGePoint3dArray& out) const;
    int GetAmountOfSame() const;

private:
    int m_nRings = 0;
    int m_nCount = 0;
    int m_nDecrement = 0;
    double m_dEndMargin = 0.0;
    double m_dRotation = 0.0;
    double m_dLevel = 0.0;
    int m_nAmountOfSame = 0;
    AcGePoint3dArray m_ptArray;
};
