#include "host/db/UndoLog.h"

#include <algorithm>

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/MemoryDwgFiler.h"
#include "host/db/Object.h"

namespace kelaz {

namespace {

enum RecordKind { kImage, kAppend, kErase, kPartial };

// The class descriptor a partial record starts with, if it is one the registry knows.
AcRxClass* RegisteredClass(const void* address) {
    for (const auto& [name, obj] : *acrxClassDictionary) {
        if (obj == address) return static_cast<AcRxClass*>(obj);
    }
    return nullptr;
}

}  // namespace

struct UndoLog::Record {
    int kind = kImage;
    AcDbStub* stub = nullptr;
    std::vector<std::uint8_t> image;          // kImage
    bool wasErased = false;                   // kErase
    std::unique_ptr<MemoryDwgFiler> partial;  // kPartial, written by the object
};

struct UndoLog::Entry {
    bool mark = false;
    CString name;  // the command of the group
    std::uint64_t serial = 0;
    std::vector<Record> records;
    // The partial record undoFiler() answers, until another record follows it.
    int currentPartial = -1;
};

UndoLog::UndoLog(DatabaseImpl& db) : m_db(db) {}

UndoLog::~UndoLog() = default;

bool UndoLog::isRecording() const { return m_enabled && !m_undoing && m_open != nullptr; }

UndoLog::Entry& UndoLog::openSegment() {
    m_open = std::make_unique<Entry>();
    m_open->serial = ++m_serial;
    m_open->name = m_groupName;
    return *m_open;
}

void UndoLog::closeSegment() {
    if (m_open == nullptr) return;
    m_entries.push_back(std::move(m_open));
}

void UndoLog::beginGroup(const CString& name) {
    if (m_depth++ == 0) {
        m_split = false;
        m_groupName = name;
        openSegment();
    }
}

void UndoLog::endGroup() {
    if (m_depth == 0) return;
    if (--m_depth != 0) return;
    // A command is one step even when it changed nothing, as the host counts them; but the
    // empty tail of a command split by a mark or a step back is no step of its own.
    if (m_split && m_open != nullptr && m_open->records.empty()) {
        m_open.reset();
    } else {
        closeSegment();
    }
}

void UndoLog::addMark() {
    const bool inGroup = m_open != nullptr;
    // What the open group recorded so far stays a step of its own; an empty part is dropped.
    if (inGroup && !m_open->records.empty()) closeSegment();
    auto mark = std::make_unique<Entry>();
    mark->mark = true;
    m_entries.push_back(std::move(mark));
    if (inGroup) {
        m_split = true;
        openSegment();
    }
}

Acad::ErrorStatus UndoLog::checkUndoable(std::size_t fromEntry) const {
    for (std::size_t i = fromEntry; i < m_entries.size(); ++i) {
        for (const Record& r : m_entries[i]->records) {
            if (r.stub == nullptr || r.stub->object == nullptr) continue;
            if (r.stub->writer) return Acad::eWasOpenedForWrite;
            if (r.stub->readers > 0) return Acad::eWasOpenedForRead;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus UndoLog::undoGroups(int n, int* stepsDone) {
    if (stepsDone != nullptr) *stepsDone = 0;
    const bool inGroup = m_open != nullptr;
    if (inGroup && !m_open->records.empty()) closeSegment();
    m_open.reset();
    const std::size_t steps = std::min<std::size_t>(n > 0 ? n : 0, m_entries.size());
    Acad::ErrorStatus es = steps == 0 ? Acad::eNothingToUndo : Acad::eOk;
    if (es == Acad::eOk) es = checkUndoable(m_entries.size() - steps);
    if (es == Acad::eOk) {
        m_undoing = true;
        m_undone.clear();
        for (std::size_t i = 0; i < steps; ++i) {
            m_undone.push_back(m_entries.back()->mark ? CString() : m_entries.back()->name);
            undoEntry(*m_entries.back());
            m_entries.pop_back();
        }
        m_undoing = false;
        if (stepsDone != nullptr) *stepsDone = static_cast<int>(steps);
    }
    if (inGroup) {
        m_split = true;
        openSegment();
    }
    return es;
}

Acad::ErrorStatus UndoLog::undoToMark(bool* markFound) {
    if (m_open != nullptr && !m_open->records.empty()) {
        closeSegment();
        openSegment();
    }
    std::size_t steps = m_entries.size();
    for (std::size_t i = m_entries.size(); i-- > 0;) {
        if (m_entries[i]->mark) {
            steps = m_entries.size() - i;
            break;
        }
    }
    if (markFound != nullptr) {
        *markFound = steps > 0 && m_entries[m_entries.size() - steps]->mark;
    }
    return undoGroups(static_cast<int>(steps));
}

bool UndoLog::canUndo() const {
    return !m_entries.empty() || (m_open != nullptr && !m_open->records.empty());
}

int UndoLog::numSteps() const {
    return static_cast<int>(m_entries.size()) +
           (m_open != nullptr && !m_open->records.empty() ? 1 : 0);
}

void UndoLog::clear() {
    m_entries.clear();
    m_pending.clear();
    if (m_open != nullptr) openSegment();
}

UndoLog::Record& UndoLog::addRecord(int kind, AcDbStub* stub) {
    Record& r = m_open->records.emplace_back();
    r.kind = kind;
    r.stub = stub;
    m_open->currentPartial = kind == kPartial ? static_cast<int>(m_open->records.size()) - 1 : -1;
    if (kind == kPartial) r.partial = std::make_unique<MemoryDwgFiler>(AcDb::kUndoFiler, m_db.db);
    return r;
}

namespace {
std::vector<std::uint8_t> Snapshot(AcDbStub* stub, AcDbDatabase* db) {
    MemoryDwgFiler filer(AcDb::kUndoFiler, db);
    DatabaseImpl::ReadScope readable(stub);
    stub->object->dwgOutFields(&filer);
    return filer.takeBytes();
}
}  // namespace

void UndoLog::takeImage(AcDbStub* stub, std::vector<std::uint8_t> bytes) {
    addRecord(kImage, stub).image = std::move(bytes);
    stub->undoGroupSerial = m_open->serial;
}

void UndoLog::onWriteOpen(AcDbStub* stub) {
    if (!isRecording() || stub->undoGroupSerial == m_open->serial) return;
    m_pending[stub] = Snapshot(stub, m_db.db);
}

void UndoLog::onAssertWrite(AcDbStub* stub, bool autoUndo, bool recordModified) {
    if (!isRecording()) return;
    if (autoUndo) {
        if (stub->undoGroupSerial == m_open->serial) return;
        const auto it = m_pending.find(stub);
        if (it != m_pending.end()) {
            takeImage(stub, std::move(it->second));
            m_pending.erase(it);
        } else {
            takeImage(stub, Snapshot(stub, m_db.db));
        }
    } else if (recordModified) {
        // The object records this change itself; an image taken before it would be restored
        // after the partial undo and is dropped. A later change with autoUndo images anew.
        m_pending.erase(stub);
        addRecord(kPartial, stub);
    }
}

void UndoLog::onWriteClose(AcDbStub* stub) {
    const auto it = m_pending.find(stub);
    if (it == m_pending.end()) return;
    std::vector<std::uint8_t> before = std::move(it->second);
    m_pending.erase(it);
    // Changed without assertWriteEnabled: the image from the open still tells what to restore.
    if (isRecording() && stub->undoGroupSerial != m_open->serial &&
        Snapshot(stub, m_db.db) != before) {
        takeImage(stub, std::move(before));
    }
}

void UndoLog::onAppend(AcDbStub* stub) {
    if (!isRecording()) return;
    addRecord(kAppend, stub);
    stub->undoGroupSerial = m_open->serial;
}

void UndoLog::onErase(AcDbStub* stub, bool wasErased) {
    if (!isRecording()) return;
    addRecord(kErase, stub).wasErased = wasErased;
}

AcDbDwgFiler* UndoLog::partialFiler(AcDbStub* stub) {
    if (!isRecording()) return nullptr;
    const int current = m_open->currentPartial;
    if (current >= 0 && m_open->records[static_cast<std::size_t>(current)].stub == stub) {
        return m_open->records[static_cast<std::size_t>(current)].partial.get();
    }
    return addRecord(kPartial, stub).partial.get();
}

AcDbDwgFiler* UndoLog::currentFiler() {
    if (!isRecording()) return nullptr;
    const int current = m_open->currentPartial;
    if (current >= 0) return m_open->records[static_cast<std::size_t>(current)].partial.get();
    return addRecord(kPartial, nullptr).partial.get();
}

void UndoLog::forget(AcDbStub* stub) { m_pending.erase(stub); }

void UndoLog::undoEntry(Entry& entry) {
    for (auto it = entry.records.rbegin(); it != entry.records.rend(); ++it) undoRecord(*it);
}

void UndoLog::undoRecord(Record& record) {
    AcDbStub* stub = record.stub;
    if (stub == nullptr || stub->object == nullptr) return;
    switch (record.kind) {
        case kImage: {
            DatabaseImpl::WriteScope writable(stub);
            MemoryDwgFiler filer(record.image, AcDb::kUndoFiler, m_db.db);
            stub->object->dwgInFields(&filer);
            break;
        }
        case kAppend:
            stub->erased = true;
            break;
        case kErase:
            stub->erased = record.wasErased;
            break;
        case kPartial: {
            if (record.partial == nullptr || record.partial->bytes().empty()) return;
            MemoryDwgFiler filer(record.partial->bytes(), AcDb::kUndoFiler, m_db.db);
            if (filer.peekTag() != MemoryDwgFiler::Tag::kAddress) return;
            void* address = nullptr;
            filer.readAddress(&address);
            AcRxClass* cls = RegisteredClass(address);
            if (cls == nullptr) return;
            DatabaseImpl::WriteScope writable(stub);
            // eNotApplicable: no class of the object knew the record; nothing was undone.
            stub->object->applyPartialUndo(&filer, cls);
            break;
        }
        default:
            return;
    }
    m_db.dbmod |= kDbmodObjects;
    m_db.syncIndex(stub);
}

}  // namespace kelaz
