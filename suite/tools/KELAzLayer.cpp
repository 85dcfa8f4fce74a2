#include "suite/tools/KELAzLayer.h"

#include "suite/data/Att.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"
#include "suite/data/SysCode.h"

namespace {

constexpr const wchar_t* kAnnotationSuffix = L"-标注";
constexpr int kComponentLayer = 0;
constexpr int kAnnotationLayer = 1;

KelAzLayerRecord Row(const kelaz::SqliteStatement& st) {
    return {st.Text(0), static_cast<Adesk::Int16>(st.Int(1)), st.Text(2)};
}

}  // namespace

CString CKELAzLayer::GetLayerByObjName_BySysCode(const CString& objName, const CString& sysCode,
                                                 int kind) {
    if (kind != kComponentLayer && kind != kAnnotationLayer) return CString();
    // Speciality and big category decide the layer; the rest of the path only has to exist.
    const int first = objName.Find(L'\\');
    if (first <= 0 || KelAzDataMng::CSys::GetIndexPath(objName).IsEmpty()) return CString();
    const int second = objName.Find(L'\\', first + 1);
    const CString spec = objName.Left(first);
    const CString big =
        second < 0 ? objName.Mid(first + 1) : objName.Mid(first + 1, second - first - 1);
    KelAzDataMng::CSysCodeData code;
    if (!KelAzDataMng::CISysCode::GetSysCodeData(spec, sysCode, code)) return CString();
    CString layer = spec + L"-" + big + L"-" + code.GetFullName();
    if (kind == kAnnotationLayer) layer += kAnnotationSuffix;
    return layer;
}

bool CKELAzLayer::GetLayer(const CString& layerName, KelAzLayerRecord& layer) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    kelaz::SqliteStatement st(project->Db(),
                              "SELECT name, color, linetype FROM layer WHERE name = ?1");
    if (!st.Bind(1, layerName).Step()) return false;
    layer = Row(st);
    return true;
}

bool CKELAzLayer::GetAllLayers(std::vector<KelAzLayerRecord>& layers) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    kelaz::SqliteStatement st(project->Db(),
                              "SELECT name, color, linetype FROM layer ORDER BY ord");
    std::vector<KelAzLayerRecord> out;
    while (st.Step()) out.push_back(Row(st));
    if (!st.Ok()) return false;
    layers = std::move(out);
    return true;
}
