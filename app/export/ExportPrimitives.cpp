#include "app/export/ExportPrimitives.h"

#include <cmath>

namespace kelaz {
namespace {

bool Finite(double v) { return std::isfinite(v); }
bool Finite(const AcGePoint3d& p) { return Finite(p.x) && Finite(p.y) && Finite(p.z); }
bool Finite(const AcGeVector3d& v) { return Finite(v.x) && Finite(v.y) && Finite(v.z); }

bool ShapeIsFinite(const GiPolyline& pl) {
    for (const auto& p : pl.points)
        if (!Finite(p)) return false;
    for (double b : pl.bulges)
        if (!Finite(b)) return false;
    return Finite(pl.normal);
}
bool ShapeIsFinite(const GiArc& a) {
    return Finite(a.center) && Finite(a.radius) && Finite(a.normal) && Finite(a.startVector) &&
           Finite(a.sweep);
}
bool ShapeIsFinite(const GiCircle& c) {
    return Finite(c.center) && Finite(c.radius) && Finite(c.normal);
}
bool ShapeIsFinite(const GiText& t) {
    return Finite(t.position) && Finite(t.normal) && Finite(t.direction) && Finite(t.height);
}

bool ShapeIsDrawable(const GiPolyline& pl) { return pl.points.size() >= 2; }
bool ShapeIsDrawable(const GiArc& a) { return a.radius > 0.0 && a.sweep > 0.0; }
bool ShapeIsDrawable(const GiCircle& c) { return c.radius > 0.0; }
bool ShapeIsDrawable(const GiText& t) { return t.height > 0.0 && !t.text.IsEmpty(); }

}  // namespace

CString PrimitiveLayer(const ExportEntity& entity, const GiPrimitive& primitive) {
    if (!primitive.traits.layer.IsEmpty()) return primitive.traits.layer;
    if (!entity.layer.IsEmpty()) return entity.layer;
    return kDefaultLayerName;
}

Adesk::UInt16 PrimitiveColor(const ExportEntity& entity, const GiPrimitive& primitive) {
    return primitive.traits.color == kColorByBlock ? entity.color : primitive.traits.color;
}

bool PrimitiveIsDrawable(const GiPrimitive& primitive) {
    return std::visit([](const auto& shape) { return ShapeIsDrawable(shape); }, primitive.shape);
}

bool CheckDrawingNumbers(const ExportDrawing& drawing, std::string& error) {
    for (const auto& entity : drawing.entities) {
        for (const auto& primitive : entity.primitives) {
            const bool finite =
                std::visit([](const auto& shape) { return ShapeIsFinite(shape); }, primitive.shape);
            if (!finite) {
                error = "实体 " + entity.handle + "（" + entity.className +
                        "）有一个坐标或尺寸不是数值";
                return false;
            }
        }
    }
    return true;
}

}  // namespace kelaz
