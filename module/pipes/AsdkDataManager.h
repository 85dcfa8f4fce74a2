#pragma once

// Data the module keeps for each open document, kept in step with the documents: an entry is
// made when the module first asks for a document's data and goes when the document is closed,
// so that a later document at the same address starts with nothing.

#include <cstddef>
#include <map>

#include "host/app/DocManager.h"

template <class T>
class AsdkDataManager : public AcApDocManagerReactor {
public:
    // Starts empty and listens to the document manager.
    AsdkDataManager() { acDocManager->addReactor(this); }
    // Stops listening before the map goes.
    ~AsdkDataManager() override { acDocManager->removeReactor(this); }
    AsdkDataManager(const AsdkDataManager&) = delete;
    AsdkDataManager& operator=(const AsdkDataManager&) = delete;

    void documentToBeDestroyed(AcApDocument* pDocToDestroy) override {
        m_dataMap.erase(pDocToDestroy);
    }

    // The data of an open document, made on first use; null for no document or one that is not
    // open (an entry for it would outlive it and be handed to a later document).
    T* docData(AcApDocument* pDoc) {
        if (pDoc == nullptr || !IsOpen(pDoc)) return nullptr;
        return &m_dataMap[pDoc];
    }
    // The current document's data; null when no document is open.
    T* docData() { return docData(acDocManager->curDocument()); }

    bool hasData(const AcApDocument* pDoc) const {
        return m_dataMap.find(const_cast<AcApDocument*>(pDoc)) != m_dataMap.end();
    }
    std::size_t size() const { return m_dataMap.size(); }

private:
    // Compared by address only: the document may be gone.
    static bool IsOpen(const AcApDocument* pDoc) {
        AcApDocumentIterator* it = acDocManager->newAcApDocumentIterator();
        bool open = false;
        for (; !it->done() && !open; it->step()) open = it->document() == pDoc;
        delete it;
        return open;
    }

    std::map<AcApDocument*, T> m_dataMap;
};
