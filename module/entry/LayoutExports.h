#pragma once

// Everything the layout module offers the suite's other modules: include this one header.

#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "module/layout/CalcPositionInRect.h"
