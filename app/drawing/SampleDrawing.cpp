#include "app/drawing/SampleDrawing.h"

#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/Database.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "host/ge/GeConstants.h"
#include "module/layout/CalcPositionInRect.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzEquipMent.h"
#include "suite/entities/KelAzKdEnt.h"
#include "suite/entities/KelAzKelSectEnt.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/entities/KelAzPipe.h"
#include "suite/entities/KelAzPipeValve.h"
#include "suite/entities/KelAzSoftLine.h"
#include "suite/entities/KelAzSupport.h"
#include "suite/entities/MainPipeInfo.h"
#include "suite/tools/ModelSpace.h"

namespace kelaz {

namespace {

class Sample {
public:
    explicit Sample(AcDbDatabase& db) : m_db(db) {}

    template <class T>
    void Add(T* entity) {
        AcDbObjectId id;
        if (addToModelSpace(id, entity, &m_db) != Acad::eOk) {
            delete entity;
            m_ok = false;
        }
    }
    template <class T>
    T* Suite(const wchar_t* attName, const wchar_t* sysCode) {
        auto* e = new T;
        e->SetAttName(attName);
        e->SetSysCode(sysCode);
        return e;
    }
    bool Ok() const { return m_ok; }

private:
    AcDbDatabase& m_db;
    bool m_ok = true;
};

MainPipeInfo Riser(const wchar_t* floor, double x, double y, double z1, double z2) {
    MainPipeInfo info;
    SetMainPipeFloorName(info, floor);
    info.x = x;
    info.y = y;
    info.z1 = z1;
    info.z2 = z2;
    return info;
}

}  // namespace

bool BuildSampleDrawing(AcDbDatabase& db) {
    Sample s(db);

    // The room: 6000 x 4000, walls on their own layer; each system's layer in its own colour.
    EnsureLayer(&db, L"墙体", 8);
    EnsureLayer(&db, L"SF", 4);
    EnsureLayer(&db, L"J", 3);
    EnsureLayer(&db, L"WL", 1);
    auto* walls = new AcDbPolyline(4);
    const AcGePoint2d corners[] = {{0, 0}, {6000, 0}, {6000, 4000}, {0, 4000}};
    for (unsigned i = 0; i < 4; ++i) walls->addVertexAt(i, corners[i]);
    walls->setClosed(Adesk::kTrue);
    walls->setLayer(L"墙体");
    s.Add(walls);
    s.Add(new AcDbLine(AcGePoint3d(0, 2600, 0), AcGePoint3d(900, 2600, 0)));
    s.Add(new AcDbArc(AcGePoint3d(0, 2600, 0), 900, 0, kelaz::kPi / 2));  // the door's swing
    s.Add(new AcDbCircle(AcGePoint3d(5700, 3700, 0), AcGeVector3d::kZAxis, 120));

    // Supply duct along the room with diffusers laid out in a row beside it.
    auto* duct = s.Suite<KelAzDuct>(L"暖通\\风管\\矩形风管", L"SF");
    duct->setStartPoint(AcGePoint3d(600, 2000, 2800));
    duct->setEndPoint(AcGePoint3d(5400, 2000, 2800));
    duct->SetWidth(400);
    duct->SetHeight(250);
    s.Add(duct);
    const AcGePoint3dArray row{AcGePoint3d(600, 2400, 2800), AcGePoint3d(5400, 2400, 2800),
                               AcGePoint3d(5400, 3800, 2800), AcGePoint3d(600, 3800, 2800)};
    for (const AcGePoint3d& p : CCalcPositionInRect(row, 1, 3, 600, 700).GetPoints()) {
        auto* diffuser = s.Suite<KelAzEquipMent>(L"暖通\\风口\\方形散流器", L"SF");
        diffuser->SetInsertPoint(p);
        s.Add(diffuser);
    }
    auto* flange = s.Suite<KelAzKelSectEnt>(L"暖通\\风部件\\风法兰", L"SF");
    flange->SetInsertPoint(AcGePoint3d(3000, 2000, 2800));
    s.Add(flange);
    auto* support = s.Suite<KelAzSupport>(L"暖通\\支吊架\\风管吊架", L"SF");
    support->setStartPoint(AcGePoint3d(2000, 1700, 2800));
    support->setEndPoint(AcGePoint3d(2000, 2300, 2800));
    s.Add(support);
    auto* flex = s.Suite<KelAzSoftLine>(L"暖通\\风管\\软管", L"SF");
    // A flexible connection from the duct's side to the first diffuser, with a bend.
    flex->addVertexAt(AcGePoint3d(1200, 2200, 2800), AcGeVector3d::kZAxis, 0.0);
    flex->addVertexAt(AcGePoint3d(1200, 2600, 2800), AcGeVector3d::kZAxis, 0.0);
    flex->setBulgeAt(0, 0.4);
    flex->addVertexAt(AcGePoint3d(1200, 3100, 2800), AcGeVector3d::kZAxis, 0.0);
    s.Add(flex);

    // Water supply along the bottom wall with a gate valve and a riser in the corner.
    auto* pipe = s.Suite<KelAzPipe>(L"给排水\\管道\\给水管", L"J");
    pipe->setStartPoint(AcGePoint3d(600, 500, 600));
    pipe->setEndPoint(AcGePoint3d(5500, 500, 600));
    s.Add(pipe);
    auto* valve = s.Suite<KelAzPipeValve>(L"给排水\\阀门\\闸阀", L"J");
    valve->SetInsertPoint(AcGePoint3d(2500, 500, 600));
    s.Add(valve);
    auto* riser = s.Suite<KelAzMainPipe>(L"给排水\\管道\\给水立管", L"J");
    riser->SetMainPipeInfo(Riser(L"1", 5500, 500, 0, 4500));
    s.Add(riser);

    // Lighting: a lead to a switch, one bent round the door, and a vertical lead up to level 2.
    auto* lead = s.Suite<KelAzLead>(L"电气\\管线\\照明导线", L"WL");
    lead->setStartPoint(AcGePoint3d(1000, 3700, 3000));
    lead->setEndPoint(AcGePoint3d(3000, 3700, 3000));
    s.Add(lead);
    auto* bent = s.Suite<KelAzLead>(L"电气\\管线\\照明导线", L"WL");
    bent->setStartPoint(AcGePoint3d(3000, 3700, 3000));
    bent->setEndPoint(AcGePoint3d(4600, 3700, 3000));
    bent->SetBulge(-0.35);
    bent->SetLayingType(1);
    s.Add(bent);
    auto* up = s.Suite<KelAzMainLead>(L"电气\\管线\\照明导线", L"WL");
    up->SetMainPipeInfo(Riser(L"1", 1000, 3700, 3000, 4500));
    s.Add(up);
    auto* panel = s.Suite<KelAzKdEnt>(L"电气\\配电箱\\照明配电箱", L"WL");
    panel->SetPlacement(KelAzCommon::Placement3D(AcGePoint3d(4600, 3700, 1400),
                                                 AcGeVector3d::kXAxis, AcGeVector3d::kYAxis));
    s.Add(panel);
    return s.Ok();
}

bool BuildRiserSampleDrawing(AcDbDatabase& db) {
    Sample s(db);
    EnsureLayer(&db, L"墙体", 8);
    EnsureLayer(&db, L"J", 3);
    EnsureLayer(&db, L"W", 6);
    auto* shaft = new AcDbPolyline(4);
    const AcGePoint2d corners[] = {{0, 0}, {1500, 0}, {1500, 800}, {0, 800}};
    for (unsigned i = 0; i < 4; ++i) shaft->addVertexAt(i, corners[i]);
    shaft->setClosed(Adesk::kTrue);
    shaft->setLayer(L"墙体");
    s.Add(shaft);
    // 1F+0 to 5F+1100.
    auto* supply = s.Suite<KelAzMainPipe>(L"给排水\\管道\\给水管\\PPR给水管", L"J");
    supply->SetMainPipeInfo(Riser(L"1", 400, 400, 0, 17000));
    s.Add(supply);
    // From the roof (the top of floor 10) to -1F+500.
    auto* stack = s.Suite<KelAzMainPipe>(L"给排水\\管道\\排水管\\PVC-U排水管", L"W");
    stack->SetMainPipeInfo(Riser(L"10", 1100, 400, 37800, -4000));
    s.Add(stack);
    return s.Ok();
}

}  // namespace kelaz
