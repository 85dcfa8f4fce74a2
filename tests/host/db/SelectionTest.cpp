#include <gtest/gtest.h>

#include <random>

#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "host/db/Selection.h"
#include "host/db/UndoLog.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Matrix3d.h"
#include "tests/support/DbCheckers.h"

namespace {

using kelaz::SelectionFilter;
using kelaz::test::Append;
using kelaz::test::Opened;

// A drawing of random small entities of four classes on three layers.
class RandomDrawing {
public:
    explicit RandomDrawing(unsigned seed, int count) : m_rng(seed) {
        kelaz::test::AddLayer(db, L"A", 1);
        kelaz::test::AddLayer(db, L"B", 2);
        kelaz::test::AddLayer(db, L"C", 3);
        for (int i = 0; i < count; ++i) ids.append(Append(db, make()));
    }

    AcDbEntity* make() {
        const AcGePoint3d p(coord(), coord(), 0);
        const double size = std::uniform_real_distribution<double>(0.5, 30)(m_rng);
        AcDbEntity* e = nullptr;
        switch (m_rng() % 4) {
            case 0:
                e = new AcDbLine(p, p + AcGeVector3d(size, size / 3, 0));
                break;
            case 1:
                e = new AcDbCircle(p, AcGeVector3d::kZAxis, size / 2);
                break;
            case 2:
                e = new AcDbArc(p, size, angle(), angle());
                break;
            default: {
                auto* pl = new AcDbPolyline();
                pl->addVertexAt(0, AcGePoint2d(p.x, p.y), 0.7);
                pl->addVertexAt(1, AcGePoint2d(p.x + size, p.y));
                pl->addVertexAt(2, AcGePoint2d(p.x + size, p.y + size), -0.3);
                e = pl;
            }
        }
        static const wchar_t* const kLayers[] = {L"A", L"B", L"C"};
        e->setLayer(kLayers[m_rng() % 3]);
        return e;
    }
    double coord() { return std::uniform_real_distribution<double>(0, 1000)(m_rng); }
    double angle() { return std::uniform_real_distribution<double>(0, kelaz::kTwoPi)(m_rng); }
    AcGePoint3d corner() { return AcGePoint3d(coord(), coord(), 0); }

    // Window and crossing through the index against the scan, for random windows and filters.
    // Answers how many entities were found, so that a test can see it was not all empty.
    int expectIndexMatchesScan(int windows) {
        const SelectionFilter filters[] = {
            {},
            {AcDbArc::desc(), {}},
            {AcDbCurve::desc(), {L"a"}},
            {nullptr, {L"B", L"c"}},
            {AcDbPolyline::desc(), {L"C"}},
        };
        int found = 0;
        for (int w = 0; w < windows; ++w) {
            const AcGePoint3d c1 = corner();
            const AcGePoint3d c2 = corner();
            for (const SelectionFilter& f : filters) {
                const auto window = kelaz::SelectWindow(&db, c1, c2, f);
                const auto crossing = kelaz::SelectCrossing(&db, c1, c2, f);
                EXPECT_EQ(window, kelaz::ScanWindow(&db, c1, c2, f));
                EXPECT_EQ(crossing, kelaz::ScanCrossing(&db, c1, c2, f));
                found += window.length() + crossing.length();
            }
        }
        return found;
    }

    AcDbDatabase db;
    AcDbObjectIdArray ids;

private:
    std::mt19937 m_rng;
};

TEST(Selection, IndexAnswersAsTheScanOnRandomDrawings) {
    RandomDrawing drawing(20240601, 600);
    EXPECT_GT(drawing.expectIndexMatchesScan(10), 200);

    // Erase some, move others, all inside one undo group.
    drawing.db.undoLog().beginGroup();
    for (int i = 0; i < drawing.ids.length(); i += 7) {
        Opened<AcDbEntity> e(drawing.ids[i], AcDb::kForWrite);
        e->erase();
    }
    for (int i = 3; i < drawing.ids.length(); i += 11) {
        Opened<AcDbEntity> e(drawing.ids[i], AcDb::kForWrite);
        if (!e) continue;  // erased just before
        e->transformBy(AcGeMatrix3d::translation(AcGeVector3d(137, -260, 0)));
    }
    for (int i = 0; i < 100; ++i) drawing.ids.append(Append(drawing.db, drawing.make()));
    drawing.db.undoLog().endGroup();
    EXPECT_GT(drawing.expectIndexMatchesScan(10), 200);

    ASSERT_EQ(drawing.db.undoLog().undoGroups(1), Acad::eOk);
    EXPECT_GT(drawing.expectIndexMatchesScan(10), 200);
    // Nothing erased or appended by the group is left selectable.
    const auto all =
        kelaz::SelectCrossing(&drawing.db, AcGePoint3d(-1e6, -1e6, 0), AcGePoint3d(1e6, 1e6, 0));
    EXPECT_EQ(all.length(), 600);
}

TEST(Selection, BoundariesCountAndResultsComeInDrawingOrder) {
    AcDbDatabase db;
    // Appended right to left, so drawing order is not the order of x.
    const AcDbObjectId right =
        Append(db, new AcDbLine(AcGePoint3d(20, 0, 0), AcGePoint3d(30, 0, 0)));
    const AcDbObjectId flat = Append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
    const AcDbObjectId ring =
        Append(db, new AcDbCircle(AcGePoint3d(5, 5, 0), AcGeVector3d::kZAxis, 5));
    // A window whose edge the flat line lies on, and that the circle touches inside.
    EXPECT_EQ(kelaz::SelectWindow(&db, AcGePoint3d(10, 10, 0), AcGePoint3d(0, 0, 0)),
              (AcDbObjectIdArray{flat, ring}));
    EXPECT_EQ(kelaz::SelectWindow(&db, AcGePoint3d(0, 0.001, 0), AcGePoint3d(10, 10, 0)),
              (AcDbObjectIdArray{}));
    // A crossing that only touches the right line's end.
    EXPECT_EQ(kelaz::SelectCrossing(&db, AcGePoint3d(10, -1, 0), AcGePoint3d(20, 1, 0)),
              (AcDbObjectIdArray{right, flat, ring}));

    // The index follows a write when it is closed.
    {
        Opened<AcDbCircle> circle(ring, AcDb::kForWrite);
        circle->setCenter(AcGePoint3d(100, 100, 0));
    }
    EXPECT_EQ(kelaz::SelectCrossing(&db, AcGePoint3d(99, 99, 0), AcGePoint3d(101, 101, 0)),
              (AcDbObjectIdArray{ring}));
    EXPECT_EQ(kelaz::SelectWindow(&db, AcGePoint3d(-1, -1, 0), AcGePoint3d(11, 11, 0)),
              (AcDbObjectIdArray{flat}));
    EXPECT_TRUE(kelaz::SelectWindow(nullptr, AcGePoint3d(), AcGePoint3d()).isEmpty());
}

}  // namespace
