#include "suite/data/SysCode.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace KelAzDataMng {

namespace {
constexpr const char* kCodeSql =
    "SELECT s.name, c.code, c.name, c.color, c.linetype FROM sys_code c "
    "JOIN speciality s ON s.id = c.spec_id WHERE s.name = ?1";

CSysCodeData Row(const kelaz::SqliteStatement& st) {
    return CSysCodeData(st.Text(0), st.Text(1), st.Text(2), static_cast<int>(st.Int(3)),
                        st.Text(4));
}
}  // namespace

void CSysCodeData::GetStrTreeDataAry(const CString& prefix, const CString& separator,
                                     CStringArray& entries) const {
    entries.Add(prefix.IsEmpty() ? m_code : prefix + separator + m_code);
}

bool CISysCode::GetSpecCodeInfos(const CString& spec, std::vector<CSysCodeData>& infos) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    kelaz::SqliteStatement known(project->Db(), "SELECT 1 FROM speciality WHERE name = ?1");
    if (!known.Bind(1, spec).Step()) return false;
    const std::string sql = std::string(kCodeSql) + " ORDER BY c.ord, c.id";
    kelaz::SqliteStatement st(project->Db(), sql.c_str());
    st.Bind(1, spec);
    std::vector<CSysCodeData> out;
    while (st.Step()) out.push_back(Row(st));
    if (!st.Ok()) return false;
    infos = std::move(out);
    return true;
}

bool CISysCode::GetSysCodeData(const CString& spec, const CString& code, CSysCodeData& data) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    const std::string sql = std::string(kCodeSql) + " AND c.code = ?2";
    kelaz::SqliteStatement st(project->Db(), sql.c_str());
    if (!st.Bind(1, spec).Bind(2, code).Step()) return false;
    data = Row(st);
    return true;
}

CString CISysCode::GetIndexPath(const CString& specAndCode) {
    const int at = specAndCode.Find(L'\\');
    if (at <= 0) return CString();
    CSysCodeData data;
    if (!GetSysCodeData(specAndCode.Left(at), specAndCode.Mid(at + 1), data)) return CString();
    return data.GetSpec() + L"\\" + data.GetFullName();
}

CString CSys::GetIndexPath(const CString& attName) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    KelAzDataMng::SAttDataIndex index;
    if (!project || !project->Catalogue().Resolve(attName, index)) return CString();
    return project->Catalogue().PathOf(index);
}

}  // namespace KelAzDataMng
