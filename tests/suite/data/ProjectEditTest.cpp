#include <gtest/gtest.h>

#include <cmath>

#include "suite/data/Att.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjCookie.h"
#include "tests/support/ProjectFixture.h"

using namespace KelAzDataMng;
using ProjectEdit = kelaz::test::ProjectTest;

namespace {

// A new round duct under the rectangular ducts' category, copied from an existing duct as the
// duct-size command registers one.
bool AddDuct(const CString& name, SAttDataIndex& added) {
    SAttDataIndex small, source;
    CString id;
    if (!SmallCategoryNameToId(L"暖通\\风管\\矩形风管", small) ||
        !CSmallCategoryMng(small).AddDetailMem(name, id) ||
        !AttNameToAttId(L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管", source))
        return false;
    added = small;
    added.strDetailMemId = id;
    CStringArray list;
    if (!CAttDetailMem(source).GetAttributeList(list) || list.GetSize() < 4) return false;
    list.SetAt(2, L"圆形");
    SectionInfo section;
    section.strShapeCode = L"521";
    section.strSize = L"B,400";
    section.strKind = L"风管";
    return CAttDetailMem(added).SetAttributeList(list) &&
           CAttDetailMem(added).SetSectionInfo(section);
}

CArray<SFlangeMapInfo> Rows(std::initializer_list<double> sizes) {
    CArray<SFlangeMapInfo> rows;
    for (double size : sizes) {
        const CString name = size < 500 ? L"角钢法兰L25" : L"角钢法兰L30";
        rows.Add({size, name, L"暖通\\风部件\\风法兰\\" + name, false});
    }
    return rows;
}

std::vector<double> Sizes(const CArray<SFlangeMapInfo>& rows) {
    std::vector<double> sizes;
    for (const SFlangeMapInfo& r : rows) sizes.push_back(r.dSize);
    return sizes;
}

}  // namespace

TEST_F(ProjectEdit, NewAttributeReachesTheFileOnlyWhenSaved) {
    SAttDataIndex added;
    ASSERT_TRUE(AddDuct(L"螺旋风管D400", added));
    EXPECT_TRUE(CAtt::HasUnsavedChanges());
    EXPECT_EQ(CAttDetailMem(added).GetFullPath(), L"暖通\\风管\\矩形风管\\螺旋风管D400");
    Reopen();  // closing without saving drops the edit
    SAttDataIndex found;
    EXPECT_FALSE(AttNameToAttId(L"暖通\\风管\\矩形风管\\螺旋风管D400", found));

    ASSERT_TRUE(AddDuct(L"螺旋风管D400", added));
    CString id;
    SAttDataIndex small;
    SmallCategoryNameToId(L"暖通\\风管\\矩形风管", small);
    EXPECT_FALSE(CSmallCategoryMng(small).AddDetailMem(L"螺旋风管D400", id));  // already there
    EXPECT_FALSE(CSmallCategoryMng(small).AddDetailMem(L"", id));
    EXPECT_FALSE(CSmallCategoryMng(small).AddDetailMem(L"a\\b", id));
    EXPECT_FALSE(CSmallCategoryMng(added).AddDetailMem(L"x", id));  // a member is no category
    CStringArray fiveFields;
    for (int i = 0; i < 5; ++i) fiveFields.Add(L"x");
    EXPECT_FALSE(CAttDetailMem(added).SetAttributeList(fiveFields));  // not whole rows of four
    ASSERT_TRUE(CAtt::Save());
    EXPECT_FALSE(CAtt::HasUnsavedChanges());

    Reopen();
    ASSERT_TRUE(AttNameToAttId(L"暖通\\风管\\矩形风管\\螺旋风管D400", found));
    SectionInfo section;
    CStringArray list;
    ASSERT_TRUE(CAttDetailMem(found).GetSectionInfo(section));
    EXPECT_EQ(section.nSectionType, kSectionTypeSection);
    EXPECT_EQ(section.strShapeCode, L"521");
    EXPECT_EQ(section.strSize, L"B,400");
    ASSERT_TRUE(CAttDetailMem(found).GetAttributeList(list));
    ASSERT_EQ(list.GetSize(), 12);
    EXPECT_EQ(list[2], L"圆形");
    EXPECT_EQ(list[3], L"HVAC_DuctSectionShape");
    CStringArray names;
    CAtt::GetChildNames(L"暖通\\风管\\矩形风管", names);
    ASSERT_EQ(names.GetSize(), 2);
    EXPECT_EQ(names[1], L"螺旋风管D400");  // after the existing member

    // Editing an existing attribute, then thinking better of it.
    section.nSectionType = 3;
    ASSERT_TRUE(CAttDetailMem(found).SetSectionInfo(section));
    ASSERT_TRUE(CAtt::Discard());
    ASSERT_TRUE(CAttDetailMem(found).GetSectionInfo(section));
    EXPECT_EQ(section.nSectionType, kSectionTypeSection);
}

TEST_F(ProjectEdit, AFailedSaveWritesNothing) {
    SAttDataIndex first, second;
    ASSERT_TRUE(AddDuct(L"风管A", first));
    ASSERT_TRUE(AddDuct(L"风管B", second));
    // Meanwhile another program files an attribute of the second name.
    const std::string sql =
        "INSERT INTO attribute(small_id, name, ord, section_type, shape_code, "
        "size_text, kind, block_name) VALUES (" +
        kelaz::ToUtf8(second.strSmallCategoryId) + ", '风管B', 99, 1, '', '', '', '')";
    kelaz::test::EditProjectFile(m_file, [&](kelaz::SqliteDb& other) {
        ASSERT_TRUE(other.Exec(sql.c_str())) << other.LastError();
    });

    EXPECT_FALSE(CAtt::Save());
    EXPECT_TRUE(CAtt::HasUnsavedChanges());
    Reopen();
    SAttDataIndex found;
    EXPECT_FALSE(AttNameToAttId(L"暖通\\风管\\矩形风管\\风管A", found));
    EXPECT_TRUE(AttNameToAttId(L"暖通\\风管\\矩形风管\\风管B", found));
}

TEST_F(ProjectEdit, FlangeTablesRoundTripAndAFailedWriteKeepsTheOldRows) {
    boost::shared_ptr<CFlanMatchCookie> tables = CKelAzProjCookie::Instance()->GetFlanMatchObj();
    ASSERT_TRUE(tables);
    CArray<SFlangeMapInfo> rows;
    ASSERT_TRUE(tables->GetFlanMatchData(L"暖通", kFlangeShapeSquare, rows));
    EXPECT_TRUE(rows.IsEmpty());

    ASSERT_TRUE(tables->SetFlanMatchData(L"暖通", kFlangeShapeSquare, Rows({200, 400, 800})));
    CArray<SFlangeMapInfo> wildcard;
    wildcard.Add({0.0, L"扁钢圆法兰", L"暖通\\风部件\\风法兰\\扁钢圆法兰", true});
    ASSERT_TRUE(tables->SetFlanMatchData(L"暖通", kFlangeShapeRound, wildcard));
    Reopen();
    ASSERT_TRUE(tables->GetFlanMatchData(L"暖通", kFlangeShapeSquare, rows));
    EXPECT_EQ(Sizes(rows), (std::vector<double>{200, 400, 800}));
    EXPECT_EQ(rows[2].strFlangeName, L"角钢法兰L30");
    EXPECT_EQ(rows[2].strFlangePath, L"暖通\\风部件\\风法兰\\角钢法兰L30");
    ASSERT_TRUE(tables->GetFlanMatchData(L"暖通", kFlangeShapeRound, rows));
    ASSERT_EQ(rows.GetSize(), 1);
    EXPECT_TRUE(rows[0].bAnySize);
    ASSERT_TRUE(tables->GetFlanMatchData(L"给排水", kFlangeShapeSquare, rows));
    EXPECT_TRUE(rows.IsEmpty());  // another key, another table

    // A row the table refuses (no size at all) half-way through: nothing of the write stays.
    EXPECT_FALSE(tables->SetFlanMatchData(L"暖通", kFlangeShapeSquare, Rows({100, NAN, 300})));
    ASSERT_TRUE(tables->GetFlanMatchData(L"暖通", kFlangeShapeSquare, rows));
    EXPECT_EQ(Sizes(rows), (std::vector<double>{200, 400, 800}));

    EXPECT_FALSE(tables->SetFlanMatchData(L"暖通", L"三角", Rows({100})));
    EXPECT_FALSE(tables->GetFlanMatchData(L"暖通", L"三角", rows));
    EXPECT_EQ(rows.GetSize(), 3);

    KelAzDataMng::CloseProject();
    EXPECT_FALSE(CKelAzProjCookie::Instance()->GetFlanMatchObj());
    EXPECT_FALSE(tables->GetFlanMatchData(L"暖通", kFlangeShapeSquare, rows));
}

TEST_F(ProjectEdit, ElevationHistoryPerKey) {
    boost::shared_ptr<CLevelHeightCookie> history =
        CKelAzProjCookie::Instance()->GetLevelHeightObj();
    ASSERT_TRUE(history);
    EXPECT_TRUE(history->GetLevelHeight(L"dxbz_level").IsEmpty());
    CStringArray typed;
    typed.Add(L"3F+500");
    typed.Add(L"2800");
    ASSERT_TRUE(history->SetLevelHeight(L"dxbz_level", typed));
    CStringArray many;
    for (int i = 0; i < 25; ++i) many.Add(kelaz::FormatText(L"%d", 1000 + i));
    ASSERT_TRUE(history->SetLevelHeight(L"rdxbz_level", many));
    EXPECT_FALSE(history->SetLevelHeight(L"", typed));
    Reopen();
    EXPECT_EQ(history->GetLevelHeight(L"dxbz_level"), typed);
    const CStringArray kept = history->GetLevelHeight(L"rdxbz_level");
    ASSERT_EQ(kept.GetSize(), CLevelHeightCookie::kMaxEntries);
    EXPECT_EQ(kept[0], L"1000");

    KelAzDataMng::CloseProject();
    EXPECT_TRUE(history->GetLevelHeight(L"dxbz_level").IsEmpty());
    EXPECT_FALSE(history->SetLevelHeight(L"dxbz_level", typed));
}

TEST_F(ProjectEdit, SessionStateIsPutBackAsItWas) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    ASSERT_NE(project, nullptr);
    boost::shared_ptr<CLevelHeightCookie> history =
        CKelAzProjCookie::Instance()->GetLevelHeightObj();
    CStringArray typed;
    typed.Add(L"3F+500");
    typed.Add(L"2800");
    ASSERT_TRUE(history->SetLevelHeight(L"dxbz_level", typed));
    ASSERT_TRUE(CProj::SetCurrentSpec(L"电气"));
    std::vector<kelaz::ProjectSessionRow> start;
    ASSERT_TRUE(project->ReadSessionState(start));

    // What a session changes: the speciality, the floor, the history; and a key it adds.
    ASSERT_TRUE(CProj::SetCurrentSpec(L"暖通"));
    CStringArray other;
    other.Add(L"100");
    ASSERT_TRUE(history->SetLevelHeight(L"dxbz_level", other));
    ASSERT_TRUE(history->SetLevelHeight(L"rdxbz_level", other));
    ASSERT_TRUE(project->RestoreSessionState(start));
    Reopen();
    EXPECT_EQ(CProj::GetCurrentSpec(), L"电气");
    EXPECT_EQ(history->GetLevelHeight(L"dxbz_level"), typed);
    EXPECT_TRUE(history->GetLevelHeight(L"rdxbz_level").IsEmpty());
    std::vector<kelaz::ProjectSessionRow> back;
    ASSERT_TRUE(kelaz::CurrentProject()->ReadSessionState(back));
    EXPECT_EQ(back, start);
}
