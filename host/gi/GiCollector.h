#pragma once

// A world-draw and viewport-draw context that records what an entity draws: every geometry call
// becomes one primitive, carrying the traits in force at the time.

#include <memory>

#include "host/Adesk.h"
#include "host/gi/Primitives.h"
#include "host/gi/WorldDraw.h"

class AcDbEntity;

namespace kelaz {

class GiCollector {
public:
    // Traits start with the given colour and the entity's own layer.
    explicit GiCollector(Adesk::UInt16 color = kColorByLayer,
                         AcGiRegenType regenType = kAcGiStandardDisplay);
    ~GiCollector();
    GiCollector(const GiCollector&) = delete;
    GiCollector& operator=(const GiCollector&) = delete;

    AcGiWorldDraw& worldDraw();
    AcGiViewportDraw& viewportDraw();
    void setDragging(bool dragging);

    const GiPrimitiveList& primitives() const;
    GiPrimitiveList takePrimitives();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

// What the entity draws: its world draw, and its viewport draw when world draw answers false,
// as the host does. The entity must be readable.
GiPrimitiveList DrawEntity(const AcDbEntity& entity);

}  // namespace kelaz
