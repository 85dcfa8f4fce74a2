#pragma once

// The host framework's text class: a wide-character string with the framework's operations.
//
// Characters are wchar_t. Conversion to and from UTF-8 happens only at the edges of the program
// (files, console, command line), through kelaz::ToUtf8 and kelaz::FromUtf8 below.

#include <compare>
#include <cstdarg>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/text/WinTypes.h"

// The framework's exception for an index outside a string or array.
class CInvalidArgException : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

class CString {
public:
    CString() = default;
    CString(const wchar_t* text) : m_str(text ? text : L"") {}  // NOLINT: implicit as in the framework
    CString(const wchar_t* text, int length);
    explicit CString(wchar_t ch, int repeat = 1);
    CString(std::wstring text) : m_str(std::move(text)) {}  // NOLINT: implicit by design
    CString(std::wstring_view text) : m_str(text) {}        // NOLINT: implicit by design

    // Size and access
    int GetLength() const { return static_cast<int>(m_str.size()); }
    bool IsEmpty() const { return m_str.empty(); }
    void Empty() { m_str.clear(); }
    wchar_t GetAt(int index) const;
    void SetAt(int index, wchar_t ch);
    wchar_t operator[](int index) const { return GetAt(index); }
    const wchar_t* GetString() const { return m_str.c_str(); }
    operator const wchar_t*() const { return m_str.c_str(); }  // NOLINT: the framework's LPCTSTR cast
    const std::wstring& str() const { return m_str; }

    // Comparison
    int Compare(const wchar_t* other) const;
    int CompareNoCase(const wchar_t* other) const;
    friend bool operator==(const CString& a, const CString& b) { return a.m_str == b.m_str; }
    friend bool operator==(const CString& a, const wchar_t* b) { return a.m_str == (b ? b : L""); }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) {
        return a.m_str <=> b.m_str;
    }

    // Search: -1 when absent.
    int Find(wchar_t ch, int start = 0) const;
    int Find(const wchar_t* sub, int start = 0) const;
    int ReverseFind(wchar_t ch) const;
    int FindOneOf(const wchar_t* chars) const;

    // Extraction: out-of-range counts are clamped as the framework clamps them.
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString SpanIncluding(const wchar_t* chars) const;
    CString SpanExcluding(const wchar_t* chars) const;
    CString Tokenize(const wchar_t* delims, int& start) const;

    // Modification; each returns *this (or a count) as the framework does.
    CString& Trim();
    CString& Trim(wchar_t target);
    CString& Trim(const wchar_t* targets);
    CString& TrimLeft();
    CString& TrimLeft(wchar_t target);
    CString& TrimLeft(const wchar_t* targets);
    CString& TrimRight();
    CString& TrimRight(wchar_t target);
    CString& TrimRight(const wchar_t* targets);
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    int Replace(wchar_t oldCh, wchar_t newCh);
    int Replace(const wchar_t* oldText, const wchar_t* newText);
    int Remove(wchar_t ch);
    int Insert(int index, wchar_t ch);
    int Insert(int index, const wchar_t* text);
    int Delete(int index, int count = 1);
    void Append(const wchar_t* text) { m_str += text ? text : L""; }
    void AppendChar(wchar_t ch) { m_str += ch; }

    // printf-style formatting with the framework's wide rules: %s and %c take wide arguments.
    void Format(const wchar_t* format, ...);
    void AppendFormat(const wchar_t* format, ...);
    void FormatV(const wchar_t* format, va_list args);

    // Loads a text of the current resource table (see CAcModuleResourceOverride); false and
    // empty when the id is unknown.
    bool LoadString(UINT id);

    CString& operator=(const wchar_t* text) {
        m_str = text ? text : L"";
        return *this;
    }
    CString& operator=(wchar_t ch) {
        m_str.assign(1, ch);
        return *this;
    }
    CString& operator+=(const CString& other) {
        m_str += other.m_str;
        return *this;
    }
    CString& operator+=(const wchar_t* text) {
        Append(text);
        return *this;
    }
    CString& operator+=(wchar_t ch) {
        m_str += ch;
        return *this;
    }
    friend CString operator+(const CString& a, const CString& b) {
        return CString(a.m_str + b.m_str);
    }
    friend CString operator+(const CString& a, const wchar_t* b) {
        return CString(a.m_str + (b ? b : L""));
    }
    friend CString operator+(const wchar_t* a, const CString& b) {
        return CString((a ? a : L"") + b.m_str);
    }
    friend CString operator+(const CString& a, wchar_t b) { return CString(a.m_str + b); }
    friend CString operator+(wchar_t a, const CString& b) { return CString(a + b.m_str); }

private:
    void CheckIndex(int index, int limit) const;
    std::wstring m_str;
};

// The C library conversions of the host's runtime: leading white space is skipped, the longest
// valid prefix is read, and text that starts with no number reads as 0.
double _wtof(const wchar_t* text);
int _wtoi(const wchar_t* text);

namespace kelaz {

// UTF-8 at the program's edges. Malformed input bytes become U+FFFD rather than being dropped.
std::string ToUtf8(std::wstring_view text);
inline std::string ToUtf8(const CString& text) { return ToUtf8(std::wstring_view(text.str())); }
CString FromUtf8(std::string_view text);

// printf-style formatting into a new CString (same rules as CString::Format).
CString FormatText(const wchar_t* format, ...);

}  // namespace kelaz

// gtest and other printers
std::ostream& operator<<(std::ostream& os, const CString& text);
