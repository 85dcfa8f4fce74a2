#pragma once

// A typed reference to an object of a drawing database. It refers to the database's stub for
// the object, which outlives the object's opening and closing; ids compare by that stub.

#include <compare>
#include <cstdint>
#include <functional>

#include "host/db/Handle.h"
#include "host/text/Array.h"

class AcDbStub;
class AcDbDatabase;
class AcRxClass;

class AcDbObjectId {
public:
    AcDbObjectId() = default;
    explicit AcDbObjectId(AcDbStub* stub) : m_stub(stub) {}

    static const AcDbObjectId kNull;

    bool isNull() const { return m_stub == nullptr; }
    void setNull() { m_stub = nullptr; }
    AcDbStub* stub() const { return m_stub; }

    // Answers of the stub: the null id has no database, the null handle, is not erased and is
    // not valid.
    AcDbHandle handle() const;
    AcDbDatabase* database() const;
    bool isErased() const;
    // Refers to an object that exists in its database, erased or not.
    bool isValid() const;
    // The class of the object, null when the id is not valid.
    AcRxClass* objectClass() const;

    // The legacy integer form of the id, for code that keeps ids in integer fields.
    std::intptr_t asOldId() const { return reinterpret_cast<std::intptr_t>(m_stub); }
    AcDbObjectId& setFromOldId(std::intptr_t oldId) {
        m_stub = reinterpret_cast<AcDbStub*>(oldId);
        return *this;
    }

    friend bool operator==(const AcDbObjectId& a, const AcDbObjectId& b) {
        return a.m_stub == b.m_stub;
    }
    friend std::strong_ordering operator<=>(const AcDbObjectId& a, const AcDbObjectId& b) {
        return std::compare_three_way{}(a.m_stub, b.m_stub);
    }

private:
    AcDbStub* m_stub = nullptr;
};

inline const AcDbObjectId AcDbObjectId::kNull{};

// The references an object files, by what they mean to the database: an owner keeps what it
// owns alive, a pointer only names it. They are ids in every other respect.
class AcDbHardOwnershipId : public AcDbObjectId {
public:
    AcDbHardOwnershipId() = default;
    AcDbHardOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT: as in the host
};
class AcDbSoftOwnershipId : public AcDbObjectId {
public:
    AcDbSoftOwnershipId() = default;
    AcDbSoftOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT: as in the host
};
class AcDbHardPointerId : public AcDbObjectId {
public:
    AcDbHardPointerId() = default;
    AcDbHardPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT: as in the host
};
class AcDbSoftPointerId : public AcDbObjectId {
public:
    AcDbSoftPointerId() = default;
    AcDbSoftPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}  // NOLINT: as in the host
};

using AcDbObjectIdArray = AcArray<AcDbObjectId>;

template <>
struct std::hash<AcDbObjectId> {
    size_t operator()(const AcDbObjectId& id) const noexcept {
        return std::hash<AcDbStub*>{}(id.stub());
    }
};
