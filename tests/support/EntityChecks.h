#pragma once

// The checklist every suite entity class passes, and the comparisons it needs. A class is one
// row: its runtime class, its DXF name, the keys of its property listing, and setters that each
// move one field away from its default. The checklist test runs every check on every row:
//   EntityRow{KelAzPipe::desc(), L"KELAZPIPE", CurveKeys(), CurveSetters()}

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "host/app/RxClass.h"
#include "host/db/MemoryDwgFiler.h"
#include "host/db/MemoryDxfFiler.h"
#include "host/ge/Extents.h"
#include "host/ge/Matrix3d.h"
#include "host/gi/GiCollector.h"
#include "host/gi/PrimitiveExtents.h"
#include "suite/entities/KelAzEntity.h"
#include "suite/entities/PropertyList.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace kelaz::test {

using EntitySetter = std::function<void(KelAzEntity&)>;

// A setter written against the concrete class.
template <class T, class F>
EntitySetter On(F change) {
    return [change](KelAzEntity& e) {
        T* t = T::cast(&e);
        ASSERT_NE(t, nullptr) << ToUtf8(CString(e.isA()->name()));
        change(*t);
    };
}

struct EntityRow {
    AcRxClass* cls;
    const wchar_t* dxfName;
    std::vector<std::wstring> keys;
    std::vector<EntitySetter> setters;
};

inline std::string NameOf(const AcRxClass* cls) { return ToUtf8(CString(cls->name())); }

inline std::unique_ptr<KelAzEntity> Make(const AcRxClass* cls) {
    return std::unique_ptr<KelAzEntity>(KelAzEntity::cast(cls->create()));
}

// A new entity of the row's class with every setter applied.
inline std::unique_ptr<KelAzEntity> MakeSet(const EntityRow& row) {
    auto e = Make(row.cls);
    for (const auto& set : row.setters) set(*e);
    return e;
}

// The classes from the one below AcDbEntity down to the entity's own, in filing order.
inline std::vector<const AcRxClass*> SuiteClassChain(const AcRxClass* cls) {
    std::vector<const AcRxClass*> chain;
    for (; cls != nullptr && cls != AcDbEntity::desc(); cls = cls->myParent()) {
        chain.insert(chain.begin(), cls);
    }
    return chain;
}

inline std::unique_ptr<KelAzEntity> CopyOf(const KelAzEntity& e) {
    MemoryDwgFiler out(AcDb::kCopyFiler);
    EXPECT_EQ(e.dwgOutFields(&out), Acad::eOk);
    auto copy = Make(e.isA());
    MemoryDwgFiler in(out.takeBytes(), AcDb::kCopyFiler);
    EXPECT_EQ(copy->dwgInFields(&in), Acad::eOk);
    return copy;
}

inline PropertyList Listed(const KelAzEntity& e) {
    PropertyList list;
    e.ListProperties(list);
    return list;
}

inline bool SameProperty(const Property& a, const Property& b) {
    if (a.name != b.name || a.kind != b.kind) return false;
    switch (a.kind) {
        case Property::Kind::kText:
            return a.text == b.text;
        case Property::Kind::kReal:
            return a.real == b.real;
        case Property::Kind::kInteger:
            return a.integer == b.integer;
        case Property::Kind::kPoint:
            return a.point == b.point;
        case Property::Kind::kVector:
            return a.vector == b.vector;
        case Property::Kind::kRows:
            return a.rows == b.rows;
        case Property::Kind::kGroup:
            if (a.members.size() != b.members.size()) return false;
            for (std::size_t i = 0; i < a.members.size(); ++i) {
                if (!SameProperty(a.members[i], b.members[i])) return false;
            }
            return true;
    }
    return false;
}

inline bool SameListing(const PropertyList& a, const PropertyList& b) {
    if (a.Items().size() != b.Items().size()) return false;
    for (std::size_t i = 0; i < a.Items().size(); ++i) {
        if (!SameProperty(a.Items()[i], b.Items()[i])) return false;
    }
    return true;
}

// Files out, reads into a new instance of the class, and files that out again: both records
// must be the same bytes, read to their end.
inline void ExpectDwgRoundTrip(const KelAzEntity& e) {
    const auto bytes = Filed(e);
    auto back = Make(e.isA());
    MemoryDwgFiler in(bytes, AcDb::kFileFiler);
    ASSERT_EQ(back->dwgInFields(&in), Acad::eOk) << NameOf(e.isA());
    EXPECT_TRUE(in.atEnd()) << NameOf(e.isA()) << ": the record is read exactly";
    EXPECT_EQ(Filed(*back), bytes) << NameOf(e.isA());
}

// A file filer that writes every 16-bit number as asked, except the one at index bump, which it
// writes one higher. The entity's first 16-bit number is its colour; each class of the suite
// writes one more, its version.
class VersionBumpFiler : public MemoryDwgFiler {
public:
    explicit VersionBumpFiler(int bump) : MemoryDwgFiler(AcDb::kFileFiler), m_bump(bump) {}
    Acad::ErrorStatus writeUInt16(Adesk::UInt16 value) override {
        if (m_count++ == m_bump) ++value;
        return MemoryDwgFiler::writeUInt16(value);
    }
    int count() const { return m_count; }

private:
    int m_bump;
    int m_count = 0;
};

// Every class of the chain writes its version and refuses a newer one with eMakeMeProxy.
inline void ExpectNewerVersionsRefused(const KelAzEntity& e) {
    const std::size_t levels = SuiteClassChain(e.isA()).size();
    VersionBumpFiler count(-1);
    e.dwgOutFields(&count);
    ASSERT_EQ(static_cast<std::size_t>(count.count()), levels + 1)
        << NameOf(e.isA()) << ": the colour, then one version per class";
    for (std::size_t level = 1; level <= levels; ++level) {
        VersionBumpFiler newer(static_cast<int>(level));
        e.dwgOutFields(&newer);
        auto back = Make(e.isA());
        MemoryDwgFiler in(newer.takeBytes(), AcDb::kFileFiler);
        EXPECT_EQ(back->dwgInFields(&in), Acad::eMakeMeProxy)
            << NameOf(e.isA()) << ", version of " << NameOf(SuiteClassChain(e.isA())[level - 1]);
    }
}

// A record cut short anywhere is refused with the filer's error status.
inline void ExpectShortRecordsRefused(const KelAzEntity& e) {
    const auto bytes = Filed(e);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        auto back = Make(e.isA());
        MemoryDwgFiler in(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + size),
                          AcDb::kFileFiler);
        const Acad::ErrorStatus es = back->dwgInFields(&in);
        EXPECT_NE(es, Acad::eOk) << NameOf(e.isA()) << " cut at " << size;
        EXPECT_EQ(in.filerStatus(), es) << NameOf(e.isA()) << " cut at " << size;
        if (es == Acad::eOk) return;  // one report per class is enough
    }
}

// Writes DXF, checks the subclass markers name the class chain in order, reads it into a new
// instance and compares the two through their DWG records.
inline void ExpectDxfRoundTrip(const KelAzEntity& e) {
    MemoryDxfFiler dxf;
    ASSERT_EQ(e.dxfOutFields(&dxf), Acad::eOk) << ToUtf8(CString(dxf.errorMessage()));
    std::vector<std::wstring> markers;
    for (const auto& item : dxf.items()) {
        if (item.code == AcDb::kDxfSubclass) markers.push_back(item.text);
    }
    std::vector<std::wstring> expected{L"AcDbEntity"};
    for (const AcRxClass* c : SuiteClassChain(e.isA())) expected.emplace_back(c->name());
    EXPECT_EQ(markers, expected) << NameOf(e.isA());

    dxf.rewindFiler();
    auto back = Make(e.isA());
    ASSERT_EQ(back->dxfInFields(&dxf), Acad::eOk) << ToUtf8(CString(dxf.errorMessage()));
    EXPECT_TRUE(dxf.atEOF()) << NameOf(e.isA());
    EXPECT_EQ(Filed(*back), Filed(e)) << NameOf(e.isA());
}

// The entity's DXF items, each passed through edit (which may change its value), in a new filer
// ready to be read: damaged records for the error paths.
template <class Edit>
MemoryDxfFiler EditedDxf(const KelAzEntity& e, Edit edit) {
    MemoryDxfFiler written;
    e.dxfOutFields(&written);
    MemoryDxfFiler edited;
    for (MemoryDxfFiler::Item item : written.items()) {
        edit(item);
        resbuf rb{};
        rb.restype = static_cast<short>(item.code);
        switch (item.kind) {
            case DxfValueKind::kString:
                rb.resval.rstring = item.text.data();
                break;
            case DxfValueKind::kPoint:
                for (int i = 0; i < 3; ++i) rb.resval.rpoint[i] = item.real[i];
                break;
            case DxfValueKind::kReal:
                rb.resval.rreal = item.real[0];
                break;
            case DxfValueKind::kInt16:
                rb.resval.rint = static_cast<short>(item.integer);
                break;
            default:
                rb.resval.rlong = static_cast<Adesk::Int32>(item.integer);
                break;
        }
        EXPECT_EQ(edited.writeItem(rb), Acad::eOk) << item.code;
    }
    edited.rewindFiler();
    return edited;
}

inline void ExpectExtentsNear(const AcDbExtents& actual, const AcGePoint3d& min,
                              const AcGePoint3d& max, double tol) {
    EXPECT_POINT_NEAR(actual.minPoint(), min, tol);
    EXPECT_POINT_NEAR(actual.maxPoint(), max, tol);
}

inline AcDbExtents ExtentsOf(const AcDbEntity& e) {
    AcDbExtents box;
    EXPECT_EQ(e.getGeomExtents(box), Acad::eOk) << NameOf(e.isA());
    return box;
}

// The primitives moved by a rigid motion (or a uniform scaling without mirroring).
inline GiPrimitiveList Transformed(GiPrimitiveList list, const AcGeMatrix3d& m) {
    const double scale = m.scale();
    auto turn = [&](const AcGeVector3d& v) { return (m * v).normal(); };
    for (GiPrimitive& p : list) {
        std::visit(
            [&](auto& s) {
                using S = std::decay_t<decltype(s)>;
                if constexpr (std::is_same_v<S, GiPolyline>) {
                    for (AcGePoint3d& q : s.points) q.transformBy(m);
                    s.normal = turn(s.normal);
                } else if constexpr (std::is_same_v<S, GiArc>) {
                    s.center.transformBy(m);
                    s.radius *= scale;
                    s.normal = turn(s.normal);
                    s.startVector = turn(s.startVector);
                } else if constexpr (std::is_same_v<S, GiCircle>) {
                    s.center.transformBy(m);
                    s.radius *= scale;
                    s.normal = turn(s.normal);
                } else {
                    s.position.transformBy(m);
                    s.normal = turn(s.normal);
                    s.direction = turn(s.direction);
                    s.height *= scale;
                }
            },
            p.shape);
    }
    return list;
}

// The same primitives in the same order, every coordinate within tol.
inline void ExpectPrimitivesNear(const GiPrimitiveList& actual, const GiPrimitiveList& expected,
                                 double tol, const std::string& what) {
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        const auto& a = actual[i].shape;
        const auto& b = expected[i].shape;
        ASSERT_EQ(a.index(), b.index()) << what << ", primitive " << i;
        SCOPED_TRACE(what + ", primitive " + std::to_string(i));
        if (const auto* pa = std::get_if<GiPolyline>(&a)) {
            const auto& pb = std::get<GiPolyline>(b);
            ASSERT_EQ(pa->points.size(), pb.points.size());
            for (std::size_t k = 0; k < pa->points.size(); ++k) {
                EXPECT_POINT_NEAR(pa->points[k], pb.points[k], tol);
                EXPECT_NEAR(pa->bulges[k], pb.bulges[k], tol);
            }
            EXPECT_EQ(pa->closed, pb.closed);
            EXPECT_VECTOR_NEAR(pa->normal, pb.normal, tol);
        } else if (const auto* aa = std::get_if<GiArc>(&a)) {
            const auto& ab = std::get<GiArc>(b);
            EXPECT_POINT_NEAR(aa->center, ab.center, tol);
            EXPECT_NEAR(aa->radius, ab.radius, tol);
            EXPECT_VECTOR_NEAR(aa->normal, ab.normal, tol);
            EXPECT_VECTOR_NEAR(aa->startVector, ab.startVector, tol);
            EXPECT_NEAR(aa->sweep, ab.sweep, tol);
        } else if (const auto* ca = std::get_if<GiCircle>(&a)) {
            const auto& cb = std::get<GiCircle>(b);
            EXPECT_POINT_NEAR(ca->center, cb.center, tol);
            EXPECT_NEAR(ca->radius, cb.radius, tol);
            EXPECT_VECTOR_NEAR(ca->normal, cb.normal, tol);
        } else {
            const auto& ta = std::get<GiText>(a);
            const auto& tb = std::get<GiText>(b);
            EXPECT_POINT_NEAR(ta.position, tb.position, tol);
            EXPECT_VECTOR_NEAR(ta.direction, tb.direction, tol);
            EXPECT_NEAR(ta.height, tb.height, tol);
            EXPECT_EQ(ta.text, tb.text);
        }
    }
}

// The primitives of one kind, in drawing order.
template <class Shape>
std::vector<Shape> Shapes(const GiPrimitiveList& list) {
    std::vector<Shape> shapes;
    for (const GiPrimitive& p : list) {
        if (const auto* s = std::get_if<Shape>(&p.shape)) shapes.push_back(*s);
    }
    return shapes;
}

}  // namespace kelaz::test
