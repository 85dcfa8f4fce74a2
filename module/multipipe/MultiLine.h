#pragma once

// The preview entity of a bundle of parallel lines: while the multi-pipe jig runs it receives
// the segments of every line computed so far and draws each as a three-vertex polyline with
// bulges, flat in the world XY plane. Its segments live only while the jig runs: the drawing
// files keep its version and flag alone.

#include "host/Adesk.h"
#include "host/db/Entity.h"
#include "host/ge/Point3d.h"
#include "host/text/Array.h"
#include "module/entry/LayoutApi.h"

// One segment of one line: three points in drawing order and the bulge at each.
struct MultiLineSegment {
    AcGePoint3d pt0;
    AcGePoint3d pt1;
    AcGePoint3d pt2;
    double bulge0 = 0.0;
    double bulge1 = 0.0;
    double bulge2 = 0.0;

    friend bool operator==(const MultiLineSegment&, const MultiLineSegment&) = default;
};

using MultiLineSegmentArray = AcArray<MultiLineSegment>;

class LAYOUT_API CMultiLine : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(CMultiLine);

    // The partial-undo record a transform writes.
    static constexpr Adesk::Int16 kTransformUndoCode = 555;

    CMultiLine() = default;

    // Copied from the jig at every update.
    void SetFlag(Adesk::Boolean state);
    Adesk::Boolean GetFlag() const;
    // Replaces every segment by a copy of the given ones.
    void SetSegments(const MultiLineSegmentArray& segments);
    const MultiLineSegmentArray& GetSegments() const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override;
    void viewportDraw(AcGiViewportDraw* mode) override;
    // Records the transform for undo and moves nothing: the jig recomputes the segments at the
    // next sample anyway.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus applyPartialUndo(AcDbDwgFiler* undoFiler, AcRxClass* objectClass) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    Adesk::Boolean m_bState = Adesk::kFalse;
    MultiLineSegmentArray m_segments;
};
