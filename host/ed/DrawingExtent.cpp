#include "host/ed/DrawingExtent.h"

#include <cmath>

namespace kelaz {

bool WithinDrawingExtent(const AcGePoint3d& point) {
    return std::abs(point.x) <= kMaxCoordinate && std::abs(point.y) <= kMaxCoordinate &&
           std::abs(point.z) <= kMaxCoordinate;
}

CString OutsideExtentMessage() {
    return FormatText(L"点超出图形范围：坐标不能超过 ±%.0f 毫米。", kMaxCoordinate);
}

}  // namespace kelaz
