#include "suite/tools/KELToolKit.h"

#include <algorithm>

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/Selection.h"
#include "suite/tools/Globl_Fun.h"

namespace kelaz {

AcRxClass* FindClass(const CString& name) {
    AcRxDictionary* classes = acrxClassDictionary;
    if (!classes || name.IsEmpty()) return nullptr;
    if (AcRxClass* cls = AcRxClass::cast(classes->at(name))) return cls;
    for (const auto& [key, obj] : *classes) {
        AcRxClass* cls = AcRxClass::cast(obj);
        if (cls && name.CompareNoCase(cls->dxfName()) == 0) return cls;
    }
    return nullptr;
}

}  // namespace kelaz

namespace {

bool Select(AcDbObjectIdArray& ids, const CString& className, const AcGePoint3d& p1,
            const AcGePoint3d& p2, double grow, const CString& layers, bool crossing) {
    ids.removeAll();
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    kelaz::SelectionFilter filter;
    filter.cls = kelaz::FindClass(className);
    if (!db || !filter.cls) return false;
    CStringArray names;
    CGlobl_Fun::StrToStrAry(layers, names, L',');
    for (const CString& name : names) {
        if (!name.IsEmpty()) filter.layers.push_back(name);
    }
    const AcGeVector3d g(grow, grow, 0.0);
    const AcGePoint3d lo(std::min(p1.x, p2.x), std::min(p1.y, p2.y), 0.0);
    const AcGePoint3d hi(std::max(p1.x, p2.x), std::max(p1.y, p2.y), 0.0);
    ids = crossing ? kelaz::SelectCrossing(db, lo - g, hi + g, filter)
                   : kelaz::SelectWindow(db, lo - g, hi + g, filter);
    return true;
}

}  // namespace

bool KELToolKit::SelectEntity(AcDbObjectIdArray& ids, const CString& className,
                              const AcGePoint3d& p1, const AcGePoint3d& p2, double tolerance) {
    return Select(ids, className, p1, p2, tolerance, CString(), false);
}

bool KELToolKit::SelectInterEntity(AcDbObjectIdArray& ids, const CString& className,
                                   const AcGePoint3d& p1, const AcGePoint3d& p2,
                                   const CString& layers) {
    return Select(ids, className, p1, p2, 0.0, layers, true);
}

bool KELToolKit::ExtentsInter(const AcDbExtents& a, const AcDbExtents& b) {
    return kelaz::ExtentsIntersect(a, b);
}

bool KELToolKit::FormArcByTreePt(const AcGePoint3d& start, const AcGePoint3d& mid,
                                 const AcGePoint3d& end, AcGeCircArc3d& arc) {
    const AcGeCircArc3d candidate(start, mid, end);
    if (candidate.radius() <= 0.0) return false;
    arc = candidate;
    return true;
}
