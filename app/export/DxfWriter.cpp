#include "app/export/DxfWriter.h"

// How an entity of the drawing appears in the file: each of its primitives becomes one plain
// entity in model space (LWPOLYLINE, ARC, CIRCLE, TEXT), and every one of them carries the whole
// identity of its entity as extended data under KELAZ: the entity's handle and class name as the
// first two 1000 items, then the suite's properties in their order. A reader finds an entity by
// gathering the primitives that share a handle; any one of them tells its class and properties.
// This beats a block per entity with one INSERT: plain entities are read by every program and
// stay editable as drawn, and there are no block records whose owner links dxflib does not
// write. The drawing's handles cannot be the file's own (dxflib numbers every object of the file
// itself, tables included), which is why they travel in the extended data. An entity that draws
// nothing has nothing to carry its data and is absent from the file.

#include <dxflib/dl_dxf.h>
#include <dxflib/dl_writer_ascii.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "app/export/DxfText.h"
#include "app/export/ExportPrimitives.h"
#include "host/Assert.h"
#include "host/ge/GeConstants.h"
#include "host/ge/Matrix3d.h"

namespace kelaz {
namespace {

constexpr int kInsUnitsMillimetres = 4;
constexpr int kMeasurementMetric = 1;
constexpr int kLineweightByLayer = -1;
constexpr int kLineweightDefault = -3;
constexpr int kNoTrueColor = -1;
constexpr int kPolylineClosed = 1;
constexpr Adesk::Int16 kDefaultLayerColor = 7;
constexpr const char* kTextStyle = "Standard";
// Extended-data strings hold at most 255 bytes.
constexpr std::size_t kMaxXDataStringBytes = 255;
// An arc that sweeps the whole turn but for this much (radians) is written as a circle.
constexpr double kFullTurnTolerance = 1e-9;
constexpr double kDegreesPerRadian = 180.0 / kPi;
// dxflib numbers the file's objects from 0x30 on; beyond one handle per layer record and per
// primitive it spends fewer than this many on its own tables, blocks and objects.
constexpr unsigned long kFirstHandle = 0x30;
constexpr unsigned long kHandleHeadroom = 0x100;
// The smallest $HANDSEED dxflib itself would declare.
constexpr unsigned long kMinHandleSeed = 0xFFFF;

// The object coordinate system of a planar entity: its normal, and the arbitrary-axis frame
// that the entity's coordinates and angles are given in.
class Ocs {
public:
    explicit Ocs(const AcGeVector3d& normal) {
        const AcGeVector3d n = normal.normal();
        m_isWorld = !n.isUnitLength() || n.isEqualTo(AcGeVector3d::kZAxis);
        // + 0.0 turns a negative zero into zero, which is how the file should read.
        m_normal = m_isWorld ? AcGeVector3d::kZAxis : AcGeVector3d(n.x + 0.0, n.y + 0.0, n.z + 0.0);
        m_toOcs = AcGeMatrix3d::worldToPlane(m_normal);
    }
    AcGePoint3d point(const AcGePoint3d& world) const { return m_toOcs * world; }
    // The direction's angle from the OCS X axis, counter-clockwise about the normal, in [0, 2π).
    double angle(const AcGeVector3d& world) const {
        const AcGeVector3d v = m_toOcs * world;
        return NormalizeAngle(std::atan2(v.y, v.x));
    }
    // The extrusion direction belongs in the file only when it is not the world Z axis.
    void writeExtrusion(const DL_WriterA& dw) const {
        if (!m_isWorld) dw.coord(210, m_normal.x, m_normal.y, m_normal.z);
    }

private:
    bool m_isWorld = true;
    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
    AcGeMatrix3d m_toOcs;
};

struct LayerRecord {
    CString name;
    Adesk::Int16 color = kDefaultLayerColor;
};

// Layer "0", the drawing's layers, then any layer a primitive names that the drawing lacks. The
// host compares layer names without regard to case.
std::vector<LayerRecord> CollectLayers(const ExportDrawing& drawing) {
    std::vector<LayerRecord> layers;
    auto add = [&layers](const CString& name, Adesk::Int16 color) {
        const bool known = std::any_of(layers.begin(), layers.end(), [&name](const auto& l) {
            return l.name.CompareNoCase(name) == 0;
        });
        if (!known && !name.IsEmpty()) layers.push_back({name, color});
    };
    const auto zero = std::find_if(drawing.layers.begin(), drawing.layers.end(), [](const auto& l) {
        return l.name.CompareNoCase(kDefaultLayerName) == 0;
    });
    add(kDefaultLayerName, zero != drawing.layers.end() ? zero->color : kDefaultLayerColor);
    for (const auto& layer : drawing.layers) add(layer.name, layer.color);
    for (const auto& entity : drawing.entities)
        for (const auto& primitive : entity.primitives)
            add(PrimitiveLayer(entity, primitive), kDefaultLayerColor);
    return layers;
}

bool XDataFits(const XDataItem& item) {
    const auto& v = item.value;
    switch (item.code) {
        case 1000:
            return std::holds_alternative<CString>(v);
        case 1002:  // the control strings that brace a group of items
            return std::holds_alternative<CString>(v) &&
                   (std::get<CString>(v) == L"{" || std::get<CString>(v) == L"}");
        case 1040:
        case 1041:
        case 1042:
            return std::holds_alternative<double>(v) && std::isfinite(std::get<double>(v));
        case 1070:
            return std::holds_alternative<Adesk::Int16>(v);
        case 1071:
            return std::holds_alternative<Adesk::Int32>(v);
        case 1010:
        case 1011:
        case 1012:
        case 1013: {
            if (!std::holds_alternative<AcGePoint3d>(v)) return false;
            const auto& p = std::get<AcGePoint3d>(v);
            return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
        }
        default:
            return false;
    }
}

bool CheckXData(const ExportDrawing& drawing, std::string& error) {
    for (const auto& entity : drawing.entities) {
        for (std::size_t i = 0; i < entity.xdata.size(); ++i) {
            if (!XDataFits(entity.xdata[i])) {
                error = "实体 " + entity.handle + "（" + entity.className + "）：第 " +
                        std::to_string(i + 1) + " 项扩展数据的组码 " +
                        std::to_string(entity.xdata[i].code) + " 与它的值不符";
                return false;
            }
        }
    }
    return true;
}

std::size_t CountDrawable(const ExportDrawing& drawing) {
    std::size_t count = 0;
    for (const auto& entity : drawing.entities)
        count += std::count_if(entity.primitives.begin(), entity.primitives.end(),
                               [](const auto& p) { return PrimitiveIsDrawable(p); });
    return count;
}

class DxfFileWriter {
public:
    DxfFileWriter(DL_Dxf& dxf, DL_WriterA& dw) : m_dxf(dxf), m_dw(dw) {}

    void header(unsigned long handleSeed) const {
        m_dw.comment("kelaz");
        m_dw.sectionHeader();
        m_dw.dxfString(9, "$ACADVER");
        m_dw.dxfString(1, "AC1015");
        m_dw.dxfString(9, "$HANDSEED");
        m_dw.dxfHex(5, static_cast<int>(handleSeed));
        m_dw.dxfString(9, "$DWGCODEPAGE");
        m_dw.dxfString(3, kDxfCodePage);
        m_dw.dxfString(9, "$INSUNITS");
        m_dw.dxfInt(70, kInsUnitsMillimetres);
        m_dw.dxfString(9, "$MEASUREMENT");
        m_dw.dxfInt(70, kMeasurementMetric);
        m_dw.sectionEnd();
    }

    void tables(const std::vector<LayerRecord>& layers) const {
        m_dw.sectionTables();
        m_dxf.writeVPort(m_dw);

        m_dw.tableLinetypes(3);
        m_dxf.writeLinetype(m_dw, DL_LinetypeData("BYBLOCK", "", 0, 0, 0.0));
        m_dxf.writeLinetype(m_dw, DL_LinetypeData("BYLAYER", "", 0, 0, 0.0));
        m_dxf.writeLinetype(m_dw, DL_LinetypeData("CONTINUOUS", "Solid line", 0, 0, 0.0));
        m_dw.tableEnd();

        m_dw.tableLayers(static_cast<int>(layers.size()));
        for (const auto& layer : layers) {
            // A negative colour is the host's mark of a layer that is off.
            const int color = std::abs(static_cast<int>(layer.color));
            m_dxf.writeLayer(
                m_dw, DL_LayerData(m_text.encode(layer.name), 0, layer.color < 0),
                DL_Attributes("", color, kNoTrueColor, kLineweightDefault, "CONTINUOUS"));
        }
        m_dw.tableEnd();

        m_dw.tableStyle(1);
        m_dxf.writeStyle(m_dw, DL_StyleData(kTextStyle, 0, 0.0, 1.0, 0.0, 0, 2.5, "txt", ""));
        m_dw.tableEnd();

        m_dxf.writeView(m_dw);
        m_dxf.writeUcs(m_dw);

        m_dw.tableAppid(2);
        m_dxf.writeAppid(m_dw, "ACAD");
        m_dxf.writeAppid(m_dw, kDxfAppName);
        m_dw.tableEnd();

        m_dxf.writeDimStyle(m_dw, 2.5, 0.625, 0.625, 0.625, 2.5);
        m_dxf.writeBlockRecord(m_dw);
        m_dw.tableEnd();
        m_dw.sectionEnd();
    }

    void blocks() const {
        m_dw.sectionBlocks();
        for (const char* name : {"*Model_Space", "*Paper_Space", "*Paper_Space0"}) {
            m_dxf.writeBlock(m_dw, DL_BlockData(name, 0, 0.0, 0.0, 0.0));
            m_dxf.writeEndBlock(m_dw, name);
        }
        m_dw.sectionEnd();
    }

    void entities(const ExportDrawing& drawing) const {
        m_dw.sectionEntities();
        for (const auto& entity : drawing.entities) {
            for (const auto& primitive : entity.primitives) {
                if (!PrimitiveIsDrawable(primitive)) continue;
                std::visit([&](const auto& shape) { write(entity, primitive, shape); },
                           primitive.shape);
                xdata(entity);
            }
        }
        m_dw.sectionEnd();
    }

    void end() const {
        m_dxf.writeObjects(m_dw);
        m_dxf.writeObjectsEnd(m_dw);
        m_dw.dxfEOF();
    }

private:
    void begin(const char* type, const ExportEntity& entity, const GiPrimitive& primitive) const {
        m_dw.entity(type);
        m_dw.dxfString(100, "AcDbEntity");
        m_dw.entityAttributes(DL_Attributes(m_text.encode(PrimitiveLayer(entity, primitive)),
                                            PrimitiveColor(entity, primitive), kNoTrueColor,
                                            kLineweightByLayer, "BYLAYER"));
    }

    void write(const ExportEntity& entity, const GiPrimitive& primitive,
               const GiPolyline& pl) const {
        KELAZ_ASSERT(pl.bulges.size() == pl.points.size(), "one bulge per polyline vertex");
        const Ocs ocs(pl.normal);
        begin("LWPOLYLINE", entity, primitive);
        m_dw.dxfString(100, "AcDbPolyline");
        m_dw.dxfInt(90, static_cast<int>(pl.points.size()));
        m_dw.dxfInt(70, pl.closed ? kPolylineClosed : 0);
        // The vertices share one elevation in their plane: the first vertex's.
        const double elevation = ocs.point(pl.points.front()).z;
        if (elevation != 0.0) m_dw.dxfReal(38, elevation);
        for (std::size_t i = 0; i < pl.points.size(); ++i) {
            const AcGePoint3d p = ocs.point(pl.points[i]);
            m_dw.dxfReal(10, p.x);
            m_dw.dxfReal(20, p.y);
            if (pl.bulges[i] != 0.0) m_dw.dxfReal(42, pl.bulges[i]);
        }
        ocs.writeExtrusion(m_dw);
    }

    void write(const ExportEntity& entity, const GiPrimitive& primitive, const GiArc& arc) const {
        if (arc.sweep >= kTwoPi - kFullTurnTolerance) {
            write(entity, primitive, GiCircle{arc.center, arc.radius, arc.normal});
            return;
        }
        // ARC keeps its extrusion inside the circle part, before its angles: dxflib's own ARC
        // has no extrusion, so the whole entity is written here.
        const Ocs ocs(arc.normal);
        const AcGePoint3d c = ocs.point(arc.center);
        const double start = ocs.angle(arc.startVector);
        begin("ARC", entity, primitive);
        m_dw.dxfString(100, "AcDbCircle");
        m_dw.coord(10, c.x, c.y, c.z);
        m_dw.dxfReal(40, arc.radius);
        ocs.writeExtrusion(m_dw);
        m_dw.dxfString(100, "AcDbArc");
        m_dw.dxfReal(50, start * kDegreesPerRadian);
        m_dw.dxfReal(51, NormalizeAngle(start + arc.sweep) * kDegreesPerRadian);
    }

    void write(const ExportEntity& entity, const GiPrimitive& primitive,
               const GiCircle& circle) const {
        const Ocs ocs(circle.normal);
        const AcGePoint3d c = ocs.point(circle.center);
        begin("CIRCLE", entity, primitive);
        m_dw.dxfString(100, "AcDbCircle");
        m_dw.coord(10, c.x, c.y, c.z);
        m_dw.dxfReal(40, circle.radius);
        ocs.writeExtrusion(m_dw);
    }

    void write(const ExportEntity& entity, const GiPrimitive& primitive, const GiText& text) const {
        const Ocs ocs(text.normal);
        const AcGePoint3d p = ocs.point(text.position);
        const double rotation = ocs.angle(text.direction);
        begin("TEXT", entity, primitive);
        m_dw.dxfString(100, "AcDbText");
        m_dw.coord(10, p.x, p.y, p.z);
        m_dw.dxfReal(40, text.height);
        m_dw.dxfString(1, m_text.encode(text.text));
        if (rotation != 0.0) m_dw.dxfReal(50, rotation * kDegreesPerRadian);
        m_dw.dxfString(7, kTextStyle);
        ocs.writeExtrusion(m_dw);
        m_dw.dxfString(100, "AcDbText");
    }

    // Straight after the entity's own group codes, as extended data must come.
    void xdata(const ExportEntity& entity) const {
        m_dw.dxfString(1001, kDxfAppName);
        m_dw.dxfString(1000, m_text.encode(FromUtf8(entity.handle), kMaxXDataStringBytes));
        m_dw.dxfString(1000, m_text.encode(FromUtf8(entity.className), kMaxXDataStringBytes));
        for (const auto& item : entity.xdata) {
            if (const auto* s = std::get_if<CString>(&item.value)) {
                m_dw.dxfString(item.code, m_text.encode(*s, kMaxXDataStringBytes));
            } else if (const auto* d = std::get_if<double>(&item.value)) {
                m_dw.dxfReal(item.code, *d);
            } else if (const auto* i16 = std::get_if<Adesk::Int16>(&item.value)) {
                m_dw.dxfInt(item.code, *i16);
            } else if (const auto* i32 = std::get_if<Adesk::Int32>(&item.value)) {
                m_dw.dxfInt(item.code, *i32);
            } else if (const auto* p = std::get_if<AcGePoint3d>(&item.value)) {
                m_dw.coord(item.code, p->x, p->y, p->z);
            }
        }
    }

    DL_Dxf& m_dxf;
    DL_WriterA& m_dw;
    DxfTextEncoder m_text;
};

// dxflib's writer keeps write errors to itself; a complete file ends with its EOF marker.
bool EndsWithEofMarker(const std::string& path) {
    std::unique_ptr<FILE, int (*)(FILE*)> f(std::fopen(path.c_str(), "rb"), &std::fclose);
    static constexpr char kTail[] = "EOF\n";
    constexpr long kTailLength = sizeof(kTail) - 1;
    if (!f || std::fseek(f.get(), -kTailLength, SEEK_END) != 0) return false;
    char tail[kTailLength] = {};
    return std::fread(tail, 1, kTailLength, f.get()) == kTailLength &&
           std::equal(tail, tail + kTailLength, kTail);
}

}  // namespace

bool WriteDxf(const ExportDrawing& drawing, const std::string& path, std::string& error) {
    if (!CheckDrawingNumbers(drawing, error) || !CheckXData(drawing, error)) return false;

    const std::vector<LayerRecord> layers = CollectLayers(drawing);
    const unsigned long handleSeed = std::max(
        kMinHandleSeed, kFirstHandle + layers.size() + CountDrawable(drawing) + kHandleHeadroom);

    DL_Dxf dxf;
    std::unique_ptr<DL_WriterA> dw(dxf.out(path.c_str(), DL_Codes::AC1015));
    if (!dw || dw->openFailed()) {
        error = "无法打开文件来写入";
        return false;
    }
    DxfFileWriter writer(dxf, *dw);
    writer.header(handleSeed);
    writer.tables(layers);
    writer.blocks();
    writer.entities(drawing);
    writer.end();
    KELAZ_ASSERT(dw->getNextHandle() <= handleSeed, "handle seed below the handles written");
    dw->close();
    if (!EndsWithEofMarker(path)) {
        error = "文件没有写完整";
        return false;
    }
    return true;
}

}  // namespace kelaz
