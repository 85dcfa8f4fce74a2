#include "host/db/OpenObject.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzNode.h"

namespace {

bool ReadNode(const AcDbObjectId& id, AcGePoint3d& point, CString& sysCode) {
    KelAzNode* node = nullptr;
    if (acdbOpenObject(node, id, AcDb::kForRead) != Acad::eOk) return false;
    // Equipment answers through its own class, which may place its insertion point itself.
    if (const KelAzEquipMent* equipment = KelAzEquipMent::cast(node)) {
        point = equipment->GetInsertPoint();
    } else {
        point = node->GetInsertPoint();
    }
    sysCode = node->GetSysCode();
    node->close();
    return true;
}

}  // namespace

AcGePoint3d CDispGlobaFun::GetInsertPoint(const AcDbObjectId& id) {
    CString unused;
    return GetInsertPoint(id, unused);
}

AcGePoint3d CDispGlobaFun::GetInsertPoint(const AcDbObjectId& id, CString& sysCode) {
    AcGePoint3d point;
    CString code;
    if (!ReadNode(id, point, code)) return AcGePoint3d::kOrigin;
    sysCode = code;
    return point;
}

bool CDispGlobaFun::GetInsertPoint(const AcDbObjectIdArray& ids, AcGePoint3dArray& points,
                                   CStringArray& sysCodes) {
    for (const AcDbObjectId& id : ids) {
        CString code;
        points.append(GetInsertPoint(id, code));
        sysCodes.Add(code);
    }
    return true;
}
