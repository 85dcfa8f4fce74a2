#pragma once

// What an entity draws, as plain values. The world-draw collector turns every geometry call into
// one primitive; the same list feeds the DXF writer, the PNG/SVG/PDF renderer and the tests.

#include <variant>
#include <vector>

#include "host/Adesk.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "host/text/CString.h"

namespace kelaz {

inline constexpr Adesk::UInt16 kColorByBlock = 0;
inline constexpr Adesk::UInt16 kColorByLayer = 256;

// The traits in force when the primitive was drawn.
struct GiTraits {
    Adesk::UInt16 color = kColorByLayer;  // colour index; 256 follows the layer
    CString layer;                        // empty: the entity's own layer
};

// A lightweight polyline: one bulge per vertex (the bulge of the segment that starts there).
struct GiPolyline {
    std::vector<AcGePoint3d> points;
    std::vector<double> bulges;  // same length as points
    bool closed = false;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
};

// A circular arc from centre + radius * startVector, sweeping counter-clockwise about normal.
struct GiArc {
    AcGePoint3d center;
    double radius = 0.0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcGeVector3d startVector = AcGeVector3d::kXAxis;  // unit
    double sweep = 0.0;                                // radians, positive
};

struct GiCircle {
    AcGePoint3d center;
    double radius = 0.0;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
};

// Single-line text; position is the left end of the baseline.
struct GiText {
    AcGePoint3d position;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcGeVector3d direction = AcGeVector3d::kXAxis;
    double height = 0.0;
    CString text;
};

struct GiPrimitive {
    GiTraits traits;
    std::variant<GiPolyline, GiArc, GiCircle, GiText> shape;
};

using GiPrimitiveList = std::vector<GiPrimitive>;

}  // namespace kelaz
