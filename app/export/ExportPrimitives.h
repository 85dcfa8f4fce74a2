#pragma once

// What every exporter agrees on about a primitive of an exported entity: the layer and colour it
// is drawn with, whether its numbers are usable, and whether it draws anything at all.

#include <string>

#include "app/export/ExportDrawing.h"

namespace kelaz {

// The layer the host puts everything on that names no other.
inline constexpr const wchar_t* kDefaultLayerName = L"0";

// The primitive's own layer, else its entity's, else layer "0".
CString PrimitiveLayer(const ExportEntity& entity, const GiPrimitive& primitive);

// The colour index the primitive is drawn with. The entity stands as the "block" of its own
// graphics, so a primitive drawn by block takes the entity's colour.
Adesk::UInt16 PrimitiveColor(const ExportEntity& entity, const GiPrimitive& primitive);

// A polyline of at least two points, a positive radius, text with characters and a height:
// anything less draws nothing and other programs refuse it, so the exporters leave it out.
bool PrimitiveIsDrawable(const GiPrimitive& primitive);

// False, with the entity named in error, when some coordinate, vector or size of the drawing is
// not a finite number. Such a drawing cannot be written faithfully by any exporter.
bool CheckDrawingNumbers(const ExportDrawing& drawing, std::string& error);

}  // namespace kelaz
