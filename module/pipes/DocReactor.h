#pragma once

// Keeps the module's per-project caches from leaking from one project into the next: the rows
// the multi-pipe settings remember, the riser splitting lists and the model manager's storeys
// are dropped when a document of another project is created. A second drawing of the same
// project keeps them, so the settings show what the drafter last chose in this project.

#include "host/app/DocManager.h"
#include "host/text/CString.h"
#include "module/entry/LayoutApi.h"

class LAYOUT_API CDocReactor : public AcApDocManagerReactor {
public:
    ACRX_DECLARE_MEMBERS(CDocReactor);

    // Starts with no project seen and listens to the document manager.
    CDocReactor();
    ~CDocReactor() override;
    CDocReactor(const CDocReactor&) = delete;
    CDocReactor& operator=(const CDocReactor&) = delete;

    // The project-change check: the caches go when the current project's name differs from the
    // last one seen (letter case counts), and the new name is kept.
    void documentCreated(AcApDocument* pDocCreating) override;

    // The name of the last project seen; empty before the first document of a project.
    const CString& ProjectName() const { return m_strPrjName; }

    // The project's name as its path gives it: the path is cut at its last backslash (one at the
    // very start does not count), and the name is what follows the last backslash of what is
    // left, or all of it. So a project file D:\Work\Hospital\Hospital.prj belongs to the project
    // Hospital, named by its folder. A path written with "/" has no backslash: the whole path is
    // the name, and every project file is a project of its own.
    static CString ProjectNameOf(const CString& prjPath);

private:
    CString m_strPrjName;
};
