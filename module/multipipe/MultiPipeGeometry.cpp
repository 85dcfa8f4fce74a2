#include "module/multipipe/MultiPipeGeometry.h"

#include <cmath>

#include "host/ge/CircArc3d.h"
#include "host/ge/Vector3d.h"
#include "suite/tools/CalMethod.h"
#include "suite/tools/DealArc.h"
#include "suite/tools/KELToolKit.h"

namespace kelaz::multipipe {

namespace {

AcGePoint3d Flat(const AcGePoint3d& p) { return AcGePoint3d(p.x, p.y, 0.0); }

double Distance2d(const AcGePoint3d& a, const AcGePoint3d& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

LinePiece Straight(const AcGePoint3d& from, const AcGePoint3d& to) {
    LinePiece piece;
    piece.start = from;
    piece.end = to;
    return piece;
}

}  // namespace

OffsetStatus OffsetPiece(const PathPiece& piece, double horzOffset, double vertOffset,
                         LinePiece& out) {
    const AcGeVector3d normal = AcGeVector3d::kZAxis;
    const double z0 = piece.start.z + vertOffset;
    const double z1 = piece.end.z + vertOffset;
    out = LinePiece();
    if (!piece.isArc) {
        const double dx = piece.end.x - piece.start.x;
        const double dy = piece.end.y - piece.start.y;
        const double length = std::hypot(dx, dy);
        // A piece without plan length (a rise) has no side; it keeps its plan position.
        const double rx = length > 0.0 ? dy / length : 0.0;
        const double ry = length > 0.0 ? -dx / length : 0.0;
        out.start =
            AcGePoint3d(piece.start.x + rx * horzOffset, piece.start.y + ry * horzOffset, z0);
        out.end = AcGePoint3d(piece.end.x + rx * horzOffset, piece.end.y + ry * horzOffset, z1);
        return OffsetStatus::kOk;
    }
    const AcGePoint3d start = Flat(piece.start);
    const AcGePoint3d mid = Flat(piece.mid);
    const AcGePoint3d end = Flat(piece.end);
    AcGePoint3d center;
    if (!CDealArc::ArcLineCenter(start, mid, end, normal, center)) return OffsetStatus::kNoCenter;
    const double side = CDealArc::ArcOffsetOrientation(start, end, mid, normal) != 0 ? -1.0 : 1.0;
    const double radius = center.distanceTo(end) + side * horzOffset;
    if (radius <= 0.0) return OffsetStatus::kRadiusTooSmall;
    const auto radial = [&](const AcGePoint3d& p) {
        const AcGeVector3d dir = (p - center).normal();
        return center + dir * radius;
    };
    const AcGePoint3d newStart = radial(start);
    const AcGePoint3d newEnd = radial(end);
    const int direction = CDealArc::BaselineArcDirection(start, mid, end, normal);
    const AcGePoint3d newMid =
        CDealArc::GetArcAnyPoint(center, newStart, newEnd, direction, normal, 0.5);
    AcGeCircArc3d arc;
    if (!KELToolKit::FormArcByTreePt(newStart, newMid, newEnd, arc)) return OffsetStatus::kNoCenter;
    out.isArc = true;
    out.bulge = CalMethod::GetBugle(arc);
    out.center = center;
    out.radius = radius;
    out.start = AcGePoint3d(newStart.x, newStart.y, z0);
    out.end = AcGePoint3d(newEnd.x, newEnd.y, z1);
    out.mid = AcGePoint3d(newMid.x, newMid.y, (z0 + z1) / 2.0);
    return OffsetStatus::kOk;
}

bool JoinPieces(LinePiece& prev, LinePiece& next, const AcGePoint3d& corner, double horzOffset,
                LinePiece& bridge) {
    const bool meet = Distance2d(prev.end, next.start) <= kJoinTolerance;
    if (!prev.isArc && !next.isArc) {
        const double ax = prev.end.x - prev.start.x;
        const double ay = prev.end.y - prev.start.y;
        const double bx = next.end.x - next.start.x;
        const double by = next.end.y - next.start.y;
        const double cross = ax * by - ay * bx;
        const double lengths = std::hypot(ax, ay) * std::hypot(bx, by);
        if (lengths > 0.0 && std::abs(cross) > 1e-12 * lengths) {
            // prev.start + t * a = next.start + u * b
            const double wx = next.start.x - prev.start.x;
            const double wy = next.start.y - prev.start.y;
            const double t = (wx * by - wy * bx) / cross;
            const double u = (wx * ay - wy * ax) / cross;
            const AcGePoint3d mitre(prev.start.x + t * ax, prev.start.y + t * ay, 0.0);
            // The mitre must keep both pieces pointing the way they were traced, and must not
            // run off far beyond the corner on a sharp turn.
            const bool keepsDirection = t > 0.0 && u < 1.0;
            const bool nearCorner =
                Distance2d(mitre, corner) <= kMitreLimit * std::abs(horzOffset) + kJoinTolerance;
            if (keepsDirection && nearCorner) {
                prev.end.x = next.start.x = mitre.x;
                prev.end.y = next.start.y = mitre.y;
                return false;
            }
        }
    }
    if (meet) return false;
    bridge = Straight(prev.end, next.start);
    return true;
}

OffsetStatus OffsetPath(const std::vector<PathPiece>& path, double horzOffset, double vertOffset,
                        std::vector<LinePiece>& out) {
    out.clear();
    for (size_t i = 0; i < path.size(); ++i) {
        LinePiece piece;
        const OffsetStatus status = OffsetPiece(path[i], horzOffset, vertOffset, piece);
        if (status != OffsetStatus::kOk) return status;
        if (!out.empty()) {
            LinePiece bridge;
            if (JoinPieces(out.back(), piece, path[i].start, horzOffset, bridge))
                out.push_back(bridge);
        }
        out.push_back(piece);
    }
    return OffsetStatus::kOk;
}

MultiLineSegment ToSegment(const LinePiece& piece) {
    MultiLineSegment segment;
    segment.pt0 = Flat(piece.start);
    segment.pt2 = Flat(piece.end);
    if (piece.isArc) {
        // The arc in two halves through its middle point, each bending half as much.
        segment.pt1 = Flat(piece.mid);
        const double half = std::tan(std::atan(piece.bulge) / 2.0);
        segment.bulge0 = half;
        segment.bulge1 = half;
    } else {
        segment.pt1 = AcGePoint3d((piece.start.x + piece.end.x) / 2.0,
                                  (piece.start.y + piece.end.y) / 2.0, 0.0);
    }
    return segment;
}

}  // namespace kelaz::multipipe
