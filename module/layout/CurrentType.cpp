#include "module/entry/DispGlobaFun.h"
#include "suite/bar/FaceBarCtrl.h"
#include "suite/data/Att.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/Proj.h"
#include "suite/data/SysCode.h"
#include "suite/tools/KelMessageBox.h"

CString CDispGlobaFun::GetCurAttName(const bool& check, const bool& showMessage) {
    CString attName = IFaceBarCtrl::GetCurAttName();
    if (check && !attName.IsEmpty() && KelAzDataMng::IsProjectOpen()) {
        KelAzDataMng::SAttDataIndex index;
        if (!KelAzDataMng::AttNameToAttId(attName, index)) attName.Empty();
    }
    if (attName.IsEmpty() && showMessage)
        kelaz::ShowWarning(CString(L"请先在属性栏中选择构件类型"));
    return attName;
}

CString CDispGlobaFun::GetCurSysCode(const bool& check, const bool& showMessage) {
    CString code = IFaceBarCtrl::GetCurSysCode();
    if (check && !code.IsEmpty() && KelAzDataMng::IsProjectOpen()) {
        KelAzDataMng::CSysCodeData data;
        if (!KelAzDataMng::CISysCode::GetSysCodeData(KelAzDataMng::CProj::GetCurrentSpec(), code,
                                                     data))
            code.Empty();
    }
    if (code.IsEmpty() && showMessage) kelaz::ShowWarning(CString(L"请先在属性栏中选择系统编号"));
    return code;
}

bool CDispGlobaFun::GetCurSysCodes(CStringArray& sysCodes) {
    IFaceBarCtrl::GetCurSysCodes(sysCodes);
    return !sysCodes.IsEmpty();
}
