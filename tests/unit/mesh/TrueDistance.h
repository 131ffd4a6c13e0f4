// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_MESH_TRUEDISTANCE_H
#define VESK_TESTS_MESH_TRUEDISTANCE_H

#include "vesk/GePoint.h"
#include "vesk/Geo.h"

namespace VeskTest {

// How far a point is from the surface of a solid, calculated from the meaning of
// its fields alone. Of a reducer the faces are bilinear between their corners.
double distanceToSurface(const Vesk::Geo& geo, const GePoint& p);

}  // namespace VeskTest

#endif
