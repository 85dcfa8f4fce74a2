#include "host/db/ObjectId.h"

#include "host/app/RxObject.h"
#include "host/db/Object.h"
#include "host/db/Stub.h"

AcDbHandle AcDbObjectId::handle() const {
    return m_stub != nullptr ? m_stub->handle : AcDbHandle();
}

AcDbDatabase* AcDbObjectId::database() const {
    return m_stub != nullptr ? m_stub->database : nullptr;
}

bool AcDbObjectId::isErased() const { return m_stub != nullptr && m_stub->erased; }

bool AcDbObjectId::isValid() const {
    return m_stub != nullptr && m_stub->database != nullptr && m_stub->object != nullptr;
}

AcRxClass* AcDbObjectId::objectClass() const { return isValid() ? m_stub->object->isA() : nullptr; }
