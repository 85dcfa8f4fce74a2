#pragma once

// A database's undo history, as a command processor drives it. Changes are recorded in groups:
// a command opens one (nested begins count as one group) and everything it changes is undone
// together. Marks sit between groups. Undoing steps back one entry at a time: a group is undone,
// a mark is taken away (and counts as a step, as the host's U does when it meets one).
//
// What a group records, in order, per object:
//  - the before-image of an object (its dwgOutFields into an undo filer), taken when it is
//    opened for write and kept at its first change (assertWriteEnabled with autoUndo), or at
//    close if it was changed without asserting; one image per object per group;
//  - an append: undone by erasing the object (it stays in the database, erased);
//  - an erase or unerase: undone by setting the erased flag back;
//  - a partial record the object wrote itself after assertWriteEnabled(false, true): undone by
//    the object's applyPartialUndo.
// Undo restores the exact bytes of the before-images, and the spatial index follows.

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/db/AcadErrorStatus.h"
#include "host/text/CString.h"

class AcDbDwgFiler;
class AcDbStub;

namespace kelaz {

class DatabaseImpl;
class MemoryDwgFiler;

class UndoLog {
public:
    explicit UndoLog(DatabaseImpl& db);
    ~UndoLog();
    UndoLog(const UndoLog&) = delete;
    UndoLog& operator=(const UndoLog&) = delete;

    // Groups nest; only the outermost begin and end delimit a group, and give it its name (the
    // command that made it, for telling the drafter what a step back undid).
    void beginGroup(const CString& name = CString());
    void endGroup();
    int groupDepth() const { return m_depth; }
    // A mark after what is recorded so far. Inside an open group, the group is split there: what
    // came before the mark is one group, what follows another.
    void addMark();
    // Steps back n entries, the most recent first. Inside an open group, what it recorded so far
    // (if anything) is one step, and the group goes on recording afterwards. eNothingToUndo, with
    // nothing done, when there is no entry; eWasOpenedForWrite or eWasOpenedForRead, with nothing
    // done, when an object the steps would restore is open. stepsDone tells how many were undone.
    Acad::ErrorStatus undoGroups(int n, int* stepsDone = nullptr);
    // Steps back to the last mark and takes it away. With no mark, everything recorded is undone
    // and markFound is false.
    Acad::ErrorStatus undoToMark(bool* markFound = nullptr);
    // What the last successful step back undid, the most recent first: each group's name, an
    // empty name for a mark.
    const std::vector<CString>& lastUndone() const { return m_undone; }
    bool canUndo() const;
    // Entries that undo can step back over (groups and marks, the open group included).
    int numSteps() const;
    void clear();

    // Recording happens while a group is open, recording is enabled and no undo is running.
    bool isRecording() const;
    void setEnabled(bool enabled) { m_enabled = enabled; }
    bool isEnabled() const { return m_enabled; }

    // Hooks of the database.
    void onWriteOpen(AcDbStub* stub);
    void onAssertWrite(AcDbStub* stub, bool autoUndo, bool recordModified);
    void onWriteClose(AcDbStub* stub);
    void onAppend(AcDbStub* stub);
    void onErase(AcDbStub* stub, bool wasErased);
    // The filer of stub's partial record (started anew unless the latest record is stub's own
    // partial record); null when not recording.
    AcDbDwgFiler* partialFiler(AcDbStub* stub);
    // The filer of the current partial record, started without an object when there is none;
    // null when not recording.
    AcDbDwgFiler* currentFiler();
    // Forgets pending work for an object whose contents are going away.
    void forget(AcDbStub* stub);

private:
    struct Record;
    struct Entry;

    Entry& openSegment();
    void closeSegment();
    Record& addRecord(int kind, AcDbStub* stub);
    void takeImage(AcDbStub* stub, std::vector<std::uint8_t> bytes);
    Acad::ErrorStatus checkUndoable(std::size_t fromEntry) const;
    void undoEntry(Entry& entry);
    void undoRecord(Record& record);

    DatabaseImpl& m_db;
    std::vector<std::unique_ptr<Entry>> m_entries;
    std::unique_ptr<Entry> m_open;  // the segment of the open group, while one is open
    int m_depth = 0;
    bool m_split = false;  // the open group was split by a mark or a step back
    bool m_enabled = true;
    bool m_undoing = false;
    std::uint64_t m_serial = 0;
    CString m_groupName;
    std::vector<CString> m_undone;
    // Before-images taken at write open, not yet kept.
    std::unordered_map<AcDbStub*, std::vector<std::uint8_t>> m_pending;
};

}  // namespace kelaz
