#include "module/queries/KelAzSelect.h"

#include "host/ed/EditorInput.h"

namespace {

int AskWithReference(AcGePoint3d& point, bool offerReference, const wchar_t* plain,
                     const wchar_t* withKeyword, const wchar_t* afterReference) {
    ads_point picked = {0.0, 0.0, 0.0};
    if (offerReference) acedInitGet(0, L"R");
    int rc = acedGetPoint(nullptr, offerReference ? withKeyword : plain, picked);
    if (rc == RTKWORD) {
        ads_point reference = {0.0, 0.0, 0.0};
        rc = acedGetPoint(nullptr, L"\n指定参考点:", reference);
        if (rc != RTNORM) return rc;
        rc = acedGetPoint(reference, afterReference, picked);
    }
    if (rc == RTNORM) point.set(picked[0], picked[1], picked[2]);
    return rc;
}

}  // namespace

int CKelAzSelect::GetPoint(AcGePoint3d& point, bool offerReference) {
    return AskWithReference(point, offerReference, L"\n指定第一点:", L"\n指定第一点[参考点(R)]:",
                            L"\n指定第一点:");
}

int CKelAzSelect::GetInsertPoint(AcGePoint3d& point, bool offerReference) {
    return AskWithReference(point, offerReference, L"\n指定插入点:", L"\n指定插入点[参考点(R)]:",
                            L"\n请指定插入点:");
}
