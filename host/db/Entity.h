#pragma once

// A drawable object: it lies on a layer, has a colour, knows its extents, draws itself through
// world draw and can be transformed.

#include "host/Adesk.h"
#include "host/db/CmColor.h"
#include "host/db/Object.h"
#include "host/ge/Extents.h"
#include "host/text/CString.h"

class AcGeMatrix3d;
class AcGiWorldDraw;
class AcGiViewportDraw;

class AcDbEntity : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity);

    // The block the entity belongs to (model space once appended).
    AcDbObjectId blockId() const { return ownerId(); }

    CString layer() const;
    AcDbObjectId layerId() const;
    // The layer must exist in the entity's database (or, for an entity not yet added, in the
    // working database when there is one): eKeyNotFound otherwise, and the layer is unchanged.
    Acad::ErrorStatus setLayer(const wchar_t* newVal, bool doSubents = true,
                               bool allowHiddenLayer = false);
    Acad::ErrorStatus setLayer(AcDbObjectId newVal, bool doSubents = true,
                               bool allowHiddenLayer = false);

    // 256 is by layer, 0 by block.
    Adesk::UInt16 colorIndex() const;
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 color, bool doSubents = true);
    AcCmColor color() const;
    Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true);

    // The current layer of db (or of the working database), colour by layer.
    void setDatabaseDefaults(AcDbDatabase* pDb = nullptr);

    // The box around what the entity draws. This base measures the entity's world-draw output,
    // so a class that draws itself has extents without more code; eInvalidExtents when it draws
    // nothing measurable.
    virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
    // Draws the entity; answering false asks for viewportDraw as well.
    virtual Adesk::Boolean worldDraw(AcGiWorldDraw* mode);
    virtual void viewportDraw(AcGiViewportDraw* vportDraw);
    // eNotApplicable in this base: an entity that can be moved says so by overriding it.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);

    // Highlighting is an on/off display state, not counted: highlighting twice and
    // unhighlighting once leaves the entity unhighlighted. It is neither filed nor undone.
    Acad::ErrorStatus highlight() const;
    Acad::ErrorStatus unhighlight() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    AcDbEntity() = default;

private:
    CString m_layer = L"0";
    AcCmColor m_color;
};

namespace kelaz {

// 1 while the entity is highlighted, 0 otherwise (and for the null id).
int HighlightLevel(AcDbObjectId id);

}  // namespace kelaz
