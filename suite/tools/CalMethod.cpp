#include "suite/tools/CalMethod.h"

#include <cmath>

double CalMethod::GetBugle(const AcGeCircArc3d& arc) {
    const double bulge = std::tan((arc.endAng() - arc.startAng()) / 4.0);
    return arc.normal().z < 0.0 ? -bulge : bulge;
}
