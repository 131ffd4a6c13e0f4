// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_FACETHOLES_H
#define VESK_RVM_FACETHOLES_H

#include <cstddef>
#include <span>
#include <vector>

#include "prims/Orientation.h"

namespace Vesk {

// One closed way round an outline and its holes, as indices into `points`: an edge
// leads to each hole, and another leads back the same way.
//
//   points       the corners of all contours, finite
//   contourEnds  contour c ends before contourEnds[c]; the first is the outline
//
// The way turns as the outline does. Empty when a hole lies outside or there is
// more work than kMost.
std::vector<std::size_t> joinHoles(std::span<const PlanePoint> points,
                                   std::span<const std::size_t> contourEnds);

}  // namespace Vesk

#endif
