#pragma once

// Everything the layout module offers the suite's other modules: include this one header.

#include "module/commands/ManageUndo.h"
#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "module/entry/LayoutClasses.h"
#include "module/layout/CalcPositionInRect.h"
#include "module/multipipe/MultiLine.h"
#include "module/queries/HighLightVector.h"
