#include "suite/bar/FaceBarCtrl.h"

#include <vector>

#include "suite/data/Att.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/Proj.h"
#include "suite/data/SysCode.h"

bool m_bJigDrawBlockGj = false;
bool m_bGjChgWhenJigDrawBlockGj = false;

namespace {

struct BarState {
    CString bigType;
    CStringArray smallTypes;
    CStringArray enabledSmalls;
    CString attName;
    CStringArray sysCodes;
    int updates = 0;
};

// Kept for the whole run, past the destruction of other statics: commands release the bar
// from destructors that may run at exit.
BarState& State() {
    static BarState* state = new BarState;
    return *state;
}

bool AttributeExists(const CString& attPath) {
    if (!KelAzDataMng::IsProjectOpen()) return true;  // nothing to check against
    KelAzDataMng::SAttDataIndex index;
    return KelAzDataMng::AttNameToAttId(attPath, index);
}

bool CodeExists(const CString& code) {
    if (!KelAzDataMng::IsProjectOpen()) return true;
    KelAzDataMng::CSysCodeData data;
    return KelAzDataMng::CISysCode::GetSysCodeData(KelAzDataMng::CProj::GetCurrentSpec(), code,
                                                   data);
}

// The small type an attribute path is filed under: the segment before its last one.
CString SmallTypeOf(const CString& attPath) {
    const int last = attPath.ReverseFind(L'\\');
    if (last <= 0) return CString();
    const CString parent = attPath.Left(last);
    return parent.Mid(parent.ReverseFind(L'\\') + 1);
}

// The first attribute of the first offered small type that has one, under the current
// speciality and the bar's big type.
CString FirstOfferedAttribute(const BarState& s) {
    const CString spec = KelAzDataMng::CProj::GetCurrentSpec();
    if (spec.IsEmpty() || s.bigType.IsEmpty()) return CString();
    for (const CString& small : s.smallTypes) {
        const CString category = spec + L"\\" + s.bigType + L"\\" + small;
        CStringArray members;
        if (KelAzDataMng::CAtt::GetChildNames(category, members) && !members.IsEmpty()) {
            return category + L"\\" + members[0];
        }
    }
    return CString();
}

}  // namespace

void IFaceBarCtrl::BarSetCurObj(CString bigType, const CStringArray* smallTypes) {
    BarState& s = State();
    s.bigType = bigType;
    s.smallTypes.RemoveAll();
    if (smallTypes) s.smallTypes.Copy(*smallTypes);
    bool offered = false;
    for (const CString& small : s.smallTypes) offered = offered || small == SmallTypeOf(s.attName);
    if (!offered) {
        const CString first = FirstOfferedAttribute(s);
        if (!first.IsEmpty()) s.attName = first;
    }
    if (s.sysCodes.IsEmpty() && KelAzDataMng::IsProjectOpen()) {
        std::vector<KelAzDataMng::CSysCodeData> codes;
        if (KelAzDataMng::CISysCode::GetSpecCodeInfos(KelAzDataMng::CProj::GetCurrentSpec(),
                                                      codes) &&
            !codes.empty()) {
            s.sysCodes.Add(codes.front().GetFullName());
        }
    }
}

void IFaceBarCtrl::SetEnableSmalls(const CStringArray& smallTypes) {
    State().enabledSmalls.Copy(smallTypes);
}

CString IFaceBarCtrl::CurSysCode() { return GetCurSysCode(); }

void IFaceBarCtrl::UpdateSelf() {
    BarState& s = State();
    ++s.updates;
    if (!s.attName.IsEmpty() && !AttributeExists(s.attName)) s.attName.Empty();
}

CString IFaceBarCtrl::GetBigType() { return State().bigType; }

void IFaceBarCtrl::GetSmallTypes(CStringArray& smallTypes) { smallTypes.Copy(State().smallTypes); }

void IFaceBarCtrl::GetEnabledSmalls(CStringArray& smallTypes) {
    smallTypes.Copy(State().enabledSmalls);
}

int IFaceBarCtrl::UpdateCount() { return State().updates; }

CString IFaceBarCtrl::GetCurAttName() { return State().attName; }

bool IFaceBarCtrl::SetCurAttName(const CString& attPath) {
    if (!attPath.IsEmpty() && !AttributeExists(attPath)) return false;
    State().attName = attPath;
    return true;
}

CString IFaceBarCtrl::GetCurSysCode() {
    const BarState& s = State();
    return s.sysCodes.IsEmpty() ? CString() : s.sysCodes[0];
}

bool IFaceBarCtrl::SetCurSysCode(const CString& sysCode) {
    CStringArray codes;
    if (!sysCode.IsEmpty()) codes.Add(sysCode);
    return SetCurSysCodes(codes);
}

void IFaceBarCtrl::GetCurSysCodes(CStringArray& sysCodes) { sysCodes.Copy(State().sysCodes); }

bool IFaceBarCtrl::SetCurSysCodes(const CStringArray& sysCodes) {
    for (const CString& code : sysCodes) {
        if (code.IsEmpty() || !CodeExists(code)) return false;
    }
    State().sysCodes.Copy(sysCodes);
    return true;
}

void IFaceBarCtrl::Reset() {
    State() = BarState();
    m_bJigDrawBlockGj = false;
    m_bGjChgWhenJigDrawBlockGj = false;
}
