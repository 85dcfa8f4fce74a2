#include "host/gi/GiCollector.h"

#include <algorithm>
#include <cmath>

#include "host/db/DatabaseImpl.h"
#include "host/db/Entity.h"
#include "host/db/LayerTable.h"
#include "host/db/Polyline.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/GeConstants.h"

namespace kelaz {

namespace {

struct State {
    GiPrimitiveList primitives;
    Adesk::UInt16 color = kColorByLayer;
    AcDbObjectId layerId;
    CString layer;
    AcGiRegenType regenType = kAcGiStandardDisplay;
    bool dragging = false;

    template <class Shape>
    void add(Shape shape) {
        GiPrimitive& p = primitives.emplace_back();
        p.traits.color = color;
        p.traits.layer = layer;
        p.shape = std::move(shape);
    }
};

class Traits : public AcGiSubEntityTraits {
public:
    explicit Traits(State& state) : m_state(state) {}

    void setColor(Adesk::UInt16 color) override { m_state.color = color; }
    Adesk::UInt16 color() const override { return m_state.color; }
    void setLayer(AcDbObjectId layerId) override {
        m_state.layerId = layerId;
        m_state.layer.Empty();
        // Read from the database's structure: drawing must not depend on who has the layer open.
        AcRxClass* cls = layerId.objectClass();
        if (cls != nullptr && cls->isDerivedFrom(AcDbLayerTableRecord::desc())) {
            m_state.layer = DatabaseImpl::recordName(layerId.stub());
        }
    }
    AcDbObjectId layerId() const override { return m_state.layerId; }

private:
    State& m_state;
};

template <class Base>
class Geometry : public Base {
public:
    explicit Geometry(State& state) : m_state(state) {}

    Adesk::Boolean circle(const AcGePoint3d& center, double radius,
                          const AcGeVector3d& normal) const override {
        m_state.add(GiCircle{center, radius, normal.normal()});
        return Adesk::kFalse;
    }

    Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2,
                          const AcGePoint3d& p3) const override {
        const AcGeCircArc3d arc(p1, p2, p3);
        // Three points on no circle draw nothing.
        if (arc.radius() > 0.0) m_state.add(GiCircle{arc.center(), arc.radius(), arc.normal()});
        return Adesk::kFalse;
    }

    Adesk::Boolean circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                               const AcGeVector3d& startVector, double sweepAngle,
                               AcGiArcType arcType) const override {
        AcGeVector3d n = normal.normal();
        // A clockwise sweep is the same arc counter-clockwise about the reversed normal.
        if (sweepAngle < 0.0) {
            n = -n;
            sweepAngle = -sweepAngle;
        }
        const double sweep = std::min(sweepAngle, kTwoPi);
        const AcGeVector3d start = startVector.orthoProject(n).normal();
        m_state.add(GiArc{center, radius, n, start, sweep});
        const AcGePoint3d p0 = center + start * radius;
        const AcGePoint3d p1 = center + AcGeVector3d(start).rotateBy(sweep, n) * radius;
        if (arcType == kAcGiArcChord) {
            m_state.add(GiPolyline{{p1, p0}, {0.0, 0.0}, false, n});
        } else if (arcType == kAcGiArcSector) {
            m_state.add(GiPolyline{{p1, center, p0}, {0.0, 0.0, 0.0}, false, n});
        }
        return Adesk::kFalse;
    }

    Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                               const AcGePoint3d& end, AcGiArcType arcType) const override {
        const AcGeCircArc3d arc(start, point, end);
        if (arc.radius() <= 0.0) return Adesk::kFalse;
        return circularArc(arc.center(), arc.radius(), arc.normal(), arc.refVec(),
                           arc.endAng() - arc.startAng(), arcType);
    }

    Adesk::Boolean polyline(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                            const AcGeVector3d* pNormal, Adesk::LongPtr) const override {
        addPolyline(nbPoints, pVertexList, pNormal, false);
        return Adesk::kFalse;
    }

    Adesk::Boolean polygon(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList) const override {
        addPolyline(nbPoints, pVertexList, nullptr, true);
        return Adesk::kFalse;
    }

    Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex,
                         Adesk::UInt32 numSegs) const override {
        const unsigned int n = lwBuf.numVerts();
        if (n == 0 || fromIndex >= n) return Adesk::kFalse;
        const bool closed = lwBuf.isClosed() != Adesk::kFalse;
        const unsigned int total = n == 1 ? 0 : (closed ? n : n - 1);
        const unsigned int available = fromIndex < total ? total - fromIndex : 0;
        const unsigned int count = numSegs == 0 ? available : std::min(numSegs, available);
        GiPolyline out;
        out.normal = lwBuf.normal();
        // The whole of a closed polyline stays closed; a part of it is an open run.
        const bool whole = closed && fromIndex == 0 && count == total;
        const unsigned int points = whole ? n : count + 1;
        for (unsigned int k = 0; k < points; ++k) {
            const unsigned int i = (fromIndex + k) % n;
            AcGePoint3d p;
            double bulge = 0.0;
            lwBuf.getPointAt(i, p);
            if (whole || k < count) lwBuf.getBulgeAt(i, bulge);
            out.points.push_back(p);
            out.bulges.push_back(bulge);
        }
        out.closed = whole;
        m_state.add(std::move(out));
        return Adesk::kFalse;
    }

    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, double height, double, double,
                        const wchar_t* pMsg) const override {
        m_state.add(GiText{position, normal.normal(), direction.normal(), height, CString(pMsg)});
        return Adesk::kFalse;
    }

private:
    void addPolyline(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                     const AcGeVector3d* pNormal, bool closed) const {
        if (nbPoints == 0 || pVertexList == nullptr) return;
        GiPolyline out;
        out.points.assign(pVertexList, pVertexList + nbPoints);
        out.bulges.assign(nbPoints, 0.0);
        out.closed = closed;
        if (pNormal != nullptr) out.normal = pNormal->normal();
        m_state.add(std::move(out));
    }

    State& m_state;
};

class WorldContext : public AcGiWorldDraw {
public:
    WorldContext(State& state, AcGiWorldGeometry& geometry, AcGiSubEntityTraits& traits)
        : m_state(state), m_geometry(geometry), m_traits(traits) {}

    AcGiRegenType regenType() const override { return m_state.regenType; }
    Adesk::Boolean regenAbort() const override { return Adesk::kFalse; }
    AcGiSubEntityTraits& subEntityTraits() const override { return m_traits; }
    Adesk::Boolean isDragging() const override { return m_state.dragging; }
    AcGiWorldGeometry& geometry() const override { return m_geometry; }

private:
    State& m_state;
    AcGiWorldGeometry& m_geometry;
    AcGiSubEntityTraits& m_traits;
};

class ViewportContext : public AcGiViewportDraw {
public:
    ViewportContext(State& state, AcGiViewportGeometry& geometry, AcGiSubEntityTraits& traits)
        : m_state(state), m_geometry(geometry), m_traits(traits) {}

    AcGiRegenType regenType() const override { return m_state.regenType; }
    Adesk::Boolean regenAbort() const override { return Adesk::kFalse; }
    AcGiSubEntityTraits& subEntityTraits() const override { return m_traits; }
    Adesk::Boolean isDragging() const override { return m_state.dragging; }
    AcGiViewportGeometry& geometry() const override { return m_geometry; }
    // One headless view.
    int sequenceNumber() const override { return 0; }

private:
    State& m_state;
    AcGiViewportGeometry& m_geometry;
    AcGiSubEntityTraits& m_traits;
};

}  // namespace

struct GiCollector::Parts {
    State state;
    Traits traits{state};
    Geometry<AcGiWorldGeometry> worldGeometry{state};
    Geometry<AcGiViewportGeometry> viewportGeometry{state};
    WorldContext world{state, worldGeometry, traits};
    ViewportContext viewport{state, viewportGeometry, traits};
};

GiCollector::GiCollector(Adesk::UInt16 color, AcGiRegenType regenType)
    : m_parts(std::make_unique<Parts>()) {
    m_parts->state.color = color;
    m_parts->state.regenType = regenType;
}

GiCollector::~GiCollector() = default;

AcGiWorldDraw& GiCollector::worldDraw() { return m_parts->world; }
AcGiViewportDraw& GiCollector::viewportDraw() { return m_parts->viewport; }
void GiCollector::setDragging(bool dragging) { m_parts->state.dragging = dragging; }
const GiPrimitiveList& GiCollector::primitives() const { return m_parts->state.primitives; }
GiPrimitiveList GiCollector::takePrimitives() { return std::move(m_parts->state.primitives); }

GiPrimitiveList DrawEntity(const AcDbEntity& entity) {
    GiCollector collector(entity.colorIndex());
    // Drawing does not change the entity; the host's draw entry points are simply not const.
    auto& drawn = const_cast<AcDbEntity&>(entity);
    if (drawn.worldDraw(&collector.worldDraw()) == Adesk::kFalse) {
        drawn.viewportDraw(&collector.viewportDraw());
    }
    return collector.takePrimitives();
}

}  // namespace kelaz
