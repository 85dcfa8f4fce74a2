#pragma once

// A drawing as the exporters see it: layers, and per entity its identity, what it draws and the
// suite's properties to carry along. Built from the database; the writers know nothing else.

#include <string>
#include <variant>
#include <vector>

#include "host/gi/Primitives.h"

namespace kelaz {

struct ExportLayer {
    CString name;
    Adesk::Int16 color = 7;  // colour index of the layer
};

// One extended-data item with its DXF group code: 1000 text, 1002 "{" or "}" bracing a group,
// 1040 real, 1070 16-bit integer, 1071 32-bit integer, 1010 point, 1013 direction.
struct XDataItem {
    int code = 1000;
    std::variant<CString, double, Adesk::Int16, Adesk::Int32, AcGePoint3d> value;
};

struct ExportEntity {
    std::string handle;  // upper-case hexadecimal, as in the drawing file
    std::string className;
    CString layer;
    Adesk::UInt16 color = kColorByLayer;
    GiPrimitiveList primitives;
    std::vector<XDataItem> xdata;  // empty for the host's standard entities
};

struct ExportDrawing {
    std::vector<ExportLayer> layers;
    std::vector<ExportEntity> entities;  // in drawing order
};

}  // namespace kelaz
