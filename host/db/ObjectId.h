#pragma once

// A typed reference to an object of a drawing database. It refers to the database's stub for
// the object, which outlives the object's opening and closing; ids compare by that stub.

#include <compare>
#include <cstdint>
#include <functional>

#include "host/text/Array.h"

class AcDbStub;

class AcDbObjectId {
public:
    AcDbObjectId() = default;
    explicit AcDbObjectId(AcDbStub* stub) : m_stub(stub) {}

    static const AcDbObjectId kNull;

    bool isNull() const { return m_stub == nullptr; }
    void setNull() { m_stub = nullptr; }
    AcDbStub* stub() const { return m_stub; }

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

using AcDbObjectIdArray = AcArray<AcDbObjectId>;

template <>
struct std::hash<AcDbObjectId> {
    size_t operator()(const AcDbObjectId& id) const noexcept {
        return std::hash<AcDbStub*>{}(id.stub());
    }
};
