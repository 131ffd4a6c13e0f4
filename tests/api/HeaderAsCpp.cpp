// The header compiles alone, and twice, as C++, and its functions have C linkage.
#include "vesk.h"

extern "C" {
typedef int (*OpenFunction)(const char*);
OpenFunction veskHeaderAsCpp();
}

OpenFunction veskHeaderAsCpp() { return vk_openVesk; }
