// The creators of leads, main leads, pipes and main pipes, and three small operations on what
// they make (moving a duct's end, the leads that end at a point, a new duct size).
//
// Every creator sets the entity's properties in one fixed order: construct; SetAttName;
// SetSysCode; SetLayName (leads and main leads); geometry; SetLayingType(1) when asked; append
// to model space; FlushGraphic("") for plane leads. Its tests run before anything is
// constructed, so a refusal leaves the drawing untouched, and it tells the drafter nothing.

#include <cmath>

#include "host/db/OpenObject.h"
#include "host/ge/Tol.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzDuctPrototype.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/MainPipeInfo.h"
#include "suite/reactor/ReactorHelper.h"
#include "suite/tools/ModelSpace.h"

namespace {

// The elevation difference a main pipe needs at least, and the looser one of a main lead. The
// two differ on purpose (callers have long relied on both) and are kept apart.
constexpr double kMainPipeMinRise = 1e-6;
constexpr double kMainLeadMinRise = 0.0001;
// The length a plane pipe or lead needs at least.
constexpr double kMinPlaneLength = 0.0001;
// A bulge below this (in absolute value) is a straight lead.
constexpr double kStraightBulge = 1e-8;
// ExtendLine: a target within this of an end is that end already.
constexpr double kExtendSamePoint = 1.0;
// GetConnectedLead: an end closer than this (strictly) is connected.
constexpr double kConnectedDistance = 1.0;
// The laying type asked for by the laying flag; its meaning is the entity module's.
constexpr int kLayingType = 1;

// The section of a new duct size: shape codes and the kind every duct has.
constexpr const wchar_t* kRectShapeCode = L"520";
constexpr const wchar_t* kRoundShapeCode = L"521";
constexpr const wchar_t* kDuctKind = L"风管";
constexpr const wchar_t* kRectShape = L"矩形";
constexpr const wchar_t* kRoundShape = L"圆形";
// Keys of the attribute rows that hold a duct's section shape.
constexpr const wchar_t* kDuctShapeKey = L"HVAC_DuctSectionShape";
constexpr const wchar_t* kFlexibleShapeKey = L"HVAC_FlexibleDShape";
// An attribute list is a flat array in rows of label, unit, value, key.
constexpr INT_PTR kFieldsPerRow = 4;
constexpr INT_PTR kValueField = 2;
constexpr INT_PTR kKeyField = 3;

// The description of a vertical object from pt1 to pt2 on the current floor: the floor name,
// the two elevations and the plan position of the first point (the second's x and y are not
// looked at).
MainPipeInfo VerticalInfo(const AcGePoint3d& pt1, const AcGePoint3d& pt2) {
    MainPipeInfo info;
    const CString floorName = KelAzDataMng::CProj::GetCurFloorName();
    // Copied character by character with its terminator. A name too long for the buffer (a
    // comma list of many floors, say) is not recorded at all: the buffer stays empty, as the
    // entity module's own RiserInfo leaves it, and the riser is still made with its elevations
    // and position. A cut name could name another floor of the list, which is worse than none.
    if (floorName.GetLength() < kMainPipeFloorNameSize) {
        const wchar_t* text = floorName.GetString();
        for (int i = 0; i <= floorName.GetLength(); ++i) info.floorName[i] = text[i];
    }
    info.z1 = pt1.z;
    info.z2 = pt2.z;
    info.x = pt1.x;
    info.y = pt1.y;
    return info;
}

// Hands the entity to the drawing. Its answer is not the creator's (a creator that got this far
// answers true), but an entity the drawing refused is the creator's to delete.
void Append(AcDbObjectId& id, AcDbEntity* entity) {
    if (addToModelSpace(id, entity) != Acad::eOk) delete entity;
}

// What every plane creator asks of its input before anything is made.
bool IsPlaneInput(const AcGePoint3d& pt1, const AcGePoint3d& pt2, const CString& attName,
                  const CString& sysCode) {
    return pt1.distanceTo(pt2) >= kMinPlaneLength && !attName.IsEmpty() && !sysCode.IsEmpty();
}

// A plane lead up to its geometry: classification, layer, then both ends.
KelAzLead* StartPlaneLead(const AcGePoint3d& pt1, const AcGePoint3d& pt2, const CString& attName,
                          const CString& sysCode, const CString& layName) {
    auto* lead = new KelAzLead;
    lead->SetAttName(attName);
    lead->SetSysCode(sysCode);
    lead->SetLayName(layName);
    lead->setStartPoint(pt1);
    lead->setEndPoint(pt2);
    return lead;
}

// What follows a plane lead's geometry: the laying type when asked, the drawing, and the redraw
// of what depends on the new lead.
void FinishPlaneLead(KelAzLead* lead, AcDbObjectId& id, bool bLaying) {
    if (bLaying) lead->SetLayingType(kLayingType);
    Append(id, lead);
    KelAzReactorHelper::FlushGraphic(CString());
}

bool IsShapeKey(const CString& key) { return key == kDuctShapeKey || key == kFlexibleShapeKey; }

}  // namespace

bool CDispGlobaFun::AddMainPipe(AcGePoint3d pt1, AcGePoint3d pt2, CString attName, CString sysCode,
                                AcDbObjectId& id) {
    if (std::abs(pt1.z - pt2.z) < kMainPipeMinRise) return false;
    auto* pipe = new KelAzMainPipe;
    // No database: the code is recorded, nothing is looked up for it now.
    pipe->SetAttName(attName, false);
    pipe->SetSysCode(sysCode, false);
    pipe->SetMainPipeInfo(VerticalInfo(pt1, pt2));
    Append(id, pipe);
    return true;
}

bool CDispGlobaFun::AddMainLead(AcGePoint3d pt1, AcGePoint3d pt2, CString attName, CString sysCode,
                                AcDbObjectId& id, CString layName) {
    if (std::abs(pt1.z - pt2.z) < kMainLeadMinRise) return false;
    auto* lead = new KelAzMainLead;
    lead->SetAttName(attName, false);
    lead->SetSysCode(sysCode, false);
    lead->SetLayName(layName);
    lead->SetMainPipeInfo(VerticalInfo(pt1, pt2));
    Append(id, lead);
    return true;
}

bool CDispGlobaFun::AddLinePipe(AcGePoint3d pt1, AcGePoint3d pt2, int bMain, CString attName,
                                CString sysCode, AcDbObjectId& id) {
    if (!IsPlaneInput(pt1, pt2, attName, sysCode)) return false;
    if (bMain != 0) {
        // True even when the main pipe was refused (equal elevations): callers that must know
        // test the elevations themselves.
        AddMainPipe(pt1, pt2, attName, sysCode, id);
        return true;
    }
    auto* pipe = new KelAzPipe;
    pipe->SetAttName(attName);
    pipe->SetSysCode(sysCode);
    pipe->setStartPoint(pt1);
    pipe->setEndPoint(pt2);
    Append(id, pipe);
    return true;
}

bool CDispGlobaFun::AddLineLead(AcGePoint3d pt1, AcGePoint3d pt2, int bMain, CString attName,
                                CString sysCode, AcDbObjectId& id, CString layName, bool bLaying) {
    if (!IsPlaneInput(pt1, pt2, attName, sysCode)) return false;
    if (bMain != 0) {
        // As AddLinePipe: true whatever the main lead answered; the laying flag is not passed.
        AddMainLead(pt1, pt2, attName, sysCode, id, layName);
        return true;
    }
    FinishPlaneLead(StartPlaneLead(pt1, pt2, attName, sysCode, layName), id, bLaying);
    return true;
}

bool CDispGlobaFun::AddArcLead(AcGePoint3d pt1, AcGePoint3d pt2, double bulge, AcGeVector3d normal,
                               CString attName, CString sysCode, AcDbObjectId& id, CString layName,
                               bool bLaying) {
    if (!IsPlaneInput(pt1, pt2, attName, sysCode)) return false;
    KelAzLead* lead = StartPlaneLead(pt1, pt2, attName, sysCode, layName);
    // After both ends and before the normal.
    lead->SetBulge(bulge);
    lead->SetNormal(normal);
    FinishPlaneLead(lead, id, bLaying);
    return true;
}

bool CDispGlobaFun::CreateNewLead(AcGePoint3d pt1, AcGePoint3d pt2, double bulge,
                                  AcGeVector3d normal, int bMain, AcDbObjectId& id, CString layName,
                                  bool bLaying) {
    if (pt1.distanceTo(pt2) < kMinPlaneLength) return false;
    const CString attName = GetCurAttName(true, false);
    const CString sysCode = GetCurSysCode(true, true);
    if (attName.IsEmpty() || sysCode.IsEmpty()) return false;
    if (std::abs(bulge) < kStraightBulge)
        return AddLineLead(pt1, pt2, bMain, attName, sysCode, id, layName, bLaying);
    // An arc is always an ordinary lead: the main flag goes no further.
    return AddArcLead(pt1, pt2, bulge, normal, attName, sysCode, id, layName, bLaying);
}

bool CDispGlobaFun::ExtendLine(KelAzDuctPrototype* pDuct, const AcGePoint3d& pt) {
    if (pDuct == nullptr || !pDuct->isWriteEnabled()) return false;
    AcGePoint3d start;
    AcGePoint3d end;
    pDuct->getStartPoint(start);
    pDuct->getEndPoint(end);
    AcGeTol tol;
    tol.setEqualPoint(kExtendSamePoint);
    if (pt.isEqualTo(start, tol) || pt.isEqualTo(end, tol)) return true;
    // The nearer end moves; on equal distances the start.
    if (start.distanceTo(pt) > end.distanceTo(pt)) {
        pDuct->setEndPoint(pt);
    } else {
        pDuct->setStartPoint(pt);
    }
    return true;
}

AcDbObjectIdArray CDispGlobaFun::GetConnectedLead(const AcGePoint3d& pt,
                                                  const AcDbObjectIdArray& ids) {
    AcDbObjectIdArray connected;
    for (const AcDbObjectId& id : ids) {
        KelAzLead* lead = nullptr;
        if (acdbOpenObject(lead, id, AcDb::kForRead) != Acad::eOk) continue;
        AcGePoint3d start;
        AcGePoint3d end;
        lead->getStartPoint(start);
        lead->getEndPoint(end);
        lead->close();
        const bool touches =
            start.distanceTo(pt) < kConnectedDistance || end.distanceTo(pt) < kConnectedDistance;
        if (touches && !connected.contains(id)) connected.append(id);
    }
    return connected;
}

bool CDispGlobaFun::AddFGByCurFG(CString smallCategoryName, CString newAttName, CString srcAttName,
                                 CString width, CString height, bool bSave) {
    using namespace KelAzDataMng;
    SAttDataIndex index;
    if (SmallCategoryNameToId(smallCategoryName, index.strSpecId, index.strBigCategoryId,
                              index.strSmallCategoryId)) {
        CSmallCategoryMng(index).AddDetailMem(newAttName, index.strDetailMemId);
    }
    if (!index.IsComplete()) return false;

    SAttDataIndex source;
    CStringArray list;
    if (AttNameToAttId(srcAttName, source)) CAttDetailMem(source).GetAttributeList(list);
    const bool round = height.IsEmpty();
    if (list.GetSize() >= kFieldsPerRow) {
        for (INT_PTR key = kKeyField; key < list.GetSize(); key += kFieldsPerRow) {
            if (IsShapeKey(list[key]))
                list[key - kKeyField + kValueField] = round ? kRoundShape : kRectShape;
        }
    }

    SectionInfo section;
    section.strKind = kDuctKind;
    if (round) {
        section.strShapeCode = kRoundShapeCode;
        section.strSize = L"B," + width;
    } else {
        section.strShapeCode = kRectShapeCode;
        section.strSize = L"B," + width + L",H," + height;
    }

    CAttDetailMem member(index);
    if (!list.IsEmpty()) member.SetAttributeList(list);
    member.SetSectionInfo(section);
    if (bSave) {
        CAtt::Save();
        IFaceBarCtrl::UpdateSelf();
    }
    return true;
}
