/* SPDX-License-Identifier: MIT */
/* The header compiles alone, and twice, as strict C99. */
#include "vesk.h"

typedef int (*OpenFunction)(const char*);

OpenFunction veskHeaderAsC(void);

OpenFunction veskHeaderAsC(void) { return vk_openVesk; }
