// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_BENDFRAME_H
#define VESK_MESH_BENDFRAME_H

#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace Vesk {

// Frame of a bend that has a shape: x along its start, z along its axis.
struct BendFrame {
  GeVector x;
  GeVector y;
  GeVector z;
  double radius = 0.0;  // the mean of both vectors' lengths
  double sweep = 0.0;   // radians
};

BendFrame bendFrame(const GePoint& centre, const GeVector& start, const GeVector& end);

}  // namespace Vesk

#endif
