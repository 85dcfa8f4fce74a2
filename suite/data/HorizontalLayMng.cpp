#include "suite/data/HorizontalLayMng.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/FloorMng.h"
#include "suite/data/ProjectDb.h"

namespace KelAzDataMng {

namespace {
constexpr wchar_t kNameSeparator = L'-';
}

bool CHorizontalLayMng::GetLayModeName(const CString& floorName, CStringArray& names) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    std::int64_t floorId = 0;
    if (!project || !kelaz::FindFloorRow(project->Db(), floorName, floorId)) return false;
    kelaz::SqliteStatement st(project->Db(),
                              "SELECT code, description FROM lay_mode WHERE floor_id = ?1 ORDER "
                              "BY ord");
    st.Bind(1, floorId);
    CStringArray out;
    while (st.Step()) {
        const CString description = st.Text(1);
        out.Add(description.IsEmpty() ? st.Text(0) : st.Text(0) + kNameSeparator + description);
    }
    if (!st.Ok()) return false;
    names.Copy(out);
    return true;
}

bool CHorizontalLayMng::SeparateName(const CString& layModeName, CString& code,
                                     CString& description) {
    if (layModeName.IsEmpty()) return false;
    const int at = layModeName.Find(kNameSeparator);
    code = at < 0 ? layModeName : layModeName.Left(at);
    description = at < 0 ? CString() : layModeName.Mid(at + 1);
    return true;
}

CString CHorizontalLayMng::SeparateName(const CString& layModeName) {
    CString code;
    CString description;
    SeparateName(layModeName, code, description);
    return code;
}

}  // namespace KelAzDataMng
