#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include "host/app/RxDictionary.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/UndoLog.h"
#include "host/ge/GeConstants.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzKdEnt.h"
#include "suite/entities/KelAzKelSectEnt.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/KelAzPipeValve.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/entities/KelAzSupport.h"
#include "suite/entities/SuiteEntities.h"
#include "tests/support/EntityChecks.h"

namespace {

using namespace kelaz::test;
using Keys = std::vector<std::wstring>;

Keys Join(Keys a, const Keys& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::vector<EntitySetter> Join(std::vector<EntitySetter> a, const std::vector<EntitySetter>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Keys kEntityKeys{L"attName", L"sysCode", L"typePath", L"smallTypePath"};
const Keys kCurveKeys = Join(kEntityKeys, {L"layName", L"start", L"end"});
const Keys kNodeKeys = Join(kEntityKeys, {L"insert", L"rotation", L"scale", L"normal"});

std::vector<EntitySetter> EntitySetters() {
    return {
        [](KelAzEntity& e) { EXPECT_EQ(e.SetAttName(L"暖通\\风口\\方形散流器"), Acad::eOk); },
        [](KelAzEntity& e) { EXPECT_EQ(e.SetSysCode(L"给水"), Acad::eOk); },
        [](KelAzEntity& e) { EXPECT_EQ(e.SetTypeNamePath(L"暖通\\风口"), Acad::eOk); },
        [](KelAzEntity& e) { EXPECT_EQ(e.SetSmallTypeNamePath(L"暖通\\水暖设备"), Acad::eOk); },
    };
}

std::vector<EntitySetter> CurveSetters() {
    return Join(EntitySetters(), {
                                     On<KelAzCurveEntity>([](auto& e) { e.SetLayName(L"PIPE-A"); }),
                                     On<KelAzCurveEntity>([](auto& e) {
                                         e.setStartPoint({100, 200, 30});
                                     }),
                                     On<KelAzCurveEntity>([](auto& e) {
                                         e.setEndPoint({2100, 1200, 30});
                                     }),
                                 });
}

MainPipeInfo Riser() {
    MainPipeInfo info;
    kelaz::SetMainPipeFloorName(info, L"三层");
    info.z1 = 6000;
    info.z2 = 9000;
    info.x = 1500;
    info.y = -700;
    return info;
}

std::vector<EntitySetter> NodeSetters() {
    return Join(EntitySetters(), {
                                     On<KelAzNode>([](auto& e) {
                                         e.SetInsertPoint({5000, 3000, 2800});
                                     }),
                                     On<KelAzNode>([](auto& e) { e.setRotation(kelaz::kPi / 6); }),
                                     On<KelAzNode>([](auto& e) {
                                         e.setScaleFactors({2, 1.5, 1});
                                     }),
                                     On<KelAzNode>([](auto& e) {
                                         e.setNormal({0, 0.6, 0.8});
                                     }),
                                 });
}

std::vector<EntityRow> Rows() {
    return {
        {KelAzLead::desc(), L"KELAZLEAD",
         Join(kCurveKeys, {L"layingType", L"bulge", L"normal", L"typeText"}),
         Join(CurveSetters(),
              {
                  On<KelAzLead>([](auto& e) { e.SetLayingType(1); }),
                  On<KelAzLead>([](auto& e) { e.SetBulge(0.4); }),
                  On<KelAzLead>([](auto& e) {
                      e.SetNormal({0, 0, -2});
                  }),
                  On<KelAzLead>([](auto& e) { e.SetTypeText(L"3\\1\\1"); }),
              })},
        {KelAzMainLead::desc(), L"KELAZMAINLEAD", Join(kCurveKeys, {L"layingType", L"mainPipe"}),
         Join(Join(EntitySetters(), {On<KelAzMainLead>([](auto& e) { e.SetLayName(L"L"); })}),
              {
                  On<KelAzMainLead>([](auto& e) { e.SetLayingType(2); }),
                  On<KelAzMainLead>([](auto& e) { e.SetMainPipeInfo(Riser()); }),
              })},
        {KelAzMainPipe::desc(), L"KELAZMAINPIPE", Join(kCurveKeys, {L"mainPipe"}),
         Join(Join(EntitySetters(), {On<KelAzMainPipe>([](auto& e) { e.SetLayName(L"R"); })}),
              {On<KelAzMainPipe>([](auto& e) { e.SetMainPipeInfo(Riser()); })})},
        {KelAzPipe::desc(), L"KELAZPIPE", kCurveKeys, CurveSetters()},
        {KelAzDuct::desc(), L"KELAZDUCT", Join(kCurveKeys, {L"width", L"height"}),
         Join(CurveSetters(),
              {
                  On<KelAzDuct>([](auto& e) { e.SetWidth(800); }),
                  On<KelAzDuct>([](auto& e) { e.SetHeight(400); }),
              })},
        {KelAzSupport::desc(), L"KELAZSUPPORT", kCurveKeys, CurveSetters()},
        {KelAzNode::desc(), L"KELAZNODE", kNodeKeys, NodeSetters()},
        {KelAzEquipMent::desc(), L"KELAZEQUIPMENT", kNodeKeys, NodeSetters()},
        {KelAzKelSectEnt::desc(), L"KELAZKELSECTENT", kNodeKeys, NodeSetters()},
        {KelAzPipeValve::desc(), L"KELAZPIPEVALVE", kNodeKeys, NodeSetters()},
        {KelAzSoftLine::desc(), L"KELAZSOFTLINE", Join(kEntityKeys, {L"vertices", L"normals"}),
         Join(EntitySetters(),
              {
                  On<KelAzSoftLine>([](auto& e) {
                      e.addVertexAt({0, 0, 100}, {0, 0, 1}, 0.5);
                  }),
                  On<KelAzSoftLine>([](auto& e) {
                      e.addVertexAt({1000, 0, 200}, {0, 0, -1});
                  }),
              })},
        {KelAzKdEnt::desc(), L"KELAZKDENT", Join(kEntityKeys, {L"placement"}),
         Join(EntitySetters(), {On<KelAzKdEnt>([](auto& e) {
                  KelAzCommon::Placement3D p;
                  p.SetLocation({10, 20, 30});
                  ASSERT_TRUE(p.SetAxes({0, 1, 0}, {0, 0, 1}));
                  EXPECT_EQ(e.SetPlacement(p), Acad::eOk);
              })})},
    };
}

class EntityChecklist : public ::testing::Test {
protected:
    void SetUp() override {
        kelaz::InitSuiteEntities();
        // Entities made outside a drawing take any layer name.
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
};

TEST_F(EntityChecklist, EveryClassIsRegisteredOnceUnderItsNames) {
    kelaz::InitSuiteEntities();  // again: nothing changes
    for (const EntityRow& row : Rows()) {
        SCOPED_TRACE(NameOf(row.cls));
        EXPECT_EQ(acrxClassDictionary->at(row.cls->name()), row.cls);
        EXPECT_STREQ(row.cls->dxfName(), row.dxfName);
        EXPECT_TRUE(row.cls->isDerivedFrom(KelAzEntity::desc()));
        const auto made = Make(row.cls);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->isA(), row.cls);
    }
    // The shared bases are never made on their own.
    for (AcRxClass* base : {KelAzEntity::desc(), KelAzCurveEntity::desc(),
                            KelAzLeadPrototype::desc(), KelAzDuctPrototype::desc()}) {
        EXPECT_EQ(base->create(), nullptr) << NameOf(base);
        EXPECT_EQ(acrxClassDictionary->at(base->name()), base);
    }
}

// A fresh entity lists its keys with empty or zero values; the exceptions are the directions
// and scales, which start as the world's.
TEST_F(EntityChecklist, DefaultsAreEmptyZeroOrTheWorldAxes) {
    for (const EntityRow& row : Rows()) {
        SCOPED_TRACE(NameOf(row.cls));
        const auto e = Make(row.cls);
        const kelaz::PropertyList list = Listed(*e);
        std::vector<std::wstring> names;
        for (const CString& n : list.Names()) names.push_back(n.str());
        EXPECT_EQ(names, row.keys);
        for (const kelaz::Property& p : list.Items()) {
            SCOPED_TRACE(kelaz::ToUtf8(p.name));
            if (p.name == L"normal") {
                EXPECT_EQ(p.vector, AcGeVector3d::kZAxis);
            } else if (p.name == L"scale") {
                EXPECT_EQ(p.vector, AcGeVector3d(1, 1, 1));
            } else if (p.name == L"placement") {
                EXPECT_EQ(p.members[0].point, AcGePoint3d::kOrigin);
                EXPECT_EQ(p.members[1].vector, AcGeVector3d::kXAxis);
                EXPECT_EQ(p.members[2].vector, AcGeVector3d::kYAxis);
            } else if (p.name == L"mainPipe") {
                EXPECT_EQ(p.members[0].text, L"");
                for (std::size_t i = 1; i < p.members.size(); ++i) EXPECT_EQ(p.members[i].real, 0);
            } else {
                EXPECT_TRUE(p.text.IsEmpty() && p.real == 0 && p.integer == 0 &&
                            p.point == AcGePoint3d::kOrigin && p.rows.empty());
            }
        }
        EXPECT_EQ(e->layer(), L"0") << "no system code has moved it yet";
    }
}

// The setters reach every listed field: after all of them, no field has its default value.
TEST_F(EntityChecklist, SettersReachEveryListedField) {
    for (const EntityRow& row : Rows()) {
        SCOPED_TRACE(NameOf(row.cls));
        const kelaz::PropertyList fresh = Listed(*Make(row.cls));
        const kelaz::PropertyList set = Listed(*MakeSet(row));
        ASSERT_EQ(fresh.Items().size(), set.Items().size());
        for (std::size_t i = 0; i < set.Items().size(); ++i) {
            EXPECT_FALSE(SameProperty(fresh.Items()[i], set.Items()[i]))
                << kelaz::ToUtf8(set.Items()[i].name) << " kept its default";
        }
    }
}

TEST_F(EntityChecklist, DwgFilingKeepsEveryFieldAndRefusesNewerOrShortRecords) {
    for (const EntityRow& row : Rows()) {
        ExpectDwgRoundTrip(*Make(row.cls));
        const auto e = MakeSet(row);
        ExpectDwgRoundTrip(*e);
        EXPECT_TRUE(SameListing(Listed(*CopyOf(*e)), Listed(*e))) << NameOf(row.cls);
        ExpectNewerVersionsRefused(*e);
        ExpectShortRecordsRefused(*e);
    }
}

TEST_F(EntityChecklist, DxfFilingKeepsEveryFieldUnderItsSubclassMarkers) {
    for (const EntityRow& row : Rows()) {
        ExpectDxfRoundTrip(*Make(row.cls));
        ExpectDxfRoundTrip(*MakeSet(row));
    }
}

// Extents hold everything drawn (they may hold more: a riser reaches up to its second point).
TEST_F(EntityChecklist, ExtentsHoldWhatIsDrawn) {
    for (const EntityRow& row : Rows()) {
        SCOPED_TRACE(NameOf(row.cls));
        const auto e = MakeSet(row);
        const kelaz::GiPrimitiveList drawn = kelaz::DrawEntity(*e);
        ASSERT_FALSE(drawn.empty());
        const AcDbExtents box = ExtentsOf(*e);
        const AcDbExtents drawnBox = kelaz::PrimitiveListExtents(drawn);
        for (const AcGePoint3d& corner : {drawnBox.minPoint(), drawnBox.maxPoint()}) {
            EXPECT_TRUE(kelaz::ExtentsContain(box, corner)) << Show(corner);
        }
    }
}

// A rigid motion of the entity draws what the same motion makes of its drawing.
TEST_F(EntityChecklist, TransformMovesTheDrawingRigidly) {
    const AcGeMatrix3d motion =
        AcGeMatrix3d::translation({10, -20, 5}) *
        AcGeMatrix3d::rotation(kelaz::kPi / 6, AcGeVector3d::kZAxis, AcGePoint3d(100, 200, 0));
    for (const EntityRow& row : Rows()) {
        const auto e = MakeSet(row);
        const auto moved = CopyOf(*e);
        ASSERT_EQ(moved->transformBy(motion), Acad::eOk) << NameOf(row.cls);
        ExpectPrimitivesNear(kelaz::DrawEntity(*moved), Transformed(kelaz::DrawEntity(*e), motion),
                             1e-6, NameOf(row.cls));
    }
}

TEST_F(EntityChecklist, UndoRestoresTheExactBeforeImage) {
    for (const EntityRow& row : Rows()) {
        AcDbDatabase db;
        const AcDbObjectId id = Append(db, Make(row.cls).release());
        const auto before = Filed(id);
        db.undoLog().beginGroup();
        {
            Opened<KelAzEntity> e(id, AcDb::kForWrite);
            for (const auto& set : row.setters) set(*e.get());
        }
        db.undoLog().endGroup();
        ASSERT_NE(Filed(id), before) << NameOf(row.cls);
        ASSERT_EQ(db.undoLog().undoGroups(1), Acad::eOk);
        EXPECT_EQ(Filed(id), before) << NameOf(row.cls);
    }
}

using EntityChecklistDeathTest = EntityChecklist;

TEST_F(EntityChecklistDeathTest, EverySetterNeedsTheEntityOpenForWrite) {
    for (const EntityRow& row : Rows()) {
        AcDbDatabase db;
        const AcDbObjectId id = Append(db, Make(row.cls).release());
        Opened<KelAzEntity> e(id, AcDb::kForRead);
        for (std::size_t i = 0; i < row.setters.size(); ++i) {
            EXPECT_DEATH(row.setters[i](*e.get()), "not open for write")
                << NameOf(row.cls) << ", setter " << i;
        }
        EXPECT_EQ(Listed(*e.get()).Items().size(), row.keys.size()) << "reading is fine";
    }
}

TEST_F(EntityChecklist, DrawingFilesKeepEverySuiteEntity) {
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / ("kelaz-entities-" + std::to_string(getpid()));
    fs::create_directories(dir);
    const CString file = kelaz::FromUtf8((dir / "plan.kdwg").string());
    AcDbObjectIdArray ids;
    {
        AcDbDatabase db;
        acdbHostApplicationServices()->setWorkingDatabase(&db);
        for (const EntityRow& row : Rows()) ids.append(Append(db, MakeSet(row).release()));
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        ASSERT_EQ(db.saveAs(file), Acad::eOk) << kelaz::ToUtf8(kelaz::LastFileReport(db));
        AcDbDatabase back(false);
        ASSERT_EQ(back.readDwgFile(file), Acad::eOk) << kelaz::ToUtf8(kelaz::LastFileReport(back));
        const AcDbObjectIdArray reopened = ModelSpaceIds(back);
        ASSERT_EQ(reopened.length(), ids.length());
        for (int i = 0; i < ids.length(); ++i) {
            EXPECT_EQ(reopened[i].objectClass(), ids[i].objectClass());
            EXPECT_EQ(Filed(reopened[i]), Filed(ids[i])) << i;
        }
    }
    fs::remove_all(dir);
}

}  // namespace
