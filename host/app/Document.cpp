#include "host/app/Document.h"

#include "host/app/RxClass.h"
#include "host/db/Database.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/Editor.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocument, AcRxObject)

AcApDocument::AcApDocument(std::unique_ptr<AcDbDatabase> db, CString title)
    : m_db(std::move(db)), m_title(std::move(title)) {}

// The editor goes first: its commands refer to the database.
AcApDocument::~AcApDocument() { m_editor.reset(); }

const ACHAR* AcApDocument::fileName() const {
    const wchar_t* name = nullptr;
    m_fileName = (m_db->getFilename(name) == Acad::eOk && name != nullptr && *name != 0)
                     ? CString(name)
                     : m_title;
    return m_fileName.GetString();
}

AcAp::DocLockMode AcApDocument::lockMode(bool /*bIncludeMyLocks*/) const {
    AcAp::DocLockMode strongest = AcAp::kNotLocked;
    for (const AcAp::DocLockMode mode : m_locks) {
        if (strongest == AcAp::kNotLocked || mode > strongest) strongest = mode;
    }
    return strongest;
}

bool AcApDocument::isQuiescent() const { return !m_editor->Commands().HasPending(); }

namespace kelaz {
Editor& EditorOf(AcApDocument* doc) { return *doc->m_editor; }
}  // namespace kelaz
