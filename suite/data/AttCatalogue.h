#pragma once

// The attribute catalogue of an open project, held in memory: specialities, big and small
// categories and their detail members (the attributes the property bar offers). Lookups run on
// every placement, so they are answered from here; edits stay pending until Save writes them
// all in one transaction, so a new attribute reaches the file whole or not at all.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/text/Array.h"
#include "suite/data/AttRecords.h"

namespace kelaz {

class SqliteDb;

struct CatalogueNode {
    std::int64_t id = 0;
    std::int64_t parentId = 0;  // 0 for a speciality
    CString name;
};

struct CatalogueMember {
    std::int64_t id = 0;
    std::int64_t smallId = 0;
    CString name;
    KelAzDataMng::SectionInfo section;
    bool hasUpHeight = false;
    CString upHeight;
    CStringArray fields;  // rows of four: label, unit, value, key
    bool isNew = false;
    bool dirty = false;
};

class AttCatalogue {
public:
    bool Load(SqliteDb& db);
    // Writes every pending edit in one transaction; on failure nothing is written and the
    // edits stay pending.
    bool Save(SqliteDb& db);
    bool HasPending() const;

    // Levels of a path: 1 speciality, 2 big category, 3 small category, 4 detail member.
    // False when the path does not name an existing entry of exactly that depth.
    bool Resolve(const CString& path, KelAzDataMng::SAttDataIndex& index) const;
    CString PathOf(const KelAzDataMng::SAttDataIndex& index) const;
    // Names under a path ("" lists the specialities), in catalogue order.
    bool ChildNames(const CString& path, CStringArray& names) const;

    const CatalogueMember* FindMember(const KelAzDataMng::SAttDataIndex& index) const;
    CatalogueMember* FindMemberForEdit(const KelAzDataMng::SAttDataIndex& index);
    bool MembersOf(const KelAzDataMng::SAttDataIndex& smallCategory,
                   std::vector<KelAzDataMng::SAttDataIndex>& ids) const;
    bool AddMember(const KelAzDataMng::SAttDataIndex& smallCategory, const CString& name,
                   CString& memberId);
    // Renames a member (pending until Save); false for an empty name, one with a backslash or
    // blanks around it, or one another member of its small category has.
    bool RenameMember(const KelAzDataMng::SAttDataIndex& member, const CString& name);

private:
    const CatalogueNode* Find(const std::vector<CatalogueNode>& nodes, std::int64_t parent,
                              const CString& name) const;
    const CatalogueNode* ById(const std::vector<CatalogueNode>& nodes, const CString& id) const;
    bool IndexIsConsistent(const KelAzDataMng::SAttDataIndex& index, int depth) const;

    std::vector<CatalogueNode> m_specs;
    std::vector<CatalogueNode> m_bigs;
    std::vector<CatalogueNode> m_smalls;
    std::vector<CatalogueMember> m_members;
    std::int64_t m_nextMemberId = 1;
};

// Splits a category path at its backslashes; false when a segment is empty.
bool SplitCategoryPath(const CString& path, CStringArray& segments);

}  // namespace kelaz
