#include "app/PointText.h"

#include <cstdio>
#include <vector>

#include "host/ed/DrawingExtent.h"
#include "host/text/CString.h"
#include "module/entry/DispUtils.h"

namespace kelaz {

bool ParsePoint(std::string_view text, AcGePoint3d& point, std::string& error) {
    std::vector<std::string_view> parts;
    size_t start = 0;
    for (size_t comma = text.find(',');; comma = text.find(',', start)) {
        parts.push_back(
            text.substr(start, comma == std::string_view::npos ? comma : comma - start));
        if (comma == std::string_view::npos) break;
        start = comma + 1;
    }
    if (parts.size() < 2 || parts.size() > 3) {
        error = "“" + std::string(text) + "”不是点：点写作 x,y 或 x,y,z。";
        return false;
    }
    double xyz[3] = {0.0, 0.0, 0.0};
    for (size_t i = 0; i < parts.size(); ++i) {
        if (!CDispUtils::ParseToDouble(FromUtf8(parts[i]), xyz[i])) {
            error = "“" + std::string(text) + "”中的“" + std::string(parts[i]) + "”不是数值。";
            return false;
        }
    }
    const AcGePoint3d parsed(xyz[0], xyz[1], xyz[2]);
    if (!WithinDrawingExtent(parsed)) {
        error = "“" + std::string(text) + "”：" + ToUtf8(OutsideExtentMessage());
        return false;
    }
    point = parsed;
    return true;
}

bool ParsePointList(std::string_view text, AcGePoint3dArray& points, std::string& error) {
    AcGePoint3dArray parsed;
    constexpr std::string_view kSeparators = " \t;";
    size_t pos = text.find_first_not_of(kSeparators);
    while (pos != std::string_view::npos) {
        const size_t end = text.find_first_of(kSeparators, pos);
        AcGePoint3d p;
        if (!ParsePoint(text.substr(pos, end == std::string_view::npos ? end : end - pos), p,
                        error)) {
            return false;
        }
        parsed.append(p);
        pos = text.find_first_not_of(kSeparators, end);
    }
    points = parsed;
    return true;
}

std::string FormatPoint(const AcGePoint3d& point) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "%g,%g,%g", point.x, point.y, point.z);
    return buf;
}

}  // namespace kelaz
