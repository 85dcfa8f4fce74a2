#pragma once

// The host's own commands that the command processor runs: ARC (three points), PLINE, UNDO, U
// and ERASE. Each is a small state machine: it shows what it asks for and takes one answer at a
// time, whether the answers come from acedCommand's tokens or from the input source.

#include <memory>
#include <vector>

#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

class AcDbDatabase;

namespace kelaz {

class Editor;

// One answer to a command's prompt.
struct CommandInput {
    enum class Kind { kPoint, kWord, kEnter, kEntity };
    Kind kind = Kind::kEnter;
    AcGePoint3d point;  // absolute
    CString text;       // kWord
    AcDbObjectId id;    // kEntity
};

class HostCommand {
public:
    enum class Step {
        kMore,     // asks for the next answer (Prompt tells what)
        kDone,     // finished
        kRefused,  // the answer did not fit (a message said why): the same prompt asks again
    };

    virtual ~HostCommand() = default;
    // What the command does as soon as it starts; U is done at once.
    virtual Step Start() { return Step::kMore; }
    virtual CString Prompt() const = 0;
    virtual Step Feed(const CommandInput& input) = 0;
};

struct HostCommandInfo {
    const wchar_t* name;
    const wchar_t* description;
};

// The host commands, for HELP.
const std::vector<HostCommandInfo>& HostCommandList();
// The command a typed name (prefixes '_' and '.' allowed, any case) starts; null for none.
std::unique_ptr<HostCommand> MakeHostCommand(Editor& editor, const CString& typedName);

// Object selection as ERASE and acedSSGet ask for it: points pick, W and C take two corners
// each, entity names add themselves, Enter ends.
class SelectionPrompt {
public:
    explicit SelectionPrompt(Editor& editor);
    CString Prompt() const;
    HostCommand::Step Feed(const CommandInput& input);
    const AcDbObjectIdArray& Selected() const { return m_selected; }

private:
    enum class State { kObjects, kWindowFirst, kWindowSecond, kCrossingFirst, kCrossingSecond };
    void Add(const AcDbObjectIdArray& found);

    Editor& m_editor;
    State m_state = State::kObjects;
    AcGePoint3d m_corner;
    AcDbObjectIdArray m_selected;
};

// The database the editor's commands work on: its own, or else the working one.
AcDbDatabase* CommandDatabase(const Editor& editor);

}  // namespace kelaz
