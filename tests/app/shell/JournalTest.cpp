#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "app/shell/Interrupt.h"
#include "app/shell/Journal.h"

namespace {

namespace fs = std::filesystem;
using kelaz::FileState;
using kelaz::JournalContents;
using kelaz::JournalHeader;
using kelaz::JournalRecord;
using Kind = kelaz::JournalRecord::Kind;

JournalRecord Line(const wchar_t* text) {
    JournalRecord r{Kind::kLine};
    r.text = text;
    return r;
}

JournalRecord Save(Kind kind, const std::string& path, FileState state = {}) {
    JournalRecord r{kind};
    r.path = path;
    r.saved = state;
    return r;
}

JournalHeader Header(const std::string& drawing, FileState base) {
    JournalHeader h;
    h.started = "2024-05-01T10:00:00";
    h.pid = 4242;
    h.drawing = drawing;
    h.base = base;
    return h;
}

TEST(Journal, WrittenAndReadBackWithALastRecordCutOff) {
    JournalHeader header = Header("/tmp/a b/图\t纸.kdw", {true, 1234, 0xdeadbeef});
    header.project = "/p/office.kelaz";
    header.projectState = {
        {kelaz::ProjectSessionRow::Table::kSetting, L"current_spec", 0, L"电气"},
        {kelaz::ProjectSessionRow::Table::kLevelHistory, L"PLACE", 2, L"3F+500 \\ x"},
    };
    std::string bytes = kelaz::FormatJournalHeader(header);
    JournalRecord mode{Kind::kMode};
    mode.interactive = true;
    const std::vector<JournalRecord> records = {
        mode,
        Line(L"ARC"),
        Line(L""),
        Line(L"ATT 暖通\\风口 # a\\tb\r"),
        {Kind::kInterrupt},
        {Kind::kEnd},
        Save(Kind::kSaveBegins, "/tmp/a b/x.kdw"),
        Save(Kind::kSaved, "/tmp/a b/x.kdw", {true, 99, 0x0000abcd}),
        Save(Kind::kSaveFailed, "/ro/y.kdw"),
    };
    for (const JournalRecord& r : records) bytes += kelaz::FormatJournalRecord(r);
    const size_t whole = bytes.size();
    bytes += "L half a li";  // a kill while the record was written

    JournalContents back;
    ASSERT_TRUE(kelaz::ParseJournal(bytes, back));
    EXPECT_EQ(back.completeSize, whole);
    EXPECT_EQ(back.header.drawing, header.drawing);
    EXPECT_EQ(back.header.base, header.base);
    EXPECT_EQ(back.header.project, header.project);
    EXPECT_EQ(back.header.projectState, header.projectState);
    EXPECT_EQ(back.header.started, header.started);
    EXPECT_EQ(back.header.pid, 4242);
    ASSERT_EQ(back.records.size(), records.size());
    for (size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(back.records[i].kind, records[i].kind) << i;
        EXPECT_EQ(back.records[i].text, records[i].text) << i;
        EXPECT_EQ(back.records[i].path, records[i].path) << i;
        EXPECT_EQ(back.records[i].saved, records[i].saved) << i;
    }
    EXPECT_TRUE(back.records[0].interactive);
    EXPECT_EQ(back.InputRecords(), 5);

    // Cut off inside the header, it holds nothing; another format is not read.
    EXPECT_FALSE(kelaz::ParseJournal(bytes.substr(0, bytes.find("begin")), back));
    EXPECT_FALSE(kelaz::ParseJournal("kelaz-journal 99\nbegin\n", back));
    // A new, unnamed drawing with the default project.
    ASSERT_TRUE(kelaz::ParseJournal(kelaz::FormatJournalHeader(Header("", {})), back));
    EXPECT_TRUE(back.header.drawing.empty());
    EXPECT_FALSE(back.header.base.exists);
    EXPECT_TRUE(back.header.project.empty());
}

TEST(Journal, BelongsOnlyToTheFileItStartedFromOrLastSaved) {
    const fs::path dir = fs::path(::testing::TempDir()) / "journal-check";
    fs::remove_all(dir);
    fs::create_directories(dir);
    const std::string drawing = (dir / "plan.kdw").string();
    const FileState base{true, 10, 1}, saved{true, 20, 2}, other{true, 30, 3};

    JournalContents journal;
    journal.header = Header(drawing, base);
    journal.records = {Line(L"ARC")};
    kelaz::JournalCheck check = kelaz::CheckJournal(journal, base);
    EXPECT_TRUE(check.belongs);
    EXPECT_EQ(check.basePath, drawing);
    EXPECT_FALSE(kelaz::CheckJournal(journal, other).belongs);
    EXPECT_FALSE(kelaz::CheckJournal(journal, FileState()).belongs) << "the file was deleted";

    // Saved over: the session started from the copy kept beside the journal, which must still
    // be the file it started from.
    journal.records.push_back(Save(Kind::kSaveBegins, drawing));
    journal.records.push_back(Save(Kind::kSaved, drawing, saved));
    const std::string copy = kelaz::JournalBasePath(kelaz::JournalPathFor(drawing));
    EXPECT_FALSE(kelaz::CheckJournal(journal, saved).belongs) << "no copy of the base";
    std::ofstream(copy, std::ios::binary) << "0123456789";
    const FileState copied = kelaz::FileStateOf(copy);
    ASSERT_TRUE(copied.exists);
    EXPECT_EQ(copied.size, 10u);
    journal.header.base = copied;
    check = kelaz::CheckJournal(journal, saved);
    EXPECT_TRUE(check.belongs);
    EXPECT_EQ(check.basePath, copy);
    EXPECT_FALSE(kelaz::CheckJournal(journal, other).belongs);

    // A save elsewhere says nothing of this file; a failed save here leaves the last one; a
    // save the session died in may have left either file.
    journal.records.push_back(Save(Kind::kSaveBegins, drawing + ".other"));
    journal.records.push_back(Save(Kind::kSaveBegins, drawing));
    journal.records.push_back(Save(Kind::kSaveFailed, drawing));
    EXPECT_TRUE(kelaz::CheckJournal(journal, saved).belongs);
    EXPECT_FALSE(kelaz::CheckJournal(journal, other).belongs);
    journal.records.push_back(Save(Kind::kSaveBegins, drawing));
    EXPECT_TRUE(kelaz::CheckJournal(journal, other).belongs);

    // A new drawing: nothing there, or what the session saved.
    JournalContents fresh;
    fresh.header = Header(drawing, FileState());
    EXPECT_TRUE(kelaz::CheckJournal(fresh, FileState()).belongs);
    EXPECT_TRUE(kelaz::CheckJournal(fresh, FileState()).basePath.empty());
    EXPECT_FALSE(kelaz::CheckJournal(fresh, other).belongs);
}

TEST(Interrupt, AtATerminalANoteElsewhereAnEndButNotInTheMiddleOfAWrite) {
    {
        kelaz::InterruptHandling cancelling(kelaz::InterruptHandling::Mode::kCancel);
        EXPECT_FALSE(kelaz::TakeInterrupt());
        raise(SIGINT);
        EXPECT_TRUE(kelaz::TakeInterrupt());
        EXPECT_FALSE(kelaz::TakeInterrupt()) << "taken once";
    }
    const fs::path marker = fs::path(::testing::TempDir()) / "interrupt-marker";
    fs::remove(marker);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        kelaz::InterruptHandling ending(kelaz::InterruptHandling::Mode::kEnd);
        {
            kelaz::FileWriteGuard writing;
            raise(SIGINT);
            std::ofstream(marker) << "written";
        }
        _exit(0);  // not reached: the interrupt ends the program once the write is done
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    std::ifstream in(marker);
    std::string text;
    in >> text;
    EXPECT_EQ(text, "written");
}

}  // namespace
