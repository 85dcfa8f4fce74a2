#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/LayerTable.h"
#include "host/db/Line.h"
#include "host/db/MemoryDwgFiler.h"
#include "host/db/MemoryDxfFiler.h"
#include "host/db/Polyline.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/GeConstants.h"
#include "host/ge/LineSeg3d.h"
#include "host/ge/Matrix3d.h"
#include "host/ge/Plane.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::kPi;
using kelaz::MemoryDwgFiler;
using kelaz::MemoryDxfFiler;
using kelaz::test::Filed;

constexpr double kTol = 1e-9;

std::unique_ptr<AcDbLine> SomeLine() {
    auto line = std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(-4, 5.5, 6));
    line->setThickness(0.25);
    line->setNormal(AcGeVector3d(0, 1, 1));
    line->setLayer(L"PIPE-1");
    line->setColorIndex(3);
    return line;
}

std::unique_ptr<AcDbArc> SomeArc() {
    auto arc = std::make_unique<AcDbArc>(AcGePoint3d(5, -1, 2), AcGeVector3d(0, 0, -1), 7.5,
                                         kPi / 3, 1.5 * kPi);
    arc->setThickness(-1);
    arc->setColorIndex(0);
    return arc;
}

std::unique_ptr<AcDbCircle> SomeCircle() {
    auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(0, 0, 9), AcGeVector3d(1, 0, 0), 3);
    circle->setLayer(L"DUCT");
    return circle;
}

std::unique_ptr<AcDbPolyline> SomePolyline() {
    auto pl = std::make_unique<AcDbPolyline>(4);
    pl->addVertexAt(0, AcGePoint2d(0, 0), 0.5, 1, 2);
    pl->addVertexAt(1, AcGePoint2d(10, 0));
    pl->addVertexAt(2, AcGePoint2d(10, 10), -1.0);
    pl->addVertexAt(1, AcGePoint2d(5, -3), 0, 0.5, 0.5);
    pl->setClosed(Adesk::kTrue);
    pl->setElevation(4);
    pl->setNormal(AcGeVector3d(0.6, 0, 0.8));
    pl->setConstantWidth(0.1);
    pl->setColorIndex(5);
    return pl;
}

// Files the entity out and into a fresh one of its class through both filers; both copies must
// file out exactly as the original.
void ExpectRoundTrips(const AcDbEntity& original) {
    const auto bytes = Filed(original);
    std::unique_ptr<AcDbEntity> viaDwg(static_cast<AcDbEntity*>(original.isA()->create()));
    MemoryDwgFiler dwg(bytes, AcDb::kFileFiler);
    ASSERT_EQ(viaDwg->dwgInFields(&dwg), Acad::eOk);
    EXPECT_TRUE(dwg.atEnd()) << "the record is read exactly";
    EXPECT_EQ(Filed(*viaDwg), bytes) << kelaz::ToUtf8(CString(original.isA()->name()));

    MemoryDxfFiler dxf;
    ASSERT_EQ(original.dxfOutFields(&dxf), Acad::eOk);
    dxf.rewindFiler();
    std::unique_ptr<AcDbEntity> viaDxf(static_cast<AcDbEntity*>(original.isA()->create()));
    ASSERT_EQ(viaDxf->dxfInFields(&dxf), Acad::eOk) << kelaz::ToUtf8(CString(dxf.errorMessage()));
    EXPECT_TRUE(dxf.atEOF());
    EXPECT_EQ(Filed(*viaDxf), bytes) << kelaz::ToUtf8(CString(original.isA()->name()));
}

TEST(EntityFiling, EveryStandardEntityRoundTripsThroughBothFilers) {
    ExpectRoundTrips(*SomeLine());
    ExpectRoundTrips(*SomeArc());
    ExpectRoundTrips(*SomeCircle());
    ExpectRoundTrips(*SomePolyline());
    ExpectRoundTrips(AcDbPolyline());

    // The layer record goes the same way.
    AcDbLayerTableRecord layer;
    layer.setName(L"给水");
    AcCmColor red;
    red.setColorIndex(1);
    layer.setColor(red);
    const auto bytes = Filed(layer);
    AcDbLayerTableRecord back;
    MemoryDwgFiler in(bytes, AcDb::kFileFiler);
    ASSERT_EQ(back.dwgInFields(&in), Acad::eOk);
    CString name;
    back.getName(name);
    EXPECT_EQ(name, L"给水");
    EXPECT_EQ(back.color().colorIndex(), 1);
}

// A clone of a resident entity is a free copy: same class and fields, no id, no owner, and the
// original stays as it was (still open for read only).
TEST(EntityFiling, CloneCopiesTheFieldsOfAResidentEntityIntoAFreeOne) {
    AcDbDatabase db;
    kelaz::test::AddLayer(db, L"PIPE-1", 2);
    const AcDbObjectId id = kelaz::test::Append(db, SomeLine().release());
    const auto bytes = Filed(id);
    kelaz::test::Opened<AcDbLine> line(id, AcDb::kForRead);
    std::unique_ptr<AcRxObject> copy(line->clone());
    ASSERT_NE(copy, nullptr);
    const AcDbLine* copied = AcDbLine::cast(copy.get());
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(Filed(*copied), bytes);
    EXPECT_TRUE(copied->objectId().isNull());
    EXPECT_EQ(copied->database(), nullptr);
    EXPECT_TRUE(copied->ownerId().isNull());
    EXPECT_FALSE(line->isWriteEnabled());
}

TEST(EntityFiling, BadRecordsAreRefusedAndLeaveTheEntityAsItWas) {
    const auto arc = SomeArc();
    const auto original = Filed(*arc);

    // A newer version of the class than this program knows.
    MemoryDwgFiler newer(AcDb::kFileFiler);
    newer.writeString(L"0");  // the entity's layer and colour
    newer.writeUInt16(256);
    newer.writeUInt16(2);  // the arc's version, one above this program's
    AcDbArc target(AcGePoint3d(1, 1, 1), 2, 0, 1);
    const auto targetBefore = Filed(target);
    MemoryDwgFiler in(newer.bytes(), AcDb::kFileFiler);
    EXPECT_EQ(target.dwgInFields(&in), Acad::eMakeMeProxy);
    EXPECT_EQ(Filed(target), targetBefore);

    // Cut short anywhere: an error, and the arc's own fields are not half-read.
    for (std::size_t size : {std::size_t{0}, original.size() / 2, original.size() - 1}) {
        std::vector<std::uint8_t> cut(original.begin(), original.begin() + size);
        MemoryDwgFiler short_(cut, AcDb::kFileFiler);
        AcDbArc fresh;
        EXPECT_EQ(fresh.dwgInFields(&short_), Acad::eEndOfFile) << size;
        EXPECT_EQ(fresh.radius(), 1.0) << size;
        EXPECT_EQ(fresh.center(), AcGePoint3d::kOrigin) << size;
    }
    // A radius of zero cannot come from a real arc.
    MemoryDwgFiler zero(AcDb::kFileFiler);
    zero.writeString(L"0");
    zero.writeUInt16(256);
    zero.writeUInt16(1);
    zero.writePoint3d(AcGePoint3d::kOrigin);
    zero.writeDouble(0.0);
    zero.writeDouble(0.0);
    zero.writeDouble(1.0);
    zero.writeVector3d(AcGeVector3d::kZAxis);
    zero.writeDouble(0.0);
    MemoryDwgFiler zeroIn(zero.bytes(), AcDb::kFileFiler);
    EXPECT_EQ(target.dwgInFields(&zeroIn), Acad::eFilerError);
    EXPECT_EQ(Filed(target), targetBefore);

    // DXF: the subclass marker must be there, and a polyline's vertex count must hold.
    MemoryDxfFiler noMarker;
    noMarker.writeItem(AcDb::kDxfSubclass, L"AcDbEntity");
    noMarker.writeItem(AcDb::kDxfLayerName, L"0");
    noMarker.writeDouble(AcDb::kDxfReal, 2.0);
    noMarker.rewindFiler();
    AcDbCircle circle;
    EXPECT_EQ(circle.dxfInFields(&noMarker), Acad::eBadDxfSequence);
    EXPECT_NE(std::wstring(noMarker.errorMessage()).find(L"AcDbCircle"), std::wstring::npos);

    MemoryDxfFiler miscount;
    SomePolyline()->dxfOutFields(&miscount);
    MemoryDxfFiler edited;
    for (const auto& item : miscount.items()) {
        resbuf rb{};
        rb.restype = static_cast<short>(item.code);
        if (item.code == AcDb::kDxfInt32) {
            rb.resval.rlong = 7;
        } else if (item.kind == kelaz::DxfValueKind::kString) {
            rb.resval.rstring = const_cast<wchar_t*>(item.text.c_str());
        } else if (item.kind == kelaz::DxfValueKind::kPoint) {
            for (int i = 0; i < 3; ++i) rb.resval.rpoint[i] = item.real[i];
        } else if (item.kind == kelaz::DxfValueKind::kReal) {
            rb.resval.rreal = item.real[0];
        } else {
            rb.resval.rint = static_cast<short>(item.integer);
        }
        ASSERT_EQ(edited.writeItem(rb), Acad::eOk);
    }
    edited.rewindFiler();
    AcDbPolyline pl;
    EXPECT_EQ(pl.dxfInFields(&edited), Acad::eInvalidDxfCode);
    EXPECT_EQ(pl.numVerts(), 0u);
}

TEST(EntityExtents, ArcsCountTheirRealSweep) {
    AcDbExtents ext;
    // The first quadrant of a circle of 10: the box of the quarter, not of the circle.
    ASSERT_EQ(AcDbArc(AcGePoint3d::kOrigin, 10, 0, kPi / 2).getGeomExtents(ext), Acad::eOk);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(0, 0, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(10, 10, 0), kTol);
    // From 350° through 0° to 10°: it reaches x = r at angle 0 only.
    const double deg = kPi / 180;
    ASSERT_EQ(AcDbArc(AcGePoint3d(1, 1, 0), 10, 350 * deg, 10 * deg).getGeomExtents(ext),
              Acad::eOk);
    EXPECT_NEAR(ext.maxPoint().x, 11, kTol);
    EXPECT_NEAR(ext.minPoint().x, 1 + 10 * std::cos(10 * deg), kTol);
    EXPECT_NEAR(ext.maxPoint().y, 1 + 10 * std::sin(10 * deg), kTol);
    // The other three quarters pass the three other extremes.
    ASSERT_EQ(AcDbArc(AcGePoint3d::kOrigin, 10, kPi / 2, 0).getGeomExtents(ext), Acad::eOk);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(-10, -10, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(10, 10, 0), kTol);
    // About -Z the same angles sweep the mirror image: the second quadrant.
    ASSERT_EQ(
        AcDbArc(AcGePoint3d::kOrigin, AcGeVector3d(0, 0, -1), 10, 0, kPi / 2).getGeomExtents(ext),
        Acad::eOk);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(-10, 0, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(0, 10, 0), kTol);

    // A circle standing in the YZ plane is flat along X.
    ASSERT_EQ(AcDbCircle(AcGePoint3d(1, 2, 3), AcGeVector3d::kXAxis, 2).getGeomExtents(ext),
              Acad::eOk);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(1, 0, 1), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(1, 4, 5), kTol);

    // A polyline's half-circle bulge reaches below its chord.
    AcDbPolyline pl;
    pl.addVertexAt(0, AcGePoint2d(0, 0), 1.0);
    pl.addVertexAt(1, AcGePoint2d(10, 0));
    ASSERT_EQ(pl.getGeomExtents(ext), Acad::eOk);
    EXPECT_POINT_NEAR(ext.minPoint(), AcGePoint3d(0, -5, 0), kTol);
    EXPECT_POINT_NEAR(ext.maxPoint(), AcGePoint3d(10, 0, 0), kTol);
    EXPECT_EQ(AcDbPolyline().getGeomExtents(ext), Acad::eInvalidExtents);
}

TEST(EntityGeometry, CurvesAnswerTheirPointsAndSegments) {
    AcGePoint3d p;
    double param = 0;
    const AcDbArc arc(AcGePoint3d(2, 0, 0), 2, kPi / 2, 0);
    arc.getStartPoint(p);
    EXPECT_POINT_NEAR(p, AcGePoint3d(2, 2, 0), kTol);
    arc.getEndPoint(p);
    EXPECT_POINT_NEAR(p, AcGePoint3d(4, 0, 0), kTol);
    arc.getEndParam(param);
    EXPECT_NEAR(param, 2 * kPi, kTol) << "the end parameter lies past the start";
    EXPECT_NEAR(arc.totalAngle(), 1.5 * kPi, kTol);

    AcDbPolyline pl;
    EXPECT_EQ(pl.segType(0), AcDbPolyline::kEmpty);
    pl.addVertexAt(0, AcGePoint2d(0, 0), -1.0);
    EXPECT_EQ(pl.segType(0), AcDbPolyline::kPoint);
    pl.addVertexAt(1, AcGePoint2d(4, 0));
    pl.addVertexAt(2, AcGePoint2d(4, 0));
    pl.addVertexAt(3, AcGePoint2d(4, 3));
    EXPECT_EQ(pl.addVertexAt(9, AcGePoint2d(0, 0)), Acad::eInvalidIndex);
    EXPECT_EQ(pl.segType(0), AcDbPolyline::kArc);
    EXPECT_EQ(pl.segType(1), AcDbPolyline::kCoincident);
    EXPECT_EQ(pl.segType(2), AcDbPolyline::kLine);
    EXPECT_EQ(pl.segType(3), AcDbPolyline::kEmpty) << "no segment starts at the last vertex";
    pl.setClosed(Adesk::kTrue);
    EXPECT_EQ(pl.segType(3), AcDbPolyline::kLine);

    // A clockwise half circle: its arc runs about -Z from vertex 0 to vertex 1.
    AcGeCircArc3d seg;
    ASSERT_EQ(pl.getArcSegAt(0, seg), Acad::eOk);
    EXPECT_POINT_NEAR(seg.center(), AcGePoint3d(2, 0, 0), kTol);
    EXPECT_NEAR(seg.radius(), 2, kTol);
    EXPECT_VECTOR_NEAR(seg.normal(), AcGeVector3d(0, 0, -1), kTol);
    EXPECT_POINT_NEAR(seg.startPoint(), AcGePoint3d(0, 0, 0), kTol);
    EXPECT_POINT_NEAR(seg.endPoint(), AcGePoint3d(4, 0, 0), kTol);
    EXPECT_POINT_NEAR(seg.evalPoint((seg.startAng() + seg.endAng()) / 2), AcGePoint3d(2, 2, 0),
                      kTol);
    AcGeLineSeg3d line;
    EXPECT_EQ(pl.getLineSegAt(0, line), Acad::eNotApplicable);
    EXPECT_EQ(pl.getArcSegAt(2, seg), Acad::eNotApplicable);
    ASSERT_EQ(pl.getLineSegAt(3, line), Acad::eOk);
    EXPECT_POINT_NEAR(line.endPoint(), AcGePoint3d(0, 0, 0), kTol) << "closing segment";
    pl.getPointAtParam(0.5, p);
    EXPECT_POINT_NEAR(p, AcGePoint3d(2, 2, 0), kTol);
    pl.getEndParam(param);
    EXPECT_EQ(param, 4.0);
    EXPECT_EQ(pl.getPointAtParam(4.5, p), Acad::eInvalidInput);

    // Vertices live in the plane of the normal at the elevation.
    AcDbPolyline tilted;
    tilted.setNormal(AcGeVector3d::kXAxis);
    tilted.setElevation(3);
    tilted.addVertexAt(0, AcGePoint2d(1, 2));
    tilted.getPointAt(0, p);
    EXPECT_NEAR(p.x, 3, kTol);
    EXPECT_NEAR(AcGePoint3d(p.x, 0, 0).distanceTo(AcGePoint3d(3, 0, 0)), 0, kTol);
    EXPECT_NEAR(std::hypot(p.y, p.z), std::hypot(1.0, 2.0), kTol);
}

TEST(EntityGeometry, TransformsKeepArcsCounterClockwise) {
    const AcGeMatrix3d mirrorX =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis));
    AcDbArc arc(AcGePoint3d(5, 0, 0), 1, 0, kPi / 2);  // from (6,0) to (5,1)
    ASSERT_EQ(arc.transformBy(mirrorX), Acad::eOk);
    AcGePoint3d s, e;
    arc.getStartPoint(s);
    arc.getEndPoint(e);
    EXPECT_POINT_NEAR(s, AcGePoint3d(-5, 1, 0), kTol) << "the ends swap";
    EXPECT_POINT_NEAR(e, AcGePoint3d(-6, 0, 0), kTol);
    EXPECT_VECTOR_NEAR(arc.normal(), AcGeVector3d::kZAxis, kTol);
    EXPECT_NEAR(arc.totalAngle(), kPi / 2, kTol);

    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis);
    AcDbArc quarter(AcGePoint3d::kOrigin, 1, 0, kPi / 2);
    ASSERT_EQ(quarter.transformBy(turn * AcGeMatrix3d::scaling(2)), Acad::eOk);
    EXPECT_NEAR(quarter.radius(), 2, kTol);
    EXPECT_NEAR(quarter.startAngle(), kPi / 2, kTol);
    EXPECT_NEAR(quarter.endAngle(), kPi, kTol);

    AcGeMatrix3d stretch;
    stretch.entry[0][0] = 2;
    EXPECT_EQ(quarter.transformBy(stretch), Acad::eCannotScaleNonUniformly);
    AcDbCircle circle;
    EXPECT_EQ(circle.transformBy(stretch), Acad::eCannotScaleNonUniformly);

    AcDbPolyline pl;
    pl.addVertexAt(0, AcGePoint2d(0, 0), 0.5);
    pl.addVertexAt(1, AcGePoint2d(2, 0));
    EXPECT_EQ(pl.transformBy(stretch), Acad::eCannotScaleNonUniformly);
    ASSERT_EQ(pl.transformBy(mirrorX), Acad::eOk);
    double bulge = 0;
    pl.getBulgeAt(0, bulge);
    EXPECT_EQ(bulge, -0.5) << "a mirrored arc turns the other way";
    AcGePoint3d p;
    pl.getPointAt(1, p);
    EXPECT_POINT_NEAR(p, AcGePoint3d(-2, 0, 0), kTol);
    pl.setBulgeAt(0, 0);
    ASSERT_EQ(pl.transformBy(stretch), Acad::eOk) << "straight segments stretch";
    pl.getPointAt(1, p);
    EXPECT_POINT_NEAR(p, AcGePoint3d(-4, 0, 0), kTol);

    AcDbLine ln(AcGePoint3d(1, 1, 0), AcGePoint3d(2, 1, 0));
    ASSERT_EQ(ln.transformBy(AcGeMatrix3d::translation(AcGeVector3d(0, 0, 5))), Acad::eOk);
    EXPECT_POINT_NEAR(ln.endPoint(), AcGePoint3d(2, 1, 5), kTol);
}

}  // namespace
