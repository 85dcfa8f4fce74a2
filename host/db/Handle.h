#pragma once

// A drawing object's permanent name: a 64-bit number, unique in its database, kept when the
// drawing is saved and reopened. Its text form is upper-case hexadecimal without leading zeros,
// as drawing files show it ("1F").

#include <compare>
#include <cstdint>
#include <functional>

#include "host/Adesk.h"
#include "host/text/CString.h"

class AcDbHandle {
public:
    AcDbHandle() = default;
    AcDbHandle(Adesk::UInt64 value) : m_value(value) {}  // NOLINT: implicit as in the host
    // Parses hexadecimal text; text that is not a hexadecimal number leaves the null handle.
    explicit AcDbHandle(const wchar_t* hexText);

    bool isNull() const { return m_value == 0; }
    void setNull() { m_value = 0; }
    Adesk::UInt64 value() const { return m_value; }
    Adesk::UInt32 low() const { return static_cast<Adesk::UInt32>(m_value); }
    Adesk::UInt32 high() const { return static_cast<Adesk::UInt32>(m_value >> 32); }

    // Writes the hexadecimal text into buffer (at least 17 characters); false if too small.
    bool getIntoAsciiBuffer(wchar_t* buffer, size_t bufferSize) const;
    CString text() const;

    AcDbHandle& operator++() {
        ++m_value;
        return *this;
    }
    AcDbHandle operator+(const AcDbHandle& other) const { return m_value + other.m_value; }

    friend bool operator==(const AcDbHandle&, const AcDbHandle&) = default;
    friend std::strong_ordering operator<=>(const AcDbHandle&, const AcDbHandle&) = default;

private:
    Adesk::UInt64 m_value = 0;
};

template <>
struct std::hash<AcDbHandle> {
    size_t operator()(const AcDbHandle& h) const noexcept {
        return std::hash<Adesk::UInt64>{}(h.value());
    }
};
