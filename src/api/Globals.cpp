// SPDX-License-Identifier: MIT
#include "api/Globals.h"

// Before the objects of a host that the static library is linked with, whatever the order
// of linking, and so destroyed behind them: their destructors may call the exports.
#if defined(__GNUC__)
#define VESK_BEFORE_HOSTS(PLACE) __attribute__((init_priority(PLACE)))
#else
#define VESK_BEFORE_HOSTS(PLACE)
#endif

namespace Vesk {

OutFile outFile VESK_BEFORE_HOSTS(101);  // the first that is free
ElementHolder elementHolder VESK_BEFORE_HOSTS(102);

}  // namespace Vesk
