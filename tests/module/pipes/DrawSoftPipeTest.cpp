#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "host/db/Arc.h"
#include "host/db/UndoLog.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/Editor.h"
#include "host/ed/InputSource.h"
#include "module/pipes/DrawSoftPipe.h"
#include "suite/entities/KelAzSoftLine.h"
#include "tests/support/CommandFixture.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

constexpr const wchar_t* kSoftDuct = L"暖通\\风管\\软风管\\铝箔软风管";
constexpr const char* kFirstPrompt = "指定第一点[参考点(R)]:";
constexpr const char* kSamePoint = "连续两点不能重合，请重新指定点";

struct Vertex {
    AcGePoint3d point;
    AcGeVector3d normal;
    double bulge = 0.0;
};
using Path = std::vector<Vertex>;

// The vertices of every soft line the drawing holds, in drawing order.
std::vector<Path> SoftLines(AcDbDatabase& db) {
    std::vector<Path> runs;
    for (const AcDbObjectId& id : kelaz::test::ModelSpaceIds(db)) {
        kelaz::test::Opened<KelAzSoftLine> line(id, AcDb::kForRead);
        if (!line) continue;
        Path run;
        for (unsigned int i = 0; i < line->numVerts(); ++i) {
            Vertex v;
            line->getPointAt(i, v.point);
            line->getNormalAt(i, v.normal);
            line->getBulgeAt(i, v.bulge);
            run.push_back(v);
        }
        runs.push_back(run);
    }
    return runs;
}

int VertexCount(AcDbDatabase& db) {
    int count = 0;
    for (const Path& run : SoftLines(db)) count += static_cast<int>(run.size());
    return count;
}

// The answers given up front; before each one is read, how many soft line vertices the drawing
// shows at that moment.
class WatchingInput : public kelaz::ScriptedInput {
public:
    WatchingInput(AcDbDatabase& db, std::vector<CString> lines)
        : ScriptedInput(std::move(lines)), m_db(db) {}
    bool NextLine(const CString& promptLine, CString& line) override {
        seen.push_back(VertexCount(m_db));
        return ScriptedInput::NextLine(promptLine, line);
    }
    std::vector<int> seen;

private:
    AcDbDatabase& m_db;
};

class DrawSoftPipe : public kelaz::test::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(kSoftDuct));
        ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(L"SF"));
    }

    // Draws with the answers given; what the command line showed.
    std::string Draw(std::vector<CString> lines) {
        input = std::make_unique<WatchingInput>(db, std::move(lines));
        out.str("");
        kelaz::Editor editor(&db, input.get(), &out);
        kelaz::ScopedEditor scope(editor);
        EXPECT_EQ(CDrawSoftPipe().Draw(), Acad::eOk);
        recorded = editor.RecordedCommands();
        return out.str();
    }
    int Count(const std::string& text, const std::string& what) {
        int n = 0;
        for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
            ++n;
        return n;
    }

    std::unique_ptr<WatchingInput> input;
    std::ostringstream out;
    std::vector<kelaz::CommandRecord> recorded;
};

void ExpectVertex(const Vertex& v, const AcGePoint3d& point, double bulge) {
    EXPECT_POINT_NEAR(v.point, point, 1e-9);
    EXPECT_NEAR(v.bulge, bulge, 1e-12);
}

}  // namespace

TEST_F(DrawSoftPipe, ArcsTakeTheirSenseFromTheArcTheHostDrew) {
    // A half circle counter-clockwise from the current point, then the same circle picked the
    // other way round: the host keeps both arcs counter-clockwise and swaps the second one's
    // ends, so the bulge of the second comes out negative.
    Draw({L"0,0", L"1000,0", L"A", L"1500,500", L"1000,1000", L"",  //
          L"1000,1000", L"A", L"1500,500", L"1000,0", L"",          //
          L"^C"});
    const std::vector<Path> runs = SoftLines(db);
    ASSERT_EQ(runs.size(), 2u);
    ASSERT_EQ(runs[0].size(), 3u);
    ExpectVertex(runs[0][0], AcGePoint3d(0, 0, 0), 0.0);
    ExpectVertex(runs[0][1], AcGePoint3d(1000, 0, 0), 1.0);
    ExpectVertex(runs[0][2], AcGePoint3d(1000, 1000, 0), 0.0);
    ASSERT_EQ(runs[1].size(), 2u);
    ExpectVertex(runs[1][0], AcGePoint3d(1000, 1000, 0), -1.0);
    ExpectVertex(runs[1][1], AcGePoint3d(1000, 0, 0), 0.0);
    for (const Path& run : runs) {
        for (const Vertex& v : run) EXPECT_VECTOR_NEAR(v.normal, AcGeVector3d::kZAxis, 1e-12);
    }
    // The arcs were asked of the host's ARC, which paused for the end point; once read they
    // are gone from the drawing, which holds the two soft lines only.
    ASSERT_EQ(recorded.size(), 4u);
    EXPECT_EQ(kelaz::ToUtf8(kelaz::FormatRecord(recorded[0])), "_.arc 1000,0,0 1500,500,0");
    EXPECT_EQ(kelaz::ToUtf8(kelaz::FormatRecord(recorded[1])), "\\");
    EXPECT_EQ(kelaz::ToUtf8(kelaz::FormatRecord(recorded[2])), "_.arc 1000,1000,0 1500,500,0");
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 2);
    // Both runs carry the component and system chosen.
    for (const AcDbObjectId& id : kelaz::test::ModelSpaceIds(db)) {
        kelaz::test::Opened<KelAzSoftLine> line(id, AcDb::kForRead);
        ASSERT_TRUE(line);
        EXPECT_EQ(line->GetAttName(), CString(kSoftDuct));
        EXPECT_EQ(line->GetSysCode(), CString(L"SF"));
    }
}

TEST_F(DrawSoftPipe, ArcSenseHoldsFarFromTheOrigin) {
    // Seven hundred metres out the arc's far end, worked out from its centre and angles, misses
    // the picked point by more than the point tolerance. The arc out and the same arc back must
    // still come out as opposite bends of one size, ending where they were picked.
    const AcGePoint3d a(-685201, 539814, 0), c(-687671, 532145, 0);
    Draw({L"-685201,539814", L"A", L"-690238,537802", L"-687671,532145",  //
          L"A", L"-690238,537802", L"-685201,539814", L"", L"^C"});
    const std::vector<Path> runs = SoftLines(db);
    ASSERT_EQ(runs.size(), 1u);
    ASSERT_EQ(runs[0].size(), 3u);
    EXPECT_POINT_NEAR(runs[0][1].point, c, 1e-6);
    EXPECT_POINT_NEAR(runs[0][2].point, a, 1e-6);
    EXPECT_GT(runs[0][0].bulge, 0.1);
    EXPECT_NEAR(runs[0][1].bulge, -runs[0][0].bulge, 1e-9);
}

TEST_F(DrawSoftPipe, AfterAnArcTheRunKeepsTheArcsPlane) {
    // An arc standing upright in the XZ plane: its normal is level, and the straight point that
    // follows is appended with that normal, not with +Z.
    Draw({L"0,0,0", L"1000,0,0", L"A", L"1500,0,500", L"1000,0,1000", L"0,0,1000", L"", L"^C"});
    const std::vector<Path> runs = SoftLines(db);
    ASSERT_EQ(runs.size(), 1u);
    ASSERT_EQ(runs[0].size(), 4u);
    EXPECT_VECTOR_NEAR(runs[0][0].normal, AcGeVector3d::kZAxis, 1e-12);
    EXPECT_VECTOR_NEAR(runs[0][1].normal, AcGeVector3d::kZAxis, 1e-12);
    const AcGeVector3d arcNormal = runs[0][2].normal;
    EXPECT_NEAR(std::fabs(arcNormal.y), 1.0, 1e-12) << "the arc's own plane";
    EXPECT_VECTOR_NEAR(runs[0][3].normal, arcNormal, 1e-12);
    EXPECT_NEAR(std::fabs(runs[0][1].bulge), 1.0, 1e-12);
    ExpectVertex(runs[0][3], AcGePoint3d(0, 0, 1000), 0.0);
}

TEST_F(DrawSoftPipe, UTakesBackVerticesDownToNone) {
    // U right after an arc takes its end vertex and its bend; the run goes on from (1000,0).
    // Then a second run: U on its only vertex leaves the line empty, the current point stays
    // where it was (so the same point is refused as coincident), and the next point starts
    // the line afresh.
    const std::string shown =
        Draw({L"0,0", L"1000,0", L"A", L"1500,500", L"1000,1000", L"U", L"2000,0", L"",  //
              L"5000,0", L"U", L"5000,0", L"6000,0", L"7000,0", L"", L"^C"});
    const std::vector<Path> runs = SoftLines(db);
    ASSERT_EQ(runs.size(), 2u);
    ASSERT_EQ(runs[0].size(), 3u);
    ExpectVertex(runs[0][0], AcGePoint3d(0, 0, 0), 0.0);
    ExpectVertex(runs[0][1], AcGePoint3d(1000, 0, 0), 0.0);
    ExpectVertex(runs[0][2], AcGePoint3d(2000, 0, 0), 0.0);
    ASSERT_EQ(runs[1].size(), 2u);
    ExpectVertex(runs[1][0], AcGePoint3d(6000, 0, 0), 0.0);
    ExpectVertex(runs[1][1], AcGePoint3d(7000, 0, 0), 0.0);
    EXPECT_EQ(Count(shown, kSamePoint), 1) << shown;
}

TEST_F(DrawSoftPipe, ARunOfOnePointLeavesNothing) {
    // Enter at the first point asks it again; Enter after one point drops that run and asks a
    // first point again; a cancel after one point drops the run and ends the drawing.
    const std::string shown = Draw({L"", L"0,0", L"", L"0,0", L"^C", L"never read"});
    EXPECT_TRUE(SoftLines(db).empty());
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 0);
    EXPECT_EQ(Count(shown, kFirstPrompt), 3) << shown;
    EXPECT_EQ(input->Remaining(), 1);
    // The dropped runs were in the drawing while they lasted.
    EXPECT_EQ(input->seen, std::vector<int>({0, 0, 1, 0, 1}));
}

TEST_F(DrawSoftPipe, EveryVertexIsInTheDrawingAsItIsAdded) {
    // A cancel with two points or more keeps the run and ends the drawing.
    Draw({L"0,0", L"1000,0", L"1000,0.00005", L"A", L"1500,500", L"1000,1000", L"2000,1000", L"^C",
          L"never read"});
    EXPECT_EQ(input->seen, std::vector<int>({0, 1, 2, 2, 2, 2, 3, 4}));
    EXPECT_EQ(input->Remaining(), 1);
    EXPECT_EQ(Count(out.str(), kSamePoint), 1) << out.str();
    ASSERT_EQ(SoftLines(db).size(), 1u);
    EXPECT_EQ(SoftLines(db)[0].size(), 4u);
}

TEST_F(DrawSoftPipe, AnArcThatCannotBeDrawnAsksItsMiddlePointAgain) {
    // Three points in a line make no arc, nor does Enter at the arc's end; a cancel at the
    // middle point cancels the run, which keeps its two points.
    const std::string shown = Draw({L"0,0", L"1000,0", L"A", L"2000,0", L"3000,0",  //
                                    L"1500,500", L"",                               //
                                    L"1500,500", L"1000,1000", L"A", L"^C", L"never read"});
    EXPECT_EQ(Count(shown, "指定圆弧的中间点:"), 4) << shown;
    const std::vector<Path> runs = SoftLines(db);
    ASSERT_EQ(runs.size(), 1u);
    ASSERT_EQ(runs[0].size(), 3u);
    EXPECT_NEAR(runs[0][1].bulge, 1.0, 1e-12);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 1) << "no arc left behind";
    EXPECT_EQ(input->Remaining(), 1);
}

TEST_F(DrawSoftPipe, AReferencePointGuidesTheFirstPoint) {
    // "@" measures from the base point; the base point itself is no vertex.
    const std::string shown =
        Draw({L"R", L"100,100", L"@50,0", L"1000,0", L"", L"R", L"^C", L"never read"});
    EXPECT_NE(shown.find("指定基点:100,100\n指定第一点:@50,0"), std::string::npos) << shown;
    const std::vector<Path> runs = SoftLines(db);
    ASSERT_EQ(runs.size(), 1u);
    ASSERT_EQ(runs[0].size(), 2u);
    ExpectVertex(runs[0][0], AcGePoint3d(150, 100, 0), 0.0);
    // A cancel at the base point ends the drawing.
    EXPECT_EQ(input->Remaining(), 1);
}

TEST_F(DrawSoftPipe, WithoutAComponentOrSystemNothingIsDrawn) {
    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(CString()));
    Draw({L"0,0", L"1000,0", L""});
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 0);
    EXPECT_EQ(input->Remaining(), 2) << "the drawing ends after the first point";

    ASSERT_TRUE(IFaceBarCtrl::SetCurAttName(kSoftDuct));
    ASSERT_TRUE(IFaceBarCtrl::SetCurSysCode(CString()));
    Draw({L"0,0", L"1000,0", L""});
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 0);
    ASSERT_FALSE(sink.Records().empty());
    EXPECT_EQ(sink.Records().back().text, CString(L"请先在属性栏中选择系统编号!"));
}

TEST_F(DrawSoftPipe, OneUndoStepTakesBackTheWholeDrawing) {
    // As a command runs inside one undo group: the runs, and the arcs drawn and erased on the
    // way, go back together.
    kelaz::UndoLog& undo = db.undoLog();
    undo.beginGroup(L"SOFTPIPE");
    Draw({L"0,0", L"1000,0", L"A", L"1500,500", L"1000,1000", L"", L"0,2000", L"1000,2000", L"^C"});
    undo.endGroup();
    ASSERT_EQ(SoftLines(db).size(), 2u);
    ASSERT_EQ(undo.undoGroups(1), Acad::eOk);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(db).length(), 0);
    EXPECT_FALSE(undo.canUndo());
}
