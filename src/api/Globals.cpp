// SPDX-License-Identifier: MIT
#include "api/Globals.h"

namespace Vesk {

OutFile outFile;
ElementHolder elementHolder;

}  // namespace Vesk
