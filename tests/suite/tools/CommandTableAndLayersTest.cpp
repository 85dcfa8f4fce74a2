#include <gtest/gtest.h>

#include <tuple>

#include "suite/data/Att.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"
#include "suite/data/SysCode.h"
#include "suite/tools/CmdDataReader.h"
#include "suite/tools/Globl_Fun.h"
#include "suite/tools/KELAzLayer.h"
#include "tests/support/ProjectFixture.h"

using CommandTable = kelaz::test::ProjectTest;
using Layers = kelaz::test::ProjectTest;

TEST_F(CommandTable, KnownAndUnknownCommands) {
    const CmdData units = CCmdDataReader::Instance()->GetCmdData(L"AIRUNIT");
    EXPECT_EQ(units.strCmdName, L"AIRUNIT");
    EXPECT_TRUE(units.bJigDrawBlock && units.bCheckAttribute && units.bUpdateUi);
    EXPECT_EQ(units.strBigType, L"风设备");
    EXPECT_EQ(units.strSmallTypes, L"空调机组,风机,风机盘管");
    EXPECT_EQ(units.strRefreshPath, L"暖通\\风设备");
    const CmdData place = CCmdDataReader::Instance()->GetCmdData(L"PLACE");
    EXPECT_TRUE(place.bCheckAttribute && !place.bUpdateUi && place.strBigType.IsEmpty());

    // Typed commands match whatever their case.
    EXPECT_EQ(CCmdDataReader::Instance()->GetCmdData(L"flangetable").strCmdName, L"FLANGETABLE");
    const CmdData flanges = CCmdDataReader::Instance()->GetCmdData(L"FLANGETABLE");
    EXPECT_EQ(flanges.vecExtra, (std::vector<CString>{L"方形", L"圆形"}));
    const CmdData multi = CCmdDataReader::Instance()->GetCmdData(L"MPIPE");
    EXPECT_FALSE(multi.bUpdateUi || multi.bCheckAttribute);
    EXPECT_EQ(CCmdDataReader::Instance()->GetCmdData(L"VALVE").strBigType, L"附件");

    for (const wchar_t* unknown : {L"NOSUCH", L"", L"PLACE "}) {
        const CmdData none = CCmdDataReader::Instance()->GetCmdData(unknown);
        EXPECT_TRUE(none.strCmdName.IsEmpty()) << unknown;
        EXPECT_TRUE(none.strBigType.IsEmpty() && none.vecExtra.empty());
    }
    for (const wchar_t* needed :
         {L"ATT", L"SYS", L"FLOOR", L"SPEC", L"MPIPE", L"SOFTPIPE", L"FLANGETABLE", L"LAMP"})
        EXPECT_FALSE(CCmdDataReader::Instance()->GetCmdData(needed).strCmdName.IsEmpty()) << needed;

    // A project made before a command existed lacks its row: the default row stands in, and
    // the project's own rows still win.
    {
        kelaz::SqliteDb& db = kelaz::CurrentProject()->Db();
        kelaz::SqliteTransaction tx(db);
        ASSERT_TRUE(
            db.Exec("DELETE FROM command WHERE name IN ('RISER', 'SPLITRISER'); UPDATE "
                    "command SET big_type = '给排水管' WHERE name = 'PIPE'"));
        ASSERT_TRUE(tx.Commit());
    }
    const CmdData riser = CCmdDataReader::Instance()->GetCmdData(L"riser");
    EXPECT_EQ(riser.strCmdName, L"RISER");
    EXPECT_TRUE(riser.bCheckAttribute && riser.bUpdateUi);
    EXPECT_EQ(riser.strBigType, L"管道");
    EXPECT_EQ(CCmdDataReader::Instance()->GetCmdData(L"SPLITRISER").strCmdName, L"SPLITRISER");
    EXPECT_EQ(CCmdDataReader::Instance()->GetCmdData(L"PIPE").strBigType, L"给排水管");
    std::vector<CmdData> listed;
    ASSERT_TRUE(CCmdDataReader::Instance()->GetAllCmdData(listed));
    for (const CmdData& c : listed) EXPECT_NE(c.strCmdName, L"RISER");

    KelAzDataMng::CloseProject();
    EXPECT_TRUE(CCmdDataReader::Instance()->GetCmdData(L"PLACE").strCmdName.IsEmpty());
    std::vector<CmdData> all(1);
    EXPECT_FALSE(CCmdDataReader::Instance()->GetAllCmdData(all));
    EXPECT_EQ(all.size(), 1u);
}

// The property bar can offer what a command asks for: each small type of a command that drives
// the bar is a small category under the command's big type in some speciality (an accessory of
// the HVAC speciality is filed under its water accessories).
TEST_F(CommandTable, SmallTypesExistUnderTheirBigType) {
    std::vector<CmdData> commands;
    ASSERT_TRUE(CCmdDataReader::Instance()->GetAllCmdData(commands));
    ASSERT_GE(commands.size(), 20u);
    CStringArray specs;
    KelAzDataMng::CAtt::GetChildNames(L"", specs);
    for (const CmdData& c : commands) {
        if (!c.bUpdateUi) continue;
        CStringArray smalls;
        CGlobl_Fun::StrToStrAry(c.strSmallTypes, smalls, L',');
        ASSERT_FALSE(smalls.IsEmpty()) << c.strCmdName;
        for (const CString& small : smalls) {
            bool found = false;
            for (const CString& spec : specs) {
                const CString big =
                    c.strBigType == L"附件" && spec == L"暖通" ? CString(L"水附件") : c.strBigType;
                KelAzDataMng::SAttDataIndex index;
                found = found || KelAzDataMng::SmallCategoryNameToId(
                                     spec + L"\\" + big + L"\\" + small, index);
            }
            EXPECT_TRUE(found) << c.strCmdName << ": " << small;
        }
    }
}

TEST_F(Layers, LayerNamesAndColoursBySpecialityCategoryAndSystem) {
    EXPECT_EQ(CKELAzLayer::GetLayerByObjName_BySysCode(L"暖通\\风口\\散流器", L"SF", 0),
              L"暖通-风口-SF");
    EXPECT_EQ(CKELAzLayer::GetLayerByObjName_BySysCode(L"暖通\\风口\\散流器\\方形散流器", L"HF", 1),
              L"暖通-风口-HF-标注");
    EXPECT_EQ(CKELAzLayer::GetLayerByObjName_BySysCode(L"电气\\灯具\\普通灯具", L"WL", 0),
              L"电气-灯具-WL");
    for (const auto& [obj, code, kind] :
         {std::tuple{L"暖通\\风口\\散流器", L"WL", 0}, std::tuple{L"暖通\\风口\\无此类", L"SF", 0},
          std::tuple{L"暖通\\风口\\散流器", L"", 0}, std::tuple{L"暖通\\风口\\散流器", L"SF", 2},
          std::tuple{L"风口", L"SF", 0}})
        EXPECT_TRUE(CKELAzLayer::GetLayerByObjName_BySysCode(obj, code, kind).IsEmpty()) << obj;

    KelAzLayerRecord layer;
    ASSERT_TRUE(CKELAzLayer::GetLayer(L"暖通-风口-SF", layer));
    EXPECT_EQ(layer.nColor, 4);
    ASSERT_TRUE(CKELAzLayer::GetLayer(L"给排水-附件-W", layer));
    EXPECT_EQ(layer.strLineType, L"DASHED");
    ASSERT_TRUE(CKELAzLayer::GetLayer(L"给排水-附件-W-标注", layer));
    EXPECT_EQ(layer.nColor, 7);
    EXPECT_FALSE(CKELAzLayer::GetLayer(L"0", layer));
    EXPECT_EQ(layer.strName, L"给排水-附件-W-标注");

    // Every layer the rule can name is in the table, in its system's colour.
    std::vector<KelAzLayerRecord> all;
    ASSERT_TRUE(CKELAzLayer::GetAllLayers(all));
    size_t named = 0;
    CStringArray specs, bigs, smalls;
    KelAzDataMng::CAtt::GetChildNames(L"", specs);
    for (const CString& spec : specs) {
        std::vector<KelAzDataMng::CSysCodeData> codes;
        KelAzDataMng::CISysCode::GetSpecCodeInfos(spec, codes);
        KelAzDataMng::CAtt::GetChildNames(spec, bigs);
        for (const CString& big : bigs) {
            KelAzDataMng::CAtt::GetChildNames(spec + L"\\" + big, smalls);
            const CString category = spec + L"\\" + big + L"\\" + smalls[0];
            for (const auto& code : codes) {
                for (int kind : {0, 1}) {
                    const CString name = CKELAzLayer::GetLayerByObjName_BySysCode(
                        category, code.GetFullName(), kind);
                    ASSERT_TRUE(CKELAzLayer::GetLayer(name, layer)) << name;
                    EXPECT_EQ(layer.nColor, kind == 0 ? code.GetColor() : 7) << name;
                    ++named;
                }
            }
        }
    }
    EXPECT_EQ(named, all.size());
}
