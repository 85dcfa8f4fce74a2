#pragma once

// The host's editor input functions: points, keywords, numbers and text asked at the command
// line of the current document, with acedInitGet's flags and keywords for the next call, and
// acutPrintf for messages. Results are RT* codes: RTNORM (an answer), RTNONE (Enter), RTKWORD
// (a keyword, read with acedGetInput), RTCAN (a cancel, or input that ran out), RTERROR (no
// command line).

#include <cstddef>

#include "host/AdAChar.h"
#include "host/db/AdsDef.h"

// acedInitGet flags.
inline constexpr int RSG_NONULL = 0x0001;  // Enter is refused
inline constexpr int RSG_NOZERO = 0x0002;  // zero is refused
inline constexpr int RSG_NONEG = 0x0004;   // a negative number is refused
inline constexpr int RSG_NOLIM = 0x0008;   // no drawing limits check
inline constexpr int RSG_GETZ = 0x0010;    // points carry z
inline constexpr int RSG_DASH = 0x0020;    // rubber band drawn dashed
inline constexpr int RSG_2D = 0x0040;      // distances in plan
inline constexpr int RSG_OTHER = 0x0080;   // arbitrary input is answered as a keyword
inline constexpr int RSG_DDISTFIRST = 0x0100;
inline constexpr int RSG_TRACKUCS = 0x0200;
inline constexpr int RSG_NOORTHOZ = 0x0400;
inline constexpr int RSG_NOOSNAP = 0x0800;
inline constexpr int RSG_NODDIST = 0x1000;

// Sets the flags and keywords of the next input call only.
int acedInitGet(int val, const ACHAR* kwl);
// A point; with a base point the cursor draws a rubber band from it. "@dx,dy" is relative to
// the last point, which every point answer becomes.
int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result);
// The keyword (its global word) or arbitrary text the last input call answered RTKWORD with.
// The sized form answers RTINPUTTRUNCATED when the text did not fit.
int acedGetInput(ACHAR* str);
int acedGetInput(ACHAR* str, size_t bufLen);
// A keyword of the list set by acedInitGet; anything else is asked again.
int acedGetKword(const ACHAR* prompt, ACHAR* result);
int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t bufLen);
// Text. With cronly 0 a blank ends the text as Enter does, so the text is the line up to its
// first blank; otherwise the whole line. The unsized form writes at most 132 characters.
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result);
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufLen);
// A whole number from -32768 to 32767.
int acedGetInt(const ACHAR* prompt, int* result);
int acedGetReal(const ACHAR* prompt, ads_real* result);

// Prints on the command line, exactly as formatted (%s takes wide text). Answers the number of
// characters printed.
int acutPrintf(const ACHAR* format, ...);

// The editor's system variables: CMDECHO (RTSHORT, 0 or 1), ERRNO (RTSHORT; acedEntSel sets it),
// LASTPOINT (RT3DPOINT) and DBMOD (RTSHORT, read-only: what changed in the editor's drawing since
// it was opened or saved, see acdbSetDbmod).
// RTERROR for an unknown name or no command line, RTREJ for a value of the wrong type or out of
// range.
int acedSetVar(const ACHAR* sym, const resbuf* val);
int acedGetVar(const ACHAR* sym, resbuf* result);
