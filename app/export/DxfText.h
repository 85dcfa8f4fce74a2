#pragma once

// Text as it goes into an R2000 drawing file. Such files carry no UTF-8: the file declares a code
// page and every reader decodes its strings with it. We declare ANSI_936 (the simplified Chinese
// code page) and write what GBK can encode as GBK bytes; any other character goes out as an
// upper-case \U+XXXX escape, which R2000 readers decode whatever the code page.

#include <iconv.h>

#include <cstddef>
#include <string>

#include "host/text/CString.h"

namespace kelaz {

inline constexpr const char* kDxfCodePage = "ANSI_936";

class DxfTextEncoder {
public:
    DxfTextEncoder();
    ~DxfTextEncoder();
    DxfTextEncoder(const DxfTextEncoder&) = delete;
    DxfTextEncoder& operator=(const DxfTextEncoder&) = delete;

    // The text's bytes, at most maxBytes of them: a text too long is cut before the first
    // character that does not fit, never inside one. Control characters would break the file's
    // line structure and become spaces.
    std::string encode(const CString& text, std::size_t maxBytes = std::string::npos) const;

    // False where the C library has no GBK converter: everything outside ASCII is escaped then.
    bool hasCodePage() const { return m_toGbk != kNoConverter; }

private:
    static inline const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);
    std::string encodeChar(wchar_t ch) const;

    iconv_t m_toGbk = kNoConverter;
};

}  // namespace kelaz
