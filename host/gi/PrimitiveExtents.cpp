#include "host/gi/PrimitiveExtents.h"

#include <cmath>
#include <type_traits>

#include "host/ge/GeConstants.h"
#include "host/gi/Bulge.h"

namespace kelaz {

namespace {

void AddPolyline(const GiPolyline& pl, AcDbExtents& extents) {
    const std::size_t n = pl.points.size();
    for (const AcGePoint3d& p : pl.points) extents.addPoint(p);
    const std::size_t segments = pl.closed ? n : (n == 0 ? 0 : n - 1);
    for (std::size_t i = 0; i < segments; ++i) {
        const double bulge = i < pl.bulges.size() ? pl.bulges[i] : 0.0;
        const AcGePoint3d& p0 = pl.points[i];
        const AcGePoint3d& p1 = pl.points[(i + 1) % n];
        if (bulge == 0.0 || p0 == p1) continue;
        const AcGeCircArc3d arc = ArcFromBulge(p0, p1, bulge, pl.normal);
        AddArcExtents(extents, arc.center(), arc.radius(), arc.normal(), arc.refVec(),
                      arc.endAng() - arc.startAng());
    }
}

void AddCircle(const GiCircle& c, AcDbExtents& extents) {
    // A circle's half-width along a world axis is r·sqrt(1 - n[i]²) for its unit normal n.
    const AcGeVector3d n = c.normal.normal();
    const AcGeVector3d half(c.radius * std::sqrt(std::max(0.0, 1.0 - n.x * n.x)),
                            c.radius * std::sqrt(std::max(0.0, 1.0 - n.y * n.y)),
                            c.radius * std::sqrt(std::max(0.0, 1.0 - n.z * n.z)));
    extents.addPoint(c.center - half);
    extents.addPoint(c.center + half);
}

void AddText(const GiText& t, AcDbExtents& extents) {
    const AcGeVector3d dir = t.direction.normal();
    const AcGeVector3d up = t.normal.normal().crossProduct(dir);
    const AcGeVector3d along = dir * (t.height * t.text.GetLength());
    const AcGeVector3d rise = up * t.height;
    extents.addPoint(t.position);
    extents.addPoint(t.position + along);
    extents.addPoint(t.position + rise);
    extents.addPoint(t.position + along + rise);
}

}  // namespace

void AddPrimitiveExtents(const GiPrimitive& primitive, AcDbExtents& extents) {
    std::visit(
        [&](const auto& shape) {
            using T = std::decay_t<decltype(shape)>;
            if constexpr (std::is_same_v<T, GiPolyline>) {
                AddPolyline(shape, extents);
            } else if constexpr (std::is_same_v<T, GiArc>) {
                AddArcExtents(extents, shape.center, shape.radius, shape.normal, shape.startVector,
                              shape.sweep);
            } else if constexpr (std::is_same_v<T, GiCircle>) {
                AddCircle(shape, extents);
            } else {
                AddText(shape, extents);
            }
        },
        primitive.shape);
}

AcDbExtents PrimitiveListExtents(const GiPrimitiveList& primitives) {
    AcDbExtents extents;
    for (const GiPrimitive& p : primitives) AddPrimitiveExtents(p, extents);
    return extents;
}

}  // namespace kelaz
