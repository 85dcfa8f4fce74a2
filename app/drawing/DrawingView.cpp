#include "app/drawing/DrawingView.h"

#include <cmath>

#include "app/drawing/Json.h"
#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/LayerTable.h"
#include "host/db/Line.h"
#include "host/db/OpenObject.h"
#include "host/db/Polyline.h"
#include "host/db/Selection.h"
#include "host/gi/GiCollector.h"
#include "module/entry/LayoutClasses.h"
#include "suite/entities/KelAzEntity.h"
#include "suite/entities/PropertyList.h"
#include "suite/entities/SuiteEntities.h"

namespace kelaz {

void InitDrawingClasses() {
    AcDbDatabase warmUp;  // the first database registers the host's own classes
    InitSuiteEntities();
    InitLayoutClasses();
}

std::unique_ptr<AcDbDatabase> OpenDrawing(const std::string& path, std::string& report) {
    InitDrawingClasses();
    auto db = std::make_unique<AcDbDatabase>(false);
    if (db->readDwgFile(FromUtf8(path)) != Acad::eOk) {
        report = ToUtf8(LastFileReport(*db));
        return nullptr;
    }
    return db;
}

namespace {

std::string HandleText(const AcDbObject& object) {
    wchar_t buf[32] = {};
    object.handle().getIntoAsciiBuffer(buf, 32);
    CString text(buf);
    return ToUtf8(text.MakeUpper());
}

std::string PropertyJson(const Property& p) {
    switch (p.kind) {
        case Property::Kind::kText:
            return json::String(p.text);
        case Property::Kind::kReal:
            return json::Number(p.real);
        case Property::Kind::kInteger:
            return std::to_string(p.integer);
        case Property::Kind::kPoint:
            return json::Point(p.point);
        case Property::Kind::kVector:
            return json::Vector(p.vector);
        case Property::Kind::kGroup: {
            json::Object group;
            for (const Property& m : p.members) group.Add(ToUtf8(m.name).c_str(), PropertyJson(m));
            return group.Str();
        }
        case Property::Kind::kRows: {
            std::string rows = "[";
            for (size_t r = 0; r < p.rows.size(); ++r) {
                if (r) rows += ",";
                rows += "[";
                for (size_t c = 0; c < p.rows[r].size(); ++c)
                    rows += (c ? "," : "") + json::Number(p.rows[r][c]);
                rows += "]";
            }
            return rows + "]";
        }
    }
    return "null";
}

// The geometry of the host's own entities, named as the suite names its fields.
void AddStandardGeometry(const AcDbEntity& entity, json::Object& obj) {
    if (const AcDbLine* line = AcDbLine::cast(&entity)) {
        obj.Add("start", json::Point(line->startPoint()))
            .Add("end", json::Point(line->endPoint()))
            .Add("bulge", "0")
            .Add("normal", json::Vector(line->normal()));
    } else if (const AcDbArc* arc = AcDbArc::cast(&entity)) {
        AcGePoint3d start, end;
        arc->getStartPoint(start);
        arc->getEndPoint(end);
        obj.Add("start", json::Point(start))
            .Add("end", json::Point(end))
            .Add("bulge", json::Number(std::tan(arc->totalAngle() / 4.0)))
            .Add("normal", json::Vector(arc->normal()))
            .Add("center", json::Point(arc->center()))
            .Add("radius", json::Number(arc->radius()));
    } else if (const AcDbCircle* circle = AcDbCircle::cast(&entity)) {
        obj.Add("center", json::Point(circle->center()))
            .Add("radius", json::Number(circle->radius()))
            .Add("normal", json::Vector(circle->normal()));
    } else if (const AcDbPolyline* pline = AcDbPolyline::cast(&entity)) {
        std::string vertices = "[";
        for (unsigned i = 0; i < pline->numVerts(); ++i) {
            AcGePoint3d p;
            double bulge = 0.0;
            pline->getPointAt(i, p);
            pline->getBulgeAt(i, bulge);
            vertices += (i ? ",[" : "[") + json::Number(p.x) + "," + json::Number(p.y) + "," +
                        json::Number(p.z) + "," + json::Number(bulge) + "]";
        }
        obj.Add("vertices", vertices + "]")
            .Add("closed", pline->isClosed() ? "true" : "false")
            .Add("normal", json::Vector(pline->normal()));
    }
}

// Extended data of one property: its name, then its value; groups and rows are braced with the
// control strings "{" and "}".
void AppendXData(const Property& p, std::vector<XDataItem>& out) {
    out.push_back({1000, p.name});
    switch (p.kind) {
        case Property::Kind::kText:
            out.push_back({1000, p.text});
            break;
        case Property::Kind::kReal:
            out.push_back({1040, p.real});
            break;
        case Property::Kind::kInteger:
            out.push_back({1071, p.integer});
            break;
        case Property::Kind::kPoint:
            out.push_back({1010, p.point});
            break;
        case Property::Kind::kVector:
            out.push_back({1013, AcGePoint3d::kOrigin + p.vector});
            break;
        case Property::Kind::kGroup:
            out.push_back({1002, CString(L"{")});
            for (const Property& m : p.members) AppendXData(m, out);
            out.push_back({1002, CString(L"}")});
            break;
        case Property::Kind::kRows:
            out.push_back({1002, CString(L"{")});
            for (const auto& row : p.rows) {
                out.push_back({1002, CString(L"{")});
                for (double v : row) out.push_back({1040, v});
                out.push_back({1002, CString(L"}")});
            }
            out.push_back({1002, CString(L"}")});
            break;
    }
}

template <class Visit>
void ForEachEntity(AcDbDatabase& db, Visit visit) {
    for (const AcDbObjectId& id : ModelSpaceIds(&db)) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        visit(*entity);
        entity->close();
    }
}

}  // namespace

std::string EntityJson(const AcDbEntity& entity) {
    json::Object obj;
    obj.Add("handle", json::String(FromUtf8(HandleText(entity))))
        .Add("class", json::String(entity.isA()->name()))
        .Add("layer", json::String(entity.layer()))
        .Add("color", std::to_string(entity.colorIndex()));
    if (const KelAzEntity* suite = KelAzEntity::cast(&entity)) {
        PropertyList list;
        suite->ListProperties(list);
        // attName and sysCode come first whatever order the entity lists them in.
        obj.Add("attName", json::String(suite->GetAttName()))
            .Add("sysCode", json::String(suite->GetSysCode()));
        for (const Property& p : list.Items()) {
            if (p.name == L"attName" || p.name == L"sysCode") continue;
            obj.Add(ToUtf8(p.name).c_str(), PropertyJson(p));
        }
    } else {
        obj.Add("attName", "\"\"").Add("sysCode", "\"\"");
        AddStandardGeometry(entity, obj);
    }
    return obj.Str();
}

void DumpDrawing(AcDbDatabase& db, std::ostream& out) {
    ForEachEntity(db, [&](const AcDbEntity& entity) { out << EntityJson(entity) << '\n'; });
}

ExportDrawing BuildExportDrawing(AcDbDatabase& db) {
    ExportDrawing drawing;
    AcDbLayerTable* layers = nullptr;
    if (db.getLayerTable(layers, AcDb::kForRead) == Acad::eOk) {
        AcDbSymbolTableIterator* it = nullptr;
        if (layers->newIterator(it) == Acad::eOk) {
            for (; !it->done(); it->step()) {
                AcDbSymbolTableRecord* record = nullptr;
                if (it->getRecord(record, AcDb::kForRead) != Acad::eOk) continue;
                CString name;
                record->getName(name);
                if (const AcDbLayerTableRecord* layer = AcDbLayerTableRecord::cast(record)) {
                    drawing.layers.push_back(
                        {name, static_cast<Adesk::Int16>(layer->color().colorIndex())});
                }
                record->close();
            }
            delete it;
        }
        layers->close();
    }
    ForEachEntity(db, [&](const AcDbEntity& entity) {
        ExportEntity out;
        out.handle = HandleText(entity);
        out.className = ToUtf8(CString(entity.isA()->name()));
        out.layer = entity.layer();
        out.color = entity.colorIndex();
        out.primitives = DrawEntity(entity);
        if (const KelAzEntity* suite = KelAzEntity::cast(&entity)) {
            PropertyList list;
            suite->ListProperties(list);
            for (const Property& p : list.Items()) AppendXData(p, out.xdata);
        }
        drawing.entities.push_back(std::move(out));
    });
    return drawing;
}

}  // namespace kelaz
