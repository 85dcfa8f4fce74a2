#include <gtest/gtest.h>

#include <variant>

#include "host/ed/EditorInput.h"
#include "host/ed/Jig.h"
#include "module/multipipe/MultiLine.h"
#include "tests/support/CommandLineHarness.h"
#include "tests/support/GeCheckers.h"

namespace {

// Drags a bundle of two straight lines 100 either side of the path from the last point to the
// cursor, with the bundle preview as the jig's entity, as the multi-pipe drawing does.
class BundleJig : public AcEdJig {
public:
    explicit BundleJig(const AcGePoint3d& last) : m_last(last) {}

    DragStatus sampler() override {
        setKeywordList(L"A U");
        setUserInputControls(kNullResponseAccepted);
        setSpecialCursorType(kCrosshair);
        AcGePoint3d p;
        const DragStatus status = acquirePoint(p, m_last);
        if (status != kNormal) return status;
        // A cursor that moved less than a millimetre changes nothing.
        if (p.distanceTo(m_cursor) < 1.0) return kNoChange;
        m_cursor = p;
        const AcGeVector3d side =
            (p - m_last).normal().crossProduct(AcGeVector3d::kZAxis) * kHalfWidth;
        m_segments.removeAll();
        for (const double s : {1.0, -1.0}) {
            const AcGePoint3d a = m_last + side * s;
            const AcGePoint3d b = p + side * s;
            m_segments.append({a, a + (b - a) * 0.5, b});
        }
        return kNormal;
    }
    Adesk::Boolean update() override {
        m_preview.SetFlag(Adesk::kTrue);
        m_preview.SetSegments(m_segments);
        return Adesk::kTrue;
    }
    AcDbEntity* entity() const override { return const_cast<CMultiLine*>(&m_preview); }

private:
    static constexpr double kHalfWidth = 100.0;
    AcGePoint3d m_last;
    AcGePoint3d m_cursor{-1e9, -1e9, 0};
    MultiLineSegmentArray m_segments;
    CMultiLine m_preview;
};

TEST(MultiLineJig, ThePreviewFollowsTheCursorAndAPointAccepts) {
    kelaz::test::CommandLineHarness cl(
        {L"drag 1000,0", L"drag 1000.5,0", L"drag 0,1000", L"0,2000", L"u", L""});
    BundleJig jig(AcGePoint3d::kOrigin);
    jig.setDispPrompt(L"\n捕捉下一个端点[A-圆弧，U-退回]");
    ASSERT_EQ(jig.drag(), AcEdJig::kNormal);
    // 1000,0 and 0,1000 and the accepted 0,2000 drew; half a millimetre did not.
    EXPECT_EQ(cl.editor.DragUpdates(), 3);
    const kelaz::GiPrimitiveList& preview = cl.editor.DragPreview();
    ASSERT_EQ(preview.size(), 2u);
    // Each line is drawn from its end back to its start, flat: the path goes up the Y axis, so
    // the lines run at x = +100 and x = -100.
    const auto& left = std::get<kelaz::GiPolyline>(preview[0].shape);
    ASSERT_EQ(left.points.size(), 3u);
    EXPECT_POINT_NEAR(left.points[0], AcGePoint3d(100, 2000, 0), 1e-9);
    EXPECT_POINT_NEAR(left.points[2], AcGePoint3d(100, 0, 0), 1e-9);
    const auto& right = std::get<kelaz::GiPolyline>(preview[1].shape);
    EXPECT_POINT_NEAR(right.points[0], AcGePoint3d(-100, 2000, 0), 1e-9);

    BundleJig next(AcGePoint3d(0, 2000, 0));
    EXPECT_EQ(next.drag(), AcEdJig::kKW2);
    ACHAR word[8];
    EXPECT_EQ(acedGetInput(word), RTNORM);
    EXPECT_EQ(CString(word), L"U");
    EXPECT_EQ(next.drag(), AcEdJig::kNull);
}

}  // namespace
