#include "host/text/CString.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cwchar>
#include <cwctype>
#include <ostream>
#include <vector>

#include "host/text/ResourceTable.h"

CString::CString(const wchar_t* text, int length) {
    if (text && length > 0) m_str.assign(text, static_cast<size_t>(length));
}

CString::CString(wchar_t ch, int repeat) {
    if (repeat > 0) m_str.assign(static_cast<size_t>(repeat), ch);
}

void CString::CheckIndex(int index, int limit) const {
    if (index < 0 || index >= limit) throw CInvalidArgException("CString index out of range");
}

wchar_t CString::GetAt(int index) const {
    CheckIndex(index, GetLength());
    return m_str[static_cast<size_t>(index)];
}

void CString::SetAt(int index, wchar_t ch) {
    CheckIndex(index, GetLength());
    m_str[static_cast<size_t>(index)] = ch;
}

int CString::Compare(const wchar_t* other) const {
    return std::wcscmp(GetString(), other ? other : L"");
}

int CString::CompareNoCase(const wchar_t* other) const {
    const wchar_t* a = GetString();
    const wchar_t* b = other ? other : L"";
    for (;; ++a, ++b) {
        const wint_t ca = std::towlower(static_cast<wint_t>(*a));
        const wint_t cb = std::towlower(static_cast<wint_t>(*b));
        if (ca != cb) return ca < cb ? -1 : 1;
        if (ca == 0) return 0;
    }
}

namespace {
int ToIndex(size_t pos) { return pos == std::wstring::npos ? -1 : static_cast<int>(pos); }
}  // namespace

int CString::Find(wchar_t ch, int start) const {
    if (start < 0 || start >= GetLength()) return -1;
    return ToIndex(m_str.find(ch, static_cast<size_t>(start)));
}

int CString::Find(const wchar_t* sub, int start) const {
    if (!sub || start < 0 || start > GetLength()) return -1;
    return ToIndex(m_str.find(sub, static_cast<size_t>(start)));
}

int CString::ReverseFind(wchar_t ch) const { return ToIndex(m_str.rfind(ch)); }

int CString::FindOneOf(const wchar_t* chars) const {
    return chars ? ToIndex(m_str.find_first_of(chars)) : -1;
}

CString CString::Left(int count) const {
    count = std::clamp(count, 0, GetLength());
    return CString(m_str.substr(0, static_cast<size_t>(count)));
}

CString CString::Right(int count) const {
    count = std::clamp(count, 0, GetLength());
    return CString(m_str.substr(m_str.size() - static_cast<size_t>(count)));
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
    first = std::clamp(first, 0, GetLength());
    count = std::clamp(count, 0, GetLength() - first);
    return CString(m_str.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

CString CString::SpanIncluding(const wchar_t* chars) const {
    const size_t n = chars ? m_str.find_first_not_of(chars) : 0;
    return CString(m_str.substr(0, n));
}

CString CString::SpanExcluding(const wchar_t* chars) const {
    const size_t n = chars ? m_str.find_first_of(chars) : std::wstring::npos;
    return CString(m_str.substr(0, n));
}

CString CString::Tokenize(const wchar_t* delims, int& start) const {
    if (start < 0 || start >= GetLength() || !delims) {
        start = -1;
        return {};
    }
    const size_t first = m_str.find_first_not_of(delims, static_cast<size_t>(start));
    if (first == std::wstring::npos) {
        start = -1;
        return {};
    }
    size_t last = m_str.find_first_of(delims, first);
    if (last == std::wstring::npos) last = m_str.size();
    start = static_cast<int>(std::min(last + 1, m_str.size()));
    return CString(m_str.substr(first, last - first));
}

namespace {
bool IsSpace(wchar_t c) { return std::iswspace(static_cast<wint_t>(c)) != 0; }
}  // namespace

CString& CString::TrimLeft() {
    const auto it = std::find_if_not(m_str.begin(), m_str.end(), IsSpace);
    m_str.erase(m_str.begin(), it);
    return *this;
}

CString& CString::TrimRight() {
    const auto it = std::find_if_not(m_str.rbegin(), m_str.rend(), IsSpace);
    m_str.erase(it.base(), m_str.end());
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::TrimLeft(wchar_t target) {
    const wchar_t set[2] = {target, 0};
    return TrimLeft(set);
}

CString& CString::TrimRight(wchar_t target) {
    const wchar_t set[2] = {target, 0};
    return TrimRight(set);
}

CString& CString::Trim(wchar_t target) { return TrimRight(target).TrimLeft(target); }

CString& CString::TrimLeft(const wchar_t* targets) {
    if (!targets || !*targets) return *this;
    const size_t n = m_str.find_first_not_of(targets);
    m_str.erase(0, n);
    return *this;
}

CString& CString::TrimRight(const wchar_t* targets) {
    if (!targets || !*targets) return *this;
    const size_t n = m_str.find_last_not_of(targets);
    m_str.erase(n == std::wstring::npos ? 0 : n + 1);
    return *this;
}

CString& CString::Trim(const wchar_t* targets) { return TrimRight(targets).TrimLeft(targets); }

CString& CString::MakeUpper() {
    for (wchar_t& c : m_str) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
    return *this;
}

CString& CString::MakeLower() {
    for (wchar_t& c : m_str) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(m_str.begin(), m_str.end());
    return *this;
}

int CString::Replace(wchar_t oldCh, wchar_t newCh) {
    int count = 0;
    for (wchar_t& c : m_str) {
        if (c == oldCh) {
            c = newCh;
            ++count;
        }
    }
    return count;
}

int CString::Replace(const wchar_t* oldText, const wchar_t* newText) {
    if (!oldText || !*oldText) return 0;
    const std::wstring from(oldText);
    const std::wstring to(newText ? newText : L"");
    int count = 0;
    for (size_t pos = m_str.find(from); pos != std::wstring::npos; pos = m_str.find(from, pos)) {
        m_str.replace(pos, from.size(), to);
        pos += to.size();
        ++count;
    }
    return count;
}

int CString::Remove(wchar_t ch) {
    const auto before = m_str.size();
    std::erase(m_str, ch);
    return static_cast<int>(before - m_str.size());
}

int CString::Insert(int index, wchar_t ch) {
    const wchar_t text[2] = {ch, 0};
    return Insert(index, text);
}

int CString::Insert(int index, const wchar_t* text) {
    index = std::clamp(index, 0, GetLength());
    m_str.insert(static_cast<size_t>(index), text ? text : L"");
    return GetLength();
}

int CString::Delete(int index, int count) {
    index = std::max(index, 0);
    if (count > 0 && index < GetLength()) {
        m_str.erase(static_cast<size_t>(index), static_cast<size_t>(count));
    }
    return GetLength();
}

namespace {

// The framework formats wide text with %s and %c meaning wide arguments and %S / %C narrow ones;
// the C library's wide printf reads %s as narrow. Rewrite each conversion to the C library's
// spelling before formatting.
std::wstring ToCLibraryFormat(const wchar_t* format) {
    std::wstring out;
    for (const wchar_t* p = format; *p; ++p) {
        out += *p;
        if (*p != L'%') continue;
        ++p;
        if (*p == L'%') {
            out += *p;
            continue;
        }
        // flags, width, precision
        while (*p && std::wcschr(L"-+ #0123456789.*'", *p)) out += *p++;
        bool sized = false;
        while (*p && std::wcschr(L"hlLqjzt", *p)) {
            sized = true;
            out += *p++;
        }
        if (!*p) break;
        if (!sized && (*p == L's' || *p == L'c')) {
            out += L'l';
            out += *p;
        } else if (!sized && (*p == L'S' || *p == L'C')) {
            out += static_cast<wchar_t>(std::towlower(static_cast<wint_t>(*p)));
        } else {
            out += *p;
        }
    }
    return out;
}

std::wstring FormatWide(const wchar_t* format, va_list args) {
    if (!format) return {};
    const std::wstring fmt = ToCLibraryFormat(format);
    std::vector<wchar_t> buf(256);
    for (;;) {
        va_list copy;
        va_copy(copy, args);
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_copy initialises it
        const int n = std::vswprintf(buf.data(), buf.size(), fmt.c_str(), copy);
        va_end(copy);
        if (n >= 0 && static_cast<size_t>(n) < buf.size()) return std::wstring(buf.data(), n);
        // vswprintf reports -1 both for a short buffer and for an encoding error; stop growing
        // at a size no drafting text reaches.
        if (buf.size() > (1u << 24)) return {};
        buf.resize(buf.size() * 4);
    }
}

}  // namespace

void CString::FormatV(const wchar_t* format, va_list args) { m_str = FormatWide(format, args); }

void CString::Format(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    m_str = FormatWide(format, args);
    va_end(args);
}

void CString::AppendFormat(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    m_str += FormatWide(format, args);
    va_end(args);
}

bool CString::LoadString(UINT id) {
    const wchar_t* text = kelaz::ResourceTable::Current().Find(id);
    m_str = text ? text : L"";
    return text != nullptr;
}

double _wtof(const wchar_t* text) {
    if (!text) return 0.0;
    return std::wcstod(text, nullptr);
}

int _wtoi(const wchar_t* text) {
    if (!text) return 0;
    const long v = std::wcstol(text, nullptr, 10);
    return static_cast<int>(std::clamp<long>(v, INT_MIN, INT_MAX));
}

namespace kelaz {

std::string ToUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (wchar_t wc : text) {
        auto c = static_cast<char32_t>(wc);
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = 0xFFFD;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

CString FromUtf8(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        const auto b0 = static_cast<unsigned char>(text[i]);
        int extra = 0;
        char32_t c = 0;
        char32_t min = 0;
        if (b0 < 0x80) {
            c = b0;
        } else if ((b0 & 0xE0) == 0xC0) {
            extra = 1, c = b0 & 0x1F, min = 0x80;
        } else if ((b0 & 0xF0) == 0xE0) {
            extra = 2, c = b0 & 0x0F, min = 0x800;
        } else if ((b0 & 0xF8) == 0xF0) {
            extra = 3, c = b0 & 0x07, min = 0x10000;
        } else {
            out += L'\xFFFD';
            ++i;
            continue;
        }
        size_t j = 1;
        for (; j <= static_cast<size_t>(extra); ++j) {
            if (i + j >= text.size()) break;
            const auto b = static_cast<unsigned char>(text[i + j]);
            if ((b & 0xC0) != 0x80) break;
            c = (c << 6) | (b & 0x3F);
        }
        if (j <= static_cast<size_t>(extra) || c < min || c > 0x10FFFF ||
            (c >= 0xD800 && c <= 0xDFFF)) {
            out += L'\xFFFD';
            i += j;  // resynchronise at the first byte that did not continue the sequence
            continue;
        }
        out += static_cast<wchar_t>(c);
        i += j;
    }
    return CString(std::move(out));
}

CString FormatText(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    CString s;
    s.FormatV(format, args);
    va_end(args);
    return s;
}

}  // namespace kelaz

std::ostream& operator<<(std::ostream& os, const CString& text) {
    return os << kelaz::ToUtf8(text);
}
