#pragma once

// The question loop every editor input call shares: show the prompt, read an answer, and ask
// again with a message on the command line until the answer is one the call accepts.

#include "host/ed/Editor.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

namespace kelaz {

struct AskSpec {
    bool point = false;    // a point answers RTNORM
    bool integer = false;  // a whole number from -32768 to 32767 answers RTNORM
    bool real = false;     // a number answers RTNORM
    // Printed when an answer fits nothing the call accepts.
    const wchar_t* need = L"\n需要点或选项关键字。";
};

struct AskResult {
    AcGePoint3d point;  // absolute: a relative answer is added to the last point
    double number = 0.0;
};

// RTNORM, RTNONE (Enter, unless RSG_NONULL), RTKWORD (a keyword, or with RSG_OTHER any word;
// the editor's last keyword is set) or RTCAN (a cancel or input that ran out: "*取消*" shown).
int Ask(Editor& editor, const CString& prompt, const InitGet& init, const AskSpec& spec,
        AskResult& result);

// The absolute point of a point answer.
AcGePoint3d ResolvePoint(const Editor& editor, const AcGePoint3d& point, bool relative);

}  // namespace kelaz
