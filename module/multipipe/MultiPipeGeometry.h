#pragma once

// The geometry of a bundle of parallel lines traced along one centre path.
//
// Sides: a positive horizontal offset lies on the right of the direction of travel, a negative
// one on the left. A straight piece is moved square to itself by the offset. An arc piece keeps
// its centre and changes its radius: R' = R + s * offset, s = -1 when the arc turns clockwise
// (its centre on the right, where positive offsets go, so they shrink), else +1; an offset that
// leaves no radius (R' <= 0) is refused.
//
// Corners: two straight pieces meet at the intersection of their offset lines (a mitre), so
// every line of the bundle turns exactly where its neighbours do and stays parallel to them.
// The mitre is not used, and the two offset ends are joined by a short straight piece instead
// (a bevel), when
//   - the turn is so sharp that the mitre point lies more than kMitreLimit times the offset
//     away from the path's corner (a turn of less than about 11.5 degrees between the legs),
//   - the offset crosses a short piece: the mitre would cut a piece back beyond its other end
//     and turn it round.
// A corner at which an arc meets a straight piece or another arc keeps the radial ends of the
// arc; where the offset ends do not meet (the arc does not leave its neighbour tangentially),
// the same short straight piece closes the gap.
//
// Elevations: the path's points carry their z; each line runs at the path's z plus its
// vertical offset, at both ends of each piece, so a bundle traced through points of different
// elevations rises with the path. The preview of the bundle is drawn flat all the same.

#include <vector>

#include "host/ge/Point3d.h"
#include "module/entry/LayoutApi.h"
#include "module/multipipe/MultiLine.h"

namespace kelaz::multipipe {

// How far a mitre point may lie from the path's corner, in offsets.
inline constexpr double kMitreLimit = 10.0;
// Ends closer than this meet without a joining piece.
inline constexpr double kJoinTolerance = 1e-6;

// One piece of the traced centre path: straight from start to end, or an arc through mid.
struct PathPiece {
    AcGePoint3d start;
    AcGePoint3d end;
    bool isArc = false;
    AcGePoint3d mid;
};

// One piece of an offset line.
struct LinePiece {
    AcGePoint3d start;
    AcGePoint3d end;
    bool isArc = false;
    AcGePoint3d mid;     // a point of the arc between its ends
    double bulge = 0.0;  // tangent of a quarter of the sweep, positive counter-clockwise
    AcGePoint3d center;
    double radius = 0.0;
};

enum class OffsetStatus { kOk, kNoCenter, kRadiusTooSmall };

// The piece moved by the offsets (horizontal: to the right; vertical: up).
LAYOUT_API OffsetStatus OffsetPiece(const PathPiece& piece, double horzOffset, double vertOffset,
                                    LinePiece& out);

// Joins the offset of one piece to the offset of the next at the path corner between them:
// moves prev's end and next's start to the mitre point, or answers true with the short
// straight piece that closes the gap between them. False when they meet as they are.
LAYOUT_API bool JoinPieces(LinePiece& prev, LinePiece& next, const AcGePoint3d& corner,
                           double horzOffset, LinePiece& bridge);

// The whole offset line of a path, corners joined, bridges in their place; the status of the
// first piece that could not be offset.
LAYOUT_API OffsetStatus OffsetPath(const std::vector<PathPiece>& path, double horzOffset,
                                   double vertOffset, std::vector<LinePiece>& out);

// A piece as the preview draws it: its three points and bulges, flat.
LAYOUT_API MultiLineSegment ToSegment(const LinePiece& piece);

}  // namespace kelaz::multipipe
