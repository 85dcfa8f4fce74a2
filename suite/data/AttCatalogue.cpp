#include "suite/data/AttCatalogue.h"

#include <algorithm>
#include <string>

#include "suite/data/SqliteDb.h"

namespace kelaz {

using KelAzDataMng::SAttDataIndex;

namespace {

CString IdText(std::int64_t id) { return CString(std::to_wstring(id)); }

// Ids travel as text; only plain decimal digits name a row.
bool ParseId(const CString& text, std::int64_t& id) {
    if (text.IsEmpty() || text.GetLength() > 18) return false;
    std::int64_t v = 0;
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t c = text[i];
        if (c < L'0' || c > L'9') return false;
        v = v * 10 + (c - L'0');
    }
    id = v;
    return v > 0;
}

bool LoadNodes(SqliteDb& db, const char* sql, std::vector<CatalogueNode>& nodes) {
    SqliteStatement st(db, sql);
    while (st.Step()) nodes.push_back({st.Int(0), st.Int(1), st.Text(2)});
    return st.Ok();
}

}  // namespace

bool SplitCategoryPath(const CString& path, CStringArray& segments) {
    CStringArray parts;
    int start = 0;
    for (;;) {
        const int at = path.Find(L'\\', start);
        const CString part = at < 0 ? path.Mid(start) : path.Mid(start, at - start);
        if (part.IsEmpty()) return false;
        parts.Add(part);
        if (at < 0) break;
        start = at + 1;
    }
    segments.Copy(parts);
    return true;
}

bool AttCatalogue::Load(SqliteDb& db) {
    AttCatalogue loaded;
    if (!LoadNodes(db, "SELECT id, 0, name FROM speciality ORDER BY ord, id", loaded.m_specs) ||
        !LoadNodes(db, "SELECT id, spec_id, name FROM big_category ORDER BY spec_id, ord, id",
                   loaded.m_bigs) ||
        !LoadNodes(db, "SELECT id, big_id, name FROM small_category ORDER BY big_id, ord, id",
                   loaded.m_smalls))
        return false;

    SqliteStatement members(db,
                            "SELECT id, small_id, name, section_type, shape_code, size_text, kind, "
                            "block_name, sys_up_height FROM attribute ORDER BY small_id, ord, id");
    std::map<std::int64_t, size_t> byId;
    while (members.Step()) {
        CatalogueMember m;
        m.id = members.Int(0);
        m.smallId = members.Int(1);
        m.name = members.Text(2);
        m.section.nSectionType = static_cast<int>(members.Int(3));
        m.section.strShapeCode = members.Text(4);
        m.section.strSize = members.Text(5);
        m.section.strKind = members.Text(6);
        m.section.strBlockName = members.Text(7);
        m.hasUpHeight = !members.IsNull(8);
        m.upHeight = members.Text(8);
        byId[m.id] = loaded.m_members.size();
        loaded.m_nextMemberId = std::max(loaded.m_nextMemberId, m.id + 1);
        loaded.m_members.push_back(m);
    }
    if (!members.Ok()) return false;

    SqliteStatement fields(db,
                           "SELECT attribute_id, label, unit, value, key FROM attribute_field "
                           "ORDER BY attribute_id, ord");
    while (fields.Step()) {
        const auto it = byId.find(fields.Int(0));
        if (it == byId.end()) continue;  // the foreign key keeps this from happening
        CStringArray& list = loaded.m_members[it->second].fields;
        for (int c = 1; c <= 4; ++c) list.Add(fields.Text(c));
    }
    if (!fields.Ok()) return false;
    *this = std::move(loaded);
    return true;
}

bool AttCatalogue::HasPending() const {
    return std::any_of(m_members.begin(), m_members.end(),
                       [](const CatalogueMember& m) { return m.isNew || m.dirty; });
}

bool AttCatalogue::Save(SqliteDb& db) {
    if (!HasPending()) return true;
    SqliteTransaction tx(db);
    if (!tx.Begun()) return false;
    SqliteStatement insert(db,
                           "INSERT INTO attribute(id, small_id, name, ord, section_type, "
                           "shape_code, size_text, kind, block_name, sys_up_height) VALUES "
                           "(?1, ?2, ?3, (SELECT IFNULL(MAX(ord), 0) + 1 FROM attribute WHERE "
                           "small_id = ?2), ?4, ?5, ?6, ?7, ?8, ?9)");
    SqliteStatement update(db,
                           "UPDATE attribute SET section_type = ?2, shape_code = ?3, size_text = "
                           "?4, kind = ?5, block_name = ?6, name = ?7 WHERE id = ?1");
    SqliteStatement clearFields(db, "DELETE FROM attribute_field WHERE attribute_id = ?1");
    SqliteStatement addField(db,
                             "INSERT INTO attribute_field(attribute_id, ord, label, unit, value, "
                             "key) VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    for (const CatalogueMember& m : m_members) {
        if (!m.isNew && !m.dirty) continue;
        SqliteStatement& st = m.isNew ? insert : update;
        st.Reset();
        if (m.isNew) {
            st.Bind(1, m.id).Bind(2, m.smallId).Bind(3, m.name);
            st.Bind(4, m.section.nSectionType).Bind(5, m.section.strShapeCode);
            st.Bind(6, m.section.strSize).Bind(7, m.section.strKind);
            st.Bind(8, m.section.strBlockName);
            if (m.hasUpHeight)
                st.Bind(9, m.upHeight);
            else
                st.BindNull(9);
        } else {
            st.Bind(1, m.id).Bind(2, m.section.nSectionType).Bind(3, m.section.strShapeCode);
            st.Bind(4, m.section.strSize).Bind(5, m.section.strKind);
            st.Bind(6, m.section.strBlockName).Bind(7, m.name);
        }
        if (!st.Run()) return false;
        clearFields.Reset();
        if (!clearFields.Bind(1, m.id).Run()) return false;
        for (INT_PTR row = 0; row + 3 < m.fields.GetSize(); row += 4) {
            addField.Reset();
            addField.Bind(1, m.id).Bind(2, static_cast<std::int64_t>(row / 4 + 1));
            for (int c = 0; c < 4; ++c) addField.Bind(3 + c, m.fields[row + c]);
            if (!addField.Run()) return false;
        }
    }
    if (!tx.Commit()) return false;
    for (CatalogueMember& m : m_members) m.isNew = m.dirty = false;
    return true;
}

const CatalogueNode* AttCatalogue::Find(const std::vector<CatalogueNode>& nodes,
                                        std::int64_t parent, const CString& name) const {
    for (const CatalogueNode& n : nodes)
        if (n.parentId == parent && n.name == name) return &n;
    return nullptr;
}

const CatalogueNode* AttCatalogue::ById(const std::vector<CatalogueNode>& nodes,
                                        const CString& id) const {
    std::int64_t value = 0;
    if (!ParseId(id, value)) return nullptr;
    for (const CatalogueNode& n : nodes)
        if (n.id == value) return &n;
    return nullptr;
}

bool AttCatalogue::Resolve(const CString& path, SAttDataIndex& index) const {
    CStringArray seg;
    if (!SplitCategoryPath(path, seg) || seg.GetSize() > 4) return false;
    SAttDataIndex found;
    const CatalogueNode* spec = Find(m_specs, 0, seg[0]);
    if (!spec) return false;
    found.strSpecId = IdText(spec->id);
    if (seg.GetSize() >= 2) {
        const CatalogueNode* big = Find(m_bigs, spec->id, seg[1]);
        if (!big) return false;
        found.strBigCategoryId = IdText(big->id);
        if (seg.GetSize() >= 3) {
            const CatalogueNode* small = Find(m_smalls, big->id, seg[2]);
            if (!small) return false;
            found.strSmallCategoryId = IdText(small->id);
            if (seg.GetSize() == 4) {
                const auto it =
                    std::find_if(m_members.begin(), m_members.end(), [&](const CatalogueMember& m) {
                        return m.smallId == small->id && m.name == seg[3];
                    });
                if (it == m_members.end()) return false;
                found.strDetailMemId = IdText(it->id);
            }
        }
    }
    index = found;
    return true;
}

bool AttCatalogue::IndexIsConsistent(const SAttDataIndex& index, int depth) const {
    const CatalogueNode* spec = ById(m_specs, index.strSpecId);
    if (!spec) return false;
    if (depth < 2) return true;
    const CatalogueNode* big = ById(m_bigs, index.strBigCategoryId);
    if (!big || big->parentId != spec->id) return false;
    if (depth < 3) return true;
    const CatalogueNode* small = ById(m_smalls, index.strSmallCategoryId);
    if (!small || small->parentId != big->id) return false;
    if (depth < 4) return true;
    const CatalogueMember* m = FindMember(index);
    return m && m->smallId == small->id;
}

CString AttCatalogue::PathOf(const SAttDataIndex& index) const {
    const int depth = !index.strDetailMemId.IsEmpty()       ? 4
                      : !index.strSmallCategoryId.IsEmpty() ? 3
                      : !index.strBigCategoryId.IsEmpty()   ? 2
                                                            : 1;
    if (!IndexIsConsistent(index, depth)) return CString();
    CString path = ById(m_specs, index.strSpecId)->name;
    if (depth >= 2) path += L"\\" + ById(m_bigs, index.strBigCategoryId)->name;
    if (depth >= 3) path += L"\\" + ById(m_smalls, index.strSmallCategoryId)->name;
    if (depth >= 4) path += L"\\" + FindMember(index)->name;
    return path;
}

bool AttCatalogue::ChildNames(const CString& path, CStringArray& names) const {
    CStringArray out;
    if (path.IsEmpty()) {
        for (const CatalogueNode& n : m_specs) out.Add(n.name);
        names.Copy(out);
        return true;
    }
    SAttDataIndex index;
    if (!Resolve(path, index)) return false;
    if (!index.strDetailMemId.IsEmpty()) {
        // a member has no children
    } else if (!index.strSmallCategoryId.IsEmpty()) {
        std::int64_t small = 0;
        ParseId(index.strSmallCategoryId, small);
        for (const CatalogueMember& m : m_members)
            if (m.smallId == small) out.Add(m.name);
    } else {
        const bool bigLevel = !index.strBigCategoryId.IsEmpty();
        std::int64_t parent = 0;
        ParseId(bigLevel ? index.strBigCategoryId : index.strSpecId, parent);
        for (const CatalogueNode& n : bigLevel ? m_smalls : m_bigs)
            if (n.parentId == parent) out.Add(n.name);
    }
    names.Copy(out);
    return true;
}

const CatalogueMember* AttCatalogue::FindMember(const SAttDataIndex& index) const {
    std::int64_t id = 0;
    if (!ParseId(index.strDetailMemId, id)) return nullptr;
    for (const CatalogueMember& m : m_members)
        if (m.id == id) return &m;
    return nullptr;
}

CatalogueMember* AttCatalogue::FindMemberForEdit(const SAttDataIndex& index) {
    if (!IndexIsConsistent(index, 4)) return nullptr;
    return const_cast<CatalogueMember*>(FindMember(index));
}

bool AttCatalogue::MembersOf(const SAttDataIndex& smallCategory,
                             std::vector<SAttDataIndex>& ids) const {
    if (!smallCategory.strDetailMemId.IsEmpty() || !IndexIsConsistent(smallCategory, 3))
        return false;
    std::int64_t small = 0;
    ParseId(smallCategory.strSmallCategoryId, small);
    std::vector<SAttDataIndex> out;
    for (const CatalogueMember& m : m_members) {
        if (m.smallId != small) continue;
        SAttDataIndex one = smallCategory;
        one.strDetailMemId = IdText(m.id);
        out.push_back(one);
    }
    ids = std::move(out);
    return true;
}

bool AttCatalogue::AddMember(const SAttDataIndex& smallCategory, const CString& name,
                             CString& memberId) {
    if (!smallCategory.strDetailMemId.IsEmpty() || !IndexIsConsistent(smallCategory, 3))
        return false;
    CString trimmed = name;
    trimmed.Trim();
    if (trimmed.IsEmpty() || trimmed != name || name.Find(L'\\') >= 0) return false;
    std::int64_t small = 0;
    ParseId(smallCategory.strSmallCategoryId, small);
    for (const CatalogueMember& m : m_members)
        if (m.smallId == small && m.name == name) return false;
    CatalogueMember m;
    m.id = m_nextMemberId++;
    m.smallId = small;
    m.name = name;
    m.isNew = true;
    m_members.push_back(m);
    memberId = IdText(m.id);
    return true;
}

bool AttCatalogue::RenameMember(const SAttDataIndex& member, const CString& name) {
    CatalogueMember* m = FindMemberForEdit(member);
    if (!m) return false;
    CString trimmed = name;
    trimmed.Trim();
    if (trimmed.IsEmpty() || trimmed != name || name.Find(L'\\') >= 0) return false;
    for (const CatalogueMember& other : m_members)
        if (&other != m && other.smallId == m->smallId && other.name == name) return false;
    m->name = name;
    m->dirty = true;
    return true;
}

}  // namespace kelaz
