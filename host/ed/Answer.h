#pragma once

// The one grammar of answers typed at the command line, whoever types them (a person at the
// shell, a script, a test). A line is:
//   x,y or x,y,z         a point
//   @dx,dy[,dz] or @     a point relative to the last point (LASTPOINT)
//   drag x,y[,z]         a cursor sample while a drag (jig) runs; may be relative with @
//   ^C or ESC            a cancel
//   'NAME                a transparent command
//   (empty)              Enter
//   anything else        a word: a keyword, a command name, or the text a text prompt asks for
// A '#' at the start of the line or after a blank starts a comment; a line that holds only a
// comment is no answer at all. Numbers are plain decimals: an optional sign, digits and at most
// one point; a point answered outright must lie within kMaxCoordinate of the origin (a relative
// one is checked where it is resolved against the last point).

#include "host/ed/DrawingExtent.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

namespace kelaz {

struct Answer {
    enum class Kind { kPoint, kWord, kEnter, kCancel, kDrag, kTransparent, kComment, kMalformed };

    Kind kind = Kind::kEnter;
    // kPoint, kDrag: the point, or the offset from the last point when relative.
    AcGePoint3d point;
    bool relative = false;
    // kDrag: "drag x,y ?" asks for the preview to be printed after the sample.
    bool query = false;
    // kWord: the word; kTransparent: the command's name; kMalformed: what is wrong with it.
    CString text;
};

// The line without its comment and without blanks at either end.
CString StripComment(const CString& line);
Answer ParseAnswer(const CString& line);

// A plain decimal number, nothing else around it but blanks.
bool ParseDecimal(const CString& text, double& value);
// "x,y" or "x,y,z" (z is 0 when absent).
bool ParsePointText(const CString& text, AcGePoint3d& point);
// A point as a person would type it: "x,y,z" with each number in %g.
CString FormatPoint(const AcGePoint3d& point);

}  // namespace kelaz
