#pragma once

// The property bar: what the running command lays out (its big component type and the small
// types it offers, first one first, and which of them are enabled) and what the drafter has
// chosen in it (the attribute, as a catalogue path "暖通\\风口\\散流器\\方形散流器", and the
// system codes). Headless, the bar is this state; commands change it as a drafter's clicks would.

#include "host/text/Array.h"
#include "host/text/CString.h"

class IFaceBarCtrl {
public:
    // Shows the big type and offers the small types. When the chosen attribute is not one of
    // the offered types, the first attribute of the first offered type that has any is chosen,
    // as the bar selects its first entry; with no system code chosen yet, the speciality's first.
    static void BarSetCurObj(CString bigType, const CStringArray* smallTypes);
    // Which offered small types may be picked; an empty array lifts a command's restriction.
    static void SetEnableSmalls(const CStringArray& smallTypes);
    // The system code shown in the bar.
    static CString CurSysCode();
    // Reads the catalogue again (after attributes were added): a chosen attribute the catalogue
    // no longer has is dropped.
    static void UpdateSelf();

    static CString GetBigType();
    static void GetSmallTypes(CStringArray& smallTypes);
    static void GetEnabledSmalls(CStringArray& smallTypes);
    static int UpdateCount();

    // The drafter's choice. With a project open an attribute must be in its catalogue and a
    // code in its current speciality: false, and nothing changes, otherwise. An empty text
    // clears the choice.
    static CString GetCurAttName();
    static bool SetCurAttName(const CString& attPath);
    static CString GetCurSysCode();
    static bool SetCurSysCode(const CString& sysCode);
    // Every chosen code, the current one first.
    static void GetCurSysCodes(CStringArray& sysCodes);
    static bool SetCurSysCodes(const CStringArray& sysCodes);

    // Forgets everything (a new project).
    static void Reset();
};

// A jig that draws block components is running; components were changed while it ran.
extern bool m_bJigDrawBlockGj;
extern bool m_bGjChgWhenJigDrawBlockGj;
