#include <cmath>
#include <optional>
#include <vector>

#include "host/db/Polyline.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/GeConstants.h"
#include "module/entry/DispGlobaFun.h"

namespace {

// Slack on segment parameters and arc angles, so that crossings at shared ends are found.
constexpr double kParamSlack = 1e-9;
// Points this close count as one when only distinct points are wanted.
constexpr double kSamePoint = 1e-6;

struct P2 {
    double x = 0.0;
    double y = 0.0;
};
P2 operator-(P2 a, P2 b) { return {a.x - b.x, a.y - b.y}; }
P2 operator+(P2 a, P2 b) { return {a.x + b.x, a.y + b.y}; }
P2 operator*(double s, P2 a) { return {s * a.x, s * a.y}; }
double Cross(P2 a, P2 b) { return a.x * b.y - a.y * b.x; }
double Dot(P2 a, P2 b) { return a.x * b.x + a.y * b.y; }

// One segment in plan: a line from a to b, or an arc about c of radius r from angle start
// sweeping by sweep (negative: clockwise).
struct PlanSegment {
    bool arc = false;
    P2 a, b, c;
    double r = 0.0, start = 0.0, sweep = 0.0;

    bool OnArc(P2 p) const {
        double t = std::atan2(p.y - c.y, p.x - c.x) - start;
        if (sweep < 0) t = -t;
        t = std::fmod(t, kelaz::kTwoPi);
        if (t < 0) t += kelaz::kTwoPi;
        const double span = std::fabs(sweep);
        const double slack = kParamSlack * kelaz::kTwoPi;
        return t <= span + slack || t >= kelaz::kTwoPi - slack;
    }
};

std::vector<PlanSegment> Segments(const AcDbPolyline& pline) {
    std::vector<PlanSegment> out;
    const unsigned n = pline.numVerts();
    const unsigned count = pline.isClosed() ? n : (n > 0 ? n - 1 : 0);
    for (unsigned i = 0; i < count; ++i) {
        PlanSegment s;
        AcGePoint3d a, b;
        pline.getPointAt(i, a);
        pline.getPointAt((i + 1) % n, b);
        s.a = {a.x, a.y};
        s.b = {b.x, b.y};
        if (pline.segType(i) == AcDbPolyline::kArc) {
            AcGeCircArc3d arc;
            pline.getArcSegAt(i, arc);
            s.arc = true;
            s.c = {arc.center().x, arc.center().y};
            s.r = arc.radius();
            s.start = std::atan2(a.y - s.c.y, a.x - s.c.x);
            s.sweep = (arc.endAng() - arc.startAng()) * (arc.normal().z < 0 ? -1.0 : 1.0);
        } else if (pline.segType(i) != AcDbPolyline::kLine) {
            continue;  // a point-like segment crosses nothing
        }
        out.push_back(s);
    }
    return out;
}

bool OnLine(const PlanSegment& s, P2 p) {
    const P2 d = s.b - s.a;
    const double len2 = Dot(d, d);
    const double t = len2 > 0 ? Dot(p - s.a, d) / len2 : 0.0;
    return t >= -kParamSlack && t <= 1 + kParamSlack;
}

bool On(const PlanSegment& s, P2 p) { return s.arc ? s.OnArc(p) : OnLine(s, p); }

// The points of the full line or circle of s that meet the full line or circle of t.
std::vector<P2> Candidates(const PlanSegment& s, const PlanSegment& t) {
    std::vector<P2> out;
    if (!s.arc && !t.arc) {
        const P2 d1 = s.b - s.a, d2 = t.b - t.a;
        const double den = Cross(d1, d2);
        if (std::fabs(den) <= 1e-12 * std::sqrt(Dot(d1, d1) * Dot(d2, d2))) return out;  // parallel
        out.push_back(s.a + (Cross(t.a - s.a, d2) / den) * d1);
    } else if (s.arc != t.arc) {
        const PlanSegment& line = s.arc ? t : s;
        const PlanSegment& arc = s.arc ? s : t;
        const P2 d = line.b - line.a, f = line.a - arc.c;
        const double A = Dot(d, d), B = 2 * Dot(f, d), C = Dot(f, f) - arc.r * arc.r;
        const double disc = B * B - 4 * A * C;
        if (A == 0 || disc < 0) return out;
        const double root = std::sqrt(disc);
        out.push_back(line.a + ((-B - root) / (2 * A)) * d);
        if (root > 0) out.push_back(line.a + ((-B + root) / (2 * A)) * d);
    } else {
        const P2 d = t.c - s.c;
        const double dist = std::sqrt(Dot(d, d));
        if (dist == 0 || dist > s.r + t.r || dist < std::fabs(s.r - t.r)) return out;
        const double along = (s.r * s.r - t.r * t.r + dist * dist) / (2 * dist);
        const double h = std::sqrt(std::max(s.r * s.r - along * along, 0.0));
        const P2 m = s.c + (along / dist) * d;
        const P2 perp{-d.y / dist, d.x / dist};
        out.push_back(m + h * perp);
        if (h > 0) out.push_back(m + (-h) * perp);
    }
    return out;
}

}  // namespace

bool CDispGlobaFun::GetPolylineInterePoint(const std::unique_ptr<AcDbPolyline>& first,
                                           const std::unique_ptr<AcDbPolyline>& second,
                                           AcGePoint3dArray& points, bool distinct) {
    if (!first || !second) return false;
    const std::vector<PlanSegment> a = Segments(*first);
    const std::vector<PlanSegment> b = Segments(*second);
    const double z = first->elevation();
    bool found = false;
    for (const PlanSegment& s : a) {
        for (const PlanSegment& t : b) {
            for (const P2& p : Candidates(s, t)) {
                if (!On(s, p) || !On(t, p)) continue;
                const AcGePoint3d hit(p.x, p.y, z);
                bool seen = false;
                for (int i = 0; distinct && !seen && i < points.length(); ++i)
                    seen = points[i].distanceTo(hit) <= kSamePoint;
                if (!seen) points.append(hit);
                found = true;
            }
        }
    }
    return found;
}
