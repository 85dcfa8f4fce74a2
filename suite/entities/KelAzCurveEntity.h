#pragma once

// A suite entity that runs from a start point to an end point (pipes, leads, ducts, supports,
// risers). It may name a layer of its own, which then wins over its system code's layer.

#include "host/ge/Point3d.h"
#include "suite/entities/KelAzEntity.h"

class KelAzCurveEntity : public KelAzEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzCurveEntity);

    // An empty name gives the layer back to the system code. A name the drawing cannot use as a
    // layer is refused (and nothing changes).
    Acad::ErrorStatus SetLayName(const CString& layName);
    CString GetLayName() const;

    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    virtual Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);

    // Moves both ends; a singular matrix is refused with eInvalidInput.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

    void ListProperties(kelaz::PropertyList& list) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    KelAzCurveEntity() = default;

    CString OwnLayer() const override;
    // The ends without the read check, for the class's own drawing and filing.
    const AcGePoint3d& StartPoint() const { return m_start; }
    const AcGePoint3d& EndPoint() const { return m_end; }

private:
    CString m_layName;
    AcGePoint3d m_start;
    AcGePoint3d m_end;
};
