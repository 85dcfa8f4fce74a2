#pragma once

// The host's character type: every text of its API is wide.

using ACHAR = wchar_t;
