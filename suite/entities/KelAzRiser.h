#pragma once

// What main leads and main pipes share: a vertical object at one plan position, from its first
// elevation to its second, described by MainPipeInfo. In plan it shows as the riser symbol (a
// circle with a dot). Its end points are (x, y, z1) and (x, y, z2). The two classes derive from
// different curve bases, so the shared part is a template over the base.

#include "host/app/RxClass.h"
#include "suite/entities/EntityFiling.h"
#include "suite/entities/MainPipeInfo.h"
#include "suite/entities/PropertyList.h"

namespace kelaz {

template <class Base>
class KelAzRiser : public Base {
public:
    // eInvalidInput for a floor name without terminator or a number that is not finite.
    Acad::ErrorStatus SetMainPipeInfo(const MainPipeInfo& info) {
        CString floorName;
        AcGePoint3d start;
        AcGePoint3d end;
        const Acad::ErrorStatus es = RiserFromInfo(info, floorName, start, end);
        if (es != Acad::eOk) return es;
        this->assertWriteEnabled();
        m_floorName = floorName;
        Base::setStartPoint(start);
        Base::setEndPoint(end);
        return Acad::eOk;
    }
    MainPipeInfo GetMainPipeInfo() const {
        this->assertReadEnabled();
        return RiserInfo(m_floorName, this->StartPoint(), this->EndPoint());
    }

    // Each end moves the plan position of both: the riser stays vertical.
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point) override {
        this->assertWriteEnabled();
        Base::setStartPoint(point);
        return Base::setEndPoint(AcGePoint3d(point.x, point.y, this->EndPoint().z));
    }
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point) override {
        this->assertWriteEnabled();
        Base::setEndPoint(point);
        return Base::setStartPoint(AcGePoint3d(point.x, point.y, this->StartPoint().z));
    }

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override {
        this->assertReadEnabled();
        extents = RiserExtents(this->StartPoint(), this->EndPoint());
        return Acad::eOk;
    }
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override {
        this->assertReadEnabled();
        DrawRiser(mode, this->StartPoint());
        return Adesk::kTrue;
    }
    // Motions that keep the vertical vertical; eNotApplicable for others.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override {
        AcGePoint3d start = this->StartPoint();
        AcGePoint3d end = this->EndPoint();
        const Acad::ErrorStatus es = TransformRiser(xform, start, end);
        if (es != Acad::eOk) return es;
        this->assertWriteEnabled();
        Base::setStartPoint(start);
        return Base::setEndPoint(end);
    }

    void ListProperties(PropertyList& list) const override {
        Base::ListProperties(list);
        ListRiser(list, m_floorName, this->StartPoint(), this->EndPoint());
    }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override {
        Acad::ErrorStatus es = Base::dwgInFields(pFiler);
        if (es != Acad::eOk) return es;
        es = ReadClassVersion(pFiler, kRiserVersion);
        if (es != Acad::eOk) return es;
        CString floorName;
        if (pFiler->readString(floorName) != Acad::eOk) return pFiler->filerStatus();
        // A sloping riser or a floor name too long for MainPipeInfo comes from damaged data.
        if (!IsRiser(this->StartPoint(), this->EndPoint()) ||
            floorName.GetLength() > kMaxFloorNameLength) {
            pFiler->setFilerStatus(Acad::eFilerError);
            return pFiler->filerStatus();
        }
        m_floorName = floorName;
        return Acad::eOk;
    }
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override {
        if (Base::dwgOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
        pFiler->writeUInt16(kRiserVersion);
        pFiler->writeString(m_floorName);
        return pFiler->filerStatus();
    }
    // The subclass marker is the concrete class's name.
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override {
        if (Base::dxfInFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
        CString floorName = m_floorName;
        const Acad::ErrorStatus es =
            ReadDxfSubclass(pFiler, this->isA()->name(), [&](const resbuf& rb) {
                if (rb.restype != kDxfFloorName) return false;
                floorName = rb.resval.rstring;
                return true;
            });
        if (es != Acad::eOk) return es;
        if (!IsRiser(this->StartPoint(), this->EndPoint())) {
            return pFiler->setError(Acad::eInvalidDxfCode,
                                    L"Error: the ends of a riser are at different plan positions");
        }
        if (floorName.GetLength() > kMaxFloorNameLength) {
            return pFiler->setError(Acad::eInvalidDxfCode,
                                    L"Error: the floor name is longer than %d characters",
                                    kMaxFloorNameLength);
        }
        m_floorName = floorName;
        return Acad::eOk;
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override {
        if (Base::dxfOutFields(pFiler) != Acad::eOk) return pFiler->filerStatus();
        pFiler->writeItem(AcDb::kDxfSubclass, this->isA()->name());
        pFiler->writeString(kDxfFloorName, m_floorName);
        return pFiler->filerStatus();
    }

private:
    static constexpr Adesk::UInt16 kRiserVersion = 1;
    static constexpr auto kDxfFloorName = static_cast<AcDb::DxfCode>(300);

    CString m_floorName;
};

}  // namespace kelaz
