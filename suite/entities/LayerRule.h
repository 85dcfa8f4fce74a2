#pragma once

// Which layer a suite entity goes on by its system code.

#include "host/text/CString.h"

namespace kelaz {

// The layer of entities with no system code.
inline constexpr const wchar_t* kDefaultSuiteLayer = L"KELAZ";

// The layer for a system code: the code itself (trimmed, with the characters a layer name may
// not hold replaced by '_'), or the default layer when the code is empty. The project data may
// refine this one day; every entity asks here.
CString LayerForSysCode(const CString& sysCode);

// The layer of a component: the open project's layer for its category and system when the
// project has one ("暖通-风口-SF"), otherwise the system code's layer.
CString LayerForComponent(const CString& attName, const CString& sysCode);

}  // namespace kelaz
