#pragma once

// Insertion points of identical components laid out in rows inside a drawn rectangle.

#include "host/ge/GeArrays.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CCalcPositionInRect {
public:
    // corners: the rectangle in drawing order; corner 0 is the origin, corner 1 ends the side
    // along which each row runs, corner 3 ends the side along which the rows are stacked.
    // marginAlong insets the row ends, marginAcross the first and last rows.
    CCalcPositionInRect(const AcGePoint3dArray& corners, int rows, int perRow, double marginAlong,
                        double marginAcross);

    // Row by row from the corner 0-1 side towards corner 3, each row from the corner 0 end.
    // Empty when nothing is to be placed: a margin too large (the drafter is told), no rows, no
    // points per row, or fewer than four corners.
    AcGePoint3dArray GetPoints();

private:
    void Calc();
    AcGePoint3dArray DisposalOnLine(AcGePoint3d start, AcGePoint3d end, double margin, int count);

    AcGePoint3dArray m_ptCorners;
    AcGePoint3dArray m_ptResult;
    int m_nRows;
    int m_nPerRow;
    double m_dMarginAlong;
    double m_dMarginAcross;
};
