// SPDX-License-Identifier: MIT
#ifndef VESK_EXTENTS_H
#define VESK_EXTENTS_H

#include <limits>

#include <vesk/GePoint.h>
#include <vesk/GeVector.h>

namespace Vesk {

// An axis-aligned box. A new one is empty: its minimum is +infinity and its
// maximum -infinity. The operations only enlarge it.
class Extents {
 public:
  GePoint min{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
              std::numeric_limits<double>::infinity()};
  GePoint max{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
              -std::numeric_limits<double>::infinity()};

  Extents() = default;
  Extents(const GePoint& minimum, const GePoint& maximum) : min(minimum), max(maximum) {}

  // Encloses a point.
  Extents& add(const GePoint& p);

  // Encloses a circle in space exactly, not by its bounding square: per world
  // axis the two points of the circle that lie furthest along it. A radius
  // counts by its absolute value; a normal of any length will do, but one not
  // longer than the coarse tolerance has no plane, and the centre alone is
  // enclosed.
  Extents& addCircle(const GePoint& centre, const GeVector& normal, double radius);
};

}  // namespace Vesk

#endif
