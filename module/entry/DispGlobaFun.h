#pragma once

// The module's shared static functions. One class for the whole module; each area defines its
// own functions in its own folder.

#include <memory>
#include <utility>

#include "host/db/ObjectId.h"
#include "host/ge/Extents.h"
#include "host/ge/GeArrays.h"
#include "host/ge/Line3d.h"
#include "host/ge/LineSeg2d.h"
#include "host/ge/Plane.h"
#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Scale3d.h"
#include "host/ge/Vector3d.h"
#include "host/text/Array.h"
#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class AcDbEntity;
class AcDbPolyline;
class KelAzDuctPrototype;

class LAYOUT_API CDispGlobaFun {
public:
    // --- numbers and text ---

    // Half away from zero to a whole number, through a 32-bit integer.
    static double KelAzRound(double value);
    // Rounds to digits decimals the way fixed-point formatting ("%10.4f") rounds.
    static double KelGetPrecision(double value, int digits);
    // Every coordinate to 4 decimals; digits is accepted and not used.
    static AcGePoint3d KelGetPointPrecision(const AcGePoint3d& point, int digits);
    static AcGePoint2d KelGetPointPrecision(const AcGePoint2d& point, int digits);
    // Removes every occurrence of ch; always true.
    static bool DeleteCha(CString& text, wchar_t ch);
    // Coordinate-wise equality within an absolute 1e-8.
    static bool IsEqualPoints(const double a[3], const double b[3]);
    // Walks a comma list of five-character type codes; it answers false for every input.
    static bool IsSuitedType(CString type, CString list);

    // --- the component type of the running command ---

    // The attribute chosen in the property bar, as a catalogue path. With check, an attribute
    // the open project's catalogue does not hold counts as none; with showMessage an empty
    // answer is reported to the drafter.
    static CString GetCurAttName(const bool& check, const bool& showMessage);
    // The system code chosen in the property bar, checked and reported alike.
    static CString GetCurSysCode(const bool& check, const bool& showMessage);
    // Every chosen system code, the current one first; false when none is chosen.
    static bool GetCurSysCodes(CStringArray& sysCodes);

    // --- point components ---

    // A component of the current attribute and system at the point: a section entity or an
    // equipment as the attribute's section type says. False, nothing created, without a
    // current attribute or system, or when the section data cannot be read (reported).
    static bool AddOneEquip(AcGePoint3d point, double rotation, AcDbObjectId& id,
                            AcGeScale3d scale);
    // Always an equipment, without section lookup or scale.
    static bool AddOneEquip(AcGePoint3d point, double rotation, AcDbObjectId& id);
    // As the four-argument AddOneEquip, setting the normal instead of the scale.
    static bool AddSectent(AcGePoint3d point, double rotation, AcGeVector3d normal,
                           AcDbObjectId& id);
    // The duplicate check of point placement: is a component of the class already standing at
    // the point, on the layers of the current category and system?
    static bool HasSamePunctateEquip(AcGePoint3d point, CString className, bool showMessage);
    // One component of the attribute and system given (the current ones when empty); whether it
    // was created, and its id.
    static std::pair<bool, AcDbObjectId> CreateSingleNodeEntity(AcGePoint3d point, CString attName,
                                                                CString sysCode, double rotation,
                                                                AcGeVector3d normal,
                                                                AcGeScale3d scale);
    // A valve of the current attribute and system at the point (on a pipe the caller found).
    static bool AddOneValve(AcGePoint3d point, double rotation, AcDbObjectId& id);
    // Hands a new entity to the drawing and refreshes what depends on it; on failure the
    // entity stays the caller's.
    static bool AppendEntity(AcDbEntity* entity, AcDbObjectId& id);
    // The system code and the attribute name of a drawn component; empty for anything else.
    static CString GetSysCodeOnId(const AcDbObjectId& id);
    static CString GetObjectNameOnId(const AcDbObjectId& id);
    // Writes the catalogue's pending attribute edits and lets the property bar show them.
    static bool SaveAttAndUpdate();
    // One component per point; how many were created.
    static int CreateNodeEntities(const AcGePoint3dArray& points, CString attName, CString sysCode,
                                  double rotation, AcGeVector3d normal, AcGeScale3d scale);

    // --- elevations ---

    // Is the text an elevation: an absolute number, or a floor, the letter F (or f) and an
    // optional signed offset ("3F+500")? For the floor form floor and offset receive the parts
    // (offset keeps the caller's value when the text has none); isAbsolute tells which form.
    static bool CheckLevel(const CString& text, double& floor, double& offset, bool& isAbsolute);
    // The elevation the text gives, the floor form resolved through the project's floor table.
    // Wrong text is reported to the drafter and answered with false, level untouched.
    static bool GetLevel(double& level, const CString& text);
    // The bottom of the floor in the project's floor table plus offset; false, level untouched,
    // when no row holds the floor. Silent.
    static bool CheckFloorInfo(double& level, double floor, double offset);
    // An elevation relative to the current floor made absolute; reports a missing floor.
    static bool ConverLevel(double& level, const double& relative);
    // Height of p over the plane: positive on its normal's side.
    static double GetLevelOnPlane(const AcGePlane& plane, const AcGePoint3d& p);
    // Puts p at the height over the plane, straight above (or below) where it stood.
    static AcGePoint3d SetLevelOnPlane(const AcGePlane& plane, AcGePoint3d& p, double height);
    // The same for a point given in the plane's own coordinates.
    static AcGePoint3d SetLevelOnPlane(const AcGePlane& plane, const AcGePoint2d& p, double height);
    // The higher end of a pipe-like entity; 0 when the id is no suite entity.
    static double GetPipeLevel(const AcDbObjectId& id);

    // --- plane geometry ---

    // Bulge (never negative) of the arc of the given radius from p1 to p2 whose centre lies on
    // the side of the chord that side points to.
    static double GetBulge(AcGePoint3d p1, AcGePoint3d p2, const double& radius, AcGeVector3d side);
    // Centre of the circle through three points; the origin when they are collinear.
    static AcGePoint3d CenterOfArc(AcGePoint3d p1, AcGePoint3d p2, AcGePoint3d p3);
    static AcGeLine3d VerticalBisector(AcGePoint3d p1, AcGePoint3d p2);
    // Central angle of a chord p1 p2 on a circle of the given radius.
    static double CenterAngle(AcGePoint3d p1, AcGePoint3d p2, const double& radius);
    static AcGePoint3d GetCenterPoint(AcGePoint3d p1, AcGePoint3d p2);
    // Do the two plan segments join the same two points (within 1 drawing unit)?
    static bool IsFullOverLap(const AcGeLineSeg2d* a, const AcGeLineSeg2d* b);
    // Sorts points by increasing distance to reference; false for fewer than two points.
    static bool OrderPoints(AcGePoint3dArray& points, AcGePoint3d reference);
    static AcDbExtents SetExtents(AcGePoint3d p1, AcGePoint3d p2);
    // Centre of the arc of the given radius that runs counter-clockwise in plan from start to
    // end the short way round; answers how many circles of that radius pass through both points
    // (0: the chord is longer than the diameter and center is untouched).
    static int GetCenter(const double start[3], const double end[3], double radius,
                         double center[3]);
    // Where the plan projections of two polylines cross, at the first one's elevation, in the
    // order of the first one's segments; with distinct, a point met again (a shared vertex of
    // two segments) is listed once. False when they do not cross.
    static bool GetPolylineInterePoint(const std::unique_ptr<AcDbPolyline>& first,
                                       const std::unique_ptr<AcDbPolyline>& second,
                                       AcGePoint3dArray& points, bool distinct = true);

    // --- searching the drawing ---

    // The suite's entities of the class (its name or DXF name; every suite entity when empty)
    // whose drawing passes within tolerance of the point in plan, as a pick there would find
    // them: what already stands here. Nearest first, the later drawn first on a tie. False
    // (ids empty) when there is none.
    static bool FindEntity(AcDbObjectIdArray& ids, const AcGePoint3d& point,
                           const CString& className, double tolerance);
    // The entities of the class inside the box in plan, or meeting it when crossing, in
    // drawing order; false when there is none.
    static bool GetEntByKelExtents(AcDbObjectIdArray& ids, const AcDbExtents& extents,
                                   const CString& className, bool crossing);
    // Meant to take out of ids the components of the current category that stand at level and
    // append their insertion points to points; the category read from each component is taken
    // over rather than compared, so nothing is ever taken out: points and ids stay as they
    // were. The arc layout counts on that. Always true.
    static bool FiltrateId(AcGePoint3dArray& points, AcDbObjectIdArray& ids, double level);
    // Empties the array from its last entry to its first; true when it ends empty.
    static bool RemoveAll(AcDbObjectIdArray& ids);
    static bool RemoveAll(AcGePoint3dArray& points);

    // The insertion point of a point component; the origin when the id is no component.
    static AcGePoint3d GetInsertPoint(const AcDbObjectId& id);
    // The same, with the component's system code (left alone when the id is no component).
    static AcGePoint3d GetInsertPoint(const AcDbObjectId& id, CString& sysCode);
    // Points and system codes of each id in turn (the origin and an empty code for an id that is
    // no component), appended to the two arrays.
    static bool GetInsertPoint(const AcDbObjectIdArray& ids, AcGePoint3dArray& points,
                               CStringArray& sysCodes);

    // --- leads, main leads and pipes (module/pipes) ---
    // Each creator builds one entity, sets its properties in one fixed order, appends it to
    // model space and answers true with its id; false (nothing made, id untouched, nothing
    // said) when a test fails. The tests run before anything is built.

    // A main pipe (riser) at pt1's plan position from pt1.z to pt2.z, on the current floor.
    // False when the elevations differ by less than 1e-6.
    static bool AddMainPipe(AcGePoint3d pt1, AcGePoint3d pt2, CString attName, CString sysCode,
                            AcDbObjectId& id);
    // A main lead likewise, on its own layer when layName is not empty. False when the
    // elevations differ by less than 0.0001 (looser than a main pipe's, on purpose).
    static bool AddMainLead(AcGePoint3d pt1, AcGePoint3d pt2, CString attName, CString sysCode,
                            AcDbObjectId& id, CString layName);
    // A straight pipe, or with bMain a main pipe. False when the points are closer than 0.0001
    // or a text is empty; with bMain true even when the main pipe was refused.
    static bool AddLinePipe(AcGePoint3d pt1, AcGePoint3d pt2, int bMain, CString attName,
                            CString sysCode, AcDbObjectId& id);
    // A straight lead (laid with laying type 1 when bLaying), or with bMain a main lead (true
    // even when refused); the reactor's graphics are flushed after a plane lead.
    static bool AddLineLead(AcGePoint3d pt1, AcGePoint3d pt2, int bMain, CString attName,
                            CString sysCode, AcDbObjectId& id, CString layName, bool bLaying);
    // A lead bent in an arc of the bulge about the normal.
    static bool AddArcLead(AcGePoint3d pt1, AcGePoint3d pt2, double bulge, AcGeVector3d normal,
                           CString attName, CString sysCode, AcDbObjectId& id, CString layName,
                           bool bLaying);
    // A lead of the running command's attribute and system: straight (a main lead with bMain)
    // when |bulge| < 1e-8, else an arc lead, never a main one.
    static bool CreateNewLead(AcGePoint3d pt1, AcGePoint3d pt2, double bulge, AcGeVector3d normal,
                              int bMain, AcDbObjectId& id, CString layName, bool bLaying);
    // Moves the end of the duct (open for write) nearer to pt onto pt, the start on a tie;
    // nothing moves when pt is within 1.0 of an end. False when the duct is not open for write.
    static bool ExtendLine(KelAzDuctPrototype* pDuct, const AcGePoint3d& pt);
    // The leads among ids (in their order, each once) with an end closer than 1.0 to pt.
    static AcDbObjectIdArray GetConnectedLead(const AcGePoint3d& pt, const AcDbObjectIdArray& ids);
    // Adds newAttName under the small category, with srcAttName's attribute rows (its section
    // shape set round or rectangular) and the section "B,width[,H,height]"; an empty height is a
    // round duct. With bSave the catalogue is written and the property bar reads it again.
    // False when the category is unknown or the name cannot be added there.
    static bool AddFGByCurFG(CString smallCategoryName, CString newAttName, CString srcAttName,
                             CString width, CString height, bool bSave);
};
