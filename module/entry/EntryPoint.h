#pragma once

// The module's entry point, called by the host with every application message.

#include "host/app/RxApp.h"
#include "module/entry/LayoutApi.h"

// On kInitAppMsg the module unlocks itself (so that it can be unloaded) and registers as aware
// of several documents; every other message is ignored. Always kRetOK.
extern "C" LAYOUT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt);
