#pragma once

// A fresh default project file in a directory of its own, opened as the current project.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "suite/data/ContentChecksum.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace kelaz::test {

inline std::string MakeTempDir() {
    std::string pattern = ::testing::TempDir() + "kelaz-data-XXXXXX";
    const char* dir = ::mkdtemp(pattern.data());
    return dir ? std::string(dir) : std::string();
}

inline std::string ReadBytes(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteBytes(const std::string& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

// Changes a project file as another program that keeps the project's checksums would:
// edit(db) runs inside one transaction that renews them.
template <class Edit>
void EditProjectFile(const std::string& file, Edit edit) {
    SqliteDb db;
    ASSERT_TRUE(db.Open(file, SQLITE_OPEN_READWRITE)) << db.LastError();
    db.SetBeforeCommit(&WriteContentChecksums);
    SqliteTransaction tx(db);
    ASSERT_TRUE(tx.Begun()) << db.LastError();
    edit(db);
    if (::testing::Test::HasFatalFailure()) return;  // rolled back
    ASSERT_TRUE(tx.Commit()) << db.LastError();
}

class ProjectTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = MakeTempDir();
        ASSERT_FALSE(m_dir.empty());
        m_file = m_dir + "/工程.kelaz";
        ProjectOpenResult result;
        ASSERT_TRUE(ProjectDb::CreateDefaultFile(FromUtf8(m_file), false, result))
            << result.message;
        CString error;
        ASSERT_TRUE(KelAzDataMng::OpenProject(FromUtf8(m_file), error)) << error;
    }
    void TearDown() override {
        KelAzDataMng::CloseProject();
        std::error_code ignored;
        std::filesystem::remove_all(m_dir, ignored);
    }
    // Closes and opens the file again, so that what follows reads what was written.
    void Reopen() {
        KelAzDataMng::CloseProject();
        ASSERT_TRUE(KelAzDataMng::OpenProject(FromUtf8(m_file)));
    }

    std::string m_dir;
    std::string m_file;
};

}  // namespace kelaz::test
