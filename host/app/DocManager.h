#pragma once

// The document manager: the open documents, the current one, their locks, typed input sent to
// a document, and the reactors told when documents are made, become current and are destroyed.
//
// Creating a document tells the reactors documentCreateStarted, documentCreated, then (it is
// made current) documentBecameCurrent and documentActivated. Closing one tells
// documentToBeDestroyed, destroys it, tells documentDestroyed with its file name, and makes the
// most recently opened remaining document current (documentBecameCurrent).

#include <iosfwd>
#include <memory>
#include <vector>

#include "host/AdAChar.h"
#include "host/app/Document.h"
#include "host/app/RxObject.h"
#include "host/db/AcadErrorStatus.h"

class AcDbDatabase;

namespace kelaz {
class InputSource;
// A document for a database already filled (a drawing read by the caller); it becomes current.
// The title is what fileName answers until the drawing is saved.
AcApDocument* AddDocument(std::unique_ptr<AcDbDatabase> db, const CString& title);
}  // namespace kelaz

class AcApDocManagerReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocManagerReactor);

    AcApDocManagerReactor() = default;

    virtual void documentCreateStarted(AcApDocument* /*pDocCreating*/) {}
    virtual void documentCreated(AcApDocument* /*pDocCreating*/) {}
    virtual void documentToBeDestroyed(AcApDocument* /*pDocToDestroy*/) {}
    virtual void documentDestroyed(const ACHAR* /*fileName*/) {}
    virtual void documentCreateCanceled(AcApDocument* /*pDocCreateCancelled*/) {}
    virtual void documentLockModeChanged(AcApDocument* /*pDoc*/,
                                         AcAp::DocLockMode /*myPreviousMode*/,
                                         AcAp::DocLockMode /*myCurrentMode*/,
                                         AcAp::DocLockMode /*currentMode*/,
                                         const ACHAR* /*pGlobalCmdName*/) {}
    virtual void documentBecameCurrent(AcApDocument* /*pDoc*/) {}
    virtual void documentToBeActivated(AcApDocument* /*pActivatingDoc*/) {}
    virtual void documentToBeDeactivated(AcApDocument* /*pDeActivatedDoc*/) {}
    virtual void documentActivated(AcApDocument* /*pActivatedDoc*/) {}
};

class AcApDocumentIterator {
public:
    bool done() const { return m_index >= m_docs.size(); }
    void step() { ++m_index; }
    AcApDocument* document() const { return done() ? nullptr : m_docs[m_index]; }

private:
    friend class AcApDocManager;
    explicit AcApDocumentIterator(std::vector<AcApDocument*> docs) : m_docs(std::move(docs)) {}
    std::vector<AcApDocument*> m_docs;
    size_t m_index = 0;
};

class AcApDocManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocManager);

    AcApDocManager();
    ~AcApDocManager() override;
    AcApDocManager(const AcApDocManager&) = delete;
    AcApDocManager& operator=(const AcApDocManager&) = delete;

    AcApDocument* curDocument() const { return m_current; }
    // There is one window: the active document is the current one.
    AcApDocument* mdiActiveDocument() const { return m_current; }
    AcApDocument* document(const AcDbDatabase* pDb) const;
    int documentCount() const { return static_cast<int>(m_docs.size()); }
    // The caller deletes the iterator.
    AcApDocumentIterator* newAcApDocumentIterator() const;

    // Locks nest; eInvalidInput for a document that is not open, eNotApplicable when unlocking
    // a document that holds no lock.
    Acad::ErrorStatus lockDocument(AcApDocument* pDoc, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const ACHAR* pGlobalCmdName = nullptr,
                                   const ACHAR* pLocalCmdName = nullptr, bool prompt = true);
    Acad::ErrorStatus unlockDocument(AcApDocument* pDoc);

    // Makes the document current: its command line takes the input, its database becomes the
    // working one.
    Acad::ErrorStatus setCurDocument(AcApDocument* pDoc, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);
    Acad::ErrorStatus activateDocument(AcApDocument* pAcTargetDocument, bool bPassScript = false);

    // Queues the text as typed input of the document: it is read at the document's next input
    // request, before anything else, so a transparent command ("'NAME ") runs inside the prompt
    // that is waiting. A blank or line end ends each answer. With bActivate the document is
    // made current first. bEchoString prints the text after the prompt as if typed.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* pAcTargetDocument, const ACHAR* pszExecute,
                                          bool bActivate = true, bool bWrapUpInactiveDoc = false,
                                          bool bEchoString = true);

    // A new document with an empty drawing, or one read from the template when a name is
    // given; it becomes current. The template's read errors are answered, with no document.
    Acad::ErrorStatus appContextNewDocument(const ACHAR* pszTemplateName);
    // A document for the drawing file; it becomes current. The read error when it cannot be
    // read (kelaz::LastOpenReport says why), with no document made.
    Acad::ErrorStatus appContextOpenDocument(const ACHAR* pszDrawingName);
    Acad::ErrorStatus closeDocument(AcApDocument* pDoc);

    // A reactor added twice is told once; a reactor removed while being told is told no more.
    void addReactor(AcApDocManagerReactor* pReactor);
    void removeReactor(AcApDocManagerReactor* pReactor);

private:
    friend AcApDocument* kelaz::AddDocument(std::unique_ptr<AcDbDatabase> db, const CString& title);
    AcApDocument* Adopt(std::unique_ptr<AcDbDatabase> db, const CString& title);
    template <class F>
    void Notify(F&& tell);

    std::vector<std::unique_ptr<AcApDocument>> m_docs;
    AcApDocument* m_current = nullptr;
    std::vector<AcApDocManagerReactor*> m_reactors;
    int m_untitled = 0;
};

AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()

namespace kelaz {
// Where the documents' command lines read and write (new documents and those open): the
// session's input source and output.
void SetDocumentConsole(InputSource* input, std::ostream* out);
// What was wrong with the drawing file appContextOpenDocument last refused.
CString LastOpenReport();
}  // namespace kelaz
