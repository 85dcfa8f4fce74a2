// The creators of leads, main leads, pipes and main pipes, ExtendLine, GetConnectedLead and
// AddFGByCurFG.

#include <gtest/gtest.h>

#include <type_traits>

#include "host/db/LayerTable.h"
#include "host/db/Line.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/data/Att.h"
#include "suite/data/Proj.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/LayerRule.h"
#include "suite/reactor/ReactorHelper.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"

// The soft-pipe and multi-pipe drawing and other modules call the creators: their signatures
// are part of the module's interface.
static_assert(std::is_same_v<decltype(&CDispGlobaFun::AddMainPipe),
                             bool (*)(AcGePoint3d, AcGePoint3d, CString, CString, AcDbObjectId&)>);
static_assert(
    std::is_same_v<decltype(&CDispGlobaFun::AddMainLead),
                   bool (*)(AcGePoint3d, AcGePoint3d, CString, CString, AcDbObjectId&, CString)>);
static_assert(
    std::is_same_v<decltype(&CDispGlobaFun::AddLinePipe),
                   bool (*)(AcGePoint3d, AcGePoint3d, int, CString, CString, AcDbObjectId&)>);
static_assert(std::is_same_v<decltype(&CDispGlobaFun::AddLineLead),
                             bool (*)(AcGePoint3d, AcGePoint3d, int, CString, CString,
                                      AcDbObjectId&, CString, bool)>);
static_assert(std::is_same_v<decltype(&CDispGlobaFun::AddArcLead),
                             bool (*)(AcGePoint3d, AcGePoint3d, double, AcGeVector3d, CString,
                                      CString, AcDbObjectId&, CString, bool)>);
static_assert(std::is_same_v<decltype(&CDispGlobaFun::CreateNewLead),
                             bool (*)(AcGePoint3d, AcGePoint3d, double, AcGeVector3d, int,
                                      AcDbObjectId&, CString, bool)>);
static_assert(std::is_same_v<decltype(&CDispGlobaFun::ExtendLine),
                             bool (*)(KelAzDuctPrototype*, const AcGePoint3d&)>);
static_assert(std::is_same_v<decltype(&CDispGlobaFun::GetConnectedLead),
                             AcDbObjectIdArray (*)(const AcGePoint3d&, const AcDbObjectIdArray&)>);
static_assert(std::is_same_v<decltype(&CDispGlobaFun::AddFGByCurFG),
                             bool (*)(CString, CString, CString, CString, CString, bool)>);

namespace {

using kelaz::test::ModelSpaceIds;
using kelaz::test::Opened;

constexpr const wchar_t* kWire = L"电气\\管线\\照明导线\\BV-2.5";
constexpr const wchar_t* kWater = L"给排水\\管道\\给水管\\PPR给水管";
constexpr const wchar_t* kRectDuct = L"暖通\\风管\\矩形风管\\镀锌钢板矩形风管";
constexpr const wchar_t* kRoundDuct = L"暖通\\风管\\圆形风管\\螺旋圆风管";
constexpr const wchar_t* kFlexDuct = L"暖通\\风管\\软风管\\铝箔软风管";

class PipeCreators : public kelaz::test::CommandTest {
protected:
    int Count() { return ModelSpaceIds(db).length(); }
    bool HasLayer(const CString& name) {
        Opened<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForRead);
        return layers->has(name);
    }
    static CString ClassOf(const AcDbObjectId& id) {
        Opened<AcDbObject> obj(id, AcDb::kForRead);
        return obj ? CString(obj->isA()->name()) : CString();
    }
    // A sentinel id, so that a refusal can be seen to leave the out-parameter alone.
    AcDbObjectId Sentinel() {
        if (m_sentinel.isNull()) m_sentinel = kelaz::test::Append(db, new AcDbLine());
        return m_sentinel;
    }

    AcDbObjectId m_sentinel;
};

// --- vertical objects ---

TEST_F(PipeCreators, AMainPipeNeedsARiseOfOneMillionthAndDescribesItselfFromTheFirstPoint) {
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurFloorName(L"2"));
    const AcDbObjectId before = Sentinel();
    AcDbObjectId id = before;
    const int count = Count();
    EXPECT_FALSE(CDispGlobaFun::AddMainPipe(AcGePoint3d(0, 0, 1000),
                                            AcGePoint3d(0, 0, 1000.0000005), kWater, L"J", id));
    EXPECT_FALSE(CDispGlobaFun::AddMainPipe(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 0.99e-6),
                                            kWater, L"J", id));
    EXPECT_EQ(id, before);
    EXPECT_EQ(Count(), count);

    // Exactly the tolerance is enough; so is the main lead's refused difference.
    EXPECT_TRUE(CDispGlobaFun::AddMainPipe(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 1e-6), kWater,
                                           L"J", id));
    EXPECT_NE(id, before);
    EXPECT_TRUE(CDispGlobaFun::AddMainPipe(AcGePoint3d(0, 0, 1000), AcGePoint3d(0, 0, 1000.00005),
                                           kWater, L"J", id));
    // The second point's plan position is not looked at; a riser may run downwards.
    const int flushes = KelAzReactorHelper::FlushCount();
    ASSERT_TRUE(CDispGlobaFun::AddMainPipe(AcGePoint3d(5500, 500, 4500), AcGePoint3d(9999, -7, 0),
                                           kWater, L"J", id));
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), flushes) << "only plane leads flush";
    EXPECT_EQ(Count(), count + 3);
    Opened<KelAzMainPipe> pipe(id, AcDb::kForRead);
    ASSERT_EQ(pipe.status, Acad::eOk);
    EXPECT_EQ(pipe->GetAttName(), kWater);
    EXPECT_EQ(pipe->GetSysCode(), L"J");
    EXPECT_EQ(pipe->GetLayName(), L"") << "a main pipe gets no layer name of its own";
    const MainPipeInfo info = pipe->GetMainPipeInfo();
    EXPECT_STREQ(info.floorName, L"2");
    EXPECT_EQ(info.z1, 4500);
    EXPECT_EQ(info.z2, 0);
    EXPECT_EQ(info.x, 5500);
    EXPECT_EQ(info.y, 500);
    AcGePoint3d end;
    pipe->getEndPoint(end);
    EXPECT_EQ(end, AcGePoint3d(5500, 500, 0));
}

TEST_F(PipeCreators, AMainLeadNeedsTheLooserTenThousandthAndItsOwnLayerComesAfterTheCode) {
    const AcDbObjectId before = Sentinel();
    AcDbObjectId id = before;
    const int count = Count();
    EXPECT_FALSE(CDispGlobaFun::AddMainLead(AcGePoint3d(0, 0, 1000), AcGePoint3d(0, 0, 1000.00005),
                                            kWire, L"WL", id, L""));
    EXPECT_FALSE(CDispGlobaFun::AddMainLead(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 0.0000999),
                                            kWire, L"WL", id, L""));
    EXPECT_EQ(id, before);
    EXPECT_EQ(Count(), count);
    EXPECT_FALSE(HasLayer(kelaz::LayerForComponent(kWire, L"WL"))) << "nothing was built";

    EXPECT_TRUE(CDispGlobaFun::AddMainLead(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 0.0001), kWire,
                                           L"WL", id, L""));
    ASSERT_TRUE(CDispGlobaFun::AddMainLead(
        AcGePoint3d(1000, 3700, 3000), AcGePoint3d(1000, 3700, 4000.001), kWire, L"WL", id, L""));
    {
        Opened<KelAzMainLead> lead(id, AcDb::kForRead);
        ASSERT_EQ(lead.status, Acad::eOk);
        EXPECT_EQ(lead->GetAttName(), kWire);
        EXPECT_EQ(lead->GetSysCode(), L"WL");
        // The code is only recorded; the empty layer name that follows puts the lead on the
        // code's layer. Set the other way round it would stay where it was made.
        EXPECT_EQ(lead->layer(), kelaz::LayerForComponent(kWire, L"WL"));
        EXPECT_EQ(lead->GetLayingType(), 0);
        const MainPipeInfo info = lead->GetMainPipeInfo();
        EXPECT_STREQ(info.floorName, KelAzDataMng::CProj::GetCurFloorName().GetString());
        EXPECT_EQ(info.z1, 3000);
        EXPECT_EQ(info.z2, 4000.001);
    }
    ASSERT_TRUE(CDispGlobaFun::AddMainLead(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 3000), kWire,
                                           L"WL", id, L"立管-照明"));
    Opened<KelAzMainLead> named(id, AcDb::kForRead);
    EXPECT_EQ(named->GetLayName(), L"立管-照明");
    EXPECT_EQ(named->layer(), L"立管-照明");
}

TEST_F(PipeCreators, TheFloorNameIsCopiedWhenItFitsAndLeftEmptyWhenItDoesNot) {
    const std::wstring fits(kelaz::kMaxFloorNameLength, L'层');
    const std::wstring tooLong(kelaz::kMaxFloorNameLength + 1, L'层');
    EditProject("INSERT INTO floor(name, height, elevation, ord) VALUES ('" +
                kelaz::ToUtf8(CString(fits.c_str())) + "', 3000, 90000, 100), ('" +
                kelaz::ToUtf8(CString(tooLong.c_str())) + "', 3000, 93000, 101);");
    AcDbObjectId id;
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurFloorName(fits.c_str()));
    ASSERT_TRUE(CDispGlobaFun::AddMainPipe(AcGePoint3d(1, 2, 0), AcGePoint3d(1, 2, 3000), kWater,
                                           L"J", id));
    {
        Opened<KelAzMainPipe> pipe(id, AcDb::kForRead);
        EXPECT_EQ(std::wstring(pipe->GetMainPipeInfo().floorName), fits);
    }
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurFloorName(tooLong.c_str()));
    ASSERT_TRUE(CDispGlobaFun::AddMainLead(AcGePoint3d(1, 2, 0), AcGePoint3d(1, 2, 3000), kWire,
                                           L"WL", id, L""));
    Opened<KelAzMainLead> lead(id, AcDb::kForRead);
    const MainPipeInfo info = lead->GetMainPipeInfo();
    EXPECT_STREQ(info.floorName, L"") << "not recorded rather than cut";
    EXPECT_EQ(info.z2, 3000) << "the riser is made all the same";
}

// --- plane pipes and leads ---

TEST_F(PipeCreators, APipeIsTestedBeforeItIsBuiltAndTheMainPathAnswersTrueEvenWhenRefused) {
    const AcDbObjectId before = Sentinel();
    AcDbObjectId id = before;
    const int count = Count();
    const CString layer = kelaz::LayerForComponent(kWater, L"J");
    const AcGePoint3d a(0, 0, 600);
    EXPECT_FALSE(
        CDispGlobaFun::AddLinePipe(a, a + AcGeVector3d(0.00009, 0, 0), 0, kWater, L"J", id));
    EXPECT_FALSE(CDispGlobaFun::AddLinePipe(a, AcGePoint3d(1000, 0, 600), 0, L"", L"J", id));
    EXPECT_FALSE(CDispGlobaFun::AddLinePipe(a, AcGePoint3d(1000, 0, 600), 0, kWater, L"", id));
    // The length is tested before the main path.
    EXPECT_FALSE(CDispGlobaFun::AddLinePipe(a, a, 1, kWater, L"J", id));
    EXPECT_EQ(id, before);
    EXPECT_EQ(Count(), count);
    // A pipe built before its tests would have made its layer in the drawing.
    EXPECT_FALSE(HasLayer(layer));

    // Main, equal elevations: refused by the main pipe, and still true.
    EXPECT_TRUE(CDispGlobaFun::AddLinePipe(a, AcGePoint3d(1000, 0, 600), 1, kWater, L"J", id));
    EXPECT_EQ(id, before);
    EXPECT_EQ(Count(), count);
    ASSERT_TRUE(CDispGlobaFun::AddLinePipe(a, AcGePoint3d(0, 0, 3000), 7, kWater, L"J", id));
    EXPECT_EQ(ClassOf(id), L"KelAzMainPipe");

    const int flushes = KelAzReactorHelper::FlushCount();
    ASSERT_TRUE(CDispGlobaFun::AddLinePipe(a, a + AcGeVector3d(0.0001, 0, 0), 0, kWater, L"J", id));
    ASSERT_TRUE(CDispGlobaFun::AddLinePipe(a, AcGePoint3d(5500, 0, 600), 0, kWater, L"J", id));
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), flushes) << "pipes do not flush";
    Opened<KelAzPipe> pipe(id, AcDb::kForRead);
    ASSERT_EQ(pipe.status, Acad::eOk);
    EXPECT_EQ(pipe->GetAttName(), kWater);
    EXPECT_EQ(pipe->GetSysCode(), L"J");
    EXPECT_EQ(pipe->layer(), layer);
    EXPECT_EQ(pipe->GetLayName(), L"");
    AcGePoint3d start, end;
    pipe->getStartPoint(start);
    pipe->getEndPoint(end);
    EXPECT_EQ(start, a);
    EXPECT_EQ(end, AcGePoint3d(5500, 0, 600));
}

TEST_F(PipeCreators, ALineLeadIsLaidWhenAskedFlushedAndItsMainPathDropsTheLayingFlag) {
    const AcDbObjectId before = Sentinel();
    AcDbObjectId id = before;
    const AcGePoint3d a(1000, 3700, 3000), b(3000, 3700, 3000);
    const int count = Count();
    int flushes = KelAzReactorHelper::FlushCount();
    EXPECT_FALSE(CDispGlobaFun::AddLineLead(a, a, 0, kWire, L"WL", id, L"", false));
    EXPECT_FALSE(CDispGlobaFun::AddLineLead(a, b, 0, L"", L"WL", id, L"", false));
    EXPECT_FALSE(CDispGlobaFun::AddLineLead(a, b, 0, kWire, L"", id, L"", false));
    EXPECT_EQ(id, before);
    EXPECT_EQ(Count(), count);
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), flushes) << "a refusal flushes nothing";

    ASSERT_TRUE(CDispGlobaFun::AddLineLead(a, b, 0, kWire, L"WL", id, L"", false));
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), ++flushes);
    EXPECT_EQ(KelAzReactorHelper::LastFlushText(), L"");
    {
        Opened<KelAzLead> lead(id, AcDb::kForRead);
        ASSERT_EQ(lead.status, Acad::eOk);
        EXPECT_EQ(lead->GetLayingType(), 0) << "the entity's default";
        EXPECT_EQ(lead->GetBulge(), 0.0);
        EXPECT_EQ(lead->layer(), kelaz::LayerForComponent(kWire, L"WL"));
        AcGePoint3d start, end;
        lead->getStartPoint(start);
        lead->getEndPoint(end);
        EXPECT_EQ(start, a);
        EXPECT_EQ(end, b);
    }
    ASSERT_TRUE(CDispGlobaFun::AddLineLead(a, b, 0, kWire, L"WL", id, L"暗敷导线", true));
    {
        Opened<KelAzLead> lead(id, AcDb::kForRead);
        EXPECT_EQ(lead->GetLayingType(), 1);
        EXPECT_EQ(lead->layer(), L"暗敷导线");
    }

    // Main: a main lead, without the laying type; refused elevations still answer true.
    flushes = KelAzReactorHelper::FlushCount();
    const AcDbObjectId plane = id;
    EXPECT_TRUE(CDispGlobaFun::AddLineLead(a, b, 1, kWire, L"WL", id, L"", true));
    EXPECT_EQ(id, plane);
    ASSERT_TRUE(CDispGlobaFun::AddLineLead(a, AcGePoint3d(a.x, a.y, 4500), 1, kWire, L"WL", id,
                                           L"立管-照明", true));
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), flushes) << "main leads do not flush";
    Opened<KelAzMainLead> main(id, AcDb::kForRead);
    ASSERT_EQ(main.status, Acad::eOk);
    EXPECT_EQ(main->GetLayingType(), 0);
    EXPECT_EQ(main->GetLayName(), L"立管-照明");
}

TEST_F(PipeCreators, AnArcLeadCarriesItsBulgeAndNormal) {
    const AcDbObjectId before = Sentinel();
    AcDbObjectId id = before;
    const AcGePoint3d a(3000, 3700, 3000), b(4600, 3700, 3000);
    EXPECT_FALSE(CDispGlobaFun::AddArcLead(a, a + AcGeVector3d(0, 0.00005, 0), 0.5,
                                           AcGeVector3d::kZAxis, kWire, L"WL", id, L"", false));
    EXPECT_FALSE(
        CDispGlobaFun::AddArcLead(a, b, 0.5, AcGeVector3d::kZAxis, kWire, L"", id, L"", false));
    EXPECT_EQ(id, before);
    const int flushes = KelAzReactorHelper::FlushCount();
    ASSERT_TRUE(
        CDispGlobaFun::AddArcLead(a, b, -0.35, AcGeVector3d(0, 0, 2), kWire, L"WL", id, L"", true));
    EXPECT_EQ(KelAzReactorHelper::FlushCount(), flushes + 1);
    Opened<KelAzLead> lead(id, AcDb::kForRead);
    ASSERT_EQ(lead.status, Acad::eOk);
    EXPECT_EQ(lead->GetBulge(), -0.35);
    EXPECT_TRUE(lead->GetNormal().isEqualTo(AcGeVector3d::kZAxis));
    EXPECT_EQ(lead->GetLayingType(), 1);
    AcGePoint3d end;
    lead->getEndPoint(end);
    EXPECT_EQ(end, b);
}

TEST_F(PipeCreators, CreateNewLeadTakesTheBarsChoiceAndNeverMakesAnArcMain) {
    const AcGePoint3d a(0, 0, 3000), b(2000, 0, 3000), up(0, 0, 4500);
    const AcDbObjectId before = Sentinel();
    AcDbObjectId id = before;
    // Nothing chosen: refused, the missing code told by the bar's check.
    EXPECT_FALSE(CDispGlobaFun::CreateNewLead(a, b, 0, AcGeVector3d::kZAxis, 0, id, L"", false));
    EXPECT_EQ(Texts().back(), L"请先在属性栏中选择系统编号!");
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurrentSpec(L"电气"));
    ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L"WL"));
    EXPECT_FALSE(CDispGlobaFun::CreateNewLead(a, b, 0, AcGeVector3d::kZAxis, 0, id, L"", false))
        << "no attribute";
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(kWire));
    const size_t messages = sink.Records().size();
    EXPECT_FALSE(CDispGlobaFun::CreateNewLead(a, a + AcGeVector3d(0.00009, 0, 0), 0,
                                              AcGeVector3d::kZAxis, 0, id, L"", false));
    EXPECT_EQ(sink.Records().size(), messages) << "the length is tested first, silently";
    EXPECT_EQ(id, before);

    ASSERT_TRUE(CDispGlobaFun::CreateNewLead(a, b, 5e-9, AcGeVector3d::kZAxis, 0, id, L"", false));
    {
        Opened<KelAzLead> lead(id, AcDb::kForRead);
        ASSERT_EQ(lead.status, Acad::eOk);
        EXPECT_EQ(lead->GetBulge(), 0.0) << "straight";
        EXPECT_EQ(lead->GetAttName(), kWire);
        EXPECT_EQ(lead->GetSysCode(), L"WL");
    }
    ASSERT_TRUE(CDispGlobaFun::CreateNewLead(a, b, 0.5, AcGeVector3d::kZAxis, 1, id, L"", false));
    EXPECT_EQ(ClassOf(id), L"KelAzLead");
    {
        Opened<KelAzLead> lead(id, AcDb::kForRead);
        EXPECT_EQ(lead->GetBulge(), 0.5);
    }
    ASSERT_TRUE(CDispGlobaFun::CreateNewLead(a, b, -1e-8, AcGeVector3d::kZAxis, 1, id, L"", true));
    EXPECT_EQ(ClassOf(id), L"KelAzLead") << "1e-8 is not below 1e-8: an arc";
    // Straight and main: a main lead.
    ASSERT_TRUE(CDispGlobaFun::CreateNewLead(a, up, 0, AcGeVector3d::kZAxis, 1, id, L"", false));
    EXPECT_EQ(ClassOf(id), L"KelAzMainLead");
    // The arc path makes an ordinary lead even of a vertical pair of points.
    ASSERT_TRUE(CDispGlobaFun::CreateNewLead(a, up, 0.5, AcGeVector3d::kYAxis, 1, id, L"", false));
    EXPECT_EQ(ClassOf(id), L"KelAzLead");
}

// --- ExtendLine ---

TEST_F(PipeCreators, ExtendLineMovesTheNearerEndOfADuctOpenForWrite) {
    auto* duct = new KelAzDuct;
    duct->setStartPoint(AcGePoint3d(0, 0, 0));
    duct->setEndPoint(AcGePoint3d(1000, 0, 0));
    const AcDbObjectId id = kelaz::test::Append(db, duct);
    auto ends = [&] {
        Opened<KelAzDuct> d(id, AcDb::kForRead);
        AcGePoint3d s, e;
        d->getStartPoint(s);
        d->getEndPoint(e);
        return std::make_pair(s, e);
    };
    auto extend = [&](const AcGePoint3d& pt) {
        Opened<KelAzDuct> d(id, AcDb::kForWrite);
        return CDispGlobaFun::ExtendLine(d.get(), pt);
    };
    {
        Opened<KelAzDuct> d(id, AcDb::kForRead);
        EXPECT_FALSE(CDispGlobaFun::ExtendLine(d.get(), AcGePoint3d(-500, 0, 0))) << "read only";
    }
    EXPECT_FALSE(CDispGlobaFun::ExtendLine(nullptr, AcGePoint3d(0, 0, 0)));
    EXPECT_EQ(ends().first, AcGePoint3d(0, 0, 0));

    // Within 1.0 of an end (the bound included): already there.
    EXPECT_TRUE(extend(AcGePoint3d(0.5, 0, 0)));
    EXPECT_TRUE(extend(AcGePoint3d(1001, 0, 0)));
    EXPECT_EQ(ends(), std::make_pair(AcGePoint3d(0, 0, 0), AcGePoint3d(1000, 0, 0)));

    EXPECT_TRUE(extend(AcGePoint3d(1001.5, 0, 0)));
    EXPECT_EQ(ends().second, AcGePoint3d(1001.5, 0, 0));
    EXPECT_EQ(ends().first, AcGePoint3d(0, 0, 0));
    EXPECT_TRUE(extend(AcGePoint3d(-300, 0, 0)));
    EXPECT_EQ(ends().first, AcGePoint3d(-300, 0, 0));
    // Equidistant: the start moves.
    EXPECT_TRUE(extend(AcGePoint3d(350.75, 0, 0)));
    EXPECT_EQ(ends(), std::make_pair(AcGePoint3d(350.75, 0, 0), AcGePoint3d(1001.5, 0, 0)));
}

TEST_F(PipeCreators, ExtendLineSpecEdgeCases) {
    KelAzDuct duct;  // not in a drawing: open for write
    duct.setStartPoint(AcGePoint3d(0, 0, 0));
    duct.setEndPoint(AcGePoint3d(1000, 0, 0));
    EXPECT_TRUE(CDispGlobaFun::ExtendLine(&duct, AcGePoint3d(500, 0, 0)));
    AcGePoint3d s, e;
    duct.getStartPoint(s);
    duct.getEndPoint(e);
    EXPECT_EQ(s, AcGePoint3d(500, 0, 0));
    EXPECT_EQ(e, AcGePoint3d(1000, 0, 0));
    EXPECT_TRUE(CDispGlobaFun::ExtendLine(&duct, AcGePoint3d(500.5, 0, 0)));
    duct.getStartPoint(s);
    EXPECT_EQ(s, AcGePoint3d(500, 0, 0));
}

// --- GetConnectedLead ---

TEST_F(PipeCreators, GetConnectedLeadFindsLeadsEndingStrictlyWithinOneInTheirOrder) {
    const AcGePoint3d pt(1000, 1000, 3000);
    auto lead = [&](const AcGePoint3d& s, const AcGePoint3d& e) {
        auto* l = new KelAzLead;
        l->setStartPoint(s);
        l->setEndPoint(e);
        return kelaz::test::Append(db, l);
    };
    const AcDbObjectId endNear = lead(AcGePoint3d(0, 1000, 3000), AcGePoint3d(999.001, 1000, 3000));
    const AcDbObjectId endAtOne = lead(AcGePoint3d(0, 1000, 3000), AcGePoint3d(999, 1000, 3000));
    const AcDbObjectId startNear =
        lead(AcGePoint3d(1000, 1000.5, 3000), AcGePoint3d(1000, 5000, 3000));
    const AcDbObjectId across = lead(AcGePoint3d(0, 0, 3000), AcGePoint3d(2000, 2000, 3000));
    const AcDbObjectId bent = lead(AcGePoint3d(1000, 1000, 3000), AcGePoint3d(3000, 1000, 3000));
    {
        Opened<KelAzLead> b(bent, AcDb::kForWrite);
        b->SetBulge(0.4);
    }
    auto* pipe = new KelAzPipe;
    pipe->setStartPoint(pt);
    pipe->setEndPoint(AcGePoint3d(0, 0, 3000));
    const AcDbObjectId notLead = kelaz::test::Append(db, pipe);
    AcDbObjectId riser;
    ASSERT_TRUE(
        CDispGlobaFun::AddMainLead(pt, AcGePoint3d(pt.x, pt.y, 4500), kWire, L"WL", riser, L""));
    const AcDbObjectId line = kelaz::test::Append(db, new AcDbLine(pt, AcGePoint3d(0, 0, 0)));

    const AcDbObjectIdArray ids{bent,    notLead, endAtOne, riser, startNear, AcDbObjectId(),
                                endNear, across,  line,     bent,  startNear};
    const AcDbObjectIdArray found = CDispGlobaFun::GetConnectedLead(pt, ids);
    ASSERT_EQ(found.length(), 3);
    EXPECT_EQ(found[0], bent);
    EXPECT_EQ(found[1], startNear);
    EXPECT_EQ(found[2], endNear);
    EXPECT_TRUE(CDispGlobaFun::GetConnectedLead(pt, AcDbObjectIdArray()).isEmpty());

    // An erased lead does not open.
    {
        Opened<KelAzLead> b(bent, AcDb::kForWrite);
        ASSERT_EQ(b->erase(), Acad::eOk);
    }
    EXPECT_EQ(CDispGlobaFun::GetConnectedLead(pt, ids).length(), 2);
}

// --- AddFGByCurFG ---

class NewDuctSize : public PipeCreators {
protected:
    static CStringArray Fields(const CString& path) {
        KelAzDataMng::SAttDataIndex index;
        CStringArray list;
        if (KelAzDataMng::AttNameToAttId(path, index))
            KelAzDataMng::CAttDetailMem(index).GetAttributeList(list);
        return list;
    }
    static CString Value(const CString& path, const wchar_t* key) {
        const CStringArray list = Fields(path);
        for (INT_PTR i = 3; i < list.GetSize(); i += 4)
            if (list[i] == key) return list[i - 1];
        return L"<none>";
    }
    static bool Section(const CString& path, KelAzDataMng::SectionInfo& section) {
        KelAzDataMng::SAttDataIndex index;
        return KelAzDataMng::AttNameToAttId(path, index) &&
               KelAzDataMng::CAttDetailMem(index).GetSectionInfo(section);
    }
};

TEST_F(NewDuctSize, WithoutAHeightTheDuctIsRoundAndWithOneRectangular) {
    const int updates = IFaceBarCtrl::UpdateCount();
    ASSERT_TRUE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\圆形风管", L"圆风管400", kRectDuct,
                                            L"400", L"", true));
    const CString round = L"暖通\\风管\\圆形风管\\圆风管400";
    KelAzDataMng::SectionInfo section;
    ASSERT_TRUE(Section(round, section));
    EXPECT_EQ(section.strShapeCode, L"521");
    EXPECT_EQ(section.strSize, L"B,400");
    EXPECT_EQ(section.strKind, L"风管");
    EXPECT_EQ(section.nSectionType, KelAzDataMng::SectionInfo().nSectionType);
    EXPECT_EQ(section.strBlockName, L"");
    EXPECT_EQ(Value(round, L"HVAC_DuctSectionShape"), L"圆形") << "the source said 矩形";
    EXPECT_EQ(Value(round, L"HVAC_DuctMaterial"), L"镀锌钢板");
    EXPECT_EQ(Value(round, L"HVAC_DuctThickness"), L"0.6");
    EXPECT_EQ(Value(kRectDuct, L"HVAC_DuctSectionShape"), L"矩形") << "the source is unchanged";
    EXPECT_EQ(IFaceBarCtrl::UpdateCount(), updates + 1);

    ASSERT_TRUE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\矩形风管", L"矩形风管800x400", kRoundDuct,
                                            L"800", L"400", true));
    const CString rect = L"暖通\\风管\\矩形风管\\矩形风管800x400";
    ASSERT_TRUE(Section(rect, section));
    EXPECT_EQ(section.strShapeCode, L"520");
    EXPECT_EQ(section.strSize, L"B,800,H,400");
    EXPECT_EQ(Value(rect, L"HVAC_DuctSectionShape"), L"矩形");
    EXPECT_EQ(Fields(rect).GetSize(), Fields(kRoundDuct).GetSize());

    // A flexible duct's shape has a key of its own.
    ASSERT_TRUE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\软风管", L"软风管250x200", kFlexDuct,
                                            L"250", L"200", true));
    EXPECT_EQ(Value(L"暖通\\风管\\软风管\\软风管250x200", L"HVAC_FlexibleDShape"), L"矩形");

    // All of it is in the file.
    Reopen();
    ASSERT_TRUE(Section(rect, section));
    EXPECT_EQ(section.strSize, L"B,800,H,400");
    EXPECT_EQ(Value(round, L"HVAC_DuctSectionShape"), L"圆形");
}

TEST_F(NewDuctSize, OnlyBSaveWritesTheCatalogue) {
    const int updates = IFaceBarCtrl::UpdateCount();
    ASSERT_TRUE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\矩形风管", L"待定风管", kRectDuct, L"500",
                                            L"300", false));
    EXPECT_TRUE(KelAzDataMng::CAtt::HasUnsavedChanges());
    EXPECT_EQ(IFaceBarCtrl::UpdateCount(), updates);
    KelAzDataMng::SectionInfo section;
    EXPECT_TRUE(Section(L"暖通\\风管\\矩形风管\\待定风管", section)) << "pending, readable";
    Reopen();
    EXPECT_FALSE(Section(L"暖通\\风管\\矩形风管\\待定风管", section)) << "never written";
}

TEST_F(NewDuctSize, AnIncompleteIndexIsTheOnlyRefusal) {
    const int updates = IFaceBarCtrl::UpdateCount();
    EXPECT_FALSE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\没有这类", L"新风管", kRectDuct, L"500",
                                             L"300", true));
    EXPECT_FALSE(
        CDispGlobaFun::AddFGByCurFG(L"暖通\\风管", L"新风管", kRectDuct, L"500", L"300", true));
    // A name the category has already, or cannot hold.
    EXPECT_FALSE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\矩形风管", L"镀锌钢板矩形风管",
                                             kRoundDuct, L"500", L"300", true));
    EXPECT_FALSE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\矩形风管", L"a\\b", kRoundDuct, L"500",
                                             L"300", true));
    EXPECT_FALSE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\矩形风管", L"", kRoundDuct, L"500",
                                             L"300", true));
    EXPECT_EQ(IFaceBarCtrl::UpdateCount(), updates);
    EXPECT_FALSE(KelAzDataMng::CAtt::HasUnsavedChanges());
    KelAzDataMng::SectionInfo section;
    EXPECT_TRUE(Section(kRectDuct, section));
    EXPECT_EQ(section.strSize, L"B,630,H,320") << "the existing member is untouched";

    // An unknown source only leaves the rows out.
    ASSERT_TRUE(CDispGlobaFun::AddFGByCurFG(L"暖通\\风管\\矩形风管", L"无参照风管",
                                            L"暖通\\风管\\矩形风管\\没有", L"500", L"300", true));
    EXPECT_EQ(Fields(L"暖通\\风管\\矩形风管\\无参照风管").GetSize(), 0);
    ASSERT_TRUE(Section(L"暖通\\风管\\矩形风管\\无参照风管", section));
    EXPECT_EQ(section.strSize, L"B,500,H,300");
}

}  // namespace
