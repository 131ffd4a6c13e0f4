// SPDX-License-Identifier: MIT
// The header compiles alone, and twice, as C++, and its functions have C linkage.
#include "vesk.h"

extern "C" {
typedef int (*OpenFunction)(const char*);
OpenFunction veskHeaderAsCpp();
}

// Its version is the project's.
typedef char MajorIsTheProjects[VESK_VERSION_MAJOR == PROJECT_MAJOR ? 1 : -1];
typedef char MinorIsTheProjects[VESK_VERSION_MINOR == PROJECT_MINOR ? 1 : -1];
typedef char PatchIsTheProjects[VESK_VERSION_PATCH == PROJECT_PATCH ? 1 : -1];

OpenFunction veskHeaderAsCpp() { return vk_openVesk; }
