// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_EARSEARCH_H
#define VESK_PRIMS_EARSEARCH_H

#include <cstddef>
#include <vector>

#include "prims/EarRing.h"

namespace Vesk::Ears {

// Searches a polygon that may cross itself for ears, each of which is compared
// with the vertices that the sweep line meets between its corners.
//
//   vertexCount  of the polygon, those that the ring has left included
//   order        the sweep order of the ring
std::vector<EarTriangle> searchEars(Ring ring, std::size_t vertexCount,
                                    const std::vector<Index>& order);

}  // namespace Vesk::Ears

#endif
