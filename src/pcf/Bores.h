// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_BORES_H
#define VESK_PCF_BORES_H

#include "pcf/Joints.h"
#include "pcf/Messages.h"
#include "pcf/Plan.h"

namespace Vesk::Pcf {

// What the numbers behind the points mean.
enum class BoreMeaning {
  kAuto,      // found out for the file as a whole
  kNominal,   // DN or, under inches, NPS
  kInches,    // NPS, under millimetres times 25.4
  kDiameter,  // outside diameters
};

// Gives every point with a bore the outside diameter of its pipe. Millimetres may mean
// DN, NPS times 25.4 or outside diameters; what is doubtful (101.6 is 4 inches times
// 25.4 and the diameter of 3 1/2) is read as most of the file is. A bore of no table
// is drawn as it is. What was decided is said once.
void resolveBores(Plan& plan, const Joints& joints, BoreMeaning meaning, Messages& messages);

// Gives ends and branches without a bore the diameter that is given where they meet
// something, else that of another end of their component, else of what has got its own so.
void resolveMissingBores(Plan& plan, const Joints& joints, Messages& messages);

}  // namespace Vesk::Pcf

#endif
