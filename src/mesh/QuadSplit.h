#ifndef VESK_MESH_QUADSPLIT_H
#define VESK_MESH_QUADSPLIT_H

#include "ge/GePoint.h"
#include "ge/GeVector.h"

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

// Twice the area vector of a quadrangle, plane or not.
inline GeVector quadArea(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  return cross(c - a, d - b);
}

}  // namespace Vesk

#endif
