#include "app/shell/JournalInput.h"

namespace kelaz {

bool JournaledInput::NextLine(const CString& promptLine, CString& line) {
    const bool read = m_input.NextLine(promptLine, line);
    if (m_journal != nullptr) {
        JournalRecord record;
        record.kind = !read                   ? JournalRecord::Kind::kEnd
                      : m_input.Interrupted() ? JournalRecord::Kind::kInterrupt
                                              : JournalRecord::Kind::kLine;
        record.text = line;
        m_journal->Append(record);
    }
    return read;
}

ReplayInput::ReplayInput(const std::vector<JournalRecord>& records) : m_records(records) {
    SkipModes();
}

void ReplayInput::SkipModes() {
    while (m_next < m_records.size() && m_records[m_next].kind == JournalRecord::Kind::kMode) {
        m_interactive = m_records[m_next++].interactive;
    }
}

// A change of mode applies to the input after it: it is taken on the way to the next line.
bool ReplayInput::NextLine(const CString& /*promptLine*/, CString& line) {
    m_interrupted = false;
    while (m_next < m_records.size()) {
        const JournalRecord& record = m_records[m_next++];
        switch (record.kind) {
            case JournalRecord::Kind::kMode:
                m_interactive = record.interactive;
                break;
            case JournalRecord::Kind::kLine:
                ++m_given;
                line = record.text;
                return true;
            case JournalRecord::Kind::kInterrupt:
                ++m_given;
                line = L"^C";
                m_interrupted = true;
                return true;
            case JournalRecord::Kind::kEnd:
                return false;
            default:
                // A save the session did not make this time; the replay's own saves take theirs.
                break;
        }
    }
    return false;
}

bool ReplayInput::AtEnd() const {
    for (size_t i = m_next; i < m_records.size(); ++i) {
        const JournalRecord::Kind kind = m_records[i].kind;
        if (kind == JournalRecord::Kind::kLine || kind == JournalRecord::Kind::kInterrupt ||
            kind == JournalRecord::Kind::kEnd) {
            return false;
        }
    }
    return true;
}

bool ReplayInput::TakeFact(std::string& fact) {
    if (m_next >= m_records.size() || m_records[m_next].kind != JournalRecord::Kind::kFact) {
        return false;
    }
    fact = m_records[m_next++].path;
    return true;
}

RecordedSave ReplayInput::TakeSave() {
    RecordedSave save;
    if (m_next >= m_records.size() || m_records[m_next].kind != JournalRecord::Kind::kSaveBegins) {
        return save;
    }
    save.path = m_records[m_next++].path;
    if (m_next < m_records.size()) {
        const JournalRecord& outcome = m_records[m_next];
        if (outcome.kind == JournalRecord::Kind::kSaved) {
            save.outcome = RecordedSave::Outcome::kSaved;
            ++m_next;
        } else if (outcome.kind == JournalRecord::Kind::kSaveFailed) {
            save.outcome = RecordedSave::Outcome::kFailed;
            ++m_next;
        }
    }
    return save;
}

}  // namespace kelaz
