#include <gtest/gtest.h>

#include <cmath>

#include "module/multipipe/MultiPipeGeometry.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::multipipe::LinePiece;
using kelaz::multipipe::OffsetPath;
using kelaz::multipipe::OffsetPiece;
using kelaz::multipipe::OffsetStatus;
using kelaz::multipipe::PathPiece;

PathPiece Line(double x0, double y0, double x1, double y1, double z0 = 0, double z1 = 0) {
    PathPiece p;
    p.start = AcGePoint3d(x0, y0, z0);
    p.end = AcGePoint3d(x1, y1, z1);
    return p;
}

PathPiece Arc(const AcGePoint3d& s, const AcGePoint3d& m, const AcGePoint3d& e) {
    PathPiece p;
    p.start = s;
    p.mid = m;
    p.end = e;
    p.isArc = true;
    return p;
}

// Distance of a point from the infinite line through a and b.
double DistanceToLine(const AcGePoint3d& p, const AcGePoint3d& a, const AcGePoint3d& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    return std::abs((p.x - a.x) * dy - (p.y - a.y) * dx) / std::hypot(dx, dy);
}

}  // namespace

TEST(MultiPipeGeometry, StraightLegsStayParallelAndMeetAtTheirMitres) {
    // Right along x, then a left turn up y, then a right turn along x again.
    const std::vector<PathPiece> path = {Line(0, 0, 1000, 0), Line(1000, 0, 1000, 1000),
                                         Line(1000, 1000, 3000, 1000)};
    for (const double d : {100.0, 250.0, -100.0, 0.0}) {
        std::vector<LinePiece> pieces;
        ASSERT_EQ(OffsetPath(path, d, 0.0, pieces), OffsetStatus::kOk);
        ASSERT_EQ(pieces.size(), 3u) << "no bevels on square corners, d=" << d;
        for (size_t i = 0; i < 3; ++i) {
            // Each piece lies exactly d from its leg, on the right of travel for positive d.
            EXPECT_NEAR(DistanceToLine(pieces[i].start, path[i].start, path[i].end), std::abs(d),
                        1e-9);
            EXPECT_NEAR(DistanceToLine(pieces[i].end, path[i].start, path[i].end), std::abs(d),
                        1e-9);
        }
        // The mitre points: outside of the left turn, inside of the right one.
        EXPECT_POINT_NEAR(pieces[0].end, AcGePoint3d(1000 + d, -d, 0), 1e-9);
        EXPECT_POINT_NEAR(pieces[1].start, pieces[0].end, 0.0);
        EXPECT_POINT_NEAR(pieces[1].end, AcGePoint3d(1000 + d, 1000 - d, 0), 1e-9);
        EXPECT_POINT_NEAR(pieces[2].start, pieces[1].end, 0.0);
        EXPECT_POINT_NEAR(pieces[2].end, AcGePoint3d(3000, 1000 - d, 0), 1e-9);
    }
}

TEST(MultiPipeGeometry, SharpTurnsAndShortLegsAreBevelledNotTurnedRound) {
    // A hairpin of about 5.7 degrees: the mitre would lie 20 offsets away.
    {
        const std::vector<PathPiece> path = {Line(0, 0, 1000, 0), Line(1000, 0, 0, 100)};
        std::vector<LinePiece> pieces;
        ASSERT_EQ(OffsetPath(path, 100.0, 0.0, pieces), OffsetStatus::kOk);
        ASSERT_EQ(pieces.size(), 3u);
        EXPECT_POINT_NEAR(pieces[0].end, AcGePoint3d(1000, -100, 0), 1e-9);
        EXPECT_POINT_NEAR(pieces[1].start, pieces[0].end, 0.0);
        EXPECT_POINT_NEAR(pieces[1].end, pieces[2].start, 0.0);
    }
    // A leg of 50 under an offset of 100: the mitres would cut it back past its other end.
    {
        const std::vector<PathPiece> path = {Line(0, 0, 1000, 0), Line(1000, 0, 1000, -50),
                                             Line(1000, -50, 2000, -50)};
        std::vector<LinePiece> pieces;
        ASSERT_EQ(OffsetPath(path, 100.0, 0.0, pieces), OffsetStatus::kOk);
        ASSERT_EQ(pieces.size(), 4u) << "a bevel at the first corner";
        EXPECT_POINT_NEAR(pieces[2].end, AcGePoint3d(900, -150, 0), 1e-9);
        for (size_t i = 0; i + 1 < pieces.size(); ++i)
            EXPECT_POINT_NEAR(pieces[i].end, pieces[i + 1].start, 1e-9) << "connected at " << i;
        // No piece runs against the direction of its leg.
        for (const LinePiece& p : pieces) {
            const bool alongX = std::abs(p.end.y - p.start.y) < 1e-9;
            if (alongX) {
                EXPECT_GE(p.end.x - p.start.x, -1e-9);
            }
        }
    }
}

TEST(MultiPipeGeometry, ArcsAreConcentricWithTheRadiusOnTheOffsetSide) {
    // A quarter circle of radius 150 about (0,150), from the origin to (150,150): it turns
    // counter-clockwise, its centre on the left, so positive (right) offsets grow it.
    const double r = 150.0, h = r / std::sqrt(2.0);
    const PathPiece ccw = Arc({0, 0, 0}, {h, r - h, 0}, {r, r, 0});
    LinePiece out;
    ASSERT_EQ(OffsetPiece(ccw, 100.0, 0.0, out), OffsetStatus::kOk);
    EXPECT_TRUE(out.isArc);
    EXPECT_POINT_NEAR(out.center, AcGePoint3d(0, r, 0), 1e-9);
    EXPECT_NEAR(out.radius, 250.0, 1e-9);
    EXPECT_POINT_NEAR(out.start, AcGePoint3d(0, -100, 0), 1e-9);
    EXPECT_POINT_NEAR(out.end, AcGePoint3d(250, r, 0), 1e-9);
    EXPECT_NEAR(out.center.distanceTo(out.mid), 250.0, 1e-9);
    EXPECT_NEAR(out.bulge, std::tan(M_PI / 8), 1e-9);

    // The same arc traced back turns clockwise: the offsets go towards the centre, 100 leaves
    // a radius of 50 and 200 none at all.
    const PathPiece cw = Arc({r, r, 0}, {h, r - h, 0}, {0, 0, 0});
    ASSERT_EQ(OffsetPiece(cw, 100.0, 0.0, out), OffsetStatus::kOk);
    EXPECT_NEAR(out.radius, 50.0, 1e-9);
    EXPECT_NEAR(out.bulge, -std::tan(M_PI / 8), 1e-9);
    EXPECT_EQ(OffsetPiece(cw, 200.0, 0.0, out), OffsetStatus::kRadiusTooSmall);
    EXPECT_EQ(OffsetPiece(cw, 160.0, 0.0, out), OffsetStatus::kRadiusTooSmall);
    // Three points on one line make no arc.
    EXPECT_EQ(OffsetPiece(Arc({0, 0, 0}, {1, 0, 0}, {2, 0, 0}), 10.0, 0.0, out),
              OffsetStatus::kNoCenter);
}

TEST(MultiPipeGeometry, AnArcThatDoesNotLeaveItsLegTangentiallyIsClosedByAShortPiece) {
    // Up the y axis, then an arc bending right: the arc's radial end and the leg's square end
    // do not meet, and the gap is bridged; a tangent arc needs nothing.
    const std::vector<PathPiece> kinked = {Line(0, 0, 0, 1000),
                                           Arc({0, 1000, 0}, {1000, 3000, 0}, {3000, 3500, 0})};
    std::vector<LinePiece> pieces;
    ASSERT_EQ(OffsetPath(kinked, 100.0, 0.0, pieces), OffsetStatus::kOk);
    ASSERT_EQ(pieces.size(), 3u);
    EXPECT_POINT_NEAR(pieces[1].start, pieces[0].end, 0.0);
    EXPECT_POINT_NEAR(pieces[1].end, pieces[2].start, 0.0);
    EXPECT_FALSE(pieces[1].isArc);

    // Tangent: a half circle about (1000,1000) leaving the leg (0,0)-(0,1000) straight up.
    const std::vector<PathPiece> tangent = {Line(0, 0, 0, 1000),
                                            Arc({0, 1000, 0}, {1000, 2000, 0}, {2000, 1000, 0})};
    ASSERT_EQ(OffsetPath(tangent, 100.0, 0.0, pieces), OffsetStatus::kOk);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_POINT_NEAR(pieces[0].end, AcGePoint3d(100, 1000, 0), 1e-9);
    EXPECT_POINT_NEAR(pieces[1].start, pieces[0].end, 1e-9);
    EXPECT_NEAR(pieces[1].radius, 900.0, 1e-9);
}

TEST(MultiPipeGeometry, VerticalOffsetsRaiseEachLineWithThePath) {
    LinePiece out;
    ASSERT_EQ(OffsetPiece(Line(0, 0, 1000, 0, 2800, 3200), 100.0, -50.0, out), OffsetStatus::kOk);
    EXPECT_POINT_NEAR(out.start, AcGePoint3d(0, -100, 2750), 1e-9);
    EXPECT_POINT_NEAR(out.end, AcGePoint3d(1000, -100, 3150), 1e-9);
    // The preview is flat.
    const MultiLineSegment seg = kelaz::multipipe::ToSegment(out);
    EXPECT_EQ(seg.pt0.z, 0.0);
    EXPECT_EQ(seg.pt2.z, 0.0);
    EXPECT_POINT_NEAR(seg.pt1, AcGePoint3d(500, -100, 0), 1e-9);
}
