#pragma once

// Filing steps every suite entity takes the same way: the class version that opens its DWG
// record, and the walk over the DXF items of its subclass.

#include "host/Adesk.h"
#include "host/db/AdsDef.h"
#include "host/db/DwgFiler.h"
#include "host/db/DxfFiler.h"

namespace kelaz {

// Reads the version that starts a class's record. A version above `known` was written by a
// newer program: eMakeMeProxy, so the object is kept as a proxy instead of being misread.
// Version 0 is never written and marks damaged data (eFilerError). Otherwise the filer's
// status.
Acad::ErrorStatus ReadClassVersion(AcDbDwgFiler* filer, Adesk::UInt16 known);

// Expects the subclass marker, then hands each item to take(rb) until take answers false (an
// item of the next subclass, given back to the filer) or the items end. Answers the filer's
// status; a missing marker is eBadDxfSequence with a message.
template <class Take>
Acad::ErrorStatus ReadDxfSubclass(AcDbDxfFiler* filer, const wchar_t* subclass, Take take) {
    if (!filer->atSubclassData(subclass)) {
        return filer->setError(Acad::eBadDxfSequence, L"Error: expected subclass %s", subclass);
    }
    resbuf rb;
    while (!filer->atEOF() && filer->readItem(&rb) == Acad::eOk) {
        if (!take(rb)) {
            filer->pushBackItem();
            break;
        }
    }
    return filer->filerStatus();
}

}  // namespace kelaz
