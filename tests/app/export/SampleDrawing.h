#pragma once

// A small drawing that uses every kind of primitive and extended-data item, shared by the
// exporter tests.

#include <cmath>

#include "app/export/ExportDrawing.h"
#include "host/ge/GeConstants.h"

namespace kelaz::test {

inline GiPrimitive Primitive(std::variant<GiPolyline, GiArc, GiCircle, GiText> shape,
                             Adesk::UInt16 color = kColorByLayer, const wchar_t* layer = L"") {
    return GiPrimitive{GiTraits{color, layer}, std::move(shape)};
}

inline GiText Text(const AcGePoint3d& at, double height, const wchar_t* text) {
    GiText t;
    t.position = at;
    t.height = height;
    t.text = text;
    return t;
}

// In millimetres. Entity 1A: a duct outline with bulges, its label and a flange circle, with
// every kind of property; 2B and 2C: arcs about +Z and -Z; 3D: a raised outline and a label with
// a character the GBK code page lacks.
inline ExportDrawing SampleDrawing() {
    ExportDrawing d;
    d.layers = {{L"0", 7}, {L"暖通-风管", 3}, {L"PIPE", 5}, {L"NOTE", 2}};

    ExportEntity duct;
    duct.handle = "1A";
    duct.className = "KelAzDuct";
    duct.layer = L"暖通-风管";
    GiPolyline outline;
    outline.points = {{0, 0, 0}, {2000, 0, 0}, {2000, 1000, 0}, {0, 1000, 0}};
    outline.bulges = {0.0, 0.5, 0.0, -0.25};
    outline.closed = true;
    duct.primitives.push_back(Primitive(outline));
    duct.primitives.push_back(Primitive(Text({100, 1200, 0}, 250, L"风法兰 DN100")));
    duct.primitives.push_back(Primitive(GiCircle{{1000, 500, 0}, 200}, 1));
    duct.xdata = {{1000, CString(L"送风系统")},
                  {1040, 2.5},
                  {1070, Adesk::Int16(3)},
                  {1071, Adesk::Int32(70000)},
                  {1010, AcGePoint3d(1, 2, 3)}};
    d.entities.push_back(duct);

    ExportEntity up;
    up.handle = "2B";
    up.className = "KelAzPipe";
    up.layer = L"PIPE";
    up.color = 6;
    const double a30 = kPi / 6;
    up.primitives.push_back(Primitive(GiArc{{3000, 500, 0},
                                            400,
                                            AcGeVector3d::kZAxis,
                                            {std::cos(a30), std::sin(a30), 0},
                                            2 * kPi / 3},
                                      kColorByBlock));
    up.xdata = {{1000, CString(L"DN50")}, {1040, 0.75}};
    d.entities.push_back(up);

    ExportEntity down = up;
    down.handle = "2C";
    down.color = kColorByLayer;
    down.primitives = {Primitive(
        GiArc{{3000, -500, 0}, 400, -AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, kPi / 2})};
    d.entities.push_back(down);

    ExportEntity note;
    note.handle = "3D";
    note.className = "KelAzNote";
    note.layer = L"NOTE";
    GiPolyline raised;
    raised.points = {{0, -1000, 300}, {1000, -1000, 300}};
    raised.bulges = {0.0, 0.0};
    note.primitives.push_back(Primitive(raised));
    note.primitives.push_back(Primitive(Text({0, -1500, 0}, 200, L"标注 한"), 4));
    note.xdata = {{1000, CString(std::wstring(200, L'长'))}};
    d.entities.push_back(note);
    return d;
}

}  // namespace kelaz::test
