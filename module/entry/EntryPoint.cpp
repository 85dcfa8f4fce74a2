#include "module/entry/EntryPoint.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    if (msg == AcRx::kInitAppMsg) {
        acrxUnlockApplication(pkt);
        acrxRegisterAppMDIAware(pkt);
    }
    return AcRx::kRetOK;
}
