#pragma once

// Calculation helpers of the common tools.

#include "host/ge/CircArc3d.h"

class CalMethod {
public:
    // The bulge of the arc run from its start point to its end point, as a plan polyline would
    // store it: tan(sweep / 4), negative when the arc turns clockwise seen from above.
    static double GetBugle(const AcGeCircArc3d& arc);
};
