#include <memory>

#include "host/db/OpenObject.h"
#include "host/ui/ResourceOverride.h"
#include "module/entry/DispGlobaFun.h"
#include "module/entry/Resource.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/SysCode.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzKelSectEnt.h"
#include "suite/entities/KelAzPipeValve.h"
#include "suite/reactor/ReactorHelper.h"
#include "suite/tools/KELAzLayer.h"
#include "suite/tools/KELToolKit.h"
#include "suite/tools/KelMessageBox.h"
#include "suite/tools/ModelSpace.h"

namespace {

// Categories drawn by a fixed class whatever their section type says.
constexpr const wchar_t* kAirHandlingUnits = L"暖通\\风设备\\空调机组\\";
constexpr const wchar_t* kEquipmentCategories[] = {
    L"消防\\储存装置\\水箱\\", L"给排水\\设备\\水箱\\", L"暖通\\零星构件\\设备基础\\"};
// Half the side of the square searched around a point for a component already there.
constexpr double kDuplicateWindow = 1.0;

bool ReadSection(const CString& attName, KelAzDataMng::SectionInfo& section) {
    KelAzDataMng::SAttDataIndex index;
    return KelAzDataMng::AttNameToAttId(attName, index) &&
           KelAzDataMng::CAttDetailMem(index).GetSectionInfo(section);
}

// A new node of the class the section type asks for; null for a type no class draws.
KelAzNode* NodeForSection(int sectionType) {
    if (sectionType == KelAzDataMng::kSectionTypeSection) return new KelAzKelSectEnt;
    if (sectionType == KelAzDataMng::kSectionTypeEquipment) return new KelAzEquipMent;
    return nullptr;
}

// Appends the node and refreshes what depends on it; the node is the drawing's or deleted.
bool Append(KelAzNode* node, AcDbObjectId& id) {
    if (CDispGlobaFun::AppendEntity(node, id)) return true;
    delete node;
    return false;
}

// A node of the current attribute and system, made by make and given name, point, rotation
// and code; null when there is nothing to place or make answers null.
template <class Make>
KelAzNode* StartNode(const AcGePoint3d& point, double rotation, Make make) {
    const CString sysCode = CDispGlobaFun::GetCurSysCode(true, true);
    if (sysCode.IsEmpty()) return nullptr;
    const CString attName = CDispGlobaFun::GetCurAttName(true, false);
    if (attName.IsEmpty()) return nullptr;
    KelAzNode* node = make(attName);
    if (!node) return nullptr;
    node->SetAttName(attName);
    node->SetInsertPoint(point);
    node->setRotation(rotation);
    node->SetSysCode(sysCode);
    return node;
}

// The node the attribute's section type asks for; the drafter is told when there is none.
KelAzNode* NodeBySection(const CString& attName) {
    KelAzDataMng::SectionInfo section;
    if (!ReadSection(attName, section)) {
        kelaz::ShowWarning(CString(L"读取断面数据失败"));
        return nullptr;
    }
    KelAzNode* node = NodeForSection(section.nSectionType);
    if (!node) kelaz::ShowWarning(CString(L"未知的断面类型"));
    return node;
}

template <class T>
KelAzNode* NewNode(const CString& /*attName*/) {
    return new T;
}

}  // namespace

bool CDispGlobaFun::AddOneEquip(AcGePoint3d point, double rotation, AcDbObjectId& id,
                                AcGeScale3d scale) {
    KelAzNode* node = StartNode(point, rotation, NodeBySection);
    if (!node) return false;
    node->setScaleFactors(scale);
    return Append(node, id);
}

bool CDispGlobaFun::AddOneEquip(AcGePoint3d point, double rotation, AcDbObjectId& id) {
    KelAzNode* equipment = StartNode(point, rotation, NewNode<KelAzEquipMent>);
    return equipment && Append(equipment, id);
}

bool CDispGlobaFun::AddSectent(AcGePoint3d point, double rotation, AcGeVector3d normal,
                               AcDbObjectId& id) {
    KelAzNode* node = StartNode(point, rotation, NodeBySection);
    if (!node) return false;
    node->setNormal(normal);
    return Append(node, id);
}

bool CDispGlobaFun::HasSamePunctateEquip(AcGePoint3d point, CString className,
                                         bool /*showMessage*/) {
    const CString attName = GetCurAttName(false, false);
    CString category = KelAzDataMng::CSys::GetIndexPath(attName);
    const int cut = category.ReverseFind(L'\\');
    if (cut >= 0) category = category.Left(cut);

    KelAzDataMng::SAttDataIndex index;
    CString mountingHeight;
    if (KelAzDataMng::AttNameToAttId(attName, index) &&
        KelAzDataMng::CAttDetailMem(index).GetSysUpHeight(mountingHeight)) {
        point.z = _wtof(mountingHeight);
    }
    const AcGePoint3d lo(point.x - kDuplicateWindow, point.y - kDuplicateWindow, point.z);
    const AcGePoint3d hi(point.x + kDuplicateWindow, point.y + kDuplicateWindow, point.z);

    const CString sysCode = GetCurSysCode(false, false);
    CString layers = CKELAzLayer::GetLayerByObjName_BySysCode(category, sysCode, 0);
    const CString second = CKELAzLayer::GetLayerByObjName_BySysCode(category, sysCode, 1);
    if (!second.IsEmpty()) layers += L"," + second;

    AcDbObjectIdArray ids;
    KELToolKit::SelectInterEntity(ids, className, lo, hi, layers);
    for (const AcDbObjectId& id : ids) {
        KelAzNode* node = nullptr;
        if (acdbOpenObject(node, id, AcDb::kForRead) != Acad::eOk) continue;
        const CString typePath = node->GetTypeNamePath();
        node->close();
        // A component filed under no category stands wherever it stands: the point is taken.
        const int last = typePath.ReverseFind(L'\\');
        if (last < 0) return true;
        // The category is taken over from the component and the search goes on: the same
        // category at the same point is not told apart from any other here.
        category = typePath.Left(last);
    }
    return false;
}

std::pair<bool, AcDbObjectId> CDispGlobaFun::CreateSingleNodeEntity(
    AcGePoint3d point, CString attName, CString sysCode, double rotation, AcGeVector3d normal,
    AcGeScale3d scale) {
    if (attName.IsEmpty()) attName = GetCurAttName(true, false);
    if (sysCode.IsEmpty()) sysCode = GetCurSysCode(true, true);

    KelAzNode* node = nullptr;
    {
        CAcModuleResourceOverride resources(kelaz::ModuleResources());
        KelAzDataMng::SectionInfo section;
        if (!ReadSection(attName, section)) {
            kelaz::ShowWarning(IDS_READ_SECTION_FAILED);
            return {false, AcDbObjectId()};
        }
        bool equipment = false;
        for (const wchar_t* path : kEquipmentCategories)
            equipment = equipment || attName.Find(path) >= 0;
        if (attName.Find(kAirHandlingUnits) >= 0) {
            node = new KelAzKelSectEnt;
        } else if (equipment) {
            node = new KelAzEquipMent;
        } else {
            node = NodeForSection(section.nSectionType);
            if (!node) {
                kelaz::ShowWarning(IDS_UNKNOWN_SECTION_TYPE);
                return {false, AcDbObjectId()};
            }
        }
    }
    node->SetAttName(attName);
    node->SetInsertPoint(point);
    node->setRotation(rotation);
    node->SetSysCode(sysCode);
    node->setScaleFactors(scale);
    node->setNormal(normal);

    AcDbObjectId id;
    const bool created = addToModelSpace(id, node) == Acad::eOk;
    if (!created) delete node;
    KelAzReactorHelper::FlushGraphic(CString());
    return {created, id};
}

int CDispGlobaFun::CreateNodeEntities(const AcGePoint3dArray& points, CString attName,
                                      CString sysCode, double rotation, AcGeVector3d normal,
                                      AcGeScale3d scale) {
    int created = 0;
    for (const AcGePoint3d& p : points) {
        if (CreateSingleNodeEntity(p, attName, sysCode, rotation, normal, scale).first) ++created;
    }
    return created;
}

bool CDispGlobaFun::AddOneValve(AcGePoint3d point, double rotation, AcDbObjectId& id) {
    KelAzNode* valve = StartNode(point, rotation, NewNode<KelAzPipeValve>);
    return valve && Append(valve, id);
}

bool CDispGlobaFun::AppendEntity(AcDbEntity* entity, AcDbObjectId& id) {
    AcDbObjectId newId;
    if (!entity || addToModelSpace(newId, entity) != Acad::eOk) return false;
    id = newId;
    KelAzReactorHelper::FlushGraphic(CString());
    return true;
}

namespace {
CString ReadSuiteText(const AcDbObjectId& id, bool sysCode) {
    KelAzEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return CString();
    const CString text = sysCode ? entity->GetSysCode() : entity->GetAttName();
    entity->close();
    return text;
}
}  // namespace

CString CDispGlobaFun::GetSysCodeOnId(const AcDbObjectId& id) { return ReadSuiteText(id, true); }

CString CDispGlobaFun::GetObjectNameOnId(const AcDbObjectId& id) {
    return ReadSuiteText(id, false);
}

bool CDispGlobaFun::SaveAttAndUpdate() {
    if (!KelAzDataMng::CAtt::Save()) return false;
    IFaceBarCtrl::UpdateSelf();
    return true;
}
