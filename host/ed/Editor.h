#pragma once

// The command line of one document: where its typed lines come from and where its prompts and
// messages go, what acedInitGet set for the next input call, the last keyword, the system
// variables of the editor, the typed input queued by sendStringToExecute, the host command
// processor and the list of commands sent to it, and the last drag preview. Every aced* function
// works on the current editor (the current document's, or one a test installs).

#include <deque>
#include <functional>
#include <iosfwd>
#include <memory>
#include <vector>

#include "host/ed/CommandToken.h"
#include "host/ed/Keywords.h"
#include "host/ge/Point3d.h"
#include "host/gi/Primitives.h"
#include "host/text/CString.h"

class AcDbDatabase;

namespace kelaz {

class CommandProcessor;
class InputSource;

// ERRNO after acedEntSel: the pick found nothing, or the answer was Enter.
inline constexpr int kErrNoPickMissed = 7;
inline constexpr int kErrNoNullPick = 52;

// What acedInitGet set up for the next input call.
struct InitGet {
    int flags = 0;
    KeywordList keywords;
};

class Editor {
public:
    // Works on db; reads from input and writes UTF-8 to out (both may be set later).
    Editor(AcDbDatabase* db, InputSource* input, std::ostream* out);
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    AcDbDatabase* database() const { return m_db; }
    InputSource* input() const { return m_input; }
    void SetInput(InputSource* input) { m_input = input; }
    void SetOutput(std::ostream* out) { m_out = out; }

    // Output. Text appears exactly as written, with one exception that keeps a typed session
    // readable: right after an answer's line end, a leading "\n" (the usual start of a prompt or
    // message) is not printed again.
    void Print(const CString& text);
    // "*取消*", the host's word for a cancelled input.
    void ShowCancel();
    // Prints an answer that no one typed (a token of acedCommand, echoed) and ends its line.
    void EchoLine(const CString& answer);
    // Ends a line left open, at the end of a session.
    void FinishLine();

    enum class LineKind {
        kCommand,  // at the command prompt: running out of input is the normal end
        kAnswer,   // an answer to a command's prompt: transparent commands may run
        kText,     // the text a text prompt asks for: taken as typed
    };
    // Shows the prompt and reads one line: typed input queued by sendStringToExecute first,
    // comment lines skipped, transparent commands run at answer prompts (then the prompt is
    // shown again), the line echoed after its prompt. False when the input is exhausted; at an
    // answer or text prompt the editor is then exhausted for good and remembers where.
    // shownAgain, when given, is printed before the prompt that follows a transparent command.
    bool ReadLine(const CString& prompt, LineKind kind, CString& line,
                  const std::function<CString()>& shownAgain = {});

    // Queues text as if typed: blanks and line ends end each answer.
    void QueueTyped(const CString& text, bool echo);
    // Queues the answers typed after a command's name on its own line, each whole.
    void QueueArguments(const std::vector<CString>& answers);
    bool HasQueuedInput() const { return !m_queue.empty(); }
    // Takes back the answers of QueueArguments that the command did not read; how many.
    int DropArguments();

    // acedInitGet: applies to the next input call only.
    void SetInitGet(int flags, const CString& keywords);
    InitGet TakeInitGet();
    // The last keyword (or arbitrary text) an input call answered RTKWORD with.
    const CString& LastKeyword() const { return m_lastKeyword; }
    void SetLastKeyword(const CString& word) { m_lastKeyword = word; }

    // System variables of the editor.
    int CmdEcho() const { return m_cmdEcho; }
    void SetCmdEcho(int echo) { m_cmdEcho = echo; }
    // The running object snaps (OSMODE bits: 1 end, 2 middle, 4 centre, 32 intersection ...;
    // 16384 suspends them all).
    int OsMode() const { return m_osMode; }
    void SetOsMode(int mode) { m_osMode = mode; }
    const AcGePoint3d& LastPoint() const { return m_lastPoint; }
    void SetLastPoint(const AcGePoint3d& point) { m_lastPoint = point; }
    // ERRNO: why the last pick failed (kErrNoPickMissed, kErrNoNullPick), 0 when it did not.
    int ErrNo() const { return m_errNo; }
    void SetErrNo(int errNo) { m_errNo = errNo; }

    // Answers refused (a wrong answer asked again, an unknown command, a pick that found
    // nothing, a warning the answer earned): kelaz run counts them to tell whether the script
    // went as written.
    void NoteRefusal() { ++m_refusals; }
    int Refusals() const { return m_refusals; }

    // Whether the last answer read was Enter and nothing has been printed since: a command that
    // ends there has not said so yet.
    bool EndedSilentlyByEnter() const { return m_endedByEnter && !m_saidSinceAnswer; }
    void ForgetLastAnswer() { m_endedByEnter = false; }

    // Running out of input at a command's prompt: the line last read and the prompt that waited.
    bool InputExhausted() const { return m_exhausted; }
    int ExhaustedLine() const { return m_exhaustedLine; }
    const CString& ExhaustedPrompt() const { return m_exhaustedPrompt; }
    // The input goes on after running out inside a command: at a terminal Ctrl-D ends only the
    // input of the command that waits; the next command reads again.
    void ResumeInput() { m_exhausted = false; }

    CommandProcessor& Commands() { return *m_commands; }
    // Every command sent through acedCommand, token by token, in order.
    const std::vector<CommandRecord>& RecordedCommands() const { return m_recorded; }
    void RecordCommand(CommandRecord tokens);
    void ClearRecordedCommands() { m_recorded.clear(); }

    // The drag in progress, and what the jig's entity drew at its last update.
    bool Dragging() const { return m_dragging; }
    void SetDragging(bool dragging) { m_dragging = dragging; }
    const GiPrimitiveList& DragPreview() const { return m_preview; }
    int DragUpdates() const { return m_previewUpdates; }
    void SetDragPreview(GiPrimitiveList preview);

private:
    struct Queued {
        CString text;
        bool echo = true;
        bool argument = false;  // typed after the command's name
    };

    void Write(const CString& text);
    CString Absorb(const CString& text);
    bool RunTransparent(const CString& name);

    AcDbDatabase* m_db;
    InputSource* m_input;
    std::ostream* m_out;
    bool m_soft = true;  // just after an answer's line end (or at the start)
    bool m_atLineStart = true;

    std::deque<Queued> m_queue;
    InitGet m_initGet;
    CString m_lastKeyword;
    int m_cmdEcho = 1;
    int m_osMode = 0;
    AcGePoint3d m_lastPoint;
    int m_errNo = 0;
    int m_refusals = 0;
    bool m_endedByEnter = false;
    bool m_saidSinceAnswer = false;

    bool m_exhausted = false;
    int m_exhaustedLine = 0;
    CString m_exhaustedPrompt;

    std::unique_ptr<CommandProcessor> m_commands;
    std::vector<CommandRecord> m_recorded;

    bool m_dragging = false;
    GiPrimitiveList m_preview;
    int m_previewUpdates = 0;
};

// The editor the aced* functions work on; null when there is none.
Editor* CurrentEditor();
// Counts a refused answer on the current command line, when there is one.
void NoteRefusedAnswer();
void SetCurrentEditor(Editor* editor);

// Makes an editor current for the lifetime of the guard, and its database the working one.
class ScopedEditor {
public:
    explicit ScopedEditor(Editor& editor);
    ~ScopedEditor();
    ScopedEditor(const ScopedEditor&) = delete;
    ScopedEditor& operator=(const ScopedEditor&) = delete;

private:
    Editor* m_previous;
    AcDbDatabase* m_previousDb;
};

}  // namespace kelaz
