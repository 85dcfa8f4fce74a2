#include "host/db/DxfFiler.h"

Acad::ErrorStatus AcDbDxfFiler::setError(Acad::ErrorStatus status, const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    m_errorMessage.FormatV(format != nullptr ? format : L"", args);
    va_end(args);
    setFilerStatus(status);
    return filerStatus();
}

Acad::ErrorStatus AcDbDxfFiler::setError(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    m_errorMessage.FormatV(format != nullptr ? format : L"", args);
    va_end(args);
    return filerStatus();
}

namespace kelaz {

DxfValueKind DxfValueKindOf(int code) {
    struct Range {
        int first;
        int last;
        DxfValueKind kind;
    };
    static constexpr Range kRanges[] = {
        {0, 4, DxfValueKind::kString},       {5, 5, DxfValueKind::kHandle},
        {6, 9, DxfValueKind::kString},       {10, 18, DxfValueKind::kPoint},
        {38, 59, DxfValueKind::kReal},       {60, 79, DxfValueKind::kInt16},
        {90, 99, DxfValueKind::kInt32},      {100, 102, DxfValueKind::kString},
        {105, 105, DxfValueKind::kHandle},   {110, 112, DxfValueKind::kPoint},
        {113, 149, DxfValueKind::kReal},     {160, 169, DxfValueKind::kInt64},
        {170, 179, DxfValueKind::kInt16},    {210, 210, DxfValueKind::kPoint},
        {211, 239, DxfValueKind::kReal},     {270, 289, DxfValueKind::kInt16},
        {290, 299, DxfValueKind::kBool},     {300, 309, DxfValueKind::kString},
        {310, 319, DxfValueKind::kBinary},   {320, 329, DxfValueKind::kHandle},
        {330, 369, DxfValueKind::kObjectId}, {370, 389, DxfValueKind::kInt16},
        {390, 399, DxfValueKind::kObjectId}, {400, 409, DxfValueKind::kInt16},
        {410, 419, DxfValueKind::kString},   {420, 429, DxfValueKind::kInt32},
        {430, 439, DxfValueKind::kString},   {440, 459, DxfValueKind::kInt32},
        {460, 469, DxfValueKind::kReal},     {470, 479, DxfValueKind::kString},
        {480, 481, DxfValueKind::kObjectId}, {999, 999, DxfValueKind::kString},
        {1000, 1003, DxfValueKind::kString}, {1004, 1004, DxfValueKind::kBinary},
        {1005, 1005, DxfValueKind::kHandle}, {1010, 1013, DxfValueKind::kPoint},
        {1014, 1039, DxfValueKind::kReal},   {1040, 1042, DxfValueKind::kReal},
        {1070, 1070, DxfValueKind::kInt16},  {1071, 1071, DxfValueKind::kInt32},
    };
    for (const Range& r : kRanges) {
        if (code >= r.first && code <= r.last) return r.kind;
    }
    return DxfValueKind::kInvalid;
}

}  // namespace kelaz
