// SPDX-License-Identifier: MIT
#ifndef VESK_API_GLOBALS_H
#define VESK_API_GLOBALS_H

#include "api/ElementHolder.h"
#include "output/OutFile.h"

namespace Vesk {

// The state of the loaded library, built in this order when it is loaded and
// destroyed in reverse when it is unloaded; the file closes itself then. The
// kernel's constants (ge/GeConstants.h) are constant-initialised.
extern OutFile outFile;
extern ElementHolder elementHolder;

}  // namespace Vesk

#endif
