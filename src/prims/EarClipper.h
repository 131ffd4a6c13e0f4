// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_EARCLIPPER_H
#define VESK_PRIMS_EARCLIPPER_H

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "vesk/GePoint.h"

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
// * A polygon of n vertices that does not touch itself gives n - 2 triangles
//   that cover it without overlap, vertices on a straight side included.
// * One that touches itself is covered as well, for instance where an edge leads
//   to a hole and another leads back the same way.
// * Repeated vertices and spikes (an edge back over the one before) enclose
//   nothing; their tips are in no triangle. No triangle has an area of zero.
// * A polygon that crosses or overlaps itself gives the ears that can be found,
//   perhaps none.
// * No triangles at all: fewer than 3 vertices, a coordinate that is NaN or
//   infinite, or an area within the rounding of the coordinates, such as all
//   vertices on one line.
// * 3 vertices of finite coordinates are returned as they are, even on a line.
//
// Time is about n log n: a line sweeps over the polygon once and triangulates
// as it goes; then each ear is found in one step. Only what crosses itself is
// searched for ears, with a bound on the work. Memory is linear.
//
// The same coordinates give the same triangles with every compiler: the signs
// that decide are exact.
std::vector<EarTriangle> clipEars(std::span<const GePoint> polygon);

}  // namespace Vesk

#endif
