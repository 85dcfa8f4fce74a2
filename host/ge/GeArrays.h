#pragma once

// The host's array names for geometry values.

#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "host/text/Array.h"

using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGePoint2dArray = AcArray<AcGePoint2d>;
using AcGeVector3dArray = AcArray<AcGeVector3d>;
using AcGeDoubleArray = AcArray<double>;
using AcGeIntArray = AcArray<int>;
