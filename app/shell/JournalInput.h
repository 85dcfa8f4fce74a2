#pragma once

// The two sides of a session's journal at the command line: the input of a running session,
// each line written to the journal before the session acts on it, and the input of a session
// rebuilt from a journal, which reads the journal's records instead.

#include <string>
#include <vector>

#include "app/shell/Journal.h"
#include "host/ed/InputSource.h"

namespace kelaz {

class JournaledInput : public InputSource {
public:
    // journal may be null (no journal could be kept): the lines just pass.
    JournaledInput(InputSource& input, JournalFile* journal) : m_input(input), m_journal(journal) {}

    bool NextLine(const CString& promptLine, CString& line) override;
    int LineNumber() const override { return m_input.LineNumber(); }
    bool IsTerminal() const override { return m_input.IsTerminal(); }
    CString Name() const override { return m_input.Name(); }
    bool Interrupted() const override { return m_input.Interrupted(); }

private:
    InputSource& m_input;
    JournalFile* m_journal;
};

// What the journal says of a save made while it was written.
struct RecordedSave {
    enum class Outcome { kSaved, kFailed, kUnknown };
    Outcome outcome = Outcome::kUnknown;
    std::string path;
};

class ReplayInput : public InputSource {
public:
    explicit ReplayInput(const std::vector<JournalRecord>& records);

    // Lines and interrupts as they were read; an end of input answers false once.
    bool NextLine(const CString& promptLine, CString& line) override;
    int LineNumber() const override { return m_given; }
    CString Name() const override { return L"journal"; }
    bool Interrupted() const override { return m_interrupted; }

    // Whether the session was a person's at a terminal at the point reached.
    bool Interactive() const { return m_interactive; }
    // Nothing the session read is left.
    bool AtEnd() const;
    // The save the session made at the point reached, its records taken; kUnknown when the
    // journal does not tell (the session died saving).
    RecordedSave TakeSave();
    // What the session found out at the point reached, its record taken; false when the journal
    // holds none there.
    bool TakeFact(std::string& fact);

private:
    void SkipModes();

    const std::vector<JournalRecord>& m_records;
    size_t m_next = 0;
    int m_given = 0;
    bool m_interrupted = false;
    bool m_interactive = false;
};

}  // namespace kelaz
