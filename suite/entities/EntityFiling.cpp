#include "suite/entities/EntityFiling.h"

namespace kelaz {

Acad::ErrorStatus ReadClassVersion(AcDbDwgFiler* filer, Adesk::UInt16 known) {
    Adesk::UInt16 version = 0;
    filer->readUInt16(&version);
    if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
    if (version > known) return Acad::eMakeMeProxy;
    if (version == 0) filer->setFilerStatus(Acad::eFilerError);
    return filer->filerStatus();
}

}  // namespace kelaz
