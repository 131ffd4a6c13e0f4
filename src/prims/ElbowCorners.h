// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_ELBOWCORNERS_H
#define VESK_PRIMS_ELBOWCORNERS_H

#include "vesk/GePoint.h"
#include "vesk/Relb.h"

namespace Vesk {

// What the mode 2 record of an elbow holds: the ends of the bend axis segment,
// the outer points at start and end beside the first of them, and the inner
// radius at the start, whichever side the points are on.
struct ElbowCorners {
  GePoint a;
  GePoint b;
  GePoint c;
  GePoint e;
  double innerRadius = 0.0;
};

// Throws GeEx::NullDir when the two vectors are collinear.
ElbowCorners cornersOf(const Relb& relb);

}  // namespace Vesk

#endif
