#pragma once

// Application messages: what the host tells a loaded module (its entry point answers each), and
// the registrations a module makes when it starts.

namespace AcRx {

enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15,
    kSuspendMsg = 16,
    kInitTabGroupMsg = 17,
    kEndTabGroupMsg = 18,
};

enum AppRetCode {
    kRetOK = 0,
    kRetError = 3,
};

}  // namespace AcRx

// The packet a module is given with kInitAppMsg names the module. A loaded module is locked (it
// cannot be unloaded) until it unlocks itself; it works with one document at a time until it
// registers as aware of several. False for a null packet.
bool acrxUnlockApplication(void* appId);
bool acrxLockApplication(void* appId);
bool acrxRegisterAppMDIAware(void* appId);
bool acrxRegisterAppNotMDIAware(void* appId);

namespace kelaz {
// What the module registered; a packet never seen is locked and not aware of several documents.
bool ApplicationIsLocked(void* appId);
bool ApplicationIsMDIAware(void* appId);
}  // namespace kelaz
