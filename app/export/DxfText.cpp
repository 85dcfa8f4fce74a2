#include "app/export/DxfText.h"

#include <array>
#include <cstdio>

namespace kelaz {
namespace {

constexpr wchar_t kFirstNonAscii = 0x80;
constexpr wchar_t kFirstPrintable = 0x20;
constexpr wchar_t kDelete = 0x7F;
constexpr unsigned long kLastBmp = 0xFFFF;

std::string Escape(unsigned long unit) {
    std::array<char, 12> buf{};
    std::snprintf(buf.data(), buf.size(), "\\U+%04lX", unit);
    return buf.data();
}

// Characters past the basic plane are escaped as the UTF-16 pair the host holds them as.
std::string EscapeCodePoint(unsigned long cp) {
    if (cp <= kLastBmp) return Escape(cp);
    const unsigned long v = cp - 0x10000;
    return Escape(0xD800 + (v >> 10)) + Escape(0xDC00 + (v & 0x3FF));
}

}  // namespace

DxfTextEncoder::DxfTextEncoder() : m_toGbk(iconv_open("GBK", "WCHAR_T")) {}

DxfTextEncoder::~DxfTextEncoder() {
    if (m_toGbk != kNoConverter) iconv_close(m_toGbk);
}

std::string DxfTextEncoder::encodeChar(wchar_t ch) const {
    if (ch < kFirstPrintable || ch == kDelete) return " ";
    if (ch < kFirstNonAscii) return std::string(1, static_cast<char>(ch));
    if (m_toGbk != kNoConverter) {
        std::array<char, 8> out{};
        // iconv's interface is not const-correct: the input is only read.
        char* in = reinterpret_cast<char*>(&ch);
        std::size_t inLeft = sizeof(ch);
        char* outPtr = out.data();
        std::size_t outLeft = out.size();
        if (iconv(m_toGbk, &in, &inLeft, &outPtr, &outLeft) != static_cast<std::size_t>(-1) &&
            inLeft == 0) {
            return std::string(out.data(), outPtr);
        }
        iconv(m_toGbk, nullptr, nullptr, nullptr, nullptr);  // back to the initial state
    }
    return EscapeCodePoint(static_cast<unsigned long>(ch));
}

std::string DxfTextEncoder::encode(const CString& text, std::size_t maxBytes) const {
    std::string bytes;
    for (wchar_t ch : text.str()) {
        const std::string one = encodeChar(ch);
        if (bytes.size() + one.size() > maxBytes) break;
        bytes += one;
    }
    return bytes;
}

}  // namespace kelaz
