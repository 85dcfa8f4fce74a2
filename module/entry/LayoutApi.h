#pragma once

// Marks the classes and functions other modules of the suite may call.
#define LAYOUT_API __attribute__((visibility("default")))
