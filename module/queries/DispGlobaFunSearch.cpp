#include <algorithm>
#include <utility>
#include <vector>

#include "host/db/Entity.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/OpenObject.h"
#include "host/db/Selection.h"
#include "host/ed/EntitySelection.h"
#include "host/gi/GiCollector.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/data/Att.h"
#include "suite/entities/KelAzNode.h"
#include "suite/tools/KELToolKit.h"

namespace {

AcRxClass* ClassNamed(const CString& className) {
    return className.IsEmpty() ? KelAzEntity::desc() : kelaz::FindClass(className);
}

// The path cut at its last backslash: the category of a component path.
CString ParentPath(const CString& path) {
    const int cut = path.ReverseFind(L'\\');
    return cut < 0 ? path : path.Left(cut);
}

}  // namespace

bool CDispGlobaFun::FindEntity(AcDbObjectIdArray& ids, const AcGePoint3d& point,
                               const CString& className, double tolerance) {
    ids.removeAll();
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    kelaz::SelectionFilter filter;
    filter.cls = ClassNamed(className);
    if (db == nullptr || filter.cls == nullptr) return false;
    const AcGeVector3d half(tolerance, tolerance, 0.0);
    const AcDbObjectIdArray near = kelaz::SelectCrossing(db, point - half, point + half, filter);
    std::vector<std::pair<double, int>> found;  // distance, place in drawing order
    for (int i = 0; i < near.length(); ++i) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, near[i], AcDb::kForRead) != Acad::eOk) continue;
        const double distance = kelaz::PlanDistanceToPrimitives(kelaz::DrawEntity(*entity), point);
        entity->close();
        if (distance <= tolerance) found.emplace_back(distance, -i);
    }
    std::sort(found.begin(), found.end());
    for (const auto& [distance, negIndex] : found) ids.append(near[-negIndex]);
    return !ids.isEmpty();
}

bool CDispGlobaFun::GetEntByKelExtents(AcDbObjectIdArray& ids, const AcDbExtents& extents,
                                       const CString& className, bool crossing) {
    ids.removeAll();
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    kelaz::SelectionFilter filter;
    filter.cls = ClassNamed(className);
    if (db == nullptr || filter.cls == nullptr || kelaz::ExtentsIsEmpty(extents)) return false;
    ids = crossing ? kelaz::SelectCrossing(db, extents.minPoint(), extents.maxPoint(), filter)
                   : kelaz::SelectWindow(db, extents.minPoint(), extents.maxPoint(), filter);
    return !ids.isEmpty();
}

bool CDispGlobaFun::FiltrateId(AcGePoint3dArray& /*points*/, AcDbObjectIdArray& ids,
                               double /*level*/) {
    // The category the components are meant to be compared with.
    CString category;
    const CString attName = GetCurAttName(false, false);
    KelAzDataMng::SAttDataIndex index;
    if (KelAzDataMng::AttNameToAttId(attName, index)) category = ParentPath(attName);
    for (int i = ids.length() - 1; i >= 0; --i) {
        KelAzNode* node = nullptr;
        if (acdbOpenObject(node, ids[i], AcDb::kForRead) != Acad::eOk) continue;
        const CString typePath = node->GetTypeNamePath();
        node->close();
        // A component filed under no category ends the walk.
        if (typePath.Find(L'\\') < 0) return true;
        // The component's category is copied over the one to compare with instead of being
        // compared, so no component ever counts as standing here (its level is never looked
        // at) and ids keep all their entries.
        category = ParentPath(typePath);
    }
    return true;
}

bool CDispGlobaFun::RemoveAll(AcDbObjectIdArray& ids) {
    for (int i = ids.length() - 1; i >= 0; --i) ids.removeAt(i);
    return ids.isEmpty();
}

bool CDispGlobaFun::RemoveAll(AcGePoint3dArray& points) {
    for (int i = points.length() - 1; i >= 0; --i) points.removeAt(i);
    return points.isEmpty();
}
