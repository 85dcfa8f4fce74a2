#include <gtest/gtest.h>

#include "suite/data/Att.h"
#include "suite/data/HorizontalLayMng.h"
#include "suite/data/Proj.h"
#include "suite/data/SysCode.h"
#include "tests/support/ProjectFixture.h"

using namespace KelAzDataMng;
using ProjectLookup = kelaz::test::ProjectTest;

namespace {
const FloorRecord kUntouched{L"untouched", -1.0, -2.0};

void ExpectFloor(const FloorRecord& r, const wchar_t* name, double height, double bottom) {
    EXPECT_EQ(r.strName, name);
    EXPECT_DOUBLE_EQ(r.dHeight, height) << r.strName;
    EXPECT_DOUBLE_EQ(r.dElevation, bottom) << r.strName;
}
}  // namespace

TEST_F(ProjectLookup, FloorsBySingleNameRangeAndCommaList) {
    CArray<FloorRecord> floors;
    ASSERT_TRUE(CProj::GetAllFloorData(floors));
    ASSERT_EQ(floors.GetSize(), 7);
    ExpectFloor(floors[0], L"-1", 4500, -4500);
    ExpectFloor(floors[3], L"3/6", 3600, 8700);
    ExpectFloor(floors[4], L"7,9", 3600, 23100);
    // Each floor starts where the one below ends.
    ExpectFloor(floors[6], L"10", 3000, 34800);

    FloorRecord r;
    ASSERT_TRUE(IFloorMng::GetFloorRecordByFloorName(L"3/6", r));
    ExpectFloor(r, L"3/6", 3600, 8700);
    ASSERT_TRUE(IFloorMng::GetFloorRecordByFloorName(L"5", r));  // inside the range
    ExpectFloor(r, L"5", 3600, 15900);
    ASSERT_TRUE(IFloorMng::GetFloorRecordByFloorName(L"9", r));  // own record of the list
    ExpectFloor(r, L"9", 3600, 31200);
    ASSERT_TRUE(IFloorMng::GetFloorRecordByFloorName(L"8", r));
    ExpectFloor(r, L"8", 4500, 26700);

    // Separate records: the list's floors and single rows; ranges only when asked.
    ASSERT_TRUE(IFloorMng::GetSeperateFloorRecordByFloorName(L"7", r, false));
    ExpectFloor(r, L"7", 3600, 23100);
    ASSERT_TRUE(IFloorMng::GetSeperateFloorRecordByFloorName(L"2", r, false));
    ExpectFloor(r, L"2", 4200, 4500);
    ASSERT_TRUE(IFloorMng::GetSeperateFloorRecordByFloorName(L"6", r, true));
    ExpectFloor(r, L"6", 3600, 19500);

    // Missing floors answer false and leave the record alone.
    for (const wchar_t* name : {L"11", L"0", L"", L"3/7", L"05x"}) {
        r = kUntouched;
        EXPECT_FALSE(IFloorMng::GetFloorRecordByFloorName(name, r)) << name;
        EXPECT_EQ(r.strName, kUntouched.strName);
    }
    r = kUntouched;
    EXPECT_FALSE(IFloorMng::GetSeperateFloorRecordByFloorName(L"5", r, false));
    EXPECT_FALSE(IFloorMng::GetSeperateFloorRecordByFloorName(L"7,9", r, true));
    EXPECT_FALSE(IFloorMng::GetSeperateFloorRecordByFloorName(L"3/6", r, true));
    EXPECT_EQ(r.strName, kUntouched.strName);
}

TEST_F(ProjectLookup, CurrentSpecialityAndFloorAreKeptInTheFile) {
    EXPECT_EQ(CProj::GetPrjPath(), kelaz::FromUtf8(m_file));
    EXPECT_EQ(CProj::GetPrjName(), L"工程");
    EXPECT_EQ(CProj::GetCurrentSpec(), L"暖通");
    EXPECT_EQ(CProj::GetCurFloorName(), L"1");
    EXPECT_TRUE(CProj::SetCurrentSpec(L"1_5u"));
    EXPECT_FALSE(CProj::SetCurrentSpec(L"土建"));
    EXPECT_TRUE(CProj::SetCurFloorName(L"5"));
    EXPECT_FALSE(CProj::SetCurFloorName(L"12"));
    Reopen();
    EXPECT_EQ(CProj::GetCurrentSpec(), L"1_5u");
    EXPECT_EQ(CProj::GetCurFloorName(), L"5");

    KelAzDataMng::CloseProject();
    EXPECT_TRUE(CProj::GetPrjPath().IsEmpty());
    EXPECT_TRUE(CProj::GetCurrentSpec().IsEmpty());
    CArray<FloorRecord> floors;
    floors.Add(kUntouched);
    EXPECT_FALSE(CProj::GetAllFloorData(floors));
    EXPECT_EQ(floors.GetSize(), 1);
}

TEST_F(ProjectLookup, CategoriesToIdsAndBack) {
    const CString flange = L"暖通\\风部件\\风法兰\\共板法兰";
    SAttDataIndex member;
    ASSERT_TRUE(AttNameToAttId(flange, member));
    EXPECT_TRUE(member.IsComplete());
    EXPECT_EQ(CAttDetailMem(member).GetName(), L"共板法兰");
    EXPECT_EQ(CAttDetailMem(member).GetFullPath(), flange);
    EXPECT_EQ(CSys::GetIndexPath(flange), flange);

    SAttDataIndex small;
    ASSERT_TRUE(SmallCategoryNameToId(L"暖通\\风部件\\风法兰", small));
    EXPECT_TRUE(small.strDetailMemId.IsEmpty());
    EXPECT_EQ(small.strSmallCategoryId, member.strSmallCategoryId);
    EXPECT_EQ(small.strBigCategoryId, member.strBigCategoryId);
    std::vector<SAttDataIndex> ids;
    ASSERT_TRUE(CAtt::GetAllDetailMemIdsBySmallCategory(small, ids));
    CStringArray names;
    for (const SAttDataIndex& id : ids) names.Add(CAttDetailMem(id).GetName());
    EXPECT_EQ(names.GetSize(), 5);
    EXPECT_EQ(names[0], L"角钢法兰L25");
    EXPECT_EQ(names[3], L"共板法兰");

    // The same name in two specialities is two attributes.
    SAttDataIndex water, fire;
    ASSERT_TRUE(AttNameToAttId(L"给排水\\附件\\阀门\\闸阀", water));
    ASSERT_TRUE(AttNameToAttId(L"消防\\附件\\阀门\\闸阀", fire));
    EXPECT_NE(water.strDetailMemId, fire.strDetailMemId);

    // Wrong depth, empty segments and unknown names are refused; the index stays as it was.
    SAttDataIndex untouched{L"a", L"b", L"c", L"d"};
    for (const wchar_t* bad :
         {L"暖通\\风部件\\风法兰", L"暖通\\风部件\\风法兰\\", L"暖通\\\\风法兰\\共板法兰",
          L"暖通\\风部件\\风法兰\\无此法兰", L"", L"暖通\\风部件\\风法兰\\共板法兰\\x"}) {
        SAttDataIndex index = untouched;
        EXPECT_FALSE(AttNameToAttId(bad, index)) << bad;
        EXPECT_EQ(index, untouched);
    }
    EXPECT_FALSE(SmallCategoryNameToId(flange, small));
    EXPECT_TRUE(CSys::GetIndexPath(L"暖通\\风部件\\无此类").IsEmpty());

    // An index whose parts do not belong together names nothing.
    SAttDataIndex mixed = member;
    mixed.strSmallCategoryId = water.strSmallCategoryId;
    EXPECT_TRUE(CAttDetailMem(mixed).GetName().IsEmpty());
    EXPECT_FALSE(CAtt::GetAllDetailMemIdsBySmallCategory(member, ids));  // not a category
}

TEST_F(ProjectLookup, ElectricalLineKindsOfBothCodesHaveMembers) {
    const wchar_t* categories[] = {
        L"电气\\管线\\照明导线",  L"电气\\管线\\动力导线", L"电气\\管线\\消防导线",
        L"电气\\管线\\其它导线",  L"电气\\管线\\导管",     L"电气\\管线\\线槽",
        L"电气\\管线\\导线·导管", L"电气\\电缆桥架\\电缆", L"电气\\电缆桥架\\母线·馈线",
        L"1_5u\\穿管引线\\配线",  L"1_5u\\穿管引线\\配管", L"1_5u\\穿管引线\\配管配线",
        L"1_5u\\线槽桥架\\电缆"};
    for (const wchar_t* path : categories) {
        SAttDataIndex small;
        std::vector<SAttDataIndex> ids;
        EXPECT_TRUE(SmallCategoryNameToId(path, small) &&
                    CAtt::GetAllDetailMemIdsBySmallCategory(small, ids) && !ids.empty())
            << path;
    }
}

TEST_F(ProjectLookup, SectionTypesAndMountingHeights) {
    struct Case {
        const wchar_t* path;
        int type;
    } cases[] = {{L"暖通\\风设备\\空调机组\\组合式空调机组", 1},
                 {L"给排水\\设备\\水箱\\不锈钢水箱", 2},
                 {L"消防\\储存装置\\水箱\\屋顶消防水箱", 2},
                 {L"暖通\\零星构件\\设备基础\\混凝土设备基础", 2},
                 {L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管", 1}};
    for (const Case& c : cases) {
        SAttDataIndex index;
        SectionInfo info;
        ASSERT_TRUE(AttNameToAttId(c.path, index)) << c.path;
        ASSERT_TRUE(CAttDetailMem(index).GetSectionInfo(info));
        EXPECT_EQ(info.nSectionType, c.type) << c.path;
    }
    SAttDataIndex diffuser;
    SectionInfo info;
    AttNameToAttId(L"暖通\\风口\\散流器\\方形散流器", diffuser);
    ASSERT_TRUE(CAttDetailMem(diffuser).GetSectionInfo(info));
    EXPECT_EQ(info.strShapeCode, L"520");
    EXPECT_EQ(info.strSize, L"B,360,H,360");
    EXPECT_EQ(info.strKind, L"风口");

    SAttDataIndex hydrant, lamp;
    AttNameToAttId(L"消防\\消火栓\\室内消火栓\\单栓室内消火栓", hydrant);
    AttNameToAttId(L"电气\\灯具\\普通灯具\\吸顶灯", lamp);
    CString height = L"untouched";
    EXPECT_TRUE(CAttDetailMem(hydrant).GetSysUpHeight(height));
    EXPECT_EQ(height, L"1100");
    height = L"untouched";
    EXPECT_FALSE(CAttDetailMem(lamp).GetSysUpHeight(height));
    EXPECT_EQ(height, L"untouched");

    // The whole catalogue draws either way.
    CStringArray specs, bigs, smalls, members;
    CAtt::GetChildNames(L"", specs);
    int count = 0;
    for (const CString& s : specs) {
        CAtt::GetChildNames(s, bigs);
        for (const CString& b : bigs) {
            CAtt::GetChildNames(s + L"\\" + b, smalls);
            for (const CString& sm : smalls) {
                const CString path = s + L"\\" + b + L"\\" + sm;
                CAtt::GetChildNames(path, members);
                for (const CString& m : members) {
                    SAttDataIndex index;
                    SectionInfo section;
                    ASSERT_TRUE(AttNameToAttId(path + L"\\" + m, index));
                    ASSERT_TRUE(CAttDetailMem(index).GetSectionInfo(section));
                    EXPECT_TRUE(section.nSectionType == 1 || section.nSectionType == 2) << m;
                    ++count;
                }
            }
        }
    }
    EXPECT_GT(count, 80);
}

TEST_F(ProjectLookup, SystemCodesPerSpeciality) {
    struct Case {
        const wchar_t* spec;
        const wchar_t* first;
        const wchar_t* alsoHas;
    } cases[] = {{L"暖通", L"SF", L"PF"},
                 {L"给排水", L"J", L"F"},
                 {L"消防", L"XH", L"ZP"},
                 {L"电气", L"WL", L"WE"},
                 {L"1_5u", L"WL", L"WP"}};
    for (const Case& c : cases) {
        std::vector<CSysCodeData> codes;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(c.spec, codes)) << c.spec;
        ASSERT_FALSE(codes.empty());
        EXPECT_EQ(codes[0].GetFullName(), c.first);
        EXPECT_FALSE(CISysCode::GetIndexPath(CString(c.spec) + L"\\" + c.alsoHas).IsEmpty());
    }
    std::vector<CSysCodeData> hvac;
    CISysCode::GetSpecCodeInfos(L"暖通", hvac);
    EXPECT_EQ(hvac[1].GetName(), L"回风");
    CStringArray entries;
    hvac[0].GetStrTreeDataAry(L"", L"&", entries);
    hvac[1].GetStrTreeDataAry(L"暖通", L"&", entries);
    ASSERT_EQ(entries.GetSize(), 2);
    EXPECT_EQ(entries[0], L"SF");
    EXPECT_EQ(entries[1], L"暖通&HF");

    EXPECT_EQ(CISysCode::GetIndexPath(L"电气\\WL"), L"电气\\WL");
    EXPECT_TRUE(CISysCode::GetIndexPath(L"电气\\SF").IsEmpty());  // another speciality's code
    EXPECT_TRUE(CISysCode::GetIndexPath(L"WL").IsEmpty());
    std::vector<CSysCodeData> untouched(1);
    EXPECT_FALSE(CISysCode::GetSpecCodeInfos(L"土建", untouched));
    EXPECT_EQ(untouched.size(), 1u);
}

TEST_F(ProjectLookup, LayingModesPerFloor) {
    CStringArray storey, inRange, basement, roof;
    ASSERT_TRUE(CHorizontalLayMng::GetLayModeName(L"1", storey));
    ASSERT_EQ(storey.GetSize(), 4);
    EXPECT_EQ(storey[0], L"WC-墙内暗敷");
    ASSERT_TRUE(CHorizontalLayMng::GetLayModeName(L"5", inRange));  // floor 5 of 3/6
    EXPECT_EQ(inRange, storey);
    ASSERT_TRUE(CHorizontalLayMng::GetLayModeName(L"-1", basement));
    EXPECT_EQ(basement[0], L"CE-沿顶板明敷");
    ASSERT_TRUE(CHorizontalLayMng::GetLayModeName(L"10", roof));
    EXPECT_EQ(roof.GetSize(), 3);
    EXPECT_FALSE(CHorizontalLayMng::GetLayModeName(L"11", roof));
    EXPECT_EQ(roof.GetSize(), 3);

    CString code, description;
    ASSERT_TRUE(CHorizontalLayMng::SeparateName(L"SCE-吊顶内敷设", code, description));
    EXPECT_EQ(code, L"SCE");
    EXPECT_EQ(description, L"吊顶内敷设");
    EXPECT_EQ(CHorizontalLayMng::SeparateName(L"N/A"), L"N/A");
    EXPECT_FALSE(CHorizontalLayMng::SeparateName(L"", code, description));
}
