#pragma once

// An open drawing: its database, its command line (see kelaz::Editor), its title and its lock.
// Documents are made and closed by the document manager (host/app/DocManager.h).

#include <memory>
#include <vector>

#include "host/AdAChar.h"
#include "host/app/RxObject.h"
#include "host/text/CString.h"

class AcDbDatabase;
class AcApDocManager;

class AcApDocument;

namespace kelaz {
class Editor;
// The document's command line.
Editor& EditorOf(AcApDocument* doc);
}  // namespace kelaz

namespace AcAp {
enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x40,
};
}  // namespace AcAp

class AcApDocument : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocument);

    ~AcApDocument() override;
    AcApDocument(const AcApDocument&) = delete;
    AcApDocument& operator=(const AcApDocument&) = delete;

    // The drawing file's path, or the title of a drawing never saved.
    const ACHAR* fileName() const;
    const ACHAR* docTitle() const { return m_title.GetString(); }
    AcDbDatabase* database() const { return m_db.get(); }
    // The strongest lock held, kNotLocked when none.
    AcAp::DocLockMode lockMode(bool bIncludeMyLocks = false) const;
    AcAp::DocLockMode myLockMode() const { return lockMode(true); }
    // No command is running in the document.
    bool isQuiescent() const;

private:
    friend class AcApDocManager;
    friend kelaz::Editor& kelaz::EditorOf(AcApDocument* doc);
    AcApDocument(std::unique_ptr<AcDbDatabase> db, CString title);

    std::unique_ptr<AcDbDatabase> m_db;
    std::unique_ptr<kelaz::Editor> m_editor;
    CString m_title;
    mutable CString m_fileName;
    std::vector<AcAp::DocLockMode> m_locks;
};
