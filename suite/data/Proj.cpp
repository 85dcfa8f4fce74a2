#include "suite/data/Proj.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace KelAzDataMng {

namespace {
constexpr const wchar_t* kSpecKey = L"current_spec";
constexpr const wchar_t* kFloorKey = L"current_floor";
}  // namespace

CString CProj::GetPrjPath() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project ? project->Path() : CString();
}

CString CProj::GetPrjName() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project ? project->GetSetting(L"name") : CString();
}

CString CProj::GetCurrentSpec() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project ? project->GetSetting(kSpecKey) : CString();
}

bool CProj::SetCurrentSpec(const CString& spec) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    kelaz::SqliteStatement known(project->Db(), "SELECT 1 FROM speciality WHERE name = ?1");
    if (!known.Bind(1, spec).Step()) return false;
    return project->SetSetting(kSpecKey, spec);
}

bool CProj::GetAllSpecs(CStringArray& specs) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    CStringArray out;
    kelaz::SqliteStatement st(project->Db(), "SELECT name FROM speciality ORDER BY ord, id");
    while (st.Step()) out.Add(st.Text(0));
    if (!st.Ok()) return false;
    specs.Copy(out);
    return true;
}

CString CProj::GetCurFloorName() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project ? project->GetSetting(kFloorKey) : CString();
}

bool CProj::SetCurFloorName(const CString& floorName) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    FloorRecord record;
    if (!project || !IFloorMng::GetFloorRecordByFloorName(floorName, record)) return false;
    return project->SetSetting(kFloorKey, floorName);
}

bool CProj::GetAllFloorData(CArray<FloorRecord>& floors) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    CArray<FloorRecord> out;
    kelaz::SqliteStatement st(project->Db(),
                              "SELECT name, height, elevation FROM floor ORDER BY ord, id");
    while (st.Step()) out.Add({st.Text(0), st.Real(1), st.Real(2)});
    if (!st.Ok()) return false;
    floors.Copy(out);
    return true;
}

}  // namespace KelAzDataMng
