#include "suite/tools/CmdDataReader.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"
#include "suite/tools/Globl_Fun.h"

namespace {

constexpr const char* kSelect =
    "SELECT name, jig_draw_block, check_attribute, update_ui, big_type, small_types, "
    "refresh_path, extra, description FROM command";
constexpr wchar_t kExtraSeparator = L';';

std::vector<CString> ExtraItems(const CString& text) {
    CStringArray extra;
    CGlobl_Fun::StrToStrAry(text, extra, kExtraSeparator);
    return std::vector<CString>(extra.begin(), extra.end());
}

CmdData Row(const kelaz::SqliteStatement& st) {
    CmdData data;
    data.strCmdName = st.Text(0);
    data.bJigDrawBlock = st.Int(1) != 0;
    data.bCheckAttribute = st.Int(2) != 0;
    data.bUpdateUi = st.Int(3) != 0;
    data.strBigType = st.Text(4);
    data.strSmallTypes = st.Text(5);
    data.strRefreshPath = st.Text(6);
    data.vecExtra = ExtraItems(st.Text(7));
    data.strDescription = st.Text(8);
    return data;
}

}  // namespace

CCmdDataReader* CCmdDataReader::Instance() {
    static CCmdDataReader instance;
    return &instance;
}

CmdData CCmdDataReader::GetCmdData(const CString& cmd) const {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project || cmd.IsEmpty()) return CmdData();
    const std::string sql = std::string(kSelect) + " WHERE name = ?1";
    kelaz::SqliteStatement st(project->Db(), sql.c_str());
    if (st.Bind(1, cmd).Step()) return Row(st);
    if (!st.Ok()) return CmdData();
    // A project made before the command existed has no row for it: the command runs with the
    // row a new project would have, and the file stays as it is (it may be read-only, or
    // shared with an older kelaz).
    kelaz::DefaultCommand def;
    if (!kelaz::DefaultCommandRow(cmd, def)) return CmdData();
    CmdData data;
    data.strCmdName = def.name;
    data.bJigDrawBlock = def.jigDrawBlock;
    data.bCheckAttribute = def.checkAttribute;
    data.bUpdateUi = def.updateUi;
    data.strBigType = def.bigType;
    data.strSmallTypes = def.smallTypes;
    data.strRefreshPath = def.refreshPath;
    data.vecExtra = ExtraItems(def.extra);
    data.strDescription = def.description;
    return data;
}

bool CCmdDataReader::GetAllCmdData(std::vector<CmdData>& commands) const {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return false;
    const std::string sql = std::string(kSelect) + " ORDER BY ord";
    kelaz::SqliteStatement st(project->Db(), sql.c_str());
    std::vector<CmdData> out;
    while (st.Step()) out.push_back(Row(st));
    if (!st.Ok()) return false;
    commands = std::move(out);
    return true;
}
