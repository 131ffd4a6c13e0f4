// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_PLACEMENT_H
#define VESK_MESH_PLACEMENT_H

#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace Vesk {

// Where a mesh stands and how it is stretched: the images of its axes and of its
// origin. The axes are perpendicular, right-handed and never null, so that it is
// a turn, a factor for each axis and a shift; the factors are the axes' lengths.
struct Placement {
  GeVector x{1.0, 0.0, 0.0};
  GeVector y{0.0, 1.0, 0.0};
  GeVector z{0.0, 0.0, 1.0};
  GePoint origin;

  GePoint point(const GePoint& p) const { return origin + x * p.x + y * p.y + z * p.z; }

  // Of a unit normal; the result has unit length again.
  GeVector normal(const GeVector& n) const;

  // The volume of what had the volume 1.
  double volumeFactor() const { return triple(x, y, z); }
};

}  // namespace Vesk

#endif
