#include <gtest/gtest.h>

#include "module/entry/DispGlobaFun.h"
#include "suite/data/Att.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzKelSectEnt.h"
#include "suite/reactor/ReactorHelper.h"
#include "suite/tools/ModelSpace.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"

namespace {

class NodePlacement : public kelaz::test::CommandTest {
protected:
    void Choose(const wchar_t* att, const wchar_t* code) {
        ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(att));
        ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(code));
    }
    // Class name of an entity, or empty when it cannot be opened.
    static CString ClassOf(const AcDbObjectId& id) {
        kelaz::test::Opened<KelAzNode> node(id, AcDb::kForRead);
        return node.status == Acad::eOk ? CString(node->isA()->name()) : CString();
    }
};

constexpr const wchar_t* kDiffuser = L"暖通\\风口\\散流器\\方形散流器";  // section type 2
constexpr const wchar_t* kFlange = L"暖通\\风部件\\风法兰\\共板法兰";    // section type 1

}  // namespace

TEST_F(NodePlacement, AddOneEquipDrawsBySectionTypeWithEveryProperty) {
    AcDbObjectId id;
    ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L"SF"));
    EXPECT_FALSE(CDispGlobaFun::AddOneEquip(AcGePoint3d(1, 2, 3), 0.5, id, AcGeScale3d(2, 2, 2)));
    EXPECT_TRUE(sink.Records().empty()) << "no attribute chosen: silently nothing";
    EXPECT_TRUE(id.isNull());

    Choose(kDiffuser, L"SF");
    const int flushes = KelAzReactorHelper::FlushCount();
    ASSERT_TRUE(
        CDispGlobaFun::AddOneEquip(AcGePoint3d(1000, 2000, 2800), 0.5, id, AcGeScale3d(2, 2, 2)));
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), flushes + 1);
    {
        kelaz::test::Opened<KelAzEquipMent> node(id, AcDb::kForRead);
        ASSERT_EQ(node.status, Acad::eOk);
        EXPECT_EQ(node->GetAttName(), kDiffuser);
        EXPECT_EQ(node->GetSysCode(), L"SF");
        EXPECT_EQ(node->GetInsertPoint(), AcGePoint3d(1000, 2000, 2800));
        EXPECT_EQ(node->rotation(), 0.5);
        EXPECT_TRUE(node->scaleFactors().isEqualTo(AcGeScale3d(2, 2, 2)));
        EXPECT_EQ(node->layer(), L"暖通-风口-SF");
    }
    Choose(kFlange, L"SF");
    ASSERT_TRUE(CDispGlobaFun::AddSectent(AcGePoint3d(0, 0, 0), 0, AcGeVector3d(0, 1, 0), id));
    EXPECT_EQ(ClassOf(id), L"KelAzKelSectEnt");
    // The short form always makes equipment.
    ASSERT_TRUE(CDispGlobaFun::AddOneEquip(AcGePoint3d(5, 5, 0), 0, id));
    EXPECT_EQ(ClassOf(id), L"KelAzEquipMent");

    EditProject("UPDATE attribute SET section_type = 3 WHERE name = '共板法兰';");
    const AcDbObjectId before = id;
    EXPECT_FALSE(CDispGlobaFun::AddOneEquip(AcGePoint3d(9, 9, 0), 0, id, AcGeScale3d()));
    EXPECT_EQ(id, before);
    EXPECT_EQ(Texts().back(), L"未知的断面类型!");
}

TEST_F(NodePlacement, CreateSingleNodeEntityPicksTheClassByCategoryThenSection) {
    const AcGeVector3d up = AcGeVector3d::kZAxis;
    auto unit = CDispGlobaFun::CreateSingleNodeEntity(
        AcGePoint3d(0, 0, 0), L"暖通\\风设备\\空调机组\\新风机组", L"SF", 0, up, AcGeScale3d());
    ASSERT_TRUE(unit.first);
    EXPECT_EQ(ClassOf(unit.second), L"KelAzKelSectEnt");
    auto tank = CDispGlobaFun::CreateSingleNodeEntity(
        AcGePoint3d(0, 0, 0), L"给排水\\设备\\水箱\\不锈钢水箱", L"J", 0, up, AcGeScale3d());
    ASSERT_TRUE(tank.first);
    EXPECT_EQ(ClassOf(tank.second), L"KelAzEquipMent");

    // Empty texts take the bar's choice.
    Choose(kFlange, L"SF");
    auto chosen =
        CDispGlobaFun::CreateSingleNodeEntity(AcGePoint3d(7, 8, 9), L"", L"", 0, up, AcGeScale3d());
    ASSERT_TRUE(chosen.first);
    EXPECT_EQ(ClassOf(chosen.second), L"KelAzKelSectEnt");

    auto missing = CDispGlobaFun::CreateSingleNodeEntity(
        AcGePoint3d(0, 0, 0), L"暖通\\没有\\这种\\构件", L"SF", 0, up, AcGeScale3d());
    EXPECT_FALSE(missing.first);
    EXPECT_TRUE(missing.second.isNull());
    EXPECT_EQ(Texts().back(), L"读取构件的断面数据失败!");

    // A failure at one point does not stop the others.
    const AcGePoint3dArray points{AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0),
                                  AcGePoint3d(200, 0, 0)};
    EXPECT_EQ(CDispGlobaFun::CreateNodeEntities(points, kDiffuser, L"SF", 0, up, AcGeScale3d()), 3);
    EXPECT_EQ(CDispGlobaFun::CreateNodeEntities(points, L"暖通\\没有\\这种\\构件", L"SF", 0, up,
                                                AcGeScale3d()),
              0);
    EXPECT_EQ(CDispGlobaFun::CreateNodeEntities(AcGePoint3dArray(), kDiffuser, L"SF", 0, up,
                                                AcGeScale3d()),
              0);
}

TEST_F(NodePlacement, TheDuplicateCheckAnswersByTheComponentsFoundAtThePoint) {
    Choose(kDiffuser, L"SF");
    const AcGeVector3d up = AcGeVector3d::kZAxis;
    ASSERT_TRUE(CDispGlobaFun::CreateSingleNodeEntity(AcGePoint3d(1000, 1000, 2800), L"", L"", 0,
                                                      up, AcGeScale3d())
                    .first);
    // A component filed under no category is found wherever its symbol covers the point.
    EXPECT_TRUE(CDispGlobaFun::HasSamePunctateEquip(AcGePoint3d(1000.5, 1000, 2800),
                                                    L"KELAZEQUIPMENT", true));
    EXPECT_TRUE(CDispGlobaFun::HasSamePunctateEquip(AcGePoint3d(1200, 1000, 2800),
                                                    L"KELAZEQUIPMENT", true));
    EXPECT_FALSE(CDispGlobaFun::HasSamePunctateEquip(AcGePoint3d(1000, 2500, 2800),
                                                     L"KELAZEQUIPMENT", true));
    EXPECT_FALSE(CDispGlobaFun::HasSamePunctateEquip(AcGePoint3d(1000, 1000, 2800),
                                                     L"KELAZKELSECTENT", true));

    // One filed under its category is not told apart: the answer is no.
    auto* filed = new KelAzEquipMent;
    filed->SetAttName(kDiffuser);
    filed->SetSysCode(L"SF");
    filed->SetInsertPoint(AcGePoint3d(3000, 1000, 2800));
    filed->SetTypeNamePath(L"暖通\\风口\\散流器");
    AcDbObjectId id;
    ASSERT_EQ(addToModelSpace(id, filed), Acad::eOk);
    EXPECT_FALSE(CDispGlobaFun::HasSamePunctateEquip(AcGePoint3d(3000, 1000, 2800),
                                                     L"KELAZEQUIPMENT", true));
    EXPECT_TRUE(sink.Records().empty());
}

TEST_F(NodePlacement, ValvesNamesCodesAndSavingTheCatalogue) {
    AcDbObjectId id;
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurrentSpec(L"给排水"));
    Choose(L"给排水\\附件\\阀门\\闸阀", L"J");
    ASSERT_TRUE(CDispGlobaFun::AddOneValve(AcGePoint3d(100, 0, 600), 0, id));
    EXPECT_EQ(ClassOf(id), L"KelAzPipeValve");
    EXPECT_EQ(CDispGlobaFun::GetSysCodeOnId(id), L"J");
    EXPECT_EQ(CDispGlobaFun::GetObjectNameOnId(id), L"给排水\\附件\\阀门\\闸阀");
    EXPECT_EQ(CDispGlobaFun::GetSysCodeOnId(AcDbObjectId()), L"");

    // A new attribute is pending until saved; saving tells the bar to look again.
    KelAzDataMng::SAttDataIndex category;
    ASSERT_TRUE(KelAzDataMng::SmallCategoryNameToId(L"给排水\\附件\\阀门", category));
    CString memberId;
    ASSERT_TRUE(KelAzDataMng::CSmallCategoryMng(category).AddDetailMem(L"安全阀", memberId));
    const int updates = IFaceBarCtrl::UpdateCount();
    ASSERT_TRUE(CDispGlobaFun::SaveAttAndUpdate());
    EXPECT_EQ(IFaceBarCtrl::UpdateCount(), updates + 1);
    Reopen();
    KelAzDataMng::SAttDataIndex saved;
    EXPECT_TRUE(KelAzDataMng::AttNameToAttId(L"给排水\\附件\\阀门\\安全阀", saved));
}
