#include <gtest/gtest.h>

#include "module/commands/InitCmd.h"
#include "module/commands/SetEntType.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/data/Proj.h"
#include "tests/support/CommandFixture.h"

namespace {

using CommandState = kelaz::test::CommandTest;

std::vector<CString> Offered() {
    CStringArray smalls;
    IFaceBarCtrl::GetSmallTypes(smalls);
    return {smalls.begin(), smalls.end()};
}

}  // namespace

TEST_F(CommandState, ACommandOffersItsTypesAndTheBarChoosesTheFirst) {
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"AIRUNIT"));
    EXPECT_EQ(IFaceBarCtrl::GetBigType(), L"风设备");
    EXPECT_EQ(Offered(), (std::vector<CString>{L"空调机组", L"风机", L"风机盘管"}));
    EXPECT_EQ(IFaceBarCtrl::GetCurAttName().Left(12), L"暖通\\风设备\\空调机组\\");
    EXPECT_EQ(CDispGlobaFun::GetCurSysCode(true, false), L"SF");

    // The table is read once per command: a later change to it is not seen.
    EditProject("UPDATE command SET small_types='风机' WHERE name='AIRUNIT';");
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"AIRUNIT"));
    EXPECT_EQ(Offered().size(), 3u);

    EXPECT_FALSE(CSetEntType::Instance()->SetCurrentCmd(L"NOSUCH"));
    EXPECT_EQ(Texts(), std::vector<CString>{L"缺少命令与构件类型的对应关系!"});
}

TEST_F(CommandState, AccessoriesOfHvacAreWaterAccessories) {
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"VALVE"));
    EXPECT_EQ(IFaceBarCtrl::GetBigType(), L"水附件");
    EXPECT_EQ(IFaceBarCtrl::GetCurAttName().Left(10), L"暖通\\水附件\\阀门\\");
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurrentSpec(L"给排水"));
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"VALVE"));
    EXPECT_EQ(IFaceBarCtrl::GetBigType(), L"附件");
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"LAMP"));
    EXPECT_EQ(IFaceBarCtrl::GetBigType(), L"灯具");
}

TEST_F(CommandState, TheSmallTypeWorkedWithIsOfferedFirstNextTime) {
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"DUCTPART"));
    EXPECT_EQ(Offered(), (std::vector<CString>{L"风阀", L"消声器", L"风法兰"}));
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(L"暖通\\风部件\\风法兰\\共板法兰"));
    CStringArray enabled;
    enabled.Add(L"风法兰");
    IFaceBarCtrl::SetEnableSmalls(enabled);
    CSetEntType::Instance()->Release();
    IFaceBarCtrl::GetEnabledSmalls(enabled);
    EXPECT_TRUE(enabled.IsEmpty());
    // A swap, not a rotation: the first and the finished type change places.
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"DUCTPART"));
    EXPECT_EQ(Offered(), (std::vector<CString>{L"风法兰", L"消声器", L"风阀"}));
    EXPECT_EQ(IFaceBarCtrl::GetCurAttName(), L"暖通\\风部件\\风法兰\\共板法兰")
        << "an offered choice stays";

    // Ending with no attribute chosen reorders nothing.
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(L""));
    CSetEntType::Instance()->Release();
    ASSERT_TRUE(CSetEntType::Instance()->SetCurrentCmd(L"DUCTPART"));
    EXPECT_EQ(Offered().front(), L"风法兰");
}

TEST_F(CommandState, TheGuardStartsAndEndsACommand) {
    CInitCmd unknown(L"NOSUCH");
    EXPECT_FALSE(unknown.IsValid());
    EXPECT_EQ(Texts(), std::vector<CString>{L"没有设置要执行的命令!"});

    // PLACE does not drive the bar: the drafter's choice is what it places.
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(L"电气\\灯具\\普通灯具\\吸顶灯"));
    ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L"SF"));
    {
        CInitCmd place(L"PLACE");
        EXPECT_TRUE(place.IsValid());
        EXPECT_TRUE(IFaceBarCtrl::GetBigType().IsEmpty());
    }
    // Without a system code a command that checks its attribute may not run.
    ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L""));
    CInitCmd noCode(L"PLACE");
    EXPECT_FALSE(noCode.IsValid());
    EXPECT_EQ(Texts().back(), L"请先在属性栏中选择系统编号!");
}

TEST_F(CommandState, BlockDrawingCommandsNeedARefreshPath) {
    EditProject(
        "INSERT INTO command VALUES('BLOCKS', 99, 'test', 1, 0, 1, '风口', '散流器', '', '');"
        "INSERT INTO command VALUES('BLOCKS2', 100, 'test', 1, 0, 0, '', '', '暖通\\风口', '');");
    sink.Clear();
    {
        CInitCmd guard(L"BLOCKS");
        ASSERT_TRUE(guard.IsValid());
        EXPECT_TRUE(m_bJigDrawBlockGj);
        CInitCmd copy = guard;  // copies release too
    }
    EXPECT_FALSE(m_bJigDrawBlockGj);
    EXPECT_EQ(Texts(), (std::vector<CString>{L"没有设置需要刷新的构件路径!",
                                             L"没有设置需要刷新的构件路径!"}));

    sink.Clear();
    m_bGjChgWhenJigDrawBlockGj = true;
    {
        CInitCmd guard(L"BLOCKS2");
        ASSERT_TRUE(guard.IsValid());
    }
    EXPECT_TRUE(sink.Records().empty());
    EXPECT_TRUE(m_bGjChgWhenJigDrawBlockGj) << "the bar owns the change flag";

    // A guard that never started releases nothing.
    { CInitCmd idle(L"BLOCKS"); }
    EXPECT_TRUE(sink.Records().empty());
}
