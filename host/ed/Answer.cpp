#include "host/ed/Answer.h"

#include <cmath>
#include <cwchar>
#include <string>

namespace kelaz {

namespace {

bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t' || ch == L'\r' || ch == L'\n'; }

CString Trimmed(const CString& text) {
    const std::wstring& s = text.str();
    size_t first = 0;
    size_t last = s.size();
    while (first < last && IsBlank(s[first])) ++first;
    while (last > first && IsBlank(s[last - 1])) --last;
    return CString(s.substr(first, last - first));
}

bool EqualsNoCase(const CString& a, const wchar_t* b) { return a.CompareNoCase(b) == 0; }

// "x,y[,z]" after an optional '@'; a lone '@' is the last point itself.
bool ParsePointSpec(const CString& text, Answer& answer) {
    CString spec = Trimmed(text);
    answer.relative = !spec.IsEmpty() && spec[0] == L'@';
    if (answer.relative) {
        spec = Trimmed(spec.Mid(1));
        if (spec.IsEmpty()) {
            answer.point = AcGePoint3d::kOrigin;
            return true;
        }
    }
    return ParsePointText(spec, answer.point);
}

Answer Malformed(const CString& message) {
    Answer a;
    a.kind = Answer::Kind::kMalformed;
    a.text = message;
    return a;
}

}  // namespace

CString StripComment(const CString& line) {
    const std::wstring& s = line.str();
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == L'#' && (i == 0 || IsBlank(s[i - 1]))) return Trimmed(CString(s.substr(0, i)));
    }
    return Trimmed(line);
}

bool ParseDecimal(const CString& text, double& value) {
    const CString t = Trimmed(text);
    const std::wstring& s = t.str();
    size_t i = 0;
    if (i < s.size() && (s[i] == L'+' || s[i] == L'-')) ++i;
    size_t digits = 0;
    bool point = false;
    for (; i < s.size(); ++i) {
        if (s[i] >= L'0' && s[i] <= L'9') {
            ++digits;
        } else if (s[i] == L'.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    if (digits == 0) return false;
    // Only ASCII digits, a sign and one point got here, so the C conversion reads all of it.
    const double v = std::wcstod(s.c_str(), nullptr);
    if (!std::isfinite(v)) return false;
    value = v;
    return true;
}

bool ParsePointText(const CString& text, AcGePoint3d& point) {
    double coords[3] = {0.0, 0.0, 0.0};
    int count = 0;
    int start = 0;
    const CString t = Trimmed(text);
    while (true) {
        const int comma = t.Find(L',', start);
        const CString part = comma < 0 ? t.Mid(start) : t.Mid(start, comma - start);
        if (count == 3 || !ParseDecimal(part, coords[count])) return false;
        ++count;
        if (comma < 0) break;
        start = comma + 1;
    }
    if (count < 2) return false;
    point.set(coords[0], coords[1], coords[2]);
    return true;
}

CString FormatPoint(const AcGePoint3d& point) {
    return FormatText(L"%g,%g,%g", point.x, point.y, point.z);
}

Answer ParseAnswer(const CString& line) {
    Answer a;
    if (Trimmed(line).Left(1) == L"#") {
        a.kind = Answer::Kind::kComment;
        return a;
    }
    const CString text = StripComment(line);
    if (text.IsEmpty()) {
        a.kind = Answer::Kind::kEnter;
        return a;
    }
    if (text == L"^C" || text == L"^c" || EqualsNoCase(text, L"ESC")) {
        a.kind = Answer::Kind::kCancel;
        return a;
    }
    if (text[0] == L'\'') {
        const CString name = Trimmed(text.Mid(1));
        if (name.IsEmpty() || name.FindOneOf(L" \t,") >= 0) {
            return Malformed(L"透明命令的格式是 'NAME。");
        }
        a.kind = Answer::Kind::kTransparent;
        a.text = name;
        return a;
    }
    // "drag" followed by a blank: a cursor sample.
    if (text.GetLength() >= 4 && EqualsNoCase(text.Left(4), L"drag") &&
        (text.GetLength() == 4 || IsBlank(text[4]))) {
        CString spec = text.Mid(4);
        spec.TrimRight();
        if (!spec.IsEmpty() && spec[spec.GetLength() - 1] == L'?') {
            a.query = true;
            spec = spec.Left(spec.GetLength() - 1);
        }
        if (!ParsePointSpec(spec, a)) {
            return Malformed(L"光标位置无效：drag 后面应是 x,y 或 x,y,z（可加 ? 显示预览）。");
        }
        if (!a.relative && !WithinDrawingExtent(a.point)) return Malformed(OutsideExtentMessage());
        a.kind = Answer::Kind::kDrag;
        return a;
    }
    if (text[0] == L'@' || text.Find(L',') >= 0) {
        if (!ParsePointSpec(text, a)) {
            return Malformed(
                FormatText(L"点无效：\"%s\"。点的格式是 x,y、x,y,z 或 @dx,dy。", text.GetString()));
        }
        if (!a.relative && !WithinDrawingExtent(a.point)) return Malformed(OutsideExtentMessage());
        a.kind = Answer::Kind::kPoint;
        return a;
    }
    a.kind = Answer::Kind::kWord;
    a.text = text;
    return a;
}

}  // namespace kelaz
