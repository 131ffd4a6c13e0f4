// SPDX-License-Identifier: MIT
#ifndef VESK_DISTANCE_TUBES_H
#define VESK_DISTANCE_TUBES_H

#include <optional>

#include "distance/Body.h"

namespace Vesk {

// The distance of two pipes or bends by their centre lines, which is much quicker
// than by their bodies: tubes with round ends are nearer than those with flat ones,
// by the distance of the lines less both radii; and where the shortest way between
// the lines meets both squarely, the flat ones have points just as near.
//
// Nothing if a body is no pipe or bend, or if both bounds are further apart than
// `meeting`: the shortest way ends at a flat end. Above `limit` the distance is
// infinite.
std::optional<Gap> gapOfTubes(const Body& a, const Body& b, double limit, double meeting);

}  // namespace Vesk

#endif
