// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_EARSWEEP_H
#define VESK_PRIMS_EARSWEEP_H

#include <cstddef>
#include <vector>

#include "prims/EarRing.h"

namespace Vesk::Ears {

// Triangulates a ring while a line sweeps over it: for each vertex of the polygon
// the number of triangles that it is in. Empty if the line met something that a
// polygon that does not cross itself cannot have; where it does cross itself, the
// numbers need not fit together.
//
//   vertexCount  of the polygon, those that the ring has left included
//   order        the sweep order of the ring
std::vector<Index> triangleCounts(const Ring& ring, std::size_t vertexCount,
                                  const std::vector<Index>& order);

}  // namespace Vesk::Ears

#endif
