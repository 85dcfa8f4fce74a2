#include "host/app/RxObject.h"

#include "host/app/RxClass.h"

namespace {
AcRxClass* gRxObjectDesc = nullptr;
}

AcRxClass* AcRxObject::desc() {
    if (gRxObjectDesc == nullptr) gRxObjectDesc = newAcRxClass(L"AcRxObject", nullptr);
    return gRxObjectDesc;
}

AcRxClass* AcRxObject::isA() const { return AcRxObject::desc(); }

bool AcRxObject::isKindOf(const AcRxClass* aClass) const {
    return aClass != nullptr && isA()->isDerivedFrom(aClass);
}

AcRxObject* AcRxObject::clone() const { return nullptr; }
