#include "app/commands/CommandInput.h"

#include "host/db/OpenObject.h"
#include "host/ed/Editor.h"
#include "host/ed/EditorInput.h"
#include "host/ed/EntitySelection.h"
#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "suite/data/ProjCookie.h"

namespace kelaz {

namespace {

constexpr size_t kAnswerSize = 512;
// The elevation a new history starts from: a typical ceiling.
constexpr const wchar_t* kDefaultLevel = L"2800";

// Asks until parse accepts the text (Enter keeps value); false on a cancel.
template <class T, class Parse>
bool AskNumber(const CString& prompt, T& value, const CString& shown, Parse parse) {
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"%s<%s>:", prompt.GetString(), shown.GetString()), text))
            return false;
        if (text.IsEmpty()) return true;
        T read = value;
        if (parse(text, read)) {
            value = read;
            return true;
        }
    }
}

}  // namespace

void TellRefused(const CString& message) {
    NoteRefusedAnswer();
    acutPrintf(L"%s", message.GetString());
}

bool AskText(const CString& prompt, CString& answer, bool spaces) {
    wchar_t buf[kAnswerSize] = {};
    if (acedGetString(spaces ? 1 : 0, prompt, buf, kAnswerSize) != RTNORM) return false;
    answer = buf;
    answer.Trim();
    return true;
}

bool AskCount(const CString& prompt, const CString& what, int& value) {
    return AskNumber(prompt, value, FormatText(L"%d", value), [&](const CString& text, int& n) {
        if (!CDispUtils::ParseToInteger(text, n)) {
            TellRefused(FormatText(L"\n“%s”不是整数，请重新输入。", text.GetString()));
            return false;
        }
        if (n <= 0) {
            TellRefused(FormatText(L"\n%s必须大于0，请重新输入。", what.GetString()));
            return false;
        }
        return true;
    });
}

bool AskInteger(const CString& prompt, int& value) {
    return AskNumber(prompt, value, FormatText(L"%d", value), [](const CString& text, int& n) {
        if (CDispUtils::ParseToInteger(text, n)) return true;
        TellRefused(FormatText(L"\n“%s”不是整数，请重新输入。", text.GetString()));
        return false;
    });
}

bool AskLength(const CString& prompt, double& value) {
    return AskNumber(prompt, value, FormatText(L"%g", value), [](const CString& text, double& d) {
        if (!CDispUtils::ParseToDouble(text, d)) {
            TellRefused(FormatText(L"\n“%s”不是数值，请重新输入。", text.GetString()));
            return false;
        }
        if (d < 0.0) {
            TellRefused(L"\n距离不能为负，请重新输入。");
            return false;
        }
        return true;
    });
}

bool AskLevel(const CString& key, double& level) { return AskLevel(key, level, L"标高"); }

bool AskLevel(const CString& key, double& level, const CString& what) {
    auto history = KelAzDataMng::CKelAzProjCookie::Instance()->GetLevelHeightObj();
    CStringArray recent = history->GetLevelHeight(key);
    const CString offered = recent.IsEmpty() ? CString(kDefaultLevel) : recent[0];
    for (;;) {
        CString text;
        if (!AskText(FormatText(L"\n输入%s(数值或楼层形式，如3F+500)<%s>:", what.GetString(),
                                offered.GetString()),
                     text))
            return false;
        if (text.IsEmpty()) text = offered;
        if (!CDispGlobaFun::GetLevel(level, text)) continue;  // the drafter has been told why
        CStringArray updated;
        updated.Add(text);
        for (const CString& old : recent) {
            if (old != text) updated.Add(old);
        }
        history->SetLevelHeight(key, updated);
        return true;
    }
}

bool PickEntity(const CString& prompt, const std::function<bool(const AcDbObjectId&)>& accepts,
                const CString& refusal, AcDbObjectId& id, AcGePoint3d& picked) {
    for (;;) {
        ads_name name = {0, 0};
        ads_point at = {0, 0, 0};
        const int rc = acedEntSel(prompt.GetString(), name, at);
        if (rc == RTERROR) {
            resbuf why{};
            // A missed pick is asked again (the host has said so); Enter ends the command.
            if (acedGetVar(L"ERRNO", &why) == RTNORM && why.resval.rint == kErrNoPickMissed)
                continue;
            return false;
        }
        if (rc != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) return false;
        if (accepts(id)) {
            picked.set(at[0], at[1], at[2]);
            return true;
        }
        TellRefused(refusal);
    }
}

}  // namespace kelaz
