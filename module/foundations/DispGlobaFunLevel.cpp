#include <cmath>

#include "host/db/OpenObject.h"
#include "host/text/Array.h"
#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "suite/data/FloorMng.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzCurveEntity.h"
#include "suite/entities/KelAzNode.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/tools/KelMessageBox.h"

namespace {

// An elevation is typed in at most this many characters.
constexpr int kMaxLevelText = 8;
// Floors of lists and ranges match within this; a floor named by a single number within the
// looser one.
constexpr double kListFloorTolerance = 1e-6;
constexpr double kSingleFloorTolerance = 0.0001;
// A point this close to the height asked for is left where it is.
constexpr double kLevelTolerance = 1e-6;
// Beyond this angle from the normal a point lies below the plane.
constexpr double kBelowPlaneAngle = 1.0;

// The number a floor-name piece stands for; pieces that are no number count as 0, as the
// runtime reads them.
double FloorNumber(const CString& text) { return _wtof(text); }

}  // namespace

bool CDispGlobaFun::CheckLevel(const CString& text, double& floor, double& offset,
                               bool& isAbsolute) {
    if (text.IsEmpty()) return false;
    int at = text.Find(L'F');
    if (at < 0) at = text.Find(L'f');
    if (at < 0) {
        floor = 0.0;
        offset = 0.0;
        isAbsolute = true;
        double unused = 0.0;
        return CDispUtils::ParseToDouble(text, unused);
    }
    const CString floorPart = text.Left(at);
    if (floorPart.IsEmpty()) return false;
    isAbsolute = false;
    const CString offsetPart = text.Mid(at + 1);
    const bool floorOk = CDispUtils::ParseToDouble(floorPart, floor);
    if (offsetPart.IsEmpty()) return floorOk;
    const bool offsetOk = CDispUtils::ParseToDouble(offsetPart, offset);
    return floorOk && offsetOk;
}

bool CDispGlobaFun::GetLevel(double& level, const CString& text) {
    if (text.GetLength() < 1 || text.GetLength() > kMaxLevelText) {
        kelaz::ShowWarning(CString(L"输入数值过大"));
        return false;
    }
    double floor = 0.0;
    double offset = 0.0;
    bool isAbsolute = false;
    if (!CheckLevel(text, floor, offset, isAbsolute)) {
        kelaz::ShowWarning(CString(L"请按正确格式输入标高信息"));
        return false;
    }
    if (isAbsolute) {
        double value = 0.0;
        CDispUtils::ParseToDouble(text, value);
        level = value;
        return true;
    }
    if (!CheckFloorInfo(level, floor, offset)) {
        kelaz::ShowWarning(CString(L"请输入正确的楼层编号"));
        return false;
    }
    return true;
}

bool CDispGlobaFun::CheckFloorInfo(double& level, double floor, double offset) {
    CArray<KelAzDataMng::FloorRecord> floors;
    if (!KelAzDataMng::CProj::GetAllFloorData(floors) || floors.IsEmpty()) return false;
    for (const KelAzDataMng::FloorRecord& row : floors) {
        const CString& name = row.strName;
        if (name.Find(L',') >= 0) {
            // A list: each floor has a record of its own. Empty pieces are kept as they stand.
            int start = 0;
            for (;;) {
                const int comma = name.Find(L',', start);
                const CString piece = comma < 0 ? name.Mid(start) : name.Mid(start, comma - start);
                if (std::fabs(floor - FloorNumber(piece)) < kListFloorTolerance) {
                    KelAzDataMng::FloorRecord own;
                    if (!KelAzDataMng::IFloorMng::GetSeperateFloorRecordByFloorName(piece, own,
                                                                                    false))
                        return false;
                    level = own.dElevation + offset;
                    return true;
                }
                if (comma < 0) break;
                start = comma + 1;
            }
        } else if (name.Find(L'/') >= 0) {
            const int slash = name.Find(L'/');
            // A range has exactly two ends; a table with another shape is not searched further.
            if (name.Find(L'/', slash + 1) >= 0) return false;
            const double first = FloorNumber(name.Left(slash));
            const double last = FloorNumber(name.Mid(slash + 1));
            for (int k = 0; first + k <= last; ++k) {
                if (std::fabs(floor - (first + k)) < kListFloorTolerance) {
                    level = k * row.dHeight + row.dElevation + offset;
                    return true;
                }
            }
        } else if (std::fabs(FloorNumber(name) - floor) < kSingleFloorTolerance) {
            level = row.dElevation + offset;
            return true;
        }
    }
    return false;
}

bool CDispGlobaFun::ConverLevel(double& level, const double& relative) {
    KelAzDataMng::FloorRecord record;
    if (!KelAzDataMng::IFloorMng::GetFloorRecordByFloorName(KelAzDataMng::CProj::GetCurFloorName(),
                                                            record)) {
        kelaz::ShowWarning(CString(L"楼层信息错误"));
        return false;
    }
    // A floor stored with a negative height still counts from its lower edge.
    level = std::min(record.dElevation, record.dElevation + record.dHeight) + relative;
    return true;
}

double CDispGlobaFun::GetLevelOnPlane(const AcGePlane& plane, const AcGePoint3d& p) {
    if (plane.isOn(p)) return 0.0;
    const AcGePoint3d foot = p.orthoProject(plane);
    const AcGeVector3d up = (p - foot).normal();
    const double distance = p.distanceTo(foot);
    return plane.normal().angleTo(up) > kBelowPlaneAngle ? -distance : distance;
}

AcGePoint3d CDispGlobaFun::SetLevelOnPlane(const AcGePlane& plane, AcGePoint3d& p, double height) {
    if (std::fabs(height - GetLevelOnPlane(plane, p)) < kLevelTolerance) return p;
    p = plane.closestPointTo(p) + height * plane.normal().normal();
    return p;
}

AcGePoint3d CDispGlobaFun::SetLevelOnPlane(const AcGePlane& plane, const AcGePoint2d& p,
                                           double height) {
    AcGePoint3d point = plane.evalPoint(p);
    return SetLevelOnPlane(plane, point, height);
}

double CDispGlobaFun::GetPipeLevel(const AcDbObjectId& id) {
    KelAzEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return 0.0;
    AcGePoint3d start, end;
    if (const KelAzCurveEntity* curve = KelAzCurveEntity::cast(entity)) {
        curve->getStartPoint(start);
        curve->getEndPoint(end);
    } else if (const KelAzSoftLine* soft = KelAzSoftLine::cast(entity)) {
        if (soft->numVerts() > 0) {
            soft->getPointAt(0, start);
            soft->getPointAt(soft->numVerts() - 1, end);
        }
    } else if (const KelAzNode* node = KelAzNode::cast(entity)) {
        start = end = node->GetInsertPoint();
    }
    entity->close();
    return std::max(start.z, end.z);
}
