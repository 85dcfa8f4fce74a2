#include "host/app/RxApp.h"

#include <map>

namespace kelaz {

namespace {

struct AppState {
    bool locked = true;
    bool mdiAware = false;
};

std::map<void*, AppState>& Apps() {
    static std::map<void*, AppState> apps;
    return apps;
}

bool Set(void* appId, bool AppState::*field, bool value) {
    if (appId == nullptr) return false;
    Apps()[appId].*field = value;
    return true;
}

AppState Get(void* appId) {
    const auto it = Apps().find(appId);
    return it == Apps().end() ? AppState() : it->second;
}

}  // namespace

bool ApplicationIsLocked(void* appId) { return Get(appId).locked; }
bool ApplicationIsMDIAware(void* appId) { return Get(appId).mdiAware; }

}  // namespace kelaz

bool acrxUnlockApplication(void* appId) {
    return kelaz::Set(appId, &kelaz::AppState::locked, false);
}

bool acrxLockApplication(void* appId) { return kelaz::Set(appId, &kelaz::AppState::locked, true); }

bool acrxRegisterAppMDIAware(void* appId) {
    return kelaz::Set(appId, &kelaz::AppState::mdiAware, true);
}

bool acrxRegisterAppNotMDIAware(void* appId) {
    return kelaz::Set(appId, &kelaz::AppState::mdiAware, false);
}
