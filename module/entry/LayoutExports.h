#pragma once

// Everything the layout module offers the suite's other modules: include this one header.

#include "module/commands/InitCmd.h"
#include "module/commands/KeyWordDlg.h"
#include "module/commands/ManageUndo.h"
#include "module/commands/SetEntType.h"
#include "module/entry/DispGlobaFun.h"
#include "module/entry/DispUtils.h"
#include "module/entry/EntryPoint.h"
#include "module/entry/LayoutClasses.h"
#include "module/foundations/LevelDlg.h"
#include "module/foundations/PickLevel.h"
#include "module/layout/CalcPositionInRect.h"
#include "module/layout/DisposeOnCurve.h"
#include "module/layout/DisposeOnSector.h"
#include "module/multipipe/MultiLine.h"
#include "module/queries/DealLineEntity.h"
#include "module/queries/DealPunEntity.h"
#include "module/queries/HighLightVector.h"
#include "module/queries/KelAzSelect.h"
#include "module/queries/KelAzSelectFun.h"
