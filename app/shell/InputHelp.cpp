#include "app/shell/InputHelp.h"

namespace kelaz {

const char* const kInputHelp =
    R"(What kelaz reads at its command line (kelaz shell, and the scripts of kelaz run)

One line is one answer. At the command prompt ("命令: ") a line is a command name, in any
letter case; HELP lists the commands. A command then asks its questions, each on the command
line, and every line answers the question that waits:

  x,y  or  x,y,z        a point (plain decimals: 100,-20.5)
  @dx,dy[,dz]           a point relative to the last point (LASTPOINT); "@" alone is that point
  WORD                  a keyword of the question: its capitals or a longer prefix, any case
                        (A for 弧线(A), BE for BEgin); the text a text question asks for
  (empty line)          Enter: take the default, or end the command
  ^C  or  ESC           cancel the command ("*取消*")
  drag x,y[,z]          move the cursor while a drag preview runs (a point then accepts)
  'NAME                 run a transparent command inside the question that waits
  # ...                 a comment: a line that holds only a comment is skipped; a '#' after a
                        blank ends the line's answer

A wrong answer (a word that is no keyword, a malformed point, a drag with no drag running) is
named on the command line and the question is asked again.

A dialog is shown as text when it opens and after each action: its title, then each control
with its number (ID), kind, label, mnemonic key and state, list items numbered from 0 and tree
items indented, the selected ones marked. While it is open, each line is one action on it:
  ok | cancel | set ID TEXT | check ID 0|1|2 | click ID | select ID ITEM | key C
(key space, key enter); an empty line is Enter. A tree item is selected by its text or by its
path from the top (暖通\风口). A message box that asks a question takes yes / no (or ok /
cancel).

Host commands: ARC (start, second, end point), ERASE (picks; W window, C crossing; Enter ends),
U (one step back), UNDO (a number of steps; M mark, B back to the mark, BE/E group).
Session commands: SAVE [file], EXPORT file (.dxf .png .svg .pdf), DUMP, HELP, QUIT.

At a terminal (kelaz shell) Ctrl-C cancels the question that waits, as ^C does; a second
Ctrl-C in a row at the command prompt offers to end. Ctrl-D ends the command that waits, and at
the command prompt ends the session. QUIT, and Ctrl-D at the command prompt, first ask what to
do with unsaved changes: yes saves and ends, no ends without saving, cancel stays.

Every line read is kept in a journal beside the drawing (plan.kdw.journal) until the session
ends. After a session that did not end (a crash, a kill), the next session on the drawing offers
to rebuild it from the journal; kelaz recover DRAWING [--save OUT] does it without asking.

kelaz run SCRIPT echoes each line after its prompt, so its output reads like a typed session.
A script that ends while a command still waits cancels that command, names the line and the
question where it stopped, writes none of its outputs, and exits with status 1.
)";

}  // namespace kelaz
