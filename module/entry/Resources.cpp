#include "host/text/ResourceTable.h"
#include "module/entry/Resource.h"

namespace kelaz {

const ResourceTable& ModuleResources() {
    static const ResourceTable table({
        {IDS_READ_SECTION_FAILED, L"读取构件的断面数据失败"},
        {IDS_UNKNOWN_SECTION_TYPE, L"构件的断面类型未知，无法布置"},
        {IDS_RECT_MARGIN_ALONG_TOO_LARGE, L"行方向边距过大，超出矩形另一边长度的一半"},
        {IDS_RECT_MARGIN_ACROSS_TOO_LARGE, L"列方向边距过大，超出矩形另一边长度的一半"},
        {IDS_LINE_MARGIN_TOO_LARGE, L"边距过大，超出布置线段长度的一半"},
    });
    return table;
}

}  // namespace kelaz
