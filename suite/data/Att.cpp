#include "suite/data/Att.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace KelAzDataMng {

namespace {

kelaz::AttCatalogue* Catalogue() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project ? &project->Catalogue() : nullptr;
}

bool ResolveDepth(const CString& path, int segments, SAttDataIndex& index) {
    kelaz::AttCatalogue* cat = Catalogue();
    CStringArray seg;
    SAttDataIndex found;
    if (!cat || !kelaz::SplitCategoryPath(path, seg) || seg.GetSize() != segments ||
        !cat->Resolve(path, found))
        return false;
    index = found;
    return true;
}

constexpr int kFieldsPerRow = 4;

}  // namespace

bool AttNameToAttId(const CString& attName, SAttDataIndex& index) {
    return ResolveDepth(attName, 4, index);
}

bool SmallCategoryNameToId(const CString& smallCategoryName, SAttDataIndex& index) {
    return ResolveDepth(smallCategoryName, 3, index);
}

bool SmallCategoryNameToId(const CString& smallCategoryName, CString& specId, CString& bigId,
                           CString& smallId) {
    SAttDataIndex index;
    if (!SmallCategoryNameToId(smallCategoryName, index)) return false;
    specId = index.strSpecId;
    bigId = index.strBigCategoryId;
    smallId = index.strSmallCategoryId;
    return true;
}

bool CAtt::GetAllDetailMemIdsBySmallCategory(const SAttDataIndex& smallCategory,
                                             std::vector<SAttDataIndex>& ids) {
    kelaz::AttCatalogue* cat = Catalogue();
    return cat && cat->MembersOf(smallCategory, ids);
}

bool CAtt::GetChildNames(const CString& path, CStringArray& names) {
    kelaz::AttCatalogue* cat = Catalogue();
    return cat && cat->ChildNames(path, names);
}

bool CAtt::Save() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project && project->Catalogue().Save(project->Db());
}

bool CAtt::Discard() {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    return project && project->Catalogue().Load(project->Db());
}

bool CAtt::HasUnsavedChanges() {
    kelaz::AttCatalogue* cat = Catalogue();
    return cat && cat->HasPending();
}

bool CSmallCategoryMng::AddDetailMem(const CString& name, CString& detailMemId) {
    kelaz::AttCatalogue* cat = Catalogue();
    return cat && cat->AddMember(m_index, name, detailMemId);
}

CString CAttDetailMem::GetName() const {
    kelaz::AttCatalogue* cat = Catalogue();
    const kelaz::CatalogueMember* m = cat ? cat->FindMemberForEdit(m_index) : nullptr;
    return m ? m->name : CString();
}

bool CAttDetailMem::SetName(const CString& name) {
    kelaz::AttCatalogue* cat = Catalogue();
    return cat && cat->RenameMember(m_index, name);
}

CString CAttDetailMem::GetFullPath() const {
    kelaz::AttCatalogue* cat = Catalogue();
    return cat && m_index.IsComplete() ? cat->PathOf(m_index) : CString();
}

bool CAttDetailMem::GetSectionInfo(SectionInfo& info) const {
    kelaz::AttCatalogue* cat = Catalogue();
    const kelaz::CatalogueMember* m = cat ? cat->FindMemberForEdit(m_index) : nullptr;
    if (!m) return false;
    info = m->section;
    return true;
}

bool CAttDetailMem::SetSectionInfo(const SectionInfo& info) {
    kelaz::AttCatalogue* cat = Catalogue();
    kelaz::CatalogueMember* m = cat ? cat->FindMemberForEdit(m_index) : nullptr;
    if (!m) return false;
    m->section = info;
    m->dirty = true;
    return true;
}

bool CAttDetailMem::GetSysUpHeight(CString& height) const {
    kelaz::AttCatalogue* cat = Catalogue();
    const kelaz::CatalogueMember* m = cat ? cat->FindMemberForEdit(m_index) : nullptr;
    if (!m || !m->hasUpHeight) return false;
    height = m->upHeight;
    return true;
}

bool CAttDetailMem::GetAttributeList(CStringArray& list) const {
    kelaz::AttCatalogue* cat = Catalogue();
    const kelaz::CatalogueMember* m = cat ? cat->FindMemberForEdit(m_index) : nullptr;
    if (!m) return false;
    list.Copy(m->fields);
    return true;
}

bool CAttDetailMem::SetAttributeList(const CStringArray& list) {
    kelaz::AttCatalogue* cat = Catalogue();
    kelaz::CatalogueMember* m = cat ? cat->FindMemberForEdit(m_index) : nullptr;
    if (!m || list.GetSize() % kFieldsPerRow != 0) return false;
    m->fields.Copy(list);
    m->dirty = true;
    return true;
}

}  // namespace KelAzDataMng
