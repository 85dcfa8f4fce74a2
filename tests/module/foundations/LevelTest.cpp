#include <gtest/gtest.h>

#include <sqlite3.h>
#include <initializer_list>
#include <string>

#include "host/db/Database.h"
#include "host/ui/MessageBox.h"
#include "module/entry/DispGlobaFun.h"
#include "suite/data/Proj.h"
#include "suite/data/SqliteDb.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/tools/ModelSpace.h"
#include "tests/support/GeCheckers.h"
#include "tests/support/ProjectFixture.h"

namespace {

struct Floor {
    const char* name;
    double height;
    double bottom;
};

// A project whose floor table is replaced by the rows given; each piece of a comma list also
// gets a record of its own, 100 above the list's bottom per position.
class Level : public kelaz::test::ProjectTest {
protected:
    void SetFloors(std::initializer_list<Floor> floors) {
        KelAzDataMng::CloseProject();
        kelaz::test::EditProjectFile(m_file, [&](kelaz::SqliteDb& db) {
            ASSERT_TRUE(db.Exec("DELETE FROM floor_member; DELETE FROM floor;"));
            int ord = 0;
            for (const Floor& f : floors) {
                const std::string sql = "INSERT INTO floor(name, height, elevation, ord) VALUES('" +
                                        std::string(f.name) + "'," + std::to_string(f.height) +
                                        "," + std::to_string(f.bottom) + "," +
                                        std::to_string(ord++) + ");";
                ASSERT_TRUE(db.Exec(sql.c_str())) << db.LastError();
                const std::string name = f.name;
                if (name.find(',') == std::string::npos) continue;
                const auto id = db.LastInsertRowId();
                size_t start = 0;
                for (int k = 0;; ++k) {
                    const size_t comma = name.find(',', start);
                    const std::string piece = name.substr(start, comma - start);
                    const std::string member = "INSERT INTO floor_member VALUES(" +
                                               std::to_string(id) + ",'" + piece + "'," +
                                               std::to_string(f.height) + "," +
                                               std::to_string(f.bottom + 100 * k) + ");";
                    if (!piece.empty()) {
                        ASSERT_TRUE(db.Exec(member.c_str())) << db.LastError();
                    }
                    if (comma == std::string::npos) break;
                    start = comma + 1;
                }
            }
        });
        Reopen();
    }
    kelaz::RecordingMessageSink sink;
    kelaz::ScopedMessageSink install{sink};
};

}  // namespace

TEST(LevelText, TheTwoFormsAndTheirRefusals) {
    double floor = -1, offset = -1;
    bool absolute = false;
    EXPECT_TRUE(CDispGlobaFun::CheckLevel(L"12345678", floor, offset, absolute));
    EXPECT_TRUE(absolute);
    EXPECT_EQ(floor, 0.0);
    EXPECT_EQ(offset, 0.0);

    offset = 7;  // a floor form without an offset keeps what the caller put there
    EXPECT_TRUE(CDispGlobaFun::CheckLevel(L"3F", floor, offset, absolute));
    EXPECT_FALSE(absolute);
    EXPECT_EQ(floor, 3.0);
    EXPECT_EQ(offset, 7.0);
    EXPECT_TRUE(CDispGlobaFun::CheckLevel(L"3f+500", floor, offset, absolute));
    EXPECT_EQ(offset, 500.0);
    EXPECT_TRUE(CDispGlobaFun::CheckLevel(L"2F1000", floor, offset, absolute));
    EXPECT_EQ(floor, 2.0);
    EXPECT_EQ(offset, 1000.0);
    EXPECT_TRUE(CDispGlobaFun::CheckLevel(L"-1F-200.5", floor, offset, absolute));
    EXPECT_EQ(floor, -1.0);
    EXPECT_EQ(offset, -200.5);
    for (const wchar_t* bad : {L"", L"F500", L"3F+", L"3Ff", L"3.F", L"abc", L"3F+5F", L"1e3"}) {
        EXPECT_FALSE(CDispGlobaFun::CheckLevel(bad, floor, offset, absolute))
            << kelaz::ToUtf8(std::wstring_view(bad));
    }
}

TEST_F(Level, GetLevelReportsEachKindOfWrongText) {
    double level = -1;
    EXPECT_TRUE(CDispGlobaFun::GetLevel(level, L"12345678"));
    EXPECT_EQ(level, 12345678.0);
    EXPECT_FALSE(CDispGlobaFun::GetLevel(level, L"123456789"));
    EXPECT_FALSE(CDispGlobaFun::GetLevel(level, L""));
    EXPECT_FALSE(CDispGlobaFun::GetLevel(level, L"F500"));
    EXPECT_FALSE(CDispGlobaFun::GetLevel(level, L"99F+0"));
    EXPECT_EQ(level, 12345678.0);
    ASSERT_EQ(sink.Records().size(), 4u);
    EXPECT_EQ(sink.Records()[0].text, L"输入数值过大!");
    EXPECT_EQ(sink.Records()[1].text, L"输入数值过大!");
    EXPECT_EQ(sink.Records()[2].text, L"请按正确格式输入标高信息!");
    EXPECT_EQ(sink.Records()[3].text, L"请输入正确的楼层编号!");
    EXPECT_EQ(sink.Records()[3].flags, 0x12030u);
}

TEST_F(Level, FloorFormsResolveThroughSingleNamesListsAndRanges) {
    SetFloors({{"1", 4500, 0}, {"2", 4200, 4500}, {"3/6", 3000, 9000}, {"7,9", 3300, 21000}});
    double level = 0;
    ASSERT_TRUE(CDispGlobaFun::GetLevel(level, L"3F+500"));
    EXPECT_EQ(level, 9500.0);
    ASSERT_TRUE(CDispGlobaFun::CheckFloorInfo(level, 5, 0));
    EXPECT_EQ(level, 15000.0);
    ASSERT_TRUE(CDispGlobaFun::CheckFloorInfo(level, 2, -100));
    EXPECT_EQ(level, 4400.0);
    // A list floor is read from its own record (9 is the second piece: 100 higher).
    ASSERT_TRUE(CDispGlobaFun::CheckFloorInfo(level, 9, 0));
    EXPECT_EQ(level, 21100.0);
    level = -7;
    EXPECT_FALSE(CDispGlobaFun::CheckFloorInfo(level, 8, 0));
    EXPECT_EQ(level, -7.0);
    // Single names allow 0.0001, lists and ranges 1e-6.
    ASSERT_TRUE(CDispGlobaFun::CheckFloorInfo(level, 2.00005, 0));
    EXPECT_EQ(level, 4500.0);
    EXPECT_FALSE(CDispGlobaFun::CheckFloorInfo(level, 7.00005, 0));
    EXPECT_FALSE(CDispGlobaFun::CheckFloorInfo(level, 4.00005, 0));
    EXPECT_TRUE(sink.Records().empty()) << "the floor check never reports";
}

TEST_F(Level, AMalformedRangeStopsTheSearch) {
    SetFloors({{"1", 4500, 0}, {"3/6/9", 3000, 9000}, {"7", 3300, 21000}});
    double level = 0;
    EXPECT_TRUE(CDispGlobaFun::CheckFloorInfo(level, 1, 0));
    EXPECT_FALSE(CDispGlobaFun::CheckFloorInfo(level, 7, 0))
        << "the row after 3/6/9 is never reached";
}

TEST_F(Level, RelativeHeightsCountFromTheCurrentFloorsLowerEdge) {
    SetFloors({{"1", 4500, 0}, {"-1", -3000, 0}});
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurFloorName(L"1"));
    double level = 0;
    ASSERT_TRUE(CDispGlobaFun::ConverLevel(level, 800));
    EXPECT_EQ(level, 800.0);
    ASSERT_TRUE(KelAzDataMng::CProj::SetCurFloorName(L"-1"));
    ASSERT_TRUE(CDispGlobaFun::ConverLevel(level, 800));
    EXPECT_EQ(level, -2200.0);
    KelAzDataMng::CloseProject();
    level = 5;
    EXPECT_FALSE(CDispGlobaFun::ConverLevel(level, 800));
    EXPECT_EQ(level, 5.0);
    ASSERT_EQ(sink.Records().size(), 1u);
    EXPECT_EQ(sink.Records()[0].text, L"楼层信息错误!");
}

TEST(LevelPlane, SignedHeightsAndPointsPutAtAHeight) {
    const AcGePlane floor(AcGePoint3d(0, 0, 3000), AcGeVector3d::kZAxis);
    EXPECT_EQ(CDispGlobaFun::GetLevelOnPlane(floor, AcGePoint3d(5, 5, 3000)), 0.0);
    EXPECT_DOUBLE_EQ(CDispGlobaFun::GetLevelOnPlane(floor, AcGePoint3d(5, 5, 3500)), 500.0);
    EXPECT_DOUBLE_EQ(CDispGlobaFun::GetLevelOnPlane(floor, AcGePoint3d(5, 5, 2000)), -1000.0);
    const AcGePlane wall(AcGePoint3d(100, 0, 0), AcGeVector3d(-1, 0, 0));
    EXPECT_DOUBLE_EQ(CDispGlobaFun::GetLevelOnPlane(wall, AcGePoint3d(40, 7, 9)), 60.0);

    AcGePoint3d p(10, 20, 3200);
    EXPECT_POINT_NEAR(CDispGlobaFun::SetLevelOnPlane(floor, p, -150), AcGePoint3d(10, 20, 2850),
                      1e-9);
    EXPECT_POINT_NEAR(p, AcGePoint3d(10, 20, 2850), 1e-9);
    AcGePoint3d same(10, 20, 3000.0000001);
    EXPECT_EQ(CDispGlobaFun::SetLevelOnPlane(floor, same, 0), AcGePoint3d(10, 20, 3000.0000001));
    EXPECT_POINT_NEAR(CDispGlobaFun::SetLevelOnPlane(floor, AcGePoint2d(1, 2), 400),
                      AcGePoint3d(1, 2, 3400), 1e-9);
}

TEST(LevelPipe, TheHigherEndOfAPipe) {
    AcDbDatabase db;
    auto* pipe = new KelAzPipe;
    pipe->setStartPoint(AcGePoint3d(0, 0, 3000));
    pipe->setEndPoint(AcGePoint3d(1000, 0, 3000.00005));
    AcDbObjectId id;
    ASSERT_EQ(addToModelSpace(id, pipe, &db), Acad::eOk);
    EXPECT_DOUBLE_EQ(CDispGlobaFun::GetPipeLevel(id), 3000.00005);
    EXPECT_EQ(CDispGlobaFun::GetPipeLevel(AcDbObjectId()), 0.0);
}
