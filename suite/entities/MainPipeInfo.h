#pragma once

// The description of a riser (a vertical main lead or main pipe): the floor it belongs to, the
// elevations of its first and second points and its plan position. Its end points are
// (x, y, z1) and (x, y, z2).

#include "host/db/AcadErrorStatus.h"
#include "host/ge/Extents.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

class AcGeMatrix3d;
class AcGiWorldDraw;

namespace kelaz {
class PropertyList;
}

inline constexpr int kMainPipeFloorNameSize = 64;

struct MainPipeInfo {
    wchar_t floorName[kMainPipeFloorNameSize] = {};  // with its terminator
    double z1 = 0.0;
    double z2 = 0.0;
    double x = 0.0;
    double y = 0.0;
};

namespace kelaz {

// The radius of a riser's plan symbol on a 1:100 plan, and of the dot at its centre.
inline constexpr double kRiserSymbolRadius = 50.0;
inline constexpr double kRiserDotRadius = 10.0;
// The longest floor name the structure holds.
inline constexpr int kMaxFloorNameLength = kMainPipeFloorNameSize - 1;

// Copies the name into the structure; false (and nothing copied) when it is too long.
bool SetMainPipeFloorName(MainPipeInfo& info, const CString& floorName);
// The floor name of the structure; false when its buffer has no terminator.
bool GetMainPipeFloorName(const MainPipeInfo& info, CString& floorName);

// Riser geometry shared by main leads and main pipes, which keep their two end points with the
// plan position in common.

// The floor name and end points the structure describes; eInvalidInput for a floor name
// without terminator or a number that is not finite.
Acad::ErrorStatus RiserFromInfo(const MainPipeInfo& info, CString& floorName, AcGePoint3d& start,
                                AcGePoint3d& end);
MainPipeInfo RiserInfo(const CString& floorName, const AcGePoint3d& start, const AcGePoint3d& end);
// The ends a vertical riser keeps in a drawing: exactly one plan position.
bool IsRiser(const AcGePoint3d& start, const AcGePoint3d& end);
// Moves the ends when the motion keeps the vertical vertical (up or down); eNotApplicable for
// another motion and eInvalidInput for a singular matrix, with the ends unchanged. The moved
// ends share the plan position of the first, so the riser stays exactly vertical.
Acad::ErrorStatus TransformRiser(const AcGeMatrix3d& xform, AcGePoint3d& start, AcGePoint3d& end);
// The plan symbol at the first point: a circle with a dot, the same however the plan is turned.
void DrawRiser(AcGiWorldDraw* mode, const AcGePoint3d& start);
// The symbol and both ends.
AcDbExtents RiserExtents(const AcGePoint3d& start, const AcGePoint3d& end);
void ListRiser(PropertyList& list, const CString& floorName, const AcGePoint3d& start,
               const AcGePoint3d& end);

}  // namespace kelaz
