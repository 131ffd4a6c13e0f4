// SPDX-License-Identifier: MIT
#ifndef VESK_SHAPE_REDUCERSHAPE_H
#define VESK_SHAPE_REDUCERSHAPE_H

#include <array>
#include <cstddef>

#include "shape/Shape.h"
#include "vesk/GePoint.h"
#include "vesk/Red.h"

namespace Vesk {

using ReducerCorners = std::array<GePoint, 8>;

// Round each face, counter-clockwise from outside.
inline constexpr std::array<std::array<std::size_t, 4>, 6> kReducerFaces = {
    {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {1, 3, 7, 5}, {3, 2, 6, 7}, {2, 0, 4, 6}}};

// A reducer as the solid between its six bilinear faces.
struct ReducerShape {
  ShapeFault fault = ShapeFault::kNone;
  ReducerCorners corners;  // from the first one
  double volume = 0.0;     // negative if it is inside out
};

ReducerShape reducerShapeOf(const Red& red);

}  // namespace Vesk

#endif
