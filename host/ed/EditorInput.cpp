#include "host/ed/EditorInput.h"

#include <cstdarg>
#include <cwchar>
#include <iostream>

#include "host/db/Database.h"
#include "host/ed/Answer.h"
#include "host/ed/Ask.h"
#include "host/ed/Editor.h"

namespace kelaz {

namespace {

constexpr double kShortMin = -32768.0;
constexpr double kShortMax = 32767.0;
// The unsized text functions write at most this many characters and the end.
constexpr size_t kLegacyTextBuffer = 133;

bool IsWholeNumber(const CString& text, double& value) {
    if (!ParseDecimal(text, value) || text.Find(L'.') >= 0) return false;
    return value >= kShortMin && value <= kShortMax;
}

// Copies text into a caller's buffer of bufLen characters; false when it had to be cut.
bool CopyOut(const CString& text, ACHAR* out, size_t bufLen) {
    if (out == nullptr || bufLen == 0) return text.IsEmpty();
    const size_t n = std::min(static_cast<size_t>(text.GetLength()), bufLen - 1);
    std::wmemcpy(out, text.GetString(), n);
    out[n] = 0;
    return n == static_cast<size_t>(text.GetLength());
}

}  // namespace

AcGePoint3d ResolvePoint(const Editor& editor, const AcGePoint3d& point, bool relative) {
    if (!relative) return point;
    return editor.LastPoint() + (point - AcGePoint3d::kOrigin);
}

int Ask(Editor& editor, const CString& prompt, const InitGet& init, const AskSpec& spec,
        AskResult& result) {
    while (true) {
        CString line;
        if (!editor.ReadLine(prompt, Editor::LineKind::kAnswer, line)) {
            editor.ShowCancel();
            return RTCAN;
        }
        const Answer answer = ParseAnswer(line);
        switch (answer.kind) {
            case Answer::Kind::kCancel:
                editor.ShowCancel();
                return RTCAN;
            case Answer::Kind::kEnter:
                if ((init.flags & RSG_NONULL) == 0) return RTNONE;
                editor.NoteRefusal();
                editor.Print(spec.need);
                continue;
            case Answer::Kind::kPoint:
                if (spec.point) {
                    result.point = ResolvePoint(editor, answer.point, answer.relative);
                    if (WithinDrawingExtent(result.point)) return RTNORM;
                    editor.NoteRefusal();
                    editor.Print(L"\n" + OutsideExtentMessage());
                    continue;
                }
                editor.NoteRefusal();
                editor.Print(spec.need);
                continue;
            case Answer::Kind::kWord: {
                double number = 0.0;
                const bool numeric = spec.integer ? IsWholeNumber(answer.text, number)
                                                  : spec.real && ParseDecimal(answer.text, number);
                if (numeric) {
                    if ((init.flags & RSG_NOZERO) != 0 && number == 0.0) {
                        editor.NoteRefusal();
                        editor.Print(L"\n值必须非零。");
                        continue;
                    }
                    if ((init.flags & RSG_NONEG) != 0 && number < 0.0) {
                        editor.NoteRefusal();
                        editor.Print(L"\n值必须为正。");
                        continue;
                    }
                    result.number = number;
                    return RTNORM;
                }
                const int index = init.keywords.Match(answer.text);
                if (index >= 0) {
                    editor.SetLastKeyword(init.keywords.GlobalWord(index));
                    return RTKWORD;
                }
                if ((init.flags & RSG_OTHER) != 0) {
                    editor.SetLastKeyword(answer.text);
                    return RTKWORD;
                }
                editor.NoteRefusal();
                editor.Print(spec.need);
                continue;
            }
            case Answer::Kind::kDrag:
                editor.NoteRefusal();
                editor.Print(L"\n光标采样 (drag) 只在拖动时有效。");
                continue;
            case Answer::Kind::kMalformed:
                editor.NoteRefusal();
                editor.Print(L"\n" + answer.text);
                continue;
            case Answer::Kind::kTransparent:  // run by ReadLine already
            case Answer::Kind::kComment:
                continue;
        }
    }
}

}  // namespace kelaz

using kelaz::AskResult;
using kelaz::AskSpec;
using kelaz::CurrentEditor;
using kelaz::Editor;

int acedInitGet(int val, const ACHAR* kwl) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    ed->SetInitGet(val, CString(kwl));
    return RTNORM;
}

int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    const kelaz::InitGet init = ed->TakeInitGet();
    (void)pt;  // the base point only draws the rubber band
    AskSpec spec;
    spec.point = true;
    AskResult answer;
    const int status = kelaz::Ask(*ed, CString(prompt), init, spec, answer);
    if (status == RTNORM) {
        result[0] = answer.point.x;
        result[1] = answer.point.y;
        result[2] = answer.point.z;
        ed->SetLastPoint(answer.point);
    }
    return status;
}

int acedGetInput(ACHAR* str, size_t bufLen) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    return kelaz::CopyOut(ed->LastKeyword(), str, bufLen) ? RTNORM : RTINPUTTRUNCATED;
}

int acedGetInput(ACHAR* str) { return acedGetInput(str, kelaz::kLegacyTextBuffer); }

int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t bufLen) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    const kelaz::InitGet init = ed->TakeInitGet();
    AskSpec spec;
    spec.need = L"\n输入无效，需要选项关键字。";
    AskResult answer;
    const int status = kelaz::Ask(*ed, CString(prompt), init, spec, answer);
    if (status != RTKWORD) return status;
    return kelaz::CopyOut(ed->LastKeyword(), result, bufLen) ? RTNORM : RTINPUTTRUNCATED;
}

int acedGetKword(const ACHAR* prompt, ACHAR* result) {
    return acedGetKword(prompt, result, kelaz::kLegacyTextBuffer);
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufLen) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    ed->TakeInitGet();  // text prompts take no keywords, but the setting is used up
    CString line;
    if (!ed->ReadLine(CString(prompt), Editor::LineKind::kText, line)) {
        ed->ShowCancel();
        return RTCAN;
    }
    if (kelaz::ParseAnswer(line).kind == kelaz::Answer::Kind::kCancel) {
        ed->ShowCancel();
        return RTCAN;
    }
    CString text = kelaz::StripComment(line);
    if (cronly == 0) {
        const int blank = text.FindOneOf(L" \t");
        if (blank >= 0) text = text.Left(blank);
    }
    return kelaz::CopyOut(text, result, bufLen) ? RTNORM : RTINPUTTRUNCATED;
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result) {
    return acedGetString(cronly, prompt, result, kelaz::kLegacyTextBuffer);
}

int acedGetInt(const ACHAR* prompt, int* result) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    const kelaz::InitGet init = ed->TakeInitGet();
    AskSpec spec;
    spec.integer = true;
    spec.need = L"\n需要介于 -32768 和 32767 之间的整数。";
    AskResult answer;
    const int status = kelaz::Ask(*ed, CString(prompt), init, spec, answer);
    if (status == RTNORM && result != nullptr) *result = static_cast<int>(answer.number);
    return status;
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr) return RTERROR;
    const kelaz::InitGet init = ed->TakeInitGet();
    AskSpec spec;
    spec.real = true;
    spec.need = L"\n需要数值。";
    AskResult answer;
    const int status = kelaz::Ask(*ed, CString(prompt), init, spec, answer);
    if (status == RTNORM && result != nullptr) *result = answer.number;
    return status;
}

int acutPrintf(const ACHAR* format, ...) {
    va_list args;
    va_start(args, format);
    CString text;
    text.FormatV(format, args);
    va_end(args);
    if (Editor* ed = CurrentEditor()) {
        ed->Print(text);
    } else {
        std::cout << kelaz::ToUtf8(text) << std::flush;
    }
    return text.GetLength();
}

int acedSetVar(const ACHAR* sym, const resbuf* val) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr || sym == nullptr || val == nullptr) return RTERROR;
    const CString name(sym);
    if (name.CompareNoCase(L"CMDECHO") == 0) {
        if (val->restype != RTSHORT) return RTREJ;
        if (val->resval.rint != 0 && val->resval.rint != 1) return RTREJ;
        ed->SetCmdEcho(val->resval.rint);
        return RTNORM;
    }
    if (name.CompareNoCase(L"ERRNO") == 0) {
        if (val->restype != RTSHORT) return RTREJ;
        ed->SetErrNo(val->resval.rint);
        return RTNORM;
    }
    if (name.CompareNoCase(L"LASTPOINT") == 0) {
        if (val->restype != RT3DPOINT && val->restype != RTPOINT) return RTREJ;
        const double z = val->restype == RT3DPOINT ? val->resval.rpoint[2] : 0.0;
        ed->SetLastPoint(AcGePoint3d(val->resval.rpoint[0], val->resval.rpoint[1], z));
        return RTNORM;
    }
    if (name.CompareNoCase(L"OSMODE") == 0) {
        if (val->restype != RTSHORT || val->resval.rint < 0) return RTREJ;
        ed->SetOsMode(val->resval.rint);
        return RTNORM;
    }
    if (name.CompareNoCase(L"DBMOD") == 0) return RTREJ;  // read-only
    return RTERROR;
}

int acedGetVar(const ACHAR* sym, resbuf* result) {
    Editor* ed = CurrentEditor();
    if (ed == nullptr || sym == nullptr || result == nullptr) return RTERROR;
    const CString name(sym);
    if (name.CompareNoCase(L"CMDECHO") == 0) {
        result->restype = RTSHORT;
        result->resval.rint = static_cast<short>(ed->CmdEcho());
        return RTNORM;
    }
    if (name.CompareNoCase(L"ERRNO") == 0) {
        result->restype = RTSHORT;
        result->resval.rint = static_cast<short>(ed->ErrNo());
        return RTNORM;
    }
    if (name.CompareNoCase(L"OSMODE") == 0) {
        result->restype = RTSHORT;
        result->resval.rint = static_cast<short>(ed->OsMode());
        return RTNORM;
    }
    if (name.CompareNoCase(L"DBMOD") == 0) {
        if (ed->database() == nullptr) return RTERROR;
        result->restype = RTSHORT;
        result->resval.rint = kelaz::DbmodOf(*ed->database());
        return RTNORM;
    }
    if (name.CompareNoCase(L"LASTPOINT") == 0) {
        result->restype = RT3DPOINT;
        result->resval.rpoint[0] = ed->LastPoint().x;
        result->resval.rpoint[1] = ed->LastPoint().y;
        result->resval.rpoint[2] = ed->LastPoint().z;
        return RTNORM;
    }
    return RTERROR;
}
