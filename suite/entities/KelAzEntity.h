#pragma once

// The base of the suite's entities: what every component carries besides its geometry. Its
// attribute name (the component's name, often a path whose last part is shown), the system
// code (the system the component belongs to, which also decides its layer), and the two
// category paths of the component library, backslash-separated ("暖通\\风口\\方形散流器").
//
// Every getter needs the entity open for read and every setter open for write, so a change to a
// database-resident entity keeps its before-image for undo.

#include "host/db/Entity.h"
#include "host/text/CString.h"

namespace kelaz {
class PropertyList;
}

class KelAzEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(KelAzEntity);

    // The project data is not consulted yet: updateFromDatabase is kept for callers written
    // against the day it is, and has no effect here.
    Acad::ErrorStatus SetAttName(const CString& attName, bool updateFromDatabase = true);
    CString GetAttName() const;
    // With updateFromDatabase the entity moves onto the layer for its category and code
    // (LayerForComponent, unless a subclass names a layer of its own), creating the layer in the
    // drawing when it is missing; if that fails the code is not changed either. Without it only
    // the code is recorded (for a copy whose layer is already right).
    Acad::ErrorStatus SetSysCode(const CString& sysCode, bool updateFromDatabase = true);
    CString GetSysCode() const;
    Acad::ErrorStatus SetTypeNamePath(const CString& typeNamePath);
    CString GetTypeNamePath() const;
    Acad::ErrorStatus SetSmallTypeNamePath(const CString& smallTypeNamePath);
    CString GetSmallTypeNamePath() const;

    // Lists the fields for dump and export; a subclass lists its parent's first.
    virtual void ListProperties(kelaz::PropertyList& list) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

    // An entity whose system code was recorded without looking anything up (a riser made in
    // one step) still stands on layer "0"; adding it to the drawing puts it on the layer its
    // data asks for, as every other suite entity is. Entities on another layer keep it.
    Acad::ErrorStatus TakeOwnLayerIfDefault();

protected:
    KelAzEntity() = default;

    // The layer the entity's own data asks for: the system code's.
    virtual CString OwnLayer() const;
    // Puts the entity on the layer, creating it in the entity's database (or the working one
    // for an entity not yet added) when missing. With no database at all any name is taken.
    Acad::ErrorStatus MoveToLayer(const CString& layer);

private:
    CString m_attName;
    CString m_sysCode;
    CString m_typeNamePath;
    CString m_smallTypeNamePath;
};
