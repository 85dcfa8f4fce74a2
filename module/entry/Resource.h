#pragma once

// Numbers of the module's string resources.
#define IDS_READ_SECTION_FAILED 3019
#define IDS_UNKNOWN_SECTION_TYPE 3020
#define IDS_RECT_MARGIN_ALONG_TOO_LARGE 3035
#define IDS_RECT_MARGIN_ACROSS_TOO_LARGE 3036
#define IDS_LINE_MARGIN_TOO_LARGE 3037

namespace kelaz {
class ResourceTable;
// The module's own string table, made current with CAcModuleResourceOverride.
const ResourceTable& ModuleResources();
}  // namespace kelaz
