#include "suite/data/CurrentProject.h"

#include <memory>

#include "suite/data/ProjectDb.h"

namespace {
std::unique_ptr<kelaz::ProjectDb>& Slot() {
    static std::unique_ptr<kelaz::ProjectDb> project;
    return project;
}
}  // namespace

namespace kelaz {
ProjectDb* CurrentProject() { return Slot().get(); }
}  // namespace kelaz

namespace KelAzDataMng {

bool OpenProject(const CString& path, CString& error) {
    kelaz::ProjectOpenResult result;
    std::unique_ptr<kelaz::ProjectDb> project = kelaz::ProjectDb::Open(path, result);
    if (!project) {
        error = kelaz::FromUtf8(result.message);
        return false;
    }
    Slot() = std::move(project);
    return true;
}

bool OpenProject(const CString& path) {
    CString error;
    return OpenProject(path, error);
}

bool OpenDefaultProject() {
    kelaz::ProjectOpenResult result;
    std::unique_ptr<kelaz::ProjectDb> project = kelaz::ProjectDb::CreateDefaultInMemory(result);
    if (!project) return false;
    Slot() = std::move(project);
    return true;
}

void CloseProject() { Slot().reset(); }

bool IsProjectOpen() { return Slot() != nullptr; }

}  // namespace KelAzDataMng
