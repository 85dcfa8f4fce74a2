#include "suite/entities/LayerRule.h"

#include "suite/tools/KELAzLayer.h"

namespace kelaz {

namespace {
// What a layer name cannot hold in the host.
constexpr wchar_t kForbiddenLayerChars[] = L"<>/\\\":;?*|,=`";
}  // namespace

CString LayerForSysCode(const CString& sysCode) {
    CString layer = sysCode;
    layer.Trim();
    if (layer.IsEmpty()) return kDefaultSuiteLayer;
    for (const wchar_t* c = kForbiddenLayerChars; *c != L'\0'; ++c) layer.Replace(*c, L'_');
    return layer;
}

CString LayerForComponent(const CString& attName, const CString& sysCode) {
    if (!attName.IsEmpty() && !sysCode.IsEmpty()) {
        const CString layer = CKELAzLayer::GetLayerByObjName_BySysCode(attName, sysCode, 0);
        if (!layer.IsEmpty()) return layer;
    }
    return LayerForSysCode(sysCode);
}

}  // namespace kelaz
