#pragma once

// A colour as the host's objects carry it; only the colour index (ACI) form is used here:
// 0 by block, 1 to 255 the palette, 256 by layer.

#include "host/Adesk.h"
#include "host/db/AcadErrorStatus.h"

class AcCmColor {
public:
    static constexpr Adesk::UInt16 kByBlock = 0;
    static constexpr Adesk::UInt16 kByLayer = 256;

    AcCmColor() = default;

    Adesk::UInt16 colorIndex() const { return m_index; }
    // An index above 256 is refused with eOutOfRange, leaving the colour unchanged.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index) {
        if (index > kByLayer) return Acad::eOutOfRange;
        m_index = index;
        return Acad::eOk;
    }
    bool isByLayer() const { return m_index == kByLayer; }
    bool isByBlock() const { return m_index == kByBlock; }
    void setByLayer() { m_index = kByLayer; }
    void setByBlock() { m_index = kByBlock; }

    friend bool operator==(const AcCmColor&, const AcCmColor&) = default;

private:
    Adesk::UInt16 m_index = kByLayer;
};
