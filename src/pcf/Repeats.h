// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_REPEATS_H
#define VESK_PCF_REPEATS_H

#include "pcf/Plan.h"

namespace Vesk::Pcf {

// Marks the components that stand in the file before: the same word with the same
// points and bores, in any order of its points; of supports the same kind at the same
// point, whatever else is told of them.
void markRepeats(Plan& plan);

}  // namespace Vesk::Pcf

#endif
