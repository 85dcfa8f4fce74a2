#include <gtest/gtest.h>

#include <variant>

#include "host/db/Line.h"
#include "host/ed/EditorInput.h"
#include "host/ed/Jig.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::test::CommandLineHarness;

// A rubber line from a base point to the cursor. On keyword A it takes one more point within the
// same sample, as a jig that asks for an arc's end does.
class LineJig : public AcEdJig {
public:
    explicit LineJig(const AcGePoint3d& base) : m_base(base), m_line(base, base) {}

    DragStatus sampler() override {
        setKeywordList(L"Arc Undo");
        AcGePoint3d p;
        DragStatus status = acquirePoint(p, m_base);
        ++samples;
        if (status == kKW1) status = acquirePoint(p, m_base);
        if (status != kNormal) return status;
        if (p.isEqualTo(m_cursor)) return kNoChange;
        m_cursor = p;
        return kNormal;
    }
    Adesk::Boolean update() override {
        m_line.setEndPoint(m_cursor);
        return Adesk::kTrue;
    }
    AcDbEntity* entity() const override { return const_cast<AcDbLine*>(&m_line); }

    AcGePoint3d cursor() const { return m_cursor; }
    int samples = 0;

private:
    AcGePoint3d m_base;
    AcGePoint3d m_cursor;
    AcDbLine m_line;
};

AcGePoint3d PreviewEnd(const kelaz::Editor& editor) {
    const auto& prims = editor.DragPreview();
    if (prims.empty()) return AcGePoint3d(-1, -1, -1);
    const auto* poly = std::get_if<kelaz::GiPolyline>(&prims.back().shape);
    return poly != nullptr && !poly->points.empty() ? poly->points.back() : AcGePoint3d();
}

TEST(Jig, CursorSamplesUpdateThePreviewAndAPointAccepts) {
    CommandLineHarness cl({L"drag 10,0", L"drag 20,0", L"drag 20,0", L"drag @0,5", L"30,5"});
    LineJig jig(AcGePoint3d::kOrigin);
    jig.setDispPrompt(L"\n捕捉下一个端点[A-圆弧，U-退回]");
    jig.setUserInputControls(AcEdJig::kNullResponseAccepted);
    jig.setSpecialCursorType(AcEdJig::kCrosshair);
    EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
    EXPECT_EQ(jig.samples, 5);
    // 10,0 and 20,0 and 30,5 updated; the repeated 20,0 did not; "@0,5" is relative to the last
    // point (the origin: samples do not move it), 0,5.
    EXPECT_EQ(cl.editor.DragUpdates(), 4);
    EXPECT_POINT_NEAR(PreviewEnd(cl.editor), AcGePoint3d(30, 5, 0), 0);
    EXPECT_POINT_NEAR(jig.cursor(), AcGePoint3d(30, 5, 0), 0);
    EXPECT_POINT_NEAR(cl.editor.LastPoint(), AcGePoint3d(30, 5, 0), 0);
    EXPECT_FALSE(cl.editor.Dragging());
    // The prompt shows once; the samples follow it.
    EXPECT_EQ(cl.Out(),
              "捕捉下一个端点[A-圆弧，U-退回]drag 10,0\ndrag 20,0\ndrag 20,0\ndrag @0,5\n30,5\n");
}

TEST(Jig, AcceptingWhereTheCursorIsStillAccepts) {
    CommandLineHarness cl({L"drag 10,10", L"10,10"});
    LineJig jig(AcGePoint3d::kOrigin);
    EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
    EXPECT_EQ(cl.editor.DragUpdates(), 1);
}

TEST(Jig, KeywordsEnterAndCancel) {
    CommandLineHarness cl({L"u", L"", L"b", L"", L"^C"});
    LineJig undoJig(AcGePoint3d::kOrigin);
    EXPECT_EQ(undoJig.drag(), AcEdJig::kKW2);
    ACHAR word[16];
    EXPECT_EQ(acedGetInput(word), RTNORM);
    EXPECT_EQ(CString(word), L"Undo");

    LineJig enterJig(AcGePoint3d::kOrigin);
    enterJig.setUserInputControls(AcEdJig::kNullResponseAccepted);
    EXPECT_EQ(enterJig.drag(), AcEdJig::kNull);

    // Without null responses Enter is refused, as is a word that is no keyword; then a cancel.
    LineJig strictJig(AcGePoint3d::kOrigin);
    strictJig.setDispPrompt(L"\n下一点:");
    EXPECT_EQ(strictJig.drag(), AcEdJig::kCancel);
    EXPECT_NE(
        cl.Out().find(
            "下一点:b\n需要点或选项关键字。\n下一点:\n需要点或选项关键字。\n下一点:^C\n*取消*"),
        std::string::npos);
    EXPECT_FALSE(cl.editor.InputExhausted());
}

TEST(Jig, ASamplerMayAcquireTwiceAndInputThatRunsOutCancels) {
    CommandLineHarness cl({L"a", L"drag 5,5", L"7,7", L"drag 1,1"});
    LineJig jig(AcGePoint3d::kOrigin);
    // "a" then a cursor sample within the same sample: a move, the drag goes on; then 7,7.
    EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
    EXPECT_POINT_NEAR(jig.cursor(), AcGePoint3d(7, 7, 0), 0);
    EXPECT_EQ(jig.samples, 2);

    LineJig starved(AcGePoint3d::kOrigin);
    EXPECT_EQ(starved.drag(), AcEdJig::kCancel);
    EXPECT_TRUE(cl.editor.InputExhausted());
    EXPECT_EQ(cl.editor.ExhaustedLine(), 4);
}

}  // namespace
