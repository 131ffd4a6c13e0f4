// SPDX-License-Identifier: MIT
#ifndef VESK_SHAPE_QUADSPLIT_H
#define VESK_SHAPE_QUADSPLIT_H

#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace Vesk {

// Which diagonal splits a quadrangle.
struct QuadSplit {
  bool fromFirst = true;  // from a to c, else from b to d
  bool crosses = false;   // both leave a triangle that looks backwards
};

// Of both diagonals the one whose triangles look most the way of the whole: for
// each the smaller product of its two triangles' area vectors with that of the
// quadrangle counts, and the larger of both wins. So a concave quadrangle is
// split from its inner corner, and one that crosses itself has no good diagonal.
QuadSplit splitQuad(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d);

// Whether each diagonal leaves two triangles that look opposite ways, as of a bow
// tie, of which the whole may have no area. A triangle whose cross product is no
// longer than `least` looks no way.
bool isBowTie(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d, double least);

// Twice the area vector of a quadrangle, plane or not.
inline GeVector quadArea(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  return cross(c - a, d - b);
}

}  // namespace Vesk

#endif
