#pragma once

// The drawing contexts an entity draws itself into: world draw (the same for every view) and
// viewport draw (per view, asked for when world draw answers false).

#include "host/Adesk.h"
#include "host/gi/Geometry.h"
#include "host/gi/SubEntityTraits.h"

enum AcGiRegenType {
    eAcGiRegenTypeInvalid = 0,
    kAcGiStandardDisplay = 2,
    kAcGiHideOrShadeCommand,
    kAcGiRenderCommand,
    kAcGiForExplode,
    kAcGiSaveWorldDrawForProxy
};

class AcGiCommonDraw {
public:
    virtual ~AcGiCommonDraw() = default;

    virtual AcGiRegenType regenType() const = 0;
    // True when the drawing should stop early.
    virtual Adesk::Boolean regenAbort() const = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
    virtual Adesk::Boolean isDragging() const = 0;

protected:
    AcGiCommonDraw() = default;
    AcGiCommonDraw(const AcGiCommonDraw&) = default;
    AcGiCommonDraw& operator=(const AcGiCommonDraw&) = default;
};

class AcGiWorldDraw : public AcGiCommonDraw {
public:
    virtual AcGiWorldGeometry& geometry() const = 0;
};

class AcGiViewportDraw : public AcGiCommonDraw {
public:
    virtual AcGiViewportGeometry& geometry() const = 0;
    // The sequence number of the view being drawn.
    virtual int sequenceNumber() const = 0;
};
