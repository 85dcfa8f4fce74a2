#pragma once

// The attribute catalogue as the layout module calls it. A category path has the speciality,
// the big and the small category ("暖通\\风部件\\风法兰"); an attribute path adds the detail
// member ("暖通\\风部件\\风法兰\\共板法兰"). Edits stay pending until CAtt::Save.

#include <vector>

#include "host/text/Array.h"
#include "host/text/CString.h"
#include "suite/data/AttRecords.h"

namespace KelAzDataMng {

// The four id parts of an attribute path; false (index untouched) when it names none.
bool AttNameToAttId(const CString& attName, SAttDataIndex& index);
// The three id parts of a small category path (the member part left empty).
bool SmallCategoryNameToId(const CString& smallCategoryName, SAttDataIndex& index);
bool SmallCategoryNameToId(const CString& smallCategoryName, CString& specId, CString& bigId,
                           CString& smallId);

class CAtt {
public:
    // The detail members of a small category, in catalogue order.
    static bool GetAllDetailMemIdsBySmallCategory(const SAttDataIndex& smallCategory,
                                                  std::vector<SAttDataIndex>& ids);
    // Names one level below a path: "" lists the specialities, a speciality its big
    // categories, and so on down to the members of a small category.
    static bool GetChildNames(const CString& path, CStringArray& names);
    // Writes the pending edits in one transaction; false leaves them pending and the file as
    // it was.
    static bool Save();
    // Drops the pending edits.
    static bool Discard();
    static bool HasUnsavedChanges();
};

class CSmallCategoryMng {
public:
    explicit CSmallCategoryMng(const SAttDataIndex& smallCategory) : m_index(smallCategory) {}
    // Adds a detail member (pending until CAtt::Save) and answers its id; false for an empty
    // name, a name with a backslash or one the category has already.
    bool AddDetailMem(const CString& name, CString& detailMemId);

private:
    SAttDataIndex m_index;
};

class CAttDetailMem {
public:
    explicit CAttDetailMem(const SAttDataIndex& index) : m_index(index) {}

    CString GetName() const;  // empty when the index names no member
    // Renames the member (pending until CAtt::Save); false for an empty name, one with a
    // backslash or one a sibling has.
    bool SetName(const CString& name);
    CString GetFullPath() const;  // the attribute path
    bool GetSectionInfo(SectionInfo& info) const;
    bool SetSectionInfo(const SectionInfo& info);
    // The system mounting height, for categories mounted at a fixed height (switches at 1300,
    // hydrants at 1100 ...); false when the attribute has none.
    bool GetSysUpHeight(CString& height) const;
    // Flat rows of four: label, unit, value, key.
    bool GetAttributeList(CStringArray& list) const;
    // False for a list that is not whole rows of four.
    bool SetAttributeList(const CStringArray& list);

private:
    SAttDataIndex m_index;
};

}  // namespace KelAzDataMng
