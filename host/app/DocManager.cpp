#include "host/app/DocManager.h"

#include <algorithm>
#include <iostream>

#include "host/app/RxClass.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/ed/Editor.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManagerReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManager, AcRxObject)

namespace kelaz {

namespace {

struct Console {
    InputSource* input = nullptr;
    std::ostream* out = &std::cout;
};

Console& TheConsole() {
    static Console console;
    return console;
}

CString& OpenReport() {
    static CString report;
    return report;
}

}  // namespace

void SetDocumentConsole(InputSource* input, std::ostream* out) {
    TheConsole() = {input, out};
    AcApDocumentIterator* it = acDocManagerPtr()->newAcApDocumentIterator();
    for (; !it->done(); it->step()) {
        EditorOf(it->document()).SetInput(input);
        EditorOf(it->document()).SetOutput(out);
    }
    delete it;
}

CString LastOpenReport() { return OpenReport(); }

AcApDocument* AddDocument(std::unique_ptr<AcDbDatabase> db, const CString& title) {
    return acDocManagerPtr()->Adopt(std::move(db), title);
}

}  // namespace kelaz

AcApDocManager::AcApDocManager() {
    // The services hold the working database; made first, they outlive the documents.
    acdbHostApplicationServices();
}

// At the end of the process the documents go quietly: the reactors may be gone already.
AcApDocManager::~AcApDocManager() {
    kelaz::SetCurrentEditor(nullptr);
    m_current = nullptr;
    m_docs.clear();
}

template <class F>
void AcApDocManager::Notify(F&& tell) {
    const std::vector<AcApDocManagerReactor*> reactors = m_reactors;
    for (AcApDocManagerReactor* reactor : reactors) {
        if (std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end()) {
            tell(reactor);
        }
    }
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* pDb) const {
    for (const auto& doc : m_docs) {
        if (doc->database() == pDb) return doc.get();
    }
    return nullptr;
}

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() const {
    std::vector<AcApDocument*> docs;
    for (const auto& doc : m_docs) docs.push_back(doc.get());
    return new AcApDocumentIterator(std::move(docs));
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* pDoc, AcAp::DocLockMode mode,
                                               const ACHAR* pGlobalCmdName,
                                               const ACHAR* /*pLocalCmdName*/, bool /*prompt*/) {
    if (pDoc == nullptr || document(pDoc->database()) != pDoc) return Acad::eInvalidInput;
    const AcAp::DocLockMode before = pDoc->lockMode();
    pDoc->m_locks.push_back(mode);
    Notify([&](AcApDocManagerReactor* r) {
        r->documentLockModeChanged(pDoc, before, pDoc->lockMode(), pDoc->lockMode(),
                                   pGlobalCmdName != nullptr ? pGlobalCmdName : L"");
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* pDoc) {
    if (pDoc == nullptr || document(pDoc->database()) != pDoc) return Acad::eInvalidInput;
    if (pDoc->m_locks.empty()) return Acad::eNotApplicable;
    const AcAp::DocLockMode before = pDoc->lockMode();
    pDoc->m_locks.pop_back();
    Notify([&](AcApDocManagerReactor* r) {
        r->documentLockModeChanged(pDoc, before, pDoc->lockMode(), pDoc->lockMode(), L"");
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* pDoc, AcAp::DocLockMode mode,
                                                 bool activate) {
    if (pDoc == nullptr || document(pDoc->database()) != pDoc) return Acad::eInvalidInput;
    if (m_current != pDoc) {
        m_current = pDoc;
        kelaz::SetCurrentEditor(&kelaz::EditorOf(pDoc));
        acdbHostApplicationServices()->setWorkingDatabase(pDoc->database());
        Notify([&](AcApDocManagerReactor* r) { r->documentBecameCurrent(pDoc); });
    }
    if (mode != AcAp::kNone) lockDocument(pDoc, mode);
    if (activate) activateDocument(pDoc);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* pAcTargetDocument,
                                                   bool /*bPassScript*/) {
    if (pAcTargetDocument == nullptr ||
        document(pAcTargetDocument->database()) != pAcTargetDocument) {
        return Acad::eInvalidInput;
    }
    Notify([&](AcApDocManagerReactor* r) { r->documentToBeActivated(pAcTargetDocument); });
    setCurDocument(pAcTargetDocument);
    Notify([&](AcApDocManagerReactor* r) { r->documentActivated(pAcTargetDocument); });
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* pAcTargetDocument,
                                                      const ACHAR* pszExecute, bool bActivate,
                                                      bool /*bWrapUpInactiveDoc*/,
                                                      bool bEchoString) {
    if (pAcTargetDocument == nullptr || pszExecute == nullptr ||
        document(pAcTargetDocument->database()) != pAcTargetDocument) {
        return Acad::eInvalidInput;
    }
    if (bActivate && pAcTargetDocument != m_current) activateDocument(pAcTargetDocument);
    kelaz::EditorOf(pAcTargetDocument).QueueTyped(CString(pszExecute), bEchoString);
    return Acad::eOk;
}

AcApDocument* AcApDocManager::Adopt(std::unique_ptr<AcDbDatabase> db, const CString& title) {
    CString name = title;
    if (name.IsEmpty()) name.Format(L"Drawing%d.kdw", ++m_untitled);
    AcDbDatabase* database = db.get();
    std::unique_ptr<AcApDocument> doc(new AcApDocument(std::move(db), name));
    doc->m_editor = std::make_unique<kelaz::Editor>(database, kelaz::TheConsole().input,
                                                    kelaz::TheConsole().out);
    AcApDocument* pDoc = doc.get();
    Notify([&](AcApDocManagerReactor* r) { r->documentCreateStarted(pDoc); });
    m_docs.push_back(std::move(doc));
    Notify([&](AcApDocManagerReactor* r) { r->documentCreated(pDoc); });
    activateDocument(pDoc);
    return pDoc;
}

Acad::ErrorStatus AcApDocManager::appContextNewDocument(const ACHAR* pszTemplateName) {
    auto db = std::make_unique<AcDbDatabase>(pszTemplateName == nullptr || *pszTemplateName == 0);
    if (pszTemplateName != nullptr && *pszTemplateName != 0) {
        const Acad::ErrorStatus es = db->readDwgFile(pszTemplateName);
        if (es != Acad::eOk) {
            kelaz::OpenReport() = kelaz::LastFileReport(*db);
            return es;
        }
    }
    Adopt(std::move(db), CString());
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextOpenDocument(const ACHAR* pszDrawingName) {
    if (pszDrawingName == nullptr || *pszDrawingName == 0) return Acad::eInvalidInput;
    auto db = std::make_unique<AcDbDatabase>(false);
    const Acad::ErrorStatus es = db->readDwgFile(pszDrawingName);
    if (es != Acad::eOk) {
        kelaz::OpenReport() = kelaz::LastFileReport(*db);
        return es;
    }
    kelaz::OpenReport().Empty();
    Adopt(std::move(db), CString(pszDrawingName));
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* pDoc) {
    const auto it = std::find_if(m_docs.begin(), m_docs.end(),
                                 [pDoc](const auto& doc) { return doc.get() == pDoc; });
    if (pDoc == nullptr || it == m_docs.end()) return Acad::eInvalidInput;
    Notify([&](AcApDocManagerReactor* r) { r->documentToBeDestroyed(pDoc); });
    const CString fileName = pDoc->fileName();
    std::unique_ptr<AcApDocument> doomed = std::move(*it);
    m_docs.erase(it);
    if (m_current == pDoc) {
        m_current = nullptr;
        kelaz::SetCurrentEditor(nullptr);
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
    doomed.reset();
    Notify([&](AcApDocManagerReactor* r) { r->documentDestroyed(fileName.GetString()); });
    if (m_current == nullptr && !m_docs.empty()) setCurDocument(m_docs.back().get());
    return Acad::eOk;
}

void AcApDocManager::addReactor(AcApDocManagerReactor* pReactor) {
    if (pReactor == nullptr) return;
    if (std::find(m_reactors.begin(), m_reactors.end(), pReactor) == m_reactors.end()) {
        m_reactors.push_back(pReactor);
    }
}

void AcApDocManager::removeReactor(AcApDocManagerReactor* pReactor) {
    std::erase(m_reactors, pReactor);
}

AcApDocManager* acDocManagerPtr() {
    static AcApDocManager manager;
    return &manager;
}
