#pragma once

// The traits geometry is drawn with: colour and layer. Set them before the geometry they apply
// to.

#include "host/Adesk.h"
#include "host/db/ObjectId.h"

class AcGiSubEntityTraits {
public:
    virtual ~AcGiSubEntityTraits() = default;

    virtual void setColor(Adesk::UInt16 color) = 0;
    virtual Adesk::UInt16 color() const = 0;
    virtual void setLayer(AcDbObjectId layerId) = 0;
    virtual AcDbObjectId layerId() const = 0;

protected:
    AcGiSubEntityTraits() = default;
    AcGiSubEntityTraits(const AcGiSubEntityTraits&) = default;
    AcGiSubEntityTraits& operator=(const AcGiSubEntityTraits&) = default;
};
