#pragma once

// Layers of the suite's components. A component lies on the layer of its speciality, big
// category and system, "暖通-风口-SF"; its annotations on the same name + "-标注". The
// project's layer table gives each layer its colour and line type for the exporters.

#include <vector>

#include "host/Adesk.h"
#include "host/text/CString.h"

struct KelAzLayerRecord {
    CString strName;
    Adesk::Int16 nColor = 7;  // colour index
    CString strLineType;
};

class CKELAzLayer {
public:
    // The layer of a category (a path of at least speciality and big category: a small
    // category or an attribute path will do) for a system code of that speciality: kind 0
    // the component layer, kind 1 the annotation layer. Empty when the category, the code or
    // the kind is unknown.
    static CString GetLayerByObjName_BySysCode(const CString& objName, const CString& sysCode,
                                               int kind);
    // The stored layer of that name; false when the table has none.
    static bool GetLayer(const CString& layerName, KelAzLayerRecord& layer);
    // Every stored layer in table order.
    static bool GetAllLayers(std::vector<KelAzLayerRecord>& layers);
};
