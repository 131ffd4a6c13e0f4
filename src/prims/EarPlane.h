// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_EARPLANE_H
#define VESK_PRIMS_EARPLANE_H

#include <span>
#include <vector>

#include "prims/Orientation.h"
#include "vesk/GePoint.h"

namespace Vesk::Ears {

// The largest absolute coordinate, or one that is NaN or infinite.
double largestCoordinate(std::span<const GePoint> polygon);

// Looks at the polygon along the axis nearest to its normal, from the side on
// which it turns to the left. Leaving out a coordinate moves no point: points
// on a line stay on it and points that coincide go on doing so, which a turn
// into the plane would spoil by rounding. Empty if there is no area to speak
// of.
std::vector<PlanePoint> flatten(std::span<const GePoint> polygon);

}  // namespace Vesk::Ears

#endif
