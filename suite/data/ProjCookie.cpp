#include "suite/data/ProjCookie.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace KelAzDataMng {

namespace {
bool IsFlangeShape(const CString& shape) {
    return shape == kFlangeShapeSquare || shape == kFlangeShapeRound;
}
}  // namespace

CStringArray CLevelHeightCookie::GetLevelHeight(const CString& key) const {
    CStringArray levels;
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project) return levels;
    kelaz::SqliteStatement st(project->Db(),
                              "SELECT value FROM level_history WHERE key = ?1 ORDER BY ord");
    st.Bind(1, key);
    while (st.Step()) levels.Add(st.Text(0));
    if (!st.Ok()) levels.RemoveAll();
    return levels;
}

bool CLevelHeightCookie::SetLevelHeight(const CString& key, const CStringArray& levels) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project || key.IsEmpty()) return false;
    kelaz::SqliteDb& db = project->Db();
    kelaz::SqliteTransaction tx(db);
    kelaz::SqliteStatement clear(db, "DELETE FROM level_history WHERE key = ?1");
    if (!tx.Begun() || !clear.Bind(1, key).Run()) return false;
    kelaz::SqliteStatement add(db,
                               "INSERT INTO level_history(key, ord, value) VALUES (?1, ?2, ?3)");
    for (INT_PTR i = 0; i < levels.GetSize() && i < kMaxEntries; ++i) {
        add.Reset();
        if (!add.Bind(1, key).Bind(2, static_cast<std::int64_t>(i + 1)).Bind(3, levels[i]).Run())
            return false;
    }
    return tx.Commit();
}

bool CFlanMatchCookie::GetFlanMatchData(const CString& key, const CString& shape,
                                        CArray<SFlangeMapInfo>& rows) const {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project || !IsFlangeShape(shape)) return false;
    kelaz::SqliteStatement st(project->Db(),
                              "SELECT size, flange_name, flange_path, any_size FROM flange_match "
                              "WHERE table_key = ?1 AND shape = ?2 ORDER BY ord");
    st.Bind(1, key).Bind(2, shape);
    CArray<SFlangeMapInfo> out;
    while (st.Step()) out.Add({st.Real(0), st.Text(1), st.Text(2), st.Int(3) != 0});
    if (!st.Ok()) return false;
    rows.Copy(out);
    return true;
}

bool CFlanMatchCookie::SetFlanMatchData(const CString& key, const CString& shape,
                                        const CArray<SFlangeMapInfo>& rows) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project || !IsFlangeShape(shape)) return false;
    kelaz::SqliteDb& db = project->Db();
    kelaz::SqliteTransaction tx(db);
    kelaz::SqliteStatement clear(db,
                                 "DELETE FROM flange_match WHERE table_key = ?1 AND shape = ?2");
    if (!tx.Begun() || !clear.Bind(1, key).Bind(2, shape).Run()) return false;
    kelaz::SqliteStatement add(db,
                               "INSERT INTO flange_match(table_key, shape, ord, size, any_size, "
                               "flange_name, flange_path) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)");
    std::int64_t ord = 0;
    for (const SFlangeMapInfo& row : rows) {
        add.Reset();
        // A size that is no number (NaN) reaches SQLite as NULL and is refused by the table.
        add.Bind(1, key).Bind(2, shape).Bind(3, ++ord).Bind(4, row.dSize).Bind(5, row.bAnySize);
        if (!add.Bind(6, row.strFlangeName).Bind(7, row.strFlangePath).Run()) return false;
    }
    return tx.Commit();
}

CKelAzProjCookie* CKelAzProjCookie::Instance() {
    static CKelAzProjCookie instance;
    return &instance;
}

boost::shared_ptr<CLevelHeightCookie> CKelAzProjCookie::GetLevelHeightObj() {
    if (!m_levelHeight) m_levelHeight.reset(new CLevelHeightCookie);
    return m_levelHeight;
}

boost::shared_ptr<CFlanMatchCookie> CKelAzProjCookie::GetFlanMatchObj() {
    if (!kelaz::CurrentProject()) return {};
    if (!m_flanMatch) m_flanMatch.reset(new CFlanMatchCookie);
    return m_flanMatch;
}

}  // namespace KelAzDataMng
