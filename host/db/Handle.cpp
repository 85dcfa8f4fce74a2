#include "host/db/Handle.h"

#include <cwchar>

AcDbHandle::AcDbHandle(const wchar_t* hexText) {
    if (hexText == nullptr || *hexText == L'\0') return;
    Adesk::UInt64 value = 0;
    int digits = 0;
    for (const wchar_t* p = hexText; *p != L'\0'; ++p, ++digits) {
        const wchar_t c = *p;
        unsigned digit = 0;
        if (c >= L'0' && c <= L'9') {
            digit = static_cast<unsigned>(c - L'0');
        } else if (c >= L'A' && c <= L'F') {
            digit = static_cast<unsigned>(c - L'A' + 10);
        } else if (c >= L'a' && c <= L'f') {
            digit = static_cast<unsigned>(c - L'a' + 10);
        } else {
            return;
        }
        if (digits >= 16) return;  // more than 64 bits
        value = (value << 4) | digit;
    }
    m_value = value;
}

bool AcDbHandle::getIntoAsciiBuffer(wchar_t* buffer, size_t bufferSize) const {
    const CString hex = text();
    if (buffer == nullptr || bufferSize < static_cast<size_t>(hex.GetLength()) + 1) return false;
    std::wmemcpy(buffer, hex.GetString(), static_cast<size_t>(hex.GetLength()) + 1);
    return true;
}

CString AcDbHandle::text() const {
    static constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    if (m_value == 0) return CString(L"0");
    std::wstring out;
    for (Adesk::UInt64 v = m_value; v != 0; v >>= 4) out.insert(out.begin(), kDigits[v & 0xF]);
    return CString(std::move(out));
}
