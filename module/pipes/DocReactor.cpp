#include "module/pipes/DocReactor.h"

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "module/multipipe/MultiPipeRow.h"
#include "module/pipes/VerPipeInf.h"
#include "suite/data/Proj.h"
#include "suite/model/BimModel.h"

AcRxClass* CDocReactor::gpDesc = nullptr;

void CDocReactor::rxInit() { newAcRxClass(L"CDocReactor", AcApDocManagerReactor::desc()->name()); }

// The descriptor is looked up in the class dictionary once and kept; a reactor made before the
// module registered its classes registers this one on the way.
AcRxClass* CDocReactor::desc() {
    if (gpDesc == nullptr) {
        rxInit();
        gpDesc = AcRxClass::cast(acrxClassDictionary->at(L"CDocReactor"));
    }
    return gpDesc;
}

AcRxClass* CDocReactor::isA() const { return CDocReactor::desc(); }

CDocReactor::CDocReactor() { acDocManager->addReactor(this); }

CDocReactor::~CDocReactor() { acDocManager->removeReactor(this); }

CString CDocReactor::ProjectNameOf(const CString& prjPath) {
    CString folder = prjPath;
    const int cut = prjPath.ReverseFind(L'\\');
    if (cut > 0) folder = prjPath.Left(cut);
    return folder.Mid(folder.ReverseFind(L'\\') + 1);
}

void CDocReactor::documentCreated(AcApDocument* pDocCreating) {
    if (pDocCreating == nullptr) return;
    const CString name = ProjectNameOf(KelAzDataMng::CProj::GetPrjPath());
    // A document with no project file (the built-in catalogue) says nothing about the project.
    if (name.IsEmpty() || name == m_strPrjName) return;
    CMultiPipeRowStore::ClearAll();
    pDeleteBimInstance();
    CVerPipeLists::ClearAll();
    m_strPrjName = name;
}
