#ifndef VESK_PRIMS_EARCLIPPER_H
#define VESK_PRIMS_EARCLIPPER_H

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "ge/GePoint.h"

namespace Vesk {

// Three indices into the vertices of a polygon.
using EarTriangle = std::array<std::uint32_t, 3>;

// Splits a polygon into triangles by cutting off one ear after the other.
//
//   polygon  the vertices in order, in any unit, without the first one repeated
//            at the end (repeating it does no harm); about plane, in any plane
//            of space, in either sense; less than 2^32 of them
//
// Returns the triangles in the order of cutting: before the ear (the vertex
// before the tip, the tip, the vertex after it) is cut, the three follow each
// other in what is left of the polygon, and so the triangles turn as the
// polygon does.
//
// * A simple polygon of n vertices gives n - 2 triangles that cover it without
//   overlap. Vertices on a straight line are kept. A polygon may also touch
//   itself, for instance where an edge, used once in each direction, leads to
//   a hole.
// * Repeated vertices and spikes (an edge back over the one before) enclose
//   nothing; their tips are in no triangle. No triangle has an area of zero.
// * A polygon that crosses itself gives the ears that can be found, perhaps
//   none. So does one that overlaps itself.
// * No triangles at all: fewer than 3 vertices, a coordinate that is NaN or
//   infinite, or an area within the rounding of the coordinates, such as all
//   vertices on one line.
// * 3 vertices of finite coordinates are returned as they are, even on a line.
//
// Time is about n log n: a line sweeps over the polygon once and finds a
// triangulation as it goes; cutting its ears then takes one step each. Only a
// polygon that crosses itself is searched for ears one by one, with a bound on
// the work. Memory is linear.
//
// The same coordinates give the same triangles everywhere: every decision
// depends on signs that are exact.
std::vector<EarTriangle> clipEars(std::span<const GePoint> polygon);

}  // namespace Vesk

#endif
