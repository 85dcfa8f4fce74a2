#include "app/drawing/Json.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace kelaz::json {

std::string String(const CString& text) {
    std::string out = "\"";
    for (const char c : ToUtf8(text)) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char buf[8];
                    std::snprintf(buf, sizeof buf, "\\u%04x", static_cast<unsigned>(c));
                    out += buf;
                } else {
                    out += c;
                }
        }
    }
    return out + "\"";
}

std::string Number(double value) {
    if (!std::isfinite(value)) return "null";
    if (value == 0.0) return "0";  // also for -0, which JSON readers would show as -0
    char buf[32];
    const auto result = std::to_chars(buf, buf + sizeof buf, value);
    return std::string(buf, result.ptr);
}

std::string Triple(double x, double y, double z) {
    return "[" + Number(x) + "," + Number(y) + "," + Number(z) + "]";
}

Object& Object::Add(const char* key, const std::string& rawValue) {
    if (m_text.size() > 1) m_text += ",";
    m_text += "\"";
    m_text += key;
    m_text += "\":";
    m_text += rawValue;
    return *this;
}

}  // namespace kelaz::json
